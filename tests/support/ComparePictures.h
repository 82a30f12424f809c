#pragma once

#include "graphics/FramePicture.h"

#include <filesystem>

namespace tarnwick {

/// Colours that differ by more than this in a channel are different; what drivers round lies far below.
constexpr int colourTolerance = 32;
/// Share of the pixels that may be different: drivers place the edges of lines and triangles differently.
constexpr double differentShare = 0.01;

/// Share of the pixels of which a channel differs by more than `tolerance`, 1 for pictures of different
/// sizes.
double differenceOf(const FramePicture& a, const FramePicture& b, int tolerance = colourTolerance);

/// Compares a picture with the one in the file, or writes that when `TARNWICK_RENEW_PICTURES` is set. The
/// test fails when they differ, and tells where it left what was drawn.
void expectPictureAsFile(const FramePicture& drawn, const std::filesystem::path& file);

} // namespace tarnwick
