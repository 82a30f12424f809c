#include "tools/launcher/Launch.h"

#include "tools/launcher/GameProcess.h"
#include "tools/launcher/LevelPacks.h"
#include "tools/launcher/NameText.h"
#include "tools/launcher/Overlay.h"
#include "tools/launcher/PlayFolder.h"
#include "tools/support/DataFolder.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <optional>
#include <ostream>
#include <set>
#include <stdexcept>
#include <vector>

namespace tarnwick {

namespace fs = std::filesystem;

namespace {

constexpr int notStarted = 2; ///< Exit status.

/// What a level pack may have of its own beside levels, for names that neither the player nor the game has.
constexpr const char* foldersOfPacks[] = {"fx", "gfx", "music", "snd", "vid"};

fs::path ownProgram() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
}

/// The first of some places that is there.
fs::path firstThatIs(const std::vector<fs::path>& places) {
    for (const fs::path& place : places) {
        std::error_code error;
        if (!place.empty() && fs::exists(place, error)) {
            return place.lexically_normal();
        }
    }
    return {};
}

/// Makes a folder of the player's, or says why there is none; what can be played is played all the same.
void makeUserFolder(const fs::path& folder, std::ostream& messages) {
    std::error_code error;
    if (folder.empty()) {
        return;
    }
    fs::create_directories(folder, error);
    if (error) {
        messages << "tarnwick: cannot make " << folder.string() << ": " << error.message() << '\n';
    } else if (access(folder.c_str(), W_OK) != 0) {
        messages << "tarnwick: nothing can be kept in " << folder.string() << '\n';
    }
}

/// Names of the folders of data that `folder` has, in lower case as far as the game knows them.
void collectFolders(const fs::path& folder, std::set<std::string>& names) {
    for (const std::string& name : sortedEntries(folder)) {
        std::error_code error;
        if (fs::is_directory(folder / name, error) && isDataFolder(name) && upperName(name) != "SAV") {
            std::string lower = name;
            for (char& c : lower) {
                c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
            }
            names.insert(lower);
        }
    }
}

/// Links a level under its name in the game; an earlier one of that name goes first.
void linkLevel(const fs::path& maps, const OwnLevel& level) {
    if (entryCalled(maps, level.name).empty()) {
        fs::create_symlink(level.file, maps / level.name);
    }
}

void fillMaps(const fs::path& maps,
              const fs::path& data,
              const fs::path& ownData,
              const std::vector<LevelPack>& packs) {
    for (const fs::path& folder : {entryCalled(ownData, "maps"), ownData, entryCalled(data, "maps")}) {
        for (const OwnLevel& level : levelsIn(folder)) {
            linkLevel(maps, level);
        }
    }
    for (const LevelPack& pack : packs) {
        for (const OwnLevel& level : levelsOf(pack)) {
            linkLevel(maps, level);
        }
    }
}

/// The name in `maps` of the level that the player named, with or without its ending; empty if there is none.
std::string nameInList(const fs::path& maps, const std::string& wanted) {
    const std::string name = levelNameInGame(wanted);
    for (const std::string& candidate : {name, name + ".rivl"}) {
        const fs::path found = entryCalled(maps, candidate);
        if (!found.empty()) {
            return found.filename().string();
        }
    }
    return {};
}

/// The name in `maps` of the level to start with. A level file from elsewhere is linked there, before the one
/// of its name.
std::string chooseLevel(const fs::path& maps, const std::string& wanted) {
    const bool isPath = wanted.find('/') != std::string::npos;
    if (!isPath) {
        std::string name = nameInList(maps, wanted);
        if (!name.empty()) {
            return name;
        }
    }
    std::error_code error;
    const fs::path file = fs::absolute(wanted);
    if (!fs::is_regular_file(file, error)) {
        throw std::runtime_error(wanted + (isPath ? ": there is no such file" : ": there is no such level"));
    }
    if (access(file.c_str(), R_OK) != 0) {
        throw std::runtime_error(wanted + ": the file cannot be read");
    }
    for (const std::string& name : sortedEntries(maps)) {
        if (fs::equivalent(maps / name, file, error)) {
            return name;
        }
    }
    OwnLevel level{file, levelNameInGame(file.filename().string())};
    if (upperName(fs::path(level.name).extension().string()) != ".RIVL") {
        throw std::runtime_error(wanted + ": not a level file, its name does not end in .rivl");
    }
    const fs::path before = entryCalled(maps, level.name);
    if (!before.empty()) {
        fs::remove(before);
    }
    linkLevel(maps, level);
    return level.name;
}

void writeStartFile(const fs::path& folder, const LaunchOptions& options) {
    if (options.level.empty() && options.windowWidth == 0) {
        return;
    }
    const fs::path path = folder / "cfg" / startFileName;
    fs::remove(path); // a link to the player's own
    std::ofstream file(path, std::ios::binary);
    if (!options.level.empty()) {
        file << "map = maps\\" << chooseLevel(folder / "maps", options.level) << '\n';
    }
    if (options.windowWidth != 0) {
        file << "windowWidth = " << options.windowWidth << "\nwindowHeight = " << options.windowHeight
             << '\n';
    }
    if (!file.flush()) {
        throw fs::filesystem_error("cannot write", path, std::make_error_code(std::errc::no_space_on_device));
    }
}

/// Scores and progress are written where they stay. Where that folder cannot be made, the game makes one of
/// its own.
void linkScores(const fs::path& folder, const UserFolders& folders) {
    std::error_code error;
    const fs::path scores = folders.state / "sav";
    if (!folders.state.empty() && fs::is_directory(scores, error)) {
        fs::create_directory_symlink(scores, folder / "sav");
    }
}

/// Shows why nothing starts to a player who sees no terminal.
void showBox(const fs::path& boxProgram, const std::string& text) {
    const auto isSet = [](const char* variable) {
        const char* value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): one thread
        return value != nullptr && *value != '\0';
    };
    if (boxProgram.empty() || isatty(STDERR_FILENO) != 0 ||
        (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY"))) {
        return;
    }
    writeToProgram(boxProgram, "Tarnwick", text);
}

} // namespace

