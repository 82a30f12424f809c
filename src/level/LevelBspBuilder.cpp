#include "level/LevelBspBuilder.h"

#include "core/BoxRow.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/LongWork.h"
#include "level/LevelBspPartition.h"
#include "level/Polygon2D.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace tarnwick {

namespace {

constexpr float shortestEdge = 0.01f; ///< World units: an edge must be longer to be kept.
constexpr float nearDistance = 0.01f; ///< World units: ends nearer than this on each axis coincide, and ends
                                      ///< nearer than this to a line lie on it.
constexpr float overlapMargin = 0.0001f; ///< World units.
constexpr float cutMargin = 0.01f; ///< World units: nearer to the end of an edge than this nothing is cut.
constexpr float sameDirection = 0.9999f; ///< Dot product of unit directions above which they are the same.

/// How often edges are cut at most. Sides that overlap are cut less than twice for each pair of sides; beyond
/// 65,536 units rounding can make pieces come back in a circle, which ends here.
std::uint64_t mostCuts(std::uint64_t edgeCount) {
    TARNWICK_LOCATION("LevelBspBuilder::mostCuts");
    constexpr std::uint64_t alwaysAllowed = 1'000;
    constexpr std::uint64_t bearable = 1'000'000; // what memory and a maker's patience hold
    return std::min(4 * edgeCount * edgeCount + alwaysAllowed, 64 * edgeCount + bearable);
}

enum class Use { none, solid, caulk };

Use useOf(const Polygon2D& polygon) {
    TARNWICK_LOCATION("LevelBspBuilder::useOf");
    if (polygon.triangleCount == 0 || polygon.pointsX.size() < 2) {
        return Use::none;
    }
    if (!polygon.collideable && !polygon.drawable) {
        return Use::caulk;
    }
    return polygon.collideable && !polygon.moveable ? Use::solid : Use::none;
}

/// Adds an edge of `polygon` unless it is too short.
void addEdge(std::vector<LevelBspNode>& edges, Polygon2D& polygon, Vector2 start, Vector2 end, Use use) {
    TARNWICK_LOCATION("LevelBspBuilder::addEdge");
    LevelBspNode edge;
    edge.start = start;
    edge.end = end;
    edge.length = distanceBetween(start, end);
    if (edge.length <= shortestEdge) {
        return;
    }
    edge.direction = end - start;
    normaliseVector(edge.direction);
    edge.normal = {-edge.direction.y, edge.direction.x};
    edge.friction = polygon.frictionLevel;
    edge.polygon = &polygon;
    edge.caulk = use == Use::caulk;
    edges.push_back(edge);
}

bool coincide(Vector2 a, Vector2 b) {
    TARNWICK_LOCATION("LevelBspBuilder::coincide");

    return std::abs(a.x - b.x) < nearDistance && std::abs(a.y - b.y) < nearDistance;
}

bool overlaps(float position, float length) {
    TARNWICK_LOCATION("LevelBspBuilder::overlaps");

    return position >= overlapMargin && position < length - overlapMargin;
}

bool liesInside(float position, float length) {
    TARNWICK_LOCATION("LevelBspBuilder::liesInside");

    return position > cutMargin && position < length - cutMargin;
}

/// A stretch of an edge.
struct Piece {
    const LevelBspNode* parent = nullptr;
    Vector2 start;
    Vector2 end;

    bool isWhole(const LevelBspNode& edge) const {
        TARNWICK_LOCATION("Piece::isWhole");
        return start == edge.start && end == edge.end; // exactly
    }
};

/// What two edges in one line leave of each other, taken as opposite in direction.
struct Cut {
    std::array<Piece, 4> pieces; ///< Those of the second edge first.
    std::size_t count = 0;

    Cut(const LevelBspNode& e1, const LevelBspNode& e2) {
        TARNWICK_LOCATION("Cut::Cut");
        if (liesInside(dotProduct(e1.start - e2.start, e2.direction), e2.length)) {
            pieces[count++] = {&e2, e1.start, e2.end};
        }
        if (liesInside(dotProduct(e1.end - e2.start, e2.direction), e2.length)) {
            pieces[count++] = {&e2, e2.start, e1.end};
        }
        if (liesInside(dotProduct(e2.start - e1.start, e1.direction), e1.length)) {
            pieces[count++] = {&e1, e2.start, e1.end};
        }
        if (liesInside(dotProduct(e2.end - e1.start, e1.direction), e1.length)) {
            pieces[count++] = {&e1, e1.start, e2.end};
        }
    }

