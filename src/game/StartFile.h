#pragma once

#include <cstdint>
#include <string>

namespace tarnwick {

/// What `cfg\start.cfg` asks of a start: the first level, and a window in place of the full screen. The
/// launcher writes it for what a player asks of it. Without the file nothing changes and nothing is printed.
struct StartFile {
    /// The first level.
    std::string map = "maps\\testLevel.rivl";
    /// Pixels of the window's inside, up to `largestSide`; if one of them is 0, full screen.
    std::int32_t windowWidth = 0;
    std::int32_t windowHeight = 0;

    static constexpr std::int32_t largestSide = 16'384;

    bool asksForWindow() const { return windowWidth > 0 && windowHeight > 0; }

    /// Reads the file. What it leaves out, or says with a text that is no number, stays as above.
    static StartFile read();
};

} // namespace tarnwick
