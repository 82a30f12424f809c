#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tarnwick {

struct LevelFile;

/// Whether a file of this name exists, wherever the game would look for it.
using FileTest = std::function<bool(const std::string& name)>;

/// What a level maker would want to know of a level that can be read: polygons that the game silently leaves
/// out, repeated points, sides too short to stand on, polygons without picture, water that starts in a wall,
/// ids that lead nowhere, triggers of unknown type, movers of no length, moving polygons that run the wrong
/// way round. One line a finding; polygons, movers and triggers are counted from 0 in file order. Empty:
/// nothing was found.
///
/// `fileExists` null: whether pictures, sounds and settings exist is not looked at.
std::vector<std::string> validateLevel(const LevelFile& level, const FileTest& fileExists);

} // namespace tarnwick
