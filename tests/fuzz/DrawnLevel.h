#pragma once

#include "level/LevelFile.h"

#include <string_view>

namespace tarnwick {

struct RunPosition;

/// Which numbers a drawn level holds.
enum class DrawnNumbers {
    any,     ///< Also those that are none or infinite, and polygons of no sense.
    sensible ///< What a map can hold, too.
};

/// A level of whatever the bytes say, one record after another, all kinds of them; zeros behind the bytes'
/// end. The same for the same bytes.
LevelFile drawLevel(std::string_view bytes, DrawnNumbers numbers);

/// Writes the level into `maps` and starts the game on it as at the program's start, in a window without any
/// GL, no menu up and the camera on the water. False if it is refused.
bool startDrawnLevel(const LevelFile& level);

/// One tick of the game, and what was asked for in it.
void playTick(RunPosition& position);

} // namespace tarnwick
