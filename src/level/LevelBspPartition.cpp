#include "level/LevelBspPartition.h"

#include "core/BoxRow.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/LongWork.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

namespace tarnwick {

namespace {

constexpr float shortestEdge = 0.01f; ///< World units: a piece must be longer to be kept.
/// World units: an end may lie this far on the other side of a splitter.
constexpr float splitterSlack = 0.1f;
constexpr float largestOrderly = 0x1p60f; ///< World units: up to here no product of two distances overflows.

Box boxOf(const LevelBspNode& edge) {
    TARNWICK_LOCATION("LevelBspPartition::boxOf");
    return Box::around(edge.start, edge.end);
}

bool isOrderly(const LevelBspNode& edge) {
    TARNWICK_LOCATION("LevelBspPartition::isOrderly");
    return std::abs(edge.start.x) <= largestOrderly && std::abs(edge.start.y) <= largestOrderly &&
           std::abs(edge.end.x) <= largestOrderly && std::abs(edge.end.y) <= largestOrderly;
}

/// Scores the candidates of one list of edges.
class CandidateScorer {
public:
    static constexpr std::int64_t dropped = std::numeric_limits<std::int64_t>::max();

    void add(const LevelBspNode& edge) {
        TARNWICK_LOCATION("CandidateScorer::add");
        segments.push_back({edge.start, edge.end});
        row.append(boxOf(edge));
        orderly = orderly && isOrderly(edge);
    }

    /// How evenly the line of `candidate`, one of the edges, divides the others, and how many it splits: the
    /// lower the better. `dropped` for a score above `limit`, which mostly shows early.
    std::int64_t score(const LevelBspNode& candidate, std::int64_t limit) const {
        TARNWICK_LOCATION("CandidateScorer::score");
        const Vector2 start = candidate.start;
        const Vector2 normal = candidate.normal;
        std::int64_t balance = 0;
        std::int64_t splits = 0;
        auto left = static_cast<std::int64_t>(segments.size()); // edges not counted yet
        const auto count = [&](const Segment& segment, std::int64_t times) {
            const float a = dotProduct(segment.start - start, normal);
            const float b = dotProduct(segment.end - start, normal);
            if (a >= 0.0f && b >= 0.0f) {
                balance += times;
            } else if (a < 0.0f && b < 0.0f) {
                balance -= times;
            } else if ((a >= 0.0f && b < 0.0f) || (a < 0.0f && b >= 0.0f)) {
                splits += times;
            }
        };
        count({candidate.start, candidate.end}, -1); // it will be counted among the others

        // The distance from the line, as it is computed, only grows or only falls along either axis, for
        // every float operation rounds monotonically: of all points in a box two corners have the least and
        // the largest.
        const bool rightUp = normal.x >= 0.0f;
        const bool frontUp = normal.y >= 0.0f;
        const auto isDivided = [&](const Box& box, std::size_t length) {
            const Vector2 low{rightUp ? box.minX : box.maxX, frontUp ? box.minY : box.maxY};
            const Vector2 high{rightUp ? box.maxX : box.minX, frontUp ? box.maxY : box.minY};
            if (dotProduct(low - start, normal) >= 0.0f) {
                balance += static_cast<std::int64_t>(length);
            } else if (dotProduct(high - start, normal) < 0.0f) {
                balance -= static_cast<std::int64_t>(length);
            } else {
                return true;
            }
            left -= static_cast<std::int64_t>(length);
            return false;
        };
        const auto next = [&](std::size_t index) { return orderly ? row.next(index, isDivided) : index; };
        for (std::size_t i = next(0); i < segments.size(); i = next(i + 1)) {
            count(segments[i], 1);
            --left;
            // What is left can at best bring the two sides nearer to one another.
            if (splits + std::max<std::int64_t>(0, std::abs(balance) - left) > limit) {
                return dropped;
            }
        }
        const std::int64_t result = std::abs(balance) + splits;
        return result > limit ? dropped : result;
    }

private:
    struct Segment {
        Vector2 start;
        Vector2 end;
    };

