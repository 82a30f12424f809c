#include "tools/sim/DataFolder.h"

namespace tarnwick {

std::filesystem::path dataFolderBesideProgram() {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    while (!error && folder.has_relative_path()) {
        if (fs::is_directory(folder / "data" / "cfg", error)) {
            return folder / "data";
        }
        folder = folder.parent_path();
    }
    return {};
}

} // namespace tarnwick
