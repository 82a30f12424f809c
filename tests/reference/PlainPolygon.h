#pragma once

#include "core/Vector2.h"

#include <cstdint>
#include <list>
#include <vector>

namespace tarnwick {

/// The triangulation of an outline, word for word and slow: what `Polygon2D` has to equal to the last bit.
class PlainPolygon {
public:
    struct Edge {
        Vector2 start;
        Vector2 end;
    };

    bool counterClockwise = true;
    std::uint32_t triangleCount = 0;
    std::vector<float> pointsX;
    std::vector<float> pointsY;
    std::vector<float> trianglesX;
    std::vector<float> trianglesY;
    std::vector<float> normalsX;
    std::vector<float> normalsY;

    void addPoint(float x, float y);
    void triangulate(bool winding);
    void expand(float distance);

private:
    bool isDegenerate() const;
    static void removeColinearEdges(std::list<Edge>& edges);
    static bool edgeCrossesEdges(const Edge& edge, const std::list<Edge>& edges);
    bool edgeCrossesPolygonEdges(Vector2 start, Vector2 end) const;
    static bool triangleCoversPolyPoint(const float* triangle, const std::list<Edge>& edges);
    static bool isEar(const Edge& e1, const Edge& e2, const std::list<Edge>& reference, bool winding);
    bool cutOneEar(std::list<Edge>& working, const std::list<Edge>& reference, bool winding);
    void calculateNormals();
    void clearTriangles();
};

} // namespace tarnwick
