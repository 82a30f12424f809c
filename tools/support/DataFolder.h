#pragma once

#include <filesystem>

namespace tarnwick {

/// The folder with `cfg`, `maps`, `gfx` and `snd` that belongs to the program: the nearest folder `data`
/// above the running executable, so that a build finds the data of its own source tree, or
/// `share/games/tarnwick` for an installed one. Empty if there is none.
std::filesystem::path dataFolderBesideProgram();

} // namespace tarnwick
