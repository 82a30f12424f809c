#include "tools/launcher/LevelPacks.h"

#include "tools/launcher/NameText.h"
#include "tools/launcher/Overlay.h"
#include "tools/launcher/ZipFile.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <ostream>
#include <string_view>

namespace tarnwick {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 9> dataFolders{"CFG",     "FX",  "GFX", "MAPS", "MUSIC",
                                                      "REPLAYS", "SAV", "SND", "VID"};

const std::string workPrefix = ".new-"; ///< Of a folder that an archive is being unpacked into.

bool hasKind(const fs::path& file, std::string_view kind) {
    return upperName(file.extension().string()) == kind;
}

/// Where the levels of an archive or folder begin: archives often hold one folder that holds everything.
fs::path insideOf(const fs::path& folder) {
    const std::vector<std::string> entries = sortedEntries(folder);
    std::error_code error;
    if (entries.size() == 1 && !isDataFolder(entries.front()) &&
        fs::is_directory(folder / entries.front(), error)) {
        return folder / entries.front();
    }
    return folder;
}

/// A name that only this state of this archive has.
std::string unpackedName(const fs::path& archive) {
    const auto time = fs::last_write_time(archive).time_since_epoch().count();
    return archive.filename().string() + '-' + std::to_string(fs::file_size(archive)) + '-' +
           std::to_string(time);
}

/// Whether another launcher unpacks into this folder at this moment.
bool isInWork(const std::string& name) {
    if (!name.starts_with(workPrefix)) {
        return false;
    }
    const int process = std::atoi(name.c_str() + workPrefix.size()); // NOLINT(cert-err34-c): 0 if it is none
    return process > 0 && process != getpid() && kill(process, 0) == 0;
}

/// Unpacks an archive beside its place and then puts it there, so that what is there is whole.
fs::path unpackOnce(const fs::path& archive, const fs::path& unpacked) {
    const fs::path place = unpacked / unpackedName(archive);
    if (fs::is_directory(place)) {
        return place;
    }
    const fs::path beside = unpacked / (workPrefix + std::to_string(getpid()));
    std::error_code ignored;
    fs::remove_all(beside, ignored);
    try {
        unpackZip(archive, beside);
        fs::rename(beside, place, ignored); // fails if another start was faster: its work is as good
    } catch (...) {
        fs::remove_all(beside, ignored);
        throw;
    }
    fs::remove_all(beside, ignored);
    return place;
}

} // namespace

bool isDataFolder(const std::string& name) {
    return std::find(dataFolders.begin(), dataFolders.end(), upperName(name)) != dataFolders.end();
}

std::vector<LevelPack>
findLevelPacks(const fs::path& dataFolder, const fs::path& unpacked, std::ostream& messages) {
    std::vector<LevelPack> packs;
    for (const std::string& name : sortedEntries(dataFolder)) {
        std::error_code error;
        const fs::path path = dataFolder / name;
        LevelPack pack;
        if (fs::is_directory(path, error) && !isDataFolder(name)) {
            pack = {name, insideOf(path)};
        } else if (fs::is_regular_file(path, error) && hasKind(path, ".ZIP")) {
            try {
                pack = {path.stem().string(), insideOf(unpackOnce(path, unpacked))};
            } catch (const std::exception& reason) {
                messages << "tarnwick: level pack left out: " << reason.what() << '\n';
                continue;
            }
            if (levelsOf(pack).empty()) {
                messages << "tarnwick: level pack left out: " << path.string()
                         << ": there is no level in it\n";
                continue;
            }
        }
        if (!pack.folder.empty() && !levelsOf(pack).empty()) {
            packs.push_back(std::move(pack));
        }
    }
    return packs;
}

void forgetOtherPacks(const fs::path& unpacked, const std::vector<LevelPack>& packs) {
    std::error_code ignored;
    fs::directory_iterator entry(unpacked, ignored);
    while (!ignored && entry != fs::directory_iterator()) {
        const fs::path folder = entry->path();
        const bool needed = std::any_of(packs.begin(), packs.end(), [&](const LevelPack& pack) {
            return pack.folder == folder || pack.folder.parent_path() == folder;
        });
        const bool inWork = isInWork(folder.filename().string());
        entry.increment(ignored);
        std::error_code unremoved;
        if (!needed && !inWork) {
            fs::remove_all(folder, unremoved);
        }
    }
}

std::vector<OwnLevel> levelsIn(const fs::path& folder) {
    std::vector<OwnLevel> levels;
    for (const std::string& name : sortedEntries(folder)) {
        std::error_code error;
        if (hasKind(name, ".RIVL") && fs::is_regular_file(folder / name, error)) {
            levels.push_back({folder / name, levelNameInGame(name)});
        }
    }
    return levels;
}

std::vector<OwnLevel> levelsOf(const LevelPack& pack) {
    std::vector<OwnLevel> levels = levelsIn(pack.folder);
    const fs::path maps = entryCalled(pack.folder, "maps");
    if (!maps.empty()) {
        const std::vector<OwnLevel> more = levelsIn(maps);
        levels.insert(levels.end(), more.begin(), more.end());
    }
    for (OwnLevel& level : levels) {
        level.name = levelNameInGame(pack.name + ": " + level.file.filename().string());
    }
    return levels;
}

} // namespace tarnwick
