#pragma once

#include "level/LevelFile.h"

#include <string>
#include <vector>

namespace tarnwick {

struct TiledObject;

/// The object's places in whole units, halves away from zero. One line in `warnings` tells when a place was
/// not whole; one that a level file cannot hold is refused with the object's number and name.
std::vector<LevelFile::Point> wholePoints(const TiledObject& object, std::vector<std::string>& warnings);

} // namespace tarnwick