    std::vector<Segment> segments;
    BoxRow row;
    bool orderly = true; ///< No coordinate is so large that distances may overflow.
};

} // namespace

LevelBspPartition::LevelBspPartition(const std::vector<LevelBspNode>& edges) {
    TARNWICK_LOCATION("LevelBspPartition::LevelBspPartition");
    if (edges.empty()) {
        return;
    }
    std::vector<Box> boxes;
    boxes.reserve(edges.size());
    for (const LevelBspNode& edge : edges) {
        boxes.push_back(boxOf(edge));
    }
    Side root;
    root.entries.reserve(edges.size());
    for (const std::uint32_t place : orderInPlane(boxes)) {
        root.entries.push_back({edges[place], place});
    }
    pending.push_back(std::move(root));
}

std::vector<LevelBspNode> LevelBspPartition::build() {
    TARNWICK_LOCATION("LevelBspPartition::build");
    while (!pending.empty() && LongWork::goesOn()) {
        Side side = std::move(pending.back());
        pending.pop_back();
        divide(std::move(side));
    }
    linkNodes();
    return std::move(nodes);
}

/// Makes a node of one edge of the side and leaves what is behind and in front of it to be divided in turn.
void LevelBspPartition::divide(Side side) {
    TARNWICK_LOCATION("LevelBspPartition::divide");
    const auto picked = side.entries.begin() + static_cast<std::ptrdiff_t>(choosePartitionNode(side.entries));
    const auto index = static_cast<std::uint32_t>(nodes.size());
    nodes.push_back(picked->edge);
    parents.push_back(side.parent);
    areInFront.push_back(side.inFront);
    side.entries.erase(picked);

    Side back{{}, index, false};
    Side front{{}, index, true};
    bspPartition(nodes[index], side.entries, back.entries, front.entries);
    if (!front.entries.empty()) {
        pending.push_back(std::move(front));
    }
    if (!back.entries.empty()) {
        pending.push_back(std::move(back)); // last, so next: the nodes behind come before those in front
    }
}

void LevelBspPartition::linkNodes() {
    TARNWICK_LOCATION("LevelBspPartition::linkNodes");
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (parents[i] == none) {
            continue;
        }
        LevelBspNode& parent = nodes[parents[i]];
        nodes[i].parent = &parent;
        (areInFront[i] ? parent.inFront : parent.behind) = &nodes[i];
    }
}

/// The index of the edge with the lowest score; of several with one score, that of the first in the list.
std::size_t LevelBspPartition::choosePartitionNode(const Entries& entries) {
    TARNWICK_LOCATION("LevelBspPartition::choosePartitionNode");
    if (entries.size() == 1) {
        return 0;
    }
    CandidateScorer scorer;
    for (const Entry& entry : entries) {
        scorer.add(entry.edge);
    }
    std::size_t best = 0;
    std::int64_t bestScore = scorer.score(entries[0].edge, CandidateScorer::dropped - 1);
    for (std::size_t i = 1; i < entries.size() && LongWork::goesOn(); ++i) {
        const bool winsTies = entries[i].place < entries[best].place;
        const std::int64_t score = scorer.score(entries[i].edge, winsTies ? bestScore : bestScore - 1);
        if (score != CandidateScorer::dropped) {
            best = i;
            bestScore = score;
        }
    }
    return best;
}

/// Sorts `entries` by the side of the line of `node`, in their order; an edge that lies on both sides is
/// split.
void LevelBspPartition::bspPartition(const LevelBspNode& node,
                                     const Entries& entries,
                                     Entries& back,
                                     Entries& front) {
    TARNWICK_LOCATION("LevelBspPartition::bspPartition");
    for (const Entry& entry : entries) {
        const float a = dotProduct(entry.edge.start - node.start, node.normal);
        const float b = dotProduct(entry.edge.end - node.start, node.normal);
        if (a >= 0.0f && b >= -splitterSlack) {
            front.push_back(entry);
        } else if (a < 0.0f && b < splitterSlack) {
            back.push_back(entry);
        } else {
            splitEdge(node, entry, a < 0.0f, back, front);
        }
    }
}

void LevelBspPartition::splitEdge(
    const LevelBspNode& node, const Entry& entry, bool startsBehind, Entries& back, Entries& front) {
    TARNWICK_LOCATION("LevelBspPartition::splitEdge");
    const LevelBspNode& edge = entry.edge;
    Vector2 middle = edge.start; // stays for parallel lines: the edge then goes whole to one side
    lineIntersection(edge.start, edge.end, node.start, node.end, middle);
    const float position = dotProduct(middle - edge.start, edge.direction);
    if (position < 0.0f) {
        middle = edge.start;
    } else if (position > edge.length) {
        middle = edge.end;
    }
    const auto addPiece = [&](Vector2 start, Vector2 end, Entries& side) {
        Entry piece = entry;
        piece.edge.start = start;
        piece.edge.end = end;
        piece.edge.direction = end - start;
        normaliseVector(piece.edge.direction);
        piece.edge.normal = {-piece.edge.direction.y, piece.edge.direction.x};
        piece.edge.length = distanceBetween(start, end);
        if (piece.edge.length > shortestEdge) {
            side.push_back(piece);
        }
    };
    addPiece(edge.start, middle, startsBehind ? back : front);
    addPiece(middle, edge.end, startsBehind ? front : back);
}

} // namespace tarnwick
