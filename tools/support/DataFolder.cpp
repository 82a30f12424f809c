#include "tools/support/DataFolder.h"

namespace tarnwick {

std::filesystem::path dataFolderBesideProgram() {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    while (folder.has_relative_path()) {
        if (fs::is_directory(folder / "data" / "cfg", error)) { // a folder that is missing sets the error too
            return folder / "data";
        }
        const fs::path installed = folder / "share" / "games" / "tarnwick";
        if (fs::is_directory(installed / "cfg", error)) {
            return installed;
        }
        folder = folder.parent_path();
    }
    return {};
}

} // namespace tarnwick
