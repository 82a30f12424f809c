#pragma once

#include "level/LevelFile.h"

#include <vector>

namespace tarnwick {

/// Gives dressed polygons the finish that makes them look cut from something thick, since the game draws no
/// edges: a dark outline round them, strips along the edges that face the light (from the top left) or face
/// away, and inside of near stone three nested bands that darken towards the edge. `dressed` has one entry a
/// polygon; what is not seen gets no finish.
///
/// The finish is polygons that are seen only, behind all others of the list: first all bands, then all
/// outlines, then all strips. By the order of pictures (`PictureOrder.h`) the finish lies on the tiles,
/// strips on outlines on bands. It carries the id of its polygon, and moves and goes with it.
///
/// Where polygons of one id and layer meet under one picture, or one of a later picture covers an edge, the
/// edge gets nothing: it is not to be seen. Edges on the border of the level get nothing either.
void addFinish(std::vector<LevelFile::PolygonRecord>& polygons, const std::vector<bool>& dressed);

} // namespace tarnwick
