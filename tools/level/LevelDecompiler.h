#pragma once

#include "tools/level/PictureOrder.h"

#include <string>

namespace tarnwick {

struct LevelFile;

/// The text of a Tiled map from which `compileLevel` makes exactly these records again. Polygons and objects
/// lie in object layers of their drawing layer in file order, what moves, sounds and reacts in layers of its
/// own. Nothing is dressed: the finish that a polygon once got stands there as the seen-only polygons that it
/// is, named after its pictures. Where the compiler would order the pictures in another way, the map tells it
/// not to.
///
/// Objects become tiles of a tile set that lies in the map, which shows `pictureFolder` (a relative path that
/// ends in "/", of the data folder) and takes sizes from `pictureSize`; null, or a picture that is not found:
/// 32 by 32. Throws `ToolError` with the record's number for a name that is not UTF-8, which no map can hold.
std::string
decompileLevel(const LevelFile& level, const std::string& pictureFolder, const PictureSize& pictureSize);

} // namespace tarnwick
