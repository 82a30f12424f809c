#include "tools/launcher/Overlay.h"

#include "tools/launcher/NameText.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace tarnwick {

namespace fs = std::filesystem;

namespace {

/// A link of a folder to one above it would lead round for ever.
constexpr int deepestFolder = 16;

/// What stands for one name: a link to each file (one layer may have two that differ in case only), or
/// folders.
struct Entry {
    std::size_t layer = 0;
    std::vector<fs::path> files;
    std::vector<fs::path> folders;
};

using Entries = std::map<std::string, Entry>; ///< By the name in capitals.

void addLayer(Entries& entries, const fs::path& folder, std::size_t layer) {
    for (const std::string& name : sortedEntries(folder)) {
        std::error_code error;
        const fs::path path = folder / name;
        const fs::file_status status = fs::status(path, error);
        Entry& entry = entries.try_emplace(upperName(name), Entry{layer, {}, {}}).first->second;
        if (fs::is_directory(status) && entry.files.empty()) {
            entry.folders.push_back(path);
        } else if (fs::is_regular_file(status) && entry.folders.empty() &&
                   (entry.files.empty() || entry.layer == layer)) {
            entry.layer = layer;
            entry.files.push_back(path);
        }
    }
}

void layOver(const fs::path& target, const std::vector<fs::path>& layers, int depth);

void makeEntry(const fs::path& target, const Entry& entry, int depth) {
    for (const fs::path& file : entry.files) {
        fs::create_symlink(file, target / file.filename());
    }
    if (entry.folders.size() == 1) {
        fs::create_directory_symlink(entry.folders.front(), target / entry.folders.front().filename());
    } else if (!entry.folders.empty() && depth < deepestFolder) {
        layOver(target / entry.folders.front().filename(), entry.folders, depth + 1);
    }
}

void layOver(const fs::path& target, const std::vector<fs::path>& layers, int depth) {
    fs::create_directories(target);
    std::set<std::string> taken;
    for (const std::string& name : sortedEntries(target)) {
        taken.insert(upperName(name));
    }
    Entries entries;
    for (std::size_t layer = 0; layer < layers.size(); ++layer) {
        addLayer(entries, layers[layer], layer);
    }
    for (const auto& [name, entry] : entries) {
        if (!taken.contains(name)) {
            makeEntry(target, entry, depth);
        }
    }
}

} // namespace

void layOver(const fs::path& target, const std::vector<fs::path>& layers) {
    layOver(target, layers, 0);
}

std::vector<std::string> sortedEntries(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    while (!error && entry != fs::directory_iterator()) {
        std::string name = entry->path().filename().string();
        if (!name.starts_with('.')) {
            names.push_back(std::move(name));
        }
        entry.increment(error);
    }
    std::sort(names.begin(), names.end());
    return names;
}

fs::path entryCalled(const fs::path& folder, const std::string& name) {
    for (const std::string& entry : sortedEntries(folder)) {
        if (upperName(entry) == upperName(name)) {
            return folder / entry;
        }
    }
    return {};
}

} // namespace tarnwick
