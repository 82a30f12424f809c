#include "core/ConfigFile.h"

#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/Strings.h"

#include <iterator>
#include <utility>

namespace tarnwick {

namespace {

using TokenList = std::list<std::string>;
using Token = TokenList::const_iterator;

bool isEquals(const std::string& token) {
    TARNWICK_LOCATION("ConfigFile::isEquals");
    return token == "=";
}

/// Whether the token before `token` is "="; the first has none.
bool equalsBefore(const TokenList& tokens, Token token) {
    TARNWICK_LOCATION("ConfigFile::equalsBefore");
    return token != tokens.begin() && isEquals(*std::prev(token));
}

/// Whether the token after `token` is "="; the last has none.
bool equalsAfter(const TokenList& tokens, Token token) {
    TARNWICK_LOCATION("ConfigFile::equalsAfter");
    const Token next = std::next(token);
    return next != tokens.end() && isEquals(*next);
}

/// Pass one: of a run of "=" between two words the last stays; a run at either end of the file goes.
void removeStrayEquals(TokenList& tokens) {
    TARNWICK_LOCATION("ConfigFile::removeStrayEquals");
    for (Token token = tokens.begin(); token != tokens.end();) {
        const bool atEnd = token == tokens.begin() || std::next(token) == tokens.end();
        const bool stray =
            isEquals(*token) && (atEnd || equalsBefore(tokens, token) || equalsAfter(tokens, token));
        token = stray ? tokens.erase(token) : std::next(token);
    }
}

/// Pass two: a word stays if it has an "=" on exactly one side. Neighbours are those of the list as it
/// stands.
void removeCommentWords(TokenList& tokens) {
    TARNWICK_LOCATION("ConfigFile::removeCommentWords");
    for (Token token = tokens.begin(); token != tokens.end();) {
        const bool comment = !isEquals(*token) && equalsBefore(tokens, token) == equalsAfter(tokens, token);
        token = comment ? tokens.erase(token) : std::next(token);
    }
}

/// Prints a failure and the file it is about.
void report(const char* failure, const char* fileName) {
    TARNWICK_LOCATION("ConfigFile::report");
    Log::print(failure);
    Log::print(fileName);
}

/// Reads the whole file into `text`. False, told on the console, if that fails.
bool readText(const char* fileName, std::string& text) {
    TARNWICK_LOCATION("ConfigFile::readText");
    std::ifstream file = DataFiles::open(fileName);
    if (!file.is_open()) {
        report("\nCould not open config file: ", fileName);
        return false;
    }
    if (!file.good()) {
        report("\nError when opening config file: ", fileName);
        return false;
    }
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    file.seekg(0, std::ios::beg);
    if (!file || size < 0 || size > ConfigFile::largestFile) {
        report("Error reading config file: ", fileName);
        return false;
    }
    text.resize(static_cast<std::size_t>(size));
    if (size > 0 && !file.read(text.data(), size)) {
        report("Error reading config file: ", fileName);
        return false;
    }
    return true;
}

} // namespace

ConfigFile::State ConfigFile::state;

void ConfigFile::setObserver(Observer* observer) {
    TARNWICK_LOCATION("ConfigFile::setObserver");
    state.observer = observer;
}

ConfigFile::ConfigFile(const char* fileName) {
    TARNWICK_LOCATION("ConfigFile::ConfigFile");
    loadConfigFile(fileName);
}

void ConfigFile::clear() {
    TARNWICK_LOCATION("ConfigFile::clear");
    variables.clear();
}

void ConfigFile::loadConfigFile(const char* fileName) {
    TARNWICK_LOCATION("ConfigFile::loadConfigFile");
    clear();
    if (fileName == nullptr) {
        Log::print("\nError in configuration Loader: no file name given");
        return;
    }
    if (state.observer != nullptr) {
        state.observer->fileRead(fileName);
    }
    TokenList tokens;
    {
        std::string text;
        if (!readText(fileName, text)) {
            return;
        }
        separateTokens(text.c_str(), tokens);
    }
    removeStrayEquals(tokens);
    removeCommentWords(tokens);
    tokens.remove_if(isEquals);
    if (tokens.size() % 2 != 0) {
        report("\nError parsing configuration file: ", fileName);
        return;
    }
    for (auto token = tokens.begin(); token != tokens.end(); ++token) {
        std::string key = std::move(*token);
        slStringUpper(key);
        ++token;
        variables[std::move(key)] = std::move(*token);
    }
}

void ConfigFile::separateTokens(const char* text, std::list<std::string>& tokens) {
    TARNWICK_LOCATION("ConfigFile::separateTokens");
    if (text == nullptr) {
        return;
    }
    while (true) {
        while (slIsSeparator(*text)) {
            ++text;
        }
        if (*text == '\0') {
            return;
        }
        const char* end = text;
        if (*end == '=') {
            ++end;
        } else {
            while (*end != '\0' && *end != '=' && !slIsSeparator(*end)) {
                ++end;
            }
        }
        tokens.emplace_back(text, end);
        text = end;
    }
}

bool ConfigFile::variableExists(std::string_view name) const {
    TARNWICK_LOCATION("ConfigFile::variableExists");
    return find(name) != nullptr;
}

std::string ConfigFile::getVarAsString(std::string_view name) const {
    TARNWICK_LOCATION("ConfigFile::getVarAsString");
    const std::string* value = find(name);
    return value == nullptr ? std::string() : *value;
}

float ConfigFile::getVarAsFloat(std::string_view name) const {
    TARNWICK_LOCATION("ConfigFile::getVarAsFloat");
    const std::string* value = find(name);
    return value == nullptr ? 0.0f : slStringToFloat(*value);
}

int ConfigFile::getVarAsInt(std::string_view name) const {
    TARNWICK_LOCATION("ConfigFile::getVarAsInt");
    const std::string* value = find(name);
    return value == nullptr ? 0 : slStringToInt(*value);
}

bool ConfigFile::getVarAsBool(std::string_view name) const {
    TARNWICK_LOCATION("ConfigFile::getVarAsBool");
    const std::string* value = find(name);
    return value != nullptr && slStringToBool(*value);
}

const std::string* ConfigFile::find(std::string_view name) const {
    TARNWICK_LOCATION("ConfigFile::find");
    if (name.data() == nullptr) {
        return nullptr;
    }
    std::string key(slUpToNul(name));
    slStringUpper(key);
    if (state.observer != nullptr) {
        state.observer->keyAsked(key);
    }
    const auto variable = variables.find(key);
    return variable == variables.end() ? nullptr : &variable->second;
}

} // namespace tarnwick
