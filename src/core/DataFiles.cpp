#include "core/DataFiles.h"

#include "core/LocationStack.h"
#include "core/Strings.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace tarnwick {

namespace {

std::string upperCopy(std::string_view text) {
    TARNWICK_LOCATION("DataFiles::upperCopy");
    std::string copy(text);
    slStringUpper(copy);
    return copy;
}

/// `name` with single slashes only, none at the end.
std::string withPlainSlashes(const std::string& name) {
    TARNWICK_LOCATION("DataFiles::withPlainSlashes");
    std::string plain;
    plain.reserve(name.size());
    for (const char c : name) {
        const char separated = c == '\\' ? '/' : c;
        if (separated != '/' || plain.empty() || plain.back() != '/') {
            plain += separated;
        }
    }
    if (plain.size() > 1 && plain.back() == '/') {
        plain.pop_back();
    }
    return plain;
}

bool exists(const std::string& path) {
    TARNWICK_LOCATION("DataFiles::exists");
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

/// Whether a file can be read to an end: neither folder nor device nor pipe.
bool isPlainFile(const std::string& path) {
    TARNWICK_LOCATION("DataFiles::isPlainFile");
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

/// Names of all that is in `folder`, in no order. Empty if the folder cannot be read.
std::vector<std::string> entriesOf(const std::string& folder) {
    TARNWICK_LOCATION("DataFiles::entriesOf");
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder.empty() ? "." : folder, error);
    while (!error && entry != std::filesystem::directory_iterator()) {
        names.push_back(entry->path().filename().string());
        entry.increment(error);
    }
    return names;
}

/// The entry of `folder` that `component` means, empty if there is none.
std::string matchComponent(const std::string& folder, const std::string& component) {
    TARNWICK_LOCATION("DataFiles::matchComponent");
    if (exists(folder + component)) {
        return component;
    }
    const std::string wanted = upperCopy(component);
    std::string best;
    for (const std::string& name : entriesOf(folder)) {
        if (upperCopy(name) == wanted && (best.empty() || name < best)) {
            best = name;
        }
    }
    return best;
}

/// Whether `text` fits `pattern`, in which `*` stands for any run of characters.
bool matchesPattern(std::string_view text, std::string_view pattern) {
    TARNWICK_LOCATION("DataFiles::matchesPattern");
    std::size_t at = 0;
    std::size_t patternAt = 0;
    std::size_t retryAt = 0;                             // where the run of the last star ends
    std::size_t retryPatternAt = std::string_view::npos; // behind the last star; npos: none yet
    while (at < text.size()) {
        if (patternAt < pattern.size() && pattern[patternAt] == '*') {
            ++patternAt;
            retryAt = at;
            retryPatternAt = patternAt;
        } else if (patternAt < pattern.size() && pattern[patternAt] == text[at]) {
            ++at;
            ++patternAt;
        } else if (retryPatternAt != std::string_view::npos) {
            ++retryAt; // the star takes one more character
            at = retryAt;
            patternAt = retryPatternAt;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', patternAt) == std::string_view::npos;
}

} // namespace

DataFiles::State DataFiles::state;

std::string DataFiles::find(const std::string& name) {
    TARNWICK_LOCATION("DataFiles::find");
    if (name.starts_with('/')) {
        return name;
    }
    std::string plain = withPlainSlashes(name);
    if (plain.empty() || exists(plain)) {
        return plain;
    }
    const auto kept = state.found.find(plain);
    if (kept != state.found.end()) {
        if (exists(kept->second)) {
            return kept->second;
        }
        state.found.erase(kept);
    }
    std::string path = search(plain);
    if (path.empty()) {
        return plain;
    }
    state.found.emplace(plain, path);
    return path;
}

std::ifstream DataFiles::open(const std::string& name) {
    TARNWICK_LOCATION("DataFiles::open");
    const std::string path = find(name);
    if (!isPlainFile(path)) {
        return {};
    }
    return std::ifstream(path, std::ios::binary);
}

std::vector<std::string> DataFiles::list(const std::string& pattern) {
    TARNWICK_LOCATION("DataFiles::list");
    const std::string plain = pattern.starts_with('/') ? pattern : withPlainSlashes(pattern);
    const std::size_t behindFolder = plain.rfind('/') + 1; // npos + 1 is 0: no folder
    const std::string folder = behindFolder == 0 ? std::string() : find(plain.substr(0, behindFolder)) + '/';
    const std::string wanted = upperCopy(std::string_view(plain).substr(behindFolder));

    std::vector<std::pair<std::string, std::string>> matches; // upper-cased name and name: this is the order
    for (const std::string& name : entriesOf(folder)) {
        std::string upper = upperCopy(name);
        if (matchesPattern(upper, wanted) && isPlainFile(folder + name)) {
            matches.emplace_back(std::move(upper), name);
        }
    }
    std::sort(matches.begin(), matches.end());

    std::vector<std::string> names;
    names.reserve(matches.size());
    for (auto& match : matches) {
        names.push_back(std::move(match.second));
    }
    return names;
}

void DataFiles::forget() {
    TARNWICK_LOCATION("DataFiles::forget");
    state.found.clear();
}

/// The path of `name` component by component, empty if one has no match.
std::string DataFiles::search(const std::string& name) {
    TARNWICK_LOCATION("DataFiles::search");
    std::string path;
    std::size_t start = 0;
    while (start < name.size()) {
        const std::size_t end = std::min(name.find('/', start), name.size());
        const std::string match = matchComponent(path, name.substr(start, end - start));
        if (match.empty()) {
            return {};
        }
        path += match;
        if (end < name.size()) {
            path += '/';
        }
        start = end + 1;
    }
    return path;
}

} // namespace tarnwick
