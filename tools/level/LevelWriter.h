#pragma once

#include <string>

namespace tarnwick {

struct LevelFile;

/// The bytes of a level file with these records, every section; `LevelFile::read` gives the records back. The
/// fields are written as they stand, a surface or layer that no reader accepts too: whoever fills the records
/// sees to it that they can be read. Equal records give equal bytes on every machine.
std::string writeLevel(const LevelFile& level);

} // namespace tarnwick
