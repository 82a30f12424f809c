#include "tools/level/LevelGeometry.h"

#include "core/Vector2.h"
#include "level/Level.h"
#include "level/LevelBspNode.h"
#include "level/LevelBspTree.h"
#include "level/LevelFile.h"
#include "tools/level/LevelNames.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace tarnwick {

namespace {

constexpr std::int32_t triggerRemovesEntity = 300; ///< Action codes that make their polygons destructable.
constexpr std::int32_t triggerAddsEntity = 301;

} // namespace

std::list<Polygon2D> buildPolygons(const LevelFile& level) {
    std::set<std::int32_t> moved;
    for (const LevelFile::MoverRecord& mover : level.movers) {
        moved.insert(mover.moverId);
    }
    std::set<std::int32_t> destroyed;
    for (const LevelFile::TriggerRecord& trigger : level.triggers) {
        if (trigger.triggerType == triggerRemovesEntity || trigger.triggerType == triggerAddsEntity) {
            destroyed.insert(trigger.targetId);
        }
    }
    std::list<Polygon2D> polygons;
    std::vector<Vector2> points;
    for (const LevelFile::PolygonRecord& record : level.polygons) {
        Polygon2D& polygon = polygons.emplace_back();
        polygon.id = record.polygonId;
        polygon.layer = record.layer;
        polygon.collideable = modeIsSolid(record.polygonMode);
        polygon.drawable = modeIsSeen(record.polygonMode);
        polygon.moveable = moved.contains(record.polygonId);
        polygon.destructable = destroyed.contains(record.polygonId);
        points.clear();
        for (const LevelFile::Point& point : record.points) {
            points.push_back({static_cast<float>(point.x), static_cast<float>(point.y)});
        }
        polygon.addPoints(points);
    }
    return polygons;
}

TreeSize measureTree(std::list<Polygon2D> polygons) {
    Level::polygons = std::move(polygons);
    LevelBspTree::create();
    TreeSize size;
    std::vector<std::pair<const LevelBspNode*, std::uint32_t>> open;
    if (LevelBspTree::rootNode() != nullptr) {
        open.emplace_back(LevelBspTree::rootNode(), 1);
    }
    while (!open.empty()) {
        const auto [node, depth] = open.back();
        open.pop_back();
        ++size.edges;
        size.depth = std::max(size.depth, depth);
        for (const LevelBspNode* const child : {node->behind, node->inFront}) {
            if (child != nullptr) {
                open.emplace_back(child, depth + 1);
            }
        }
    }
    LevelBspTree::clear();
    Level::polygons.clear();
    return size;
}

} // namespace tarnwick
