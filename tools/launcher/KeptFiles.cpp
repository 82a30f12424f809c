#include "tools/launcher/KeptFiles.h"

#include "tools/launcher/PlayFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <ostream>
#include <string>
#include <system_error>
#include <vector>

namespace tarnwick {

namespace fs = std::filesystem;

namespace {

/// What is written reaches the disk before the name does; after a power cut the old file or the new one is
/// there.
void flushToDisk(const fs::path& file) {
    const int opened = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (opened >= 0) {
        fsync(opened);
        close(opened);
    }
}

/// Throws `fs::filesystem_error` and leaves `file` if it cannot be moved. `number` is the game's: two that
/// end at once may keep files of one name.
void moveFile(const fs::path& file, const fs::path& place, int number) {
    fs::create_directories(place.parent_path());
    const fs::path beside = place.string() + ".new-" + std::to_string(number);
    try {
        fs::copy_file(file, beside,
                      fs::copy_options::overwrite_existing); // `run` may lie on another file system
        flushToDisk(beside);
        fs::rename(beside, place);
    } catch (const fs::filesystem_error&) {
        std::error_code ignored;
        fs::remove(beside, ignored);
        throw;
    }
    std::error_code ignored;
    fs::remove(file, ignored);
}

std::string numbered(const fs::path& name, int number) {
    return number < 2 ? name.string()
                      : name.stem().string() + '-' + std::to_string(number) + name.extension().string();
}

/// Where a file of the play folder belongs; empty if it is not the game's. `name` is its path in the play
/// folder.
fs::path placeOf(const fs::path& name, int number, const UserFolders& folders) {
    if (!name.has_parent_path()) {
        return folders.state.empty() ? fs::path() : folders.state / numbered(name, number);
    }
    const std::string top = name.begin()->string();
    if (top == "packs") {
        return {};
    }
    if (top == "cfg") {
        const fs::path inside = name.lexically_relative("cfg");
        return inside == startFileName || folders.config.empty() ? fs::path() : folders.config / inside;
    }
    const fs::path& owner = top == "sav" ? folders.state : folders.data;
    return owner.empty() ? fs::path() : owner / name;
}

/// Paths, in `folder`, of the files in it and in folders below; links are neither.
std::vector<fs::path> filesIn(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, error);
    while (!error && entry != fs::recursive_directory_iterator()) {
        if (entry->symlink_status(error).type() == fs::file_type::regular) {
            files.push_back(entry->path().lexically_relative(folder));
        }
        entry.increment(error);
    }
    return files;
}

} // namespace

bool keepFiles(const fs::path& folder, int number, const UserFolders& folders, std::ostream& messages) {
    bool kept = true;
    for (const fs::path& name : filesIn(folder)) {
        const fs::path place = placeOf(name, number, folders);
        if (place.empty()) {
            continue;
        }
        try {
            moveFile(folder / name, place, number);
        } catch (const fs::filesystem_error& reason) {
            messages << "tarnwick: cannot keep " << place.string() << ": " << reason.code().message() << '\n';
            kept = false;
        }
    }
    return kept;
}

} // namespace tarnwick