    /// Whether the two pieces are the two edges again.
    bool givesBothAgain() const {
        TARNWICK_LOCATION("Cut::givesBothAgain");
        return count == 2 && pieces[0].parent != pieces[1].parent && pieces[0].isWhole(*pieces[0].parent) &&
               pieces[1].isWhole(*pieces[1].parent);
    }
};

/// The pass of `optimiseInitialNodeList` over its list.
///
/// Something happens to a pair only if the second edge starts where the first ends, or if it lies in the
/// first one's line with both ends. The boxes of blocks of edges that lie near one another tell where neither
/// can be the case. What is left is looked at in no particular order, and of the edges to which something
/// happens the first in the list is taken.
class EdgeMerger {
public:
    /// Which pairs of edges that overlap are cut.
    enum class Cuts { all, unlessBothComeBack, none };

    EdgeMerger(std::vector<LevelBspNode>& edgeList, Cuts which)
        : edges(edgeList)
        , deleted(edgeList.size(), false)
        , cuts(which)
        , cutsLeft(mostCuts(edgeList.size())) {
        TARNWICK_LOCATION("EdgeMerger::EdgeMerger");
        std::vector<Box> boxes;
        boxes.reserve(edges.size());
        for (const LevelBspNode& edge : edges) {
            boxes.push_back(Box::around(edge.start, edge.end));
        }
        edgeAt = orderInPlane(boxes);
        slotOf.resize(edges.size());
        for (std::uint32_t slot = 0; slot < edgeAt.size(); ++slot) {
            slotOf[edgeAt[slot]] = slot;
            row.append(boxes[edgeAt[slot]]);
        }
    }

    /// False when the cuts ran out.
    bool run() {
        TARNWICK_LOCATION("EdgeMerger::run");
        // Pieces make the list grow meanwhile.
        for (std::size_t first = 0; first < edges.size() && LongWork::goesOn(); ++first) {
            if (!deleted[first] && !edges[first].polygon->destructable) {
                treatPairsOf(first);
            }
        }
        std::size_t kept = 0;
        for (std::size_t i = 0; i < edges.size(); ++i) {
            if (!deleted[i]) {
                edges[kept++] = edges[i];
            }
        }
        edges.resize(kept);
        return cutsLeft > 0;
    }

private:
    enum class Outcome { nothing, bothVanish, secondContinuesFirst, bothAreCut };

    std::vector<LevelBspNode>& edges;
    std::vector<bool> deleted; ///< Those that are deleted keep their place until the end.
    BoxRow row;                ///< The edges, with at least the room they take up now, by place in the plane.
    std::vector<std::uint32_t> edgeAt; ///< For each slot of the row, its edge.
    std::vector<std::uint32_t> slotOf; ///< For each edge, its slot.
    Cuts cuts = Cuts::all;
    std::uint64_t cutsLeft = 0;

    /// Does to an edge what its pair with the first edge behind it asks for that asks for anything; that
    /// always ends the edge.
    void treatPairsOf(std::size_t first) {
        TARNWICK_LOCATION("EdgeMerger::treatPairsOf");
        const LevelBspNode& e1 = edges[first];
        // The values tested below, rounding included, only grow or only fall along either axis: a box holds
        // no value beyond those of two of its corners.
        const bool rightUp = e1.normal.x >= 0.0f;
        const bool frontUp = e1.normal.y >= 0.0f;
        const auto mayMatter = [&](const Box& box, std::size_t) {
            const Vector2 low{rightUp ? box.minX : box.maxX, frontUp ? box.minY : box.maxY};
            const Vector2 high{rightUp ? box.maxX : box.minX, frontUp ? box.maxY : box.minY};
            if (!(dotProduct(low - e1.start, e1.normal) >= nearDistance ||
                  dotProduct(high - e1.start, e1.normal) <= -nearDistance)) {
                return true;
            }
            return !(e1.end.x - box.maxX >= nearDistance || e1.end.x - box.minX <= -nearDistance ||
                     e1.end.y - box.maxY >= nearDistance || e1.end.y - box.minY <= -nearDistance);
        };
        std::size_t second = edges.size();
        for (std::size_t slot = row.next(0, mayMatter); slot < row.size();
             slot = row.next(slot + 1, mayMatter)) {
            const std::size_t other = edgeAt[slot];
            if (other > first && other < second && !deleted[other] && !edges[other].polygon->destructable &&
                outcomeOf(e1, edges[other]) != Outcome::nothing) {
                second = other;
            }
        }
        if (second < edges.size()) {
            treatPair(first, second);
        }
    }

    Outcome outcomeOf(const LevelBspNode& e1, const LevelBspNode& e2) const {
        TARNWICK_LOCATION("EdgeMerger::outcomeOf");
        if (coincide(e1.end, e2.start)) {
            if (coincide(e1.start, e2.end)) {
                return Outcome::bothVanish;
            }
            if (dotProduct(e1.direction, e2.direction) > sameDirection) {
                return Outcome::secondContinuesFirst;
            }
        }
        const bool inLine = std::abs(dotProduct(e2.start - e1.start, e1.normal)) < nearDistance &&
                            std::abs(dotProduct(e2.end - e1.start, e1.normal)) < nearDistance;
        // An edge longer than 65,536 units may, by rounding, hold its own end inside its twin: cut at it,
        // both come back as they were.
        const bool isCut = inLine && cuts != Cuts::none && cutsLeft > 0 && shareStretch(e1, e2) &&
                           !(cuts == Cuts::unlessBothComeBack && Cut(e1, e2).givesBothAgain());
        return isCut ? Outcome::bothAreCut : Outcome::nothing;
    }