Installation Installation::find(const fs::path& dataFolder) {
    const fs::path here = ownProgram().parent_path();
    Installation found;
    found.program = firstThatIs({here / TARNWICK_GAME_PLACE, here / ".." / "bin" / "tarnwick"});
    found.boxProgram = firstThatIs({found.program.parent_path() / "tarnwick-crash-box"});
    if (found.program.empty()) {
        throw std::runtime_error((here / TARNWICK_GAME_PLACE).lexically_normal().string() +
                                 ": the game's program is not there");
    }
    found.data = dataFolder.empty() ? firstThatIs({here / TARNWICK_DATA_PLACE, dataFolderBesideProgram()})
                                    : fs::absolute(dataFolder);
    if (found.data.empty()) {
        throw std::runtime_error((here / TARNWICK_DATA_PLACE).lexically_normal().string() +
                                 ": the game's data are not there");
    }
    for (const char* part : {"cfg", "gfx"}) {
        if (entryCalled(found.data, part).empty()) {
            throw std::runtime_error(found.data.string() + ": no data of the game, there is no " + part);
        }
    }
    return found;
}

std::vector<LevelPack> fillPlayFolder(const fs::path& folder,
                                      const fs::path& data,
                                      const fs::path& unpacked,
                                      const UserFolders& folders,
                                      const LaunchOptions& options,
                                      std::ostream& messages) {
    std::vector<LevelPack> packs = findLevelPacks(folders.data, unpacked, messages);
    std::set<std::string> names{"cfg", "maps", "replays"}; // these are there, for what the game writes
    collectFolders(data, names);
    collectFolders(folders.data, names);
    for (const char* name : foldersOfPacks) {
        names.insert(name);
    }
    for (const std::string& name : names) {
        fs::create_directory(folder / name);
        if (name == "maps") {
            fillMaps(folder / name, data, folders.data, packs);
            continue;
        }
        std::vector<fs::path> layers;
        if (name == "cfg") {
            layers.push_back(folders.config);
        }
        layers.push_back(entryCalled(folders.data, name));
        layers.push_back(entryCalled(data, name));
        if (name != "cfg" && name != "replays") {
            for (const LevelPack& pack : packs) {
                layers.push_back(entryCalled(pack.folder, name));
            }
        }
        layOver(folder / name, layers);
    }
    linkScores(folder, folders);
    writeStartFile(folder, options);
    return packs;
}

int launch(const LaunchOptions& options, std::ostream& messages) {
    Installation installed;
    try {
        installed = Installation::find(options.dataFolder);
        const UserFolders folders = UserFolders::fromEnvironment();
        for (const fs::path& folder :
             {folders.data / "maps", folders.data / "replays", folders.config, folders.state / "sav"}) {
            makeUserFolder(folder, messages);
        }
        std::vector<LevelPack> packs;
        PlayFolder play = PlayFolder::make(
            folders,
            [&](const fs::path& folder) {
                const bool canKeep = folder.parent_path() == folders.state / "run";
                packs = fillPlayFolder(folder, installed.data,
                                       canKeep ? folders.state / "packs" : folder / "packs", folders, options,
                                       messages);
            },
            messages);
        if (play.isAlone()) {
            forgetOtherPacks(folders.state / "packs", packs);
        }
        const int status = runGame(installed.program, play.path());
        play.finish(folders, messages);
        return status;
    } catch (const std::exception& reason) {
        const std::string text = std::string("tarnwick: ") + reason.what();
        messages << text << std::endl;
        showBox(installed.boxProgram, text);
        return notStarted;
    }
}

} // namespace tarnwick
