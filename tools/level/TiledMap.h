#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tarnwick {

/// A place on the map in Tiled's pixels, which are world units; y points down.
struct TiledPoint {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const TiledPoint&, const TiledPoint&) = default;
};

struct TiledProperty {
    std::string name;
    std::variant<bool, std::int64_t, double, std::string> value;
};

enum class TiledShape { rectangle, polygon, polyline, point, ellipse, text, tile };

/// One object of an object layer, whatever it is meant to be.
struct TiledObject {
    std::int64_t number = 0; ///< Tiled's own number, which no two objects of a map share.
    std::string name;        ///< Free text, often empty.
    std::string kind;        ///< The object's class; empty: none given.
    TiledShape shape = TiledShape::rectangle;

    /// Places on the map, the object's rotation and the offsets of its layers applied: the outline of a
    /// rectangle, a tile or the box around an ellipse (four corners, clockwise as seen from the top left one)
    /// or a polygon, the run of a polyline; for every other shape the one place where the object stands.
    std::vector<TiledPoint> points;
    bool flippedSideways = false;          ///< Of a tile: left and right are swapped.
    bool flippedOtherwise = false;         ///< Of a tile: upside down, or rows and columns swapped.
    std::vector<TiledProperty> properties; ///< In file order.

    /// Number and name, for messages: object 12 "bowl".
    std::string label() const;
};

/// One object layer. Groups of layers are taken apart; their offsets are in the places of the objects.
struct TiledLayer {
    std::string name;
    std::string kind; ///< The layer's class; empty: none given.
    std::vector<TiledProperty> properties;
    std::vector<TiledObject> objects; ///< In file order, which is the order of the list in Tiled.
};

/// What a level needs of a Tiled map: its object layers, the lowest first.
struct TiledMap {
    std::vector<TiledLayer> layers;
    std::vector<std::string> warnings; ///< One line each: what of the map is left out.
    bool ordersPictures = true;        ///< Off: every polygon stays on its layer, and none is put in front.

    /// Reads the text of a map in Tiled's JSON format (1.8 to 1.10, `*.tmj`). Throws `ToolError` for anything
    /// that is not such a map: text that is not JSON, members of a wrong type, projections other than
    /// orthogonal, templates. Image layers are left out, they are for tracing; tile layers are left out with
    /// a warning.
    static TiledMap read(std::string_view text);
};

} // namespace tarnwick
