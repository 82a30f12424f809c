#pragma once

#include "level/Polygon2D.h"
#include "tools/level/PictureOrder.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <vector>

namespace tarnwick {

struct LevelFile;

// The parts of `validateLevel` that stand in files of their own. `polygons` are those of the level, as
// `buildPolygons` makes them; what is found is put behind `findings`.

using Findings = std::vector<std::string>;

/// A line about a polygon, which is told by its number and its first point.
std::string aboutPolygon(const LevelFile& level, std::size_t number, const std::string& text);
/// A side of a polygon by its number, from this point to the next, the last one back to point 0.
Polygon2D::Edge sideOf(const Polygon2D& polygon, std::uint32_t side);

/// Ids that lead nowhere or to what the trigger does not understand, unknown types, numbers that are not
/// finite, movers that carry nothing or everything, do not move or move absurdly fast, a level without an
/// end.
void validateActors(const LevelFile& level, Findings& findings);

/// Long slanted sides of two solid polygons that are one and the same in one direction, and polygons of
/// which all sides are those of another.
void validateEqualSides(const LevelFile& level, const std::list<Polygon2D>& polygons, Findings& findings);

/// Sides that overlap so far out that the game cannot cut them apart.
void validateCuts(std::list<Polygon2D>& polygons, Findings& findings);

/// Polygons of different pictures, and objects where `sizeOf` is not null, that overlap on a layer so that
/// only the level loaded before tells which is on top. One line each; one for all that a list of pictures
/// would hold.
void validatePictureOrder(const LevelFile& level,
                          const std::list<Polygon2D>& polygons,
                          const PictureSize& sizeOf,
                          Findings& findings);

} // namespace tarnwick
