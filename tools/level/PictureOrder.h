#pragma once

#include "level/LevelFile.h"
#include "level/Polygon2D.h"

#include <array>
#include <cstddef>
#include <functional>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnwick {

/// Width and height of a picture in pixels; none when it cannot be found.
using PictureSize = std::function<std::optional<std::pair<int, int>>(const std::string& name)>;

/// The pictures that come with the game for walls, their finish and decoration, in the order in which they
/// are to lie on one another within a layer.
///
/// The game draws what lies on one layer by the number that a picture got when it was first loaded, and a
/// picture that the level before and the one after both show keeps its number. So a level that simply shows
/// its pictures would look different after each other level. A level that begins with the whole list, each
/// name on a polygon without points that is never seen, gives these pictures rising numbers when it is the
/// first, and finds them so when it follows another that does the same. Of any other picture nobody knows
/// whether it will lie over or under these and its like: where one overlaps another picture, only a layer of
/// its own tells which is on top.
///
/// New names go to the end: levels that were compiled before have the same beginning then.
constexpr std::array<std::string_view, 50> orderedPictures = {
    "gfx\\background.tga",
    "gfx\\sky_top.tga",
    "gfx\\valley_deep.tga",
    "gfx\\stone_far.tga",
    "gfx\\metal_far.tga",
    "gfx\\wood_far.tga",
    "gfx\\cloth_far.tga",
    "gfx\\sand_far.tga",
    "gfx\\stone.tga",
    "gfx\\sand.tga",
    "gfx\\wood.tga",
    "gfx\\metal.tga",
    "gfx\\cloth.tga",
    "gfx\\shade_10.tga",
    "gfx\\shade_6.tga",
    "gfx\\shade_3.tga",
    "gfx\\outline_far.tga",
    "gfx\\outline.tga",
    "gfx\\edge_far_light.tga",
    "gfx\\edge_far_light_soft.tga",
    "gfx\\edge_far_dark.tga",
    "gfx\\edge_stone_light.tga",
    "gfx\\edge_stone_light_soft.tga",
    "gfx\\edge_stone_dark.tga",
    "gfx\\edge_sand_light.tga",
    "gfx\\edge_sand_light_soft.tga",
    "gfx\\edge_sand_dark.tga",
    "gfx\\edge_wood_light.tga",
    "gfx\\edge_wood_light_soft.tga",
    "gfx\\edge_wood_dark.tga",
    "gfx\\edge_metal_light.tga",
    "gfx\\edge_metal_light_soft.tga",
    "gfx\\edge_metal_dark.tga",
    "gfx\\edge_cloth_light.tga",
    "gfx\\edge_cloth_light_soft.tga",
    "gfx\\edge_cloth_dark.tga",
    "gfx\\wheel_frame00.tga",
    "gfx\\wheel_frame01.tga",
    "gfx\\wheel_frame02.tga",
    "gfx\\wheel_frame03.tga",
    "gfx\\wheel_frame04.tga",
    "gfx\\wheel_frame05.tga",
    "gfx\\wheel_frame06.tga",
    "gfx\\wheel_frame07.tga",
    "gfx\\lantern.tga",
    "gfx\\lantern_glow.tga",
    "gfx\\grass_4.tga",
    "gfx\\grass_3.tga",
    "gfx\\grass_2.tga",
    "gfx\\grass_1.tga",
};

/// Place of a picture in `orderedPictures`, whatever its case; none for any other.
std::optional<std::size_t> placeInOrder(std::string_view picture);

/// Whether the level begins with the ordered pictures.
bool beginsWithOrder(const LevelFile& level);
/// Whether two or more of the ordered pictures are seen on one layer, so that the level wants their order.
bool wantsOrder(const LevelFile& level);
/// Puts the ordered pictures in front of all polygons, each on a polygon without points.
void putOrderInFront(LevelFile& level);
/// Takes them away again.
void takeOrderAway(LevelFile& level);

/// Ranks the pictures of a level as they are to lie on one another: by their first call among the polygons,
/// but ordered pictures change places among themselves until they stand as in the list.
class PictureRanks {
public:
    explicit PictureRanks(const std::vector<LevelFile::PolygonRecord>& polygons);
    /// Of a picture that one of the polygons shows.
    std::size_t of(const std::string& picture) const;

private:
    std::map<std::string, std::size_t> ranks;
};

/// Puts polygons on higher layers until nothing but their layers, and the list for ordered pictures, tells
/// what lies on top where seen polygons of different pictures overlap: what was to lie on top, by layer and
/// then by rank, does so. Calls `raised` for each that goes to another layer. One that would have to go above
/// the highest layer stays on it.
void orderByLayers(LevelFile& level,
                   const std::function<void(std::size_t polygon, std::size_t under)>& raised);

/// Two seen polygons, or two objects, by their places in the file.
struct Overlap {
    std::size_t first = 0;
    std::size_t second = 0; ///< The later one in the file.
};

/// For each seen polygon that overlaps an earlier one of another picture on its layer: the first such pair.
/// `polygons` are those of the level. Pairs of ordered pictures count only where `ofOrdered`, and then no
/// others.
std::vector<Overlap>
overlapsOnLayers(const LevelFile& level, const std::list<Polygon2D>& polygons, bool ofOrdered);
/// The same for the objects; one whose picture is not found is left out.
std::vector<Overlap> objectOverlaps(const LevelFile& level, const PictureSize& sizeOf, bool ofOrdered);

} // namespace tarnwick
