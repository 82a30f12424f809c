#pragma once

#include "core/CommandRegistry.h"

#include <cstdint>
#include <string>

namespace tarnwick {

/// The commands that show and change what the window and the pictures are like. They are basic commands: the
/// program hands them to the console, which has them from its start to its end.
class GraphicsCommands {
public:
    GraphicsCommands() = delete;

    static CommandTable table();

private:
    static const CommandRow commands[];
    static bool conCmdFullscreen(bool value, bool set);
    static void conCmdRenderer();
    static void conCmdTextureList();
    static void conCmdTextureMemory();
    static void conCmdTextureReload();
    static void conCmdExtensions();
    static void conCmdIsExtension(const std::string& name);
    static std::int32_t conCmdAnisotropicFilteringLevel(std::int32_t value, bool set);
    static bool conCmdVsyncEnable(bool value, bool set);
    static std::int32_t conCmdTextureQuality(std::int32_t value, bool set);
};

} // namespace tarnwick
