#include "graphics/ReadColour.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"

namespace tarnwick {

Colour readColour(const ConfigFile& config, const std::string& name) {
    TARNWICK_LOCATION("readColour");
    return {config.getVarAsFloat(name + "_r"), config.getVarAsFloat(name + "_g"),
            config.getVarAsFloat(name + "_b"), config.getVarAsFloat(name + "_a")};
}

} // namespace tarnwick
