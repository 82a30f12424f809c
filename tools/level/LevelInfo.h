#pragma once

#include <iosfwd>

namespace tarnwick {

struct LevelFile;

/// Prints what a level holds: counts of every section, points, triangles, bounding box, start points, size of
/// the tree, and the pictures with the number of polygons that show them, in the order of their first use.
void printLevelInfo(std::ostream& output, const LevelFile& level);

} // namespace tarnwick
