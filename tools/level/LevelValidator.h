#pragma once

#include "tools/level/PictureOrder.h"

#include <functional>
#include <string>
#include <vector>

namespace tarnwick {

struct LevelFile;

/// Whether a file of this name exists, wherever the game would look for it.
using FileTest = std::function<bool(const std::string& name)>;

/// What a level maker would want to know of a level that can be read: polygons that the game silently leaves
/// out or takes minutes to load, repeated points, sides too short to stand on, sides that two walls share in
/// one direction, overlaps of which the level loaded before tells what is on top, polygons without picture,
/// water that starts in a wall, ids that lead nowhere or to the wrong kind of thing, triggers of unknown
/// type, numbers that are not finite, movers of no length or of absurd speed, moving polygons that run the
/// wrong way round, a level that cannot end. One line a finding; polygons, movers and triggers are counted
/// from 0 in file order. Empty: nothing was found.
///
/// `fileExists` null: whether pictures, sounds and settings exist is not looked at. `sizeOf` null: whether
/// objects overlap is not.
std::vector<std::string>
validateLevel(const LevelFile& level, const FileTest& fileExists, const PictureSize& sizeOf = PictureSize());

} // namespace tarnwick