    /// Whether two edges that lie in one line overlap there.
    static bool shareStretch(const LevelBspNode& e1, const LevelBspNode& e2) {
        TARNWICK_LOCATION("EdgeMerger::shareStretch");
        return overlaps(dotProduct(e1.start - e2.start, e2.direction), e2.length) ||
               overlaps(dotProduct(e1.end - e2.start, e2.direction), e2.length) ||
               overlaps(dotProduct(e2.start - e1.start, e1.direction), e1.length) ||
               overlaps(dotProduct(e2.end - e1.start, e1.direction), e1.length);
    }

    void treatPair(std::size_t first, std::size_t second) {
        TARNWICK_LOCATION("EdgeMerger::treatPair");
        const LevelBspNode e1 = edges[first];
        LevelBspNode& e2 = edges[second];
        deleted[first] = true;
        switch (outcomeOf(e1, e2)) {
        case Outcome::secondContinuesFirst:
            e2.start = e1.start;
            e2.length += e1.length;
            row.grow(slotOf[second], Box::around(e2.start, e2.end));
            break;
        case Outcome::bothAreCut:
            deleted[second] = true;
            --cutsLeft;
            cutOverlap(e1, LevelBspNode(e2));
            break;
        default:
            deleted[second] = true;
            break;
        }
    }

    /// Puts in the place of two edges in one line what the other leaves of each.
    void cutOverlap(const LevelBspNode& e1, const LevelBspNode& e2) {
        TARNWICK_LOCATION("EdgeMerger::cutOverlap");
        const Cut cut(e1, e2);
        for (std::size_t i = 0; i < cut.count; ++i) {
            const Piece& piece = cut.pieces[i];
            addPiece(*piece.parent, piece.start, piece.end);
        }
    }

    void addPiece(const LevelBspNode& parent, Vector2 start, Vector2 end) {
        TARNWICK_LOCATION("EdgeMerger::addPiece");
        LevelBspNode piece = parent;
        piece.start = start;
        piece.end = end;
        piece.length = distanceBetween(start, end);
        slotOf.push_back(static_cast<std::uint32_t>(row.size()));
        edgeAt.push_back(static_cast<std::uint32_t>(edges.size()));
        edges.push_back(piece);
        deleted.push_back(false);
        row.append(Box::around(start, end));
    }
};

} // namespace

std::vector<LevelBspNode> LevelBspBuilder::buildInitialNodeList(std::list<Polygon2D>& polygons) {
    TARNWICK_LOCATION("LevelBspBuilder::buildInitialNodeList");
    std::vector<LevelBspNode> edges;
    for (Polygon2D& polygon : polygons) {
        const Use use = useOf(polygon);
        if (use == Use::none) {
            continue;
        }
        for (std::size_t i = 0; i < polygon.pointsX.size(); ++i) {
            const std::size_t next = i + 1 == polygon.pointsX.size() ? 0 : i + 1;
            const Vector2 point{polygon.pointsX[i], polygon.pointsY[i]};
            const Vector2 following{polygon.pointsX[next], polygon.pointsY[next]};
            if (polygon.counterClockwise) {
                addEdge(edges, polygon, point, following, use);
            } else {
                addEdge(edges, polygon, following, point, use);
            }
        }
    }
    std::reverse(edges.begin(), edges.end());
    return edges;
}

bool LevelBspBuilder::optimiseInitialNodeList(std::vector<LevelBspNode>& edges) {
    TARNWICK_LOCATION("LevelBspBuilder::optimiseInitialNodeList");
    const std::vector<LevelBspNode> uncut = edges;
    if (EdgeMerger(edges, EdgeMerger::Cuts::all).run()) {
        return true;
    }
    edges = uncut;
    if (EdgeMerger(edges, EdgeMerger::Cuts::unlessBothComeBack).run()) {
        return true;
    }
    edges = uncut;
    EdgeMerger(edges, EdgeMerger::Cuts::none).run();
    return false;
}

void LevelBspBuilder::removeCaulkNodes(std::vector<LevelBspNode>& edges) {
    TARNWICK_LOCATION("LevelBspBuilder::removeCaulkNodes");
    std::erase_if(edges, [](const LevelBspNode& edge) { return edge.caulk; });
}

std::vector<LevelBspNode> LevelBspBuilder::buildTree(const std::vector<LevelBspNode>& edges) {
    TARNWICK_LOCATION("LevelBspBuilder::buildTree");
    return LevelBspPartition(edges).build();
}

} // namespace tarnwick
