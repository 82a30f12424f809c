#include "core/CommandArguments.h"

#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/Strings.h"

#include <algorithm>
#include <list>
#include <string_view>

namespace tarnwick {

namespace {

/// `text` without the blanks at its ends.
std::string_view trimmed(std::string_view text) {
    TARNWICK_LOCATION("CommandArguments::trimmed");
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/// The kinds of the places "< name : kind >" or "< kind >" of a usage text.
std::vector<std::string_view> kindsOf(std::string_view usage) {
    TARNWICK_LOCATION("CommandArguments::kindsOf");
    std::vector<std::string_view> kinds;
    for (std::size_t open = usage.find('<'); open != std::string_view::npos;
         open = usage.find('<', open + 1)) {
        const std::string_view place = usage.substr(open + 1, usage.find('>', open) - open - 1);
        const std::size_t colon = place.find(':');
        kinds.push_back(trimmed(colon == std::string_view::npos ? place : place.substr(colon + 1)));
    }
    return kinds;
}

bool isOfKind(const std::string& word, std::string_view kind) {
    TARNWICK_LOCATION("CommandArguments::isOfKind");
    if (kind == "number") {
        return slStringIsNumeric(word);
    }
    if (kind == "integer" || kind == "integer number") {
        return slStringIsInteger(word);
    }
    return kind != "true OR false" || slStringIsBoolean(word);
}

} // namespace

CommandArguments::CommandArguments(const std::string& typed, const char* usage) {
    TARNWICK_LOCATION("CommandArguments::CommandArguments");
    std::list<std::string> list;
    slSeparateArgs(typed, list);
    words.assign(list.begin(), list.end());
    const std::vector<std::string_view> kinds = kindsOf(usage);
    good = std::equal(words.begin(), words.end(), kinds.begin(), kinds.end(), isOfKind);
    if (!good) {
        Log::print(usage);
    }
}

float CommandArguments::number(std::size_t place) const {
    TARNWICK_LOCATION("CommandArguments::number");
    return slStringToFloat(words[place]);
}

std::int32_t CommandArguments::integer(std::size_t place) const {
    TARNWICK_LOCATION("CommandArguments::integer");
    return slStringToInt(words[place]);
}

bool CommandArguments::boolean(std::size_t place) const {
    TARNWICK_LOCATION("CommandArguments::boolean");
    return slStringToBool(words[place]);
}

} // namespace tarnwick
