#pragma once

#include "core/GLTexture.h"
#include "core/Vector2.h"

#include <compare>
#include <cstdint>
#include <span>
#include <vector>

namespace tarnwick {

/// Drawing layers, 0 the farthest; the particles are drawn after layer 1.
constexpr std::uint32_t layerCount = 5;

/// The one shape of a level: an outline, the triangles that it decomposes into and their normals, a friction
/// and a few flags.
///
/// Points are added and never removed; each accepted point triangulates the outline anew. A polygon is open
/// (fewer than three points, or an outline that crosses itself), failed (no way to cut it up) or
/// triangulated; only in the last case is `triangleCount` above 0, and only then is the polygon solid or
/// seen. Nothing is reported. The outline never moves: whoever carries a polygon changes its offset. Copies
/// are deep.
class Polygon2D {
public:
    /// One side, world units.
    struct Edge {
        Vector2 start;
        Vector2 end;
    };

    bool collideable = true;      ///< Takes part in collision.
    bool visible = true;          ///< Drawn at all; triggers switch it.
    bool drawable = true;         ///< The level gives it a picture.
    bool moveable = false;        ///< Some mover carries it.
    bool destructable = false;    ///< Some trigger removes or adds it.
    bool counterClockwise = true; ///< The winding with which the last triangulation ran.
    std::uint32_t triangleCount = 0;
    std::int32_t id = 0;        ///< Of the level file; not unique.
    float frictionLevel = 1.0f; ///< 0 to 1.
    float offsetX = 0.0f;       ///< World units; added when it is drawn and collided with.
    float offsetY = 0.0f;
    float previousOffsetX = 0.0f; ///< The offset before the last step.
    float previousOffsetY = 0.0f;
    GLTexture texture; ///< One pixel a unit, from the world's origin on; the default picture if it has none.
    std::vector<float> pointsX; ///< The outline, world units; always as long as `pointsY`.
    std::vector<float> pointsY;
    std::vector<float> trianglesX; ///< Three corners a triangle, `triangleCount` times 3.
    std::vector<float> trianglesY;
    std::vector<float>
        normalsX; ///< One unit normal (-dy, dx) a triangle side, as many as corners: corner 0 to 1,
    std::vector<float> normalsY; ///< 1 to 2, 2 to 0. (0, 0) for a side of no length.
    std::uint32_t layer = 0;     ///< Drawing depth, 0 to 4; without effect on collision.

    std::uint32_t pointCount() const { return static_cast<std::uint32_t>(pointsX.size()); }

    /// Appends a point and triangulates; does nothing when the outline holds exactly this point already.
    void addPoint(Vector2 point);
    void addPoint(float x, float y) { addPoint({x, y}); }
    /// The same as `addPoint` for each of `points` in turn, to the last bit of every field, but triangulates
    /// as seldom as that allows.
    void addPoints(std::span<const Vector2> points);

    /// Cuts the outline into triangles by ear clipping. `counterClockwise` is the winding tried; when that
    /// fails and it is true, the other winding is tried as well. An outline that crosses itself ends without
    /// triangles and with the field `counterClockwise` as it was.
    void triangulate(bool counterClockwiseFirst);
    /// Fewer than three points, or an outline that crosses itself. The closing side alone is not tested
    /// against the others, only they against it.
    bool isDegenerate() const;
    /// Merges sides that run on in one line, then looks at the joint between last and first side.
    static void removeColinearEdges(std::vector<Edge>& edges);
    /// Whether `edge` crosses one of `edges` or the side that closes them. Not for an empty list.
    static bool edgeCrossesEdges(const Edge& edge, const std::vector<Edge>& edges);
    /// Whether a segment crosses a side of the outline, the closing side included.
    bool edgeCrossesPolygonEdges(const Vector2& start, const Vector2& end) const;
    /// Whether a corner of the open chain `edges` lies in the triangle (three x, y pairs, counter-clockwise)
    /// or on its boundary without being one of its corners. False for null.
    static bool triangleCoversPolyPoint(const float* triangle, const std::vector<Edge>& edges);

    void calculateNormals();
    void clearNormals();
    /// The normals go with the triangles that they belong to.
    void clearTriangles();

    /// Moves every side outward by `distance` world units and triangulates again. Does nothing to a polygon
    /// without triangles.
    void expand(float distance);

    /// Clamps into 0 to 1.
    void setFrictionLevel(float friction);

    /// Debug drawing: the outline in white, where the level has it, without the offset.
    void drawOutline() const;
    /// Debug drawing: every triangle in red, where the polygon is now.
    void drawTrianglesOutline() const;

    /// Compare the GL names of the textures, so that polygons can be drawn texture by texture.
    friend bool operator==(const Polygon2D& a, const Polygon2D& b) { return a.texture == b.texture; }
    friend std::strong_ordering operator<=>(const Polygon2D& a, const Polygon2D& b) {
        return a.texture <=> b.texture;
    }

private:
    void cutUp(std::vector<Edge> chain, bool counterClockwiseFirst);
    bool clipEars(const std::vector<Edge>& chain);
};

} // namespace tarnwick
