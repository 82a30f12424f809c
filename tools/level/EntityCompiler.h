#pragma once

#include <string>
#include <vector>

namespace tarnwick {

struct LevelFile;
struct TiledObject;

/// Adds the record of an object of class mover, trigger, force, emitter or sound to the level's section.
/// Gives false and changes nothing for an object of any other class. What a level file cannot hold is refused
/// with the object's number and name; what was changed or left out goes to `warnings`.
bool compileEntity(const TiledObject& object, LevelFile& level, std::vector<std::string>& warnings);

} // namespace tarnwick
