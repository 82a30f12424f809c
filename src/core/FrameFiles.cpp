#include "core/FrameFiles.h"

#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "core/Strings.h"

namespace tarnwick {

namespace {

constexpr const char* frameMark = "_FRAME"; ///< In an upper-cased name: one of the frames of an animation.

} // namespace

std::vector<std::string> FrameFiles::find(std::string name) {
    TARNWICK_LOCATION("FrameFiles::find");
    slStringUpper(name);
    const std::size_t mark = name.rfind(frameMark);
    if (mark == std::string::npos) {
        return {name};
    }
    const std::size_t ending = name.rfind('.');
    const std::string pattern = name.substr(0, mark) + frameMark + "*" +
                                (ending != std::string::npos ? name.substr(ending) : std::string());
    const std::string folder = pattern.substr(0, pattern.rfind('\\') + 1); // npos + 1 is 0: no folder
    std::vector<std::string> names = DataFiles::list(pattern);
    for (std::string& file : names) {
        file.insert(0, folder);
    }
    return names;
}

} // namespace tarnwick
