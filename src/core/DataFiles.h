#pragma once

#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace tarnwick {

/// Finds the file that a name in a data file means. Such names come from a world of back-slashes and of disks
/// that do not tell upper from lower case: "gfx\\Stone.TGA" is `gfx/stone.tga`, "cfg//console.cfg" is
/// `cfg/console.cfg`. Every module that opens or lists files asks here.
///
/// Relative names start in the working directory. An absolute name, one that starts with a slash, is taken as
/// it stands. Not locked: the splash's thread asks only while the main thread waits for it.
class DataFiles {
public:
    DataFiles() = delete;

    /// The path to open. Back-slashes and repeated slashes become single slashes. Then each folder and the
    /// name itself is matched exactly if it can be, and else without regard to the case of ASCII letters; of
    /// several matches the smallest byte by byte is taken. If nothing matches, the result is the name with
    /// its slashes put right, so that the caller's open fails or creates that file.
    ///
    /// Matches that needed a search of folders are kept until the file vanishes; misses are not, so a file
    /// created later is found.
    static std::string find(const std::string& name);

    /// The file that `name` means, opened for reading in binary mode. Not open if there is none, or if it is
    /// a folder, a device or a pipe, which could not be read to an end.
    static std::ifstream open(const std::string& name);

    /// The names, without their folder, of the files in the folder of `pattern` that match its last
    /// component. `*` stands for any run of characters, also for none; ASCII case does not count. Sorted by
    /// name without regard to case, equal ones byte by byte: frames of an animation come in sequence. Empty
    /// if the folder is missing.
    static std::vector<std::string> list(const std::string& pattern);

    /// Drops what was kept.
    static void forget();

private:
    friend class ModuleReset;

    struct State {
        std::map<std::string, std::string> found; ///< Name with its slashes put right, to path.
    };
    static State state;

    static std::string search(const std::string& name);
};

} // namespace tarnwick
