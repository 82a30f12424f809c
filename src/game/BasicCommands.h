#pragma once

#include "core/CommandRegistry.h"

#include <cstdint>
#include <string>

namespace tarnwick {

/// The console's basic commands that others than the console have: those of the window and the pictures, and
/// the two that need the game.
class BasicCommands {
public:
    BasicCommands() = delete;

    /// Hands them to the console. Comes before `GLConsole::initialise`, which registers them.
    static void handOver();

private:
    static const CommandRow commands[];
    static std::int32_t conCmdAntiAliasingSamples(std::int32_t value, bool set);
    static void conCmdMap(const std::string& levelFile);
};

} // namespace tarnwick
