#include "game/StartFile.h"

#include "core/ConfigFile.h"
#include "core/DataFiles.h"
#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr const char* fileName = "cfg\\start.cfg";

} // namespace

StartFile StartFile::read() {
    TARNWICK_LOCATION("StartFile::read");
    StartFile start;
    if (!DataFiles::open(fileName).is_open()) { // asked first: the reader would print that there is none
        return start;
    }
    const ConfigFile config(fileName);
    if (config.variableExists("map")) {
        start.map = config.getVarAsString("map");
    }
    start.windowWidth = std::clamp(config.getVarAsInt("windowWidth"), 0, largestSide);
    start.windowHeight = std::clamp(config.getVarAsInt("windowHeight"), 0, largestSide);
    return start;
}

} // namespace tarnwick
