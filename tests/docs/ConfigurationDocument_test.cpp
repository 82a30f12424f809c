#include "core/Comfort.h"
#include "core/ConfigFile.h"
#include "core/Strings.h"
#include "docs/Document.h"
#include "docs/EveryModule.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <list>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

using KeysOfFiles = std::map<std::string, std::set<std::string>>; ///< File to its keys in upper case.

/// Heading of the settings of emitters: files of one kind, in which every key is optional.
constexpr const char* emitterFiles = "fx/*.cfg";

/// One line for each key: a difference is then shown by itself.
std::string listOf(const KeysOfFiles& keysOfFiles) {
    std::string list;
    for (const auto& [file, keys] : keysOfFiles) {
        for (const std::string& key : keys) {
            list += file + ": " + key + "\n";
        }
    }
    return list;
}

std::string upperCased(std::string text) {
    slStringUpper(text);
    return text;
}

KeysOfFiles documentedKeys() {
    KeysOfFiles keys;
    for (const DocumentRow& row : documentRows("docs/configuration.md")) {
        keys[row.heading].insert(upperCased(row.cells[0]));
    }
    return keys;
}

/// The keys of a configuration file: the words in front of the equals signs.
std::set<std::string> keysIn(const std::string& path) {
    std::ifstream file(path);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    std::list<std::string> tokens;
    ConfigFile().separateTokens(text.c_str(), tokens);
    std::set<std::string> keys;
    for (auto token = tokens.begin(); token != tokens.end(); ++token) {
        if (*token == "=" && token != tokens.begin()) {
            keys.insert(upperCased(*std::prev(token)));
        }
    }
    return keys;
}

KeysOfFiles keysInData() {
    KeysOfFiles keys;
    for (const auto& entry : std::filesystem::directory_iterator(projectPath("data/cfg"))) {
        keys["cfg/" + entry.path().filename().string()] = keysIn(entry.path().string());
    }
    return keys;
}

/// The files in data/ that a heading stands for.
std::vector<std::string> filesOf(const std::string& heading) {
    if (heading != emitterFiles) {
        return {heading};
    }
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(projectPath("data/fx"))) {
        files.push_back("fx/" + entry.path().filename().string());
    }
    return files;
}

/// Writes down which keys the modules ask of which file.
class AskedKeys : public ConfigFile::Observer {
public:
    AskedKeys() { ConfigFile::setObserver(this); }
    ~AskedKeys() override { ConfigFile::setObserver(nullptr); }
    AskedKeys(const AskedKeys&) = delete;
    AskedKeys& operator=(const AskedKeys&) = delete;

    void fileRead(const std::string& name) override {
        file.clear();
        for (const char character : name) {
            const bool slash = character == '\\' || character == '/';
            if (!slash || !file.ends_with('/')) {
                file += slash ? '/' : character;
            }
        }
        if (file.starts_with("fx/")) {
            file = emitterFiles;
        }
    }
    void keyAsked(const std::string& key) override { keys[file].insert(key); }

    KeysOfFiles keys;

private:
    std::string file; ///< The one that was read last, with single slashes.
};

bool readsAs(const std::string& type, const std::string& value) {
    if (type == "integer") {
        return slStringIsInteger(value);
    }
    if (type == "float") {
        return slStringIsNumeric(value);
    }
    return type == "boolean" ? slStringIsBoolean(value) : type == "string";
}

/// Whether a number lies in a range given as "0 to 1", "1 or more" or nothing.
bool liesIn(const std::string& range, float value) {
    std::istringstream words(range);
    float lowest = 0.0f;
    std::string joint;
    float highest = 0.0f;
    if (!(words >> lowest >> joint)) {
        return range.empty();
    }
    const bool bounded = joint == "to" && words >> highest;
    return lowest <= value && (bounded ? value <= highest : joint == "or");
}

/// What the document says of the keys of `cfg/comfort.cfg`.
std::map<std::string, std::string> documentedComforts() {
    std::map<std::string, std::string> comforts;
    for (const DocumentRow& row : documentRows("docs/configuration.md")) {
        if (row.heading == "cfg/comfort.cfg") {
            comforts[row.cells[0]] = row.cells[5];
        }
    }
    return comforts;
}

} // namespace

class ConfigurationDocumentTest : public ModuleTest {
protected:
    const DataFolder folder; ///< Working directory of the modules.
};

TEST_F(ConfigurationDocumentTest, EveryDocumentedKeyStandsInItsFile) {
    KeysOfFiles inData = keysInData();
    KeysOfFiles missing;

    KeysOfFiles documented = documentedKeys();
    documented.erase(emitterFiles);
    for (const auto& [file, keys] : documented) {
        std::ranges::set_difference(keys, inData[file], std::inserter(missing[file], missing[file].end()));
    }

    EXPECT_EQ(listOf(missing),
              ""); // a key that is there and not documented waits for the module that reads it
}

TEST_F(ConfigurationDocumentTest, EveryKeyOfAnEmitterIsDocumented) {
    const std::set<std::string> documented = documentedKeys()[emitterFiles];
    KeysOfFiles unknown;

    for (const std::string& file : filesOf(emitterFiles)) {
        std::ranges::set_difference(keysIn(projectPath("data/" + file)), documented,
                                    std::inserter(unknown[file], unknown[file].end()));
    }

    EXPECT_GE(unknown.size(), 4u);
    EXPECT_EQ(listOf(unknown), "");
}

TEST_F(ConfigurationDocumentTest, TheDocumentNamesTheKeysThatTheModulesAskFor) {
    const KeysOfFiles documented = documentedKeys();
    const AskedKeys asked;

    startEveryModule(folder);

    EXPECT_EQ(listOf(documented), listOf(asked.keys));
}

TEST_F(ConfigurationDocumentTest, AComfortDoesWhatTheDocumentSays) {
    std::map<std::string, std::string> comforts;
    for (const Comfort::Entry& entry : Comfort::entries) {
        comforts[entry.key] = entry.does;
    }

    EXPECT_EQ(documentedComforts(), comforts);
}

TEST_F(ConfigurationDocumentTest, TheValuesInTheFilesFitTheirTypeAndRange) {
    for (const DocumentRow& row : documentRows("docs/configuration.md")) {
        ASSERT_EQ(row.cells.size(), 6u) << row.cells[0];
        const std::string& key = row.cells[0];
        const std::string& type = row.cells[1];
        for (const std::string& name : filesOf(row.heading)) {
            const ConfigFile file(projectPath("data/" + name).c_str());
            if (row.heading == emitterFiles && !file.variableExists(key)) {
                continue;
            }

            const std::string value = file.getVarAsString(key);

            EXPECT_TRUE(readsAs(type, value)) << name << ": " << key << " = " << value;
            if (type == "integer" || type == "float") {
                EXPECT_TRUE(liesIn(row.cells[3], file.getVarAsFloat(key)))
                    << name << ": " << key << " = " << value << ", not " << row.cells[3];
            }
        }
    }
}

} // namespace tarnwick
