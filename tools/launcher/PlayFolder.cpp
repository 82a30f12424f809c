#include "tools/launcher/PlayFolder.h"

#include "tools/launcher/KeptFiles.h"
#include "tools/launcher/Overlay.h"

#include <cerrno>
#include <cstdlib>
#include <ostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace tarnwick {

namespace fs = std::filesystem;

namespace {

constexpr int mostGames = 99; ///< That run at a time.

fs::path lockFileOf(const fs::path& folder) {
    return folder.string() + ".lock";
}

/// Numbers of the play folders that are in `place`.
std::vector<int> numbersIn(const fs::path& place) {
    std::vector<int> numbers;
    for (const std::string& name : sortedEntries(place)) {
        const int number =
            std::atoi(name.c_str()); // NOLINT(cert-err34-c): other names give 0 and are left out
        if (number > 0 && name == std::to_string(number)) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

/// A folder that nobody else knows.
fs::path makeTemporary(const fs::path& place) {
    std::string name = (place / "tarnwick-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw fs::filesystem_error("cannot make a folder in", place,
                                   std::error_code(errno, std::generic_category()));
    }
    return name;
}

} // namespace

PlayFolder PlayFolder::make(const UserFolders& folders,
                            const std::function<void(const fs::path&)>& fill,
                            std::ostream& messages) {
    std::vector<fs::path> places;
    for (const fs::path& place : {folders.state, folders.runtime}) {
        if (!place.empty()) {
            places.push_back(place / "run");
        }
    }
    std::string reasons;
    for (std::size_t i = 0; i <= places.size(); ++i) {
        PlayFolder made;
        try {
            if (i < places.size()) {
                fs::create_directories(places[i]);
                tidy(places[i], folders, messages);
                made = claim(places[i]);
            } else {
                made.folder = makeTemporary(folders.temporary);
            }
            fill(made.folder);
        } catch (const fs::filesystem_error& reason) {
            reasons += "\n  " + reason.path1().string() + ": " + reason.code().message();
            std::error_code ignored;
            fs::remove_all(made.folder, ignored);
            continue;
        } catch (...) {
            std::error_code ignored;
            fs::remove_all(made.folder, ignored);
            throw;
        }
        if (!reasons.empty()) {
            messages << "tarnwick: what you do now may not be kept, for nothing can be written:" << reasons
                     << '\n';
        }
        return made;
    }
    throw std::runtime_error("there is no place for the running game:" + reasons);
}

void PlayFolder::finish(const UserFolders& folders, std::ostream& messages) {
    if (keepFiles(folder, number, folders, messages)) {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
}

bool PlayFolder::isAlone() const {
    for (const int other : numbersIn(folder.parent_path())) {
        if (other != number &&
            !FileLock::take(lockFileOf(folder.parent_path() / std::to_string(other))).isHeld()) {
            return false;
        }
    }
    return true;
}

/// The free folder with the lowest number, empty.
PlayFolder PlayFolder::claim(const fs::path& place) {
    PlayFolder claimed;
    for (int number = 1; number <= mostGames; ++number) {
        const fs::path folder = place / std::to_string(number);
        FileLock lock = FileLock::take(lockFileOf(folder));
        if (!lock.isHeld() || fs::exists(folder)) { // one that is there holds what could not be kept yet
            continue;
        }
        claimed.lock = std::move(lock);
        claimed.folder = folder;
        claimed.number = number;
        fs::create_directory(folder);
        return claimed;
    }
    throw fs::filesystem_error("all play folders are taken", place,
                               std::make_error_code(std::errc::device_or_resource_busy));
}

/// Keeps and removes the folders of games that are gone.
void PlayFolder::tidy(const fs::path& place, const UserFolders& folders, std::ostream& messages) {
    for (const int number : numbersIn(place)) {
        PlayFolder left;
        left.folder = place / std::to_string(number);
        left.lock = FileLock::take(lockFileOf(left.folder));
        left.number = number;
        if (left.lock.isHeld()) {
            left.finish(folders, messages);
        }
    }
}

} // namespace tarnwick
