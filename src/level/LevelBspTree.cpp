#include "level/LevelBspTree.h"

#include "core/CommandArguments.h"
#include "core/CommandRegistry.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/Random.h"
#include "core/Strings.h"
#include "level/Level.h"
#include "level/LevelBspBuilder.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace tarnwick {

namespace {

constexpr float rayStartSlack = 0.025f;   ///< World units: a ray that starts this near to an edge lies on it.
constexpr std::int32_t testPasses = 2048; ///< Of `BspCast`.
constexpr float testRayReach = 100'000.0f; ///< World units: rays end up to half of this away on each axis.

/// Whether a parameter lies in 0 to 1. Its bits as a whole number are at most those of 1 for exactly these
/// numbers: negative ones, negative zero, those above 1 and what is no number at all are larger.
bool isShare(float parameter) {
    TARNWICK_LOCATION("LevelBspTree::isShare");
    return std::bit_cast<std::uint32_t>(parameter) <= 0x3F800000u;
}

/// Where `point` lies on the way from `start` to `end`, measured along the longer axis. Without their sign
/// bits, floats compare as whole numbers do.
float parameterOf(Vector2 point, Vector2 start, Vector2 end) {
    TARNWICK_LOCATION("LevelBspTree::parameterOf");
    const float dx = end.x - start.x;
    const float dy = end.y - start.y;
    const bool alongX = std::bit_cast<std::uint32_t>(dy) << 1 < std::bit_cast<std::uint32_t>(dx) << 1;
    return alongX ? (point.x - start.x) / dx : (point.y - start.y) / dy;
}

/// Whether a ray meets an edge; moves `rayEnd` there if it does. Parallel lines never meet.
bool edgeIntersectFast(const Vector2& rayStart,
                       Vector2& rayEnd,
                       const Vector2& edgeStart,
                       const Vector2& edgeEnd) {
    TARNWICK_LOCATION("LevelBspTree::edgeIntersectFast");
    constexpr float nowhere =
        std::numeric_limits<float>::quiet_NaN(); // stays for parallel lines, and is no share
    Vector2 meeting{nowhere, nowhere};
    lineIntersection(rayStart, rayEnd, edgeStart, edgeEnd, meeting);
    if (!isShare(parameterOf(meeting, rayStart, rayEnd)) ||
        !isShare(parameterOf(meeting, edgeStart, edgeEnd))) {
        return false;
    }
    rayEnd = meeting;
    return true;
}

/// Depth of the deepest node, 1 for a lone root. Each node stands behind the one above it.
std::size_t deepest(const std::vector<LevelBspNode>& nodes) {
    TARNWICK_LOCATION("LevelBspTree::deepest");
    std::vector<std::size_t> depths(nodes.size(), 1);
    std::size_t largest = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i].parent != nullptr) {
            depths[i] = depths[static_cast<std::size_t>(nodes[i].parent - nodes.data())] + 1;
        }
        largest = std::max(largest, depths[i]);
    }
    return largest;
}

/// The node that comes first among `node` and all below it.
LevelBspNode* firstOf(LevelBspNode* node) {
    TARNWICK_LOCATION("LevelBspTree::firstOf");
    while (node->behind != nullptr) {
        node = node->behind;
    }
    return node;
}

template <typename Value>
void printLine(const char* label, Value value) {
    TARNWICK_LOCATION("LevelBspTree::printLine");
    Log::print(label);
    Log::print(value);
}

void printWalkUsage() {
    TARNWICK_LOCATION("LevelBspTree::printWalkUsage");
    Log::print("\nUnrecognised tree walk command. Valid commands are: ");
    Log::print("\n");
    Log::print("\nBspTreeWalk LEFT"); // Kept: the texts name the command otherwise than it is registered.
    Log::print("\nBspTreeWalk RIGHT");
    Log::print("\nBspTreeWalk PARENT");
    Log::print("\nBspTreeWalk ROOT");
    Log::print("\n");
}

} // namespace

LevelBspTree::State LevelBspTree::state;

constexpr CommandRow LevelBspTree::commands[] = {
    {"BspSize", conCmdBspSize},
    {"BspDepth", conCmdBspDepth},
    {"BspWalk", conCmdBspWalk},
    {"BspWalkDraw", CommandVariable{&state.walkDraw, "LevelBspTree::conCmdBspWalkDraw"}},
    {"BspCast", conCmdBspCast},
    {"BspCastDraw", CommandVariable{&state.castDraw, "LevelBspTree::conCmdBspCastDraw"}},
    {"BspSplitDraw", CommandVariable{&state.splitDraw, "LevelBspTree::conCmdBspSplitDraw"}},
    {"BspNodeDraw", CommandVariable{&state.nodeDraw, "LevelBspTree::conCmdBspNodeDraw"}},
};

void LevelBspTree::create() {
    TARNWICK_LOCATION("LevelBspTree::create");
    clear();
    FrameTimer timer;
    clearDrawSwitches();
    Log::print("\nCreating the level bsp tree...");
    CommandRegistry::add(commands);
    std::vector<LevelBspNode> edges = LevelBspBuilder::buildInitialNodeList(Level::polygons);
    if (!LevelBspBuilder::optimiseInitialNodeList(edges)) {
        Log::print("\nSides of the level overlap and cannot be cut apart.");
    }
    LevelBspBuilder::removeCaulkNodes(edges);
    if (edges.empty()) {
        return;
    }
    state.nodes = LevelBspBuilder::buildTree(edges);
    if (state.nodes.empty()) { // the window was closed meanwhile
        return;
    }
    state.depth = deepest(state.nodes);
    state.crossings.resize(state.depth);
    state.rootNode = state.nodes.data();
    timer.update();
    Log::print("\nBsp Tree created in ");
    Log::print(timer.getSeconds());
    Log::print(" seconds.");
    state.walkNode = state.rootNode;
}

void LevelBspTree::clear() {
    TARNWICK_LOCATION("LevelBspTree::clear");
    ++state.generation;
    state.rootNode = nullptr;
    state.walkNode = nullptr;
    state.depth = 0;
    state.nodes = {}; // gives the memory back, which `clear` does not
    state.crossings = {};
    CommandRegistry::remove(commands);
}

void LevelBspTree::clearDrawSwitches() {
    TARNWICK_LOCATION("LevelBspTree::clearDrawSwitches");
    state.nodeDraw = false;
    state.splitDraw = false;
    state.castDraw = false;
    state.walkDraw = false;
}

void LevelBspTree::resetTree() {
    TARNWICK_LOCATION("LevelBspTree::resetTree");
    clearDrawSwitches();
    for (LevelBspNode& node : state.nodes) {
        node.hasEdge = true;
    }
}

/// Goes down the near side first. A node whose line the ray crosses waits until nothing was hit there; then
/// the node itself is tried, and the way goes on down its far side. So the first hit is the nearest.
LevelBspNode* LevelBspTree::raycast(const Vector2& start, Vector2& end) {
    TARNWICK_LOCATION("LevelBspTree::raycast");
    if (state.rootNode == nullptr || start == end) { // exactly
        return nullptr;
    }
    std::size_t waiting = 0;
    LevelBspNode* node = state.rootNode;
    for (;;) {
        while (node != nullptr) {
            const float startDistance = dotProduct(start - node->start, node->normal);
            const float endDistance = dotProduct(end - node->start, node->normal);
            if (std::abs(startDistance) <= rayStartSlack && hitsWhereItStarts(*node, start, end)) {
                return node;
            }
            const bool startsInFront = startDistance >= 0.0f;
            const bool endsInFront = endDistance >= 0.0f;
            LevelBspNode* nearSide = startsInFront ? node->inFront : node->behind;
            if (startsInFront != endsInFront) {
                state.crossings[waiting++] = {node, startsInFront ? node->behind : node->inFront};
            }
            node = nearSide;
        }
        if (waiting == 0) {
            return nullptr;
        }
        const Crossing& crossing = state.crossings[--waiting];
        if (crossing.node->hasEdge &&
            edgeIntersectFast(start, end, crossing.node->start, crossing.node->end)) {
            return crossing.node;
        }
        node = crossing.farSide;
    }
}

/// For a ray that starts on the line of `node`: whether it starts on the edge, switched off or not. Moves
/// `end` onto the edge if it does, away from the edge's own ends.
bool LevelBspTree::hitsWhereItStarts(const LevelBspNode& node, const Vector2& start, Vector2& end) {
    TARNWICK_LOCATION("LevelBspTree::hitsWhereItStarts");
    float position = dotProduct(start - node.start, node.direction);
    if (!(position > -rayStartSlack && position < node.length + rayStartSlack)) {
        return false;
    }
    if (position <= rayStartSlack) {
        position = rayStartSlack;
    }
    if (position >= node.length - rayStartSlack) {
        position = node.length - rayStartSlack;
    }
    end = node.start + node.direction * position;
    return true;
}

void LevelBspTree::getNodeList(std::vector<LevelBspNode*>& nodes) {
    TARNWICK_LOCATION("LevelBspTree::getNodeList");
    nodes.reserve(nodes.size() + state.nodes.size());
    LevelBspNode* node = state.rootNode != nullptr ? firstOf(state.rootNode) : nullptr;
    while (node != nullptr) {
        nodes.push_back(node);
        if (node->inFront != nullptr) {
            node = firstOf(node->inFront);
            continue;
        }
        while (node->parent != nullptr && node->parent->inFront == node) {
            node = node->parent; // all that was in front of it is done
        }
        node = node->parent;
    }
}

std::int32_t LevelBspTree::conCmdBspSize() {
    TARNWICK_LOCATION("LevelBspTree::conCmdBspSize");
    return static_cast<std::int32_t>(state.nodes.size());
}

std::int32_t LevelBspTree::conCmdBspDepth() {
    TARNWICK_LOCATION("LevelBspTree::conCmdBspDepth");
    return static_cast<std::int32_t>(state.depth);
}

void LevelBspTree::conCmdBspWalk(const std::string& direction) {
    TARNWICK_LOCATION("LevelBspTree::conCmdBspWalk");
    if (state.walkNode == nullptr) {
        return;
    }
    std::string word = direction;
    slStringUpper(word);
    const auto moveTo = [](LevelBspNode* node, const char* refusal) {
        if (node != nullptr) {
            state.walkNode = node;
        } else {
            Log::print(refusal);
        }
    };
    if (word == "PARENT") {
        moveTo(state.walkNode->parent, "\nNo parent node at current node.");
    } else if (word == "LEFT") {
        moveTo(state.walkNode->behind, "\nNo left child node at current node.");
    } else if (word == "RIGHT") {
        moveTo(state.walkNode->inFront, "\nNo right child node at current node.");
    } else if (word == "ROOT") {
        moveTo(state.walkNode != state.rootNode ? state.rootNode : nullptr, "\nAlready at root node.");
    } else {
        printWalkUsage();
    }
    std::string options;
    options += state.walkNode != state.rootNode ? "ROOT " : "";
    options += state.walkNode->parent != nullptr ? "PARENT " : "";
    options += state.walkNode->behind != nullptr ? "LEFT " : "";
    options += state.walkNode->inFront != nullptr ? "RIGHT " : "";
    Log::print("\nWalk options for current node: ");
    Log::print(options);
}

void LevelBspTree::conCmdBspCast(const std::string& target) {
    TARNWICK_LOCATION("LevelBspTree::conCmdBspCast");
    const CommandArguments place(target, "\nUSAGE: BspCast < number > < number >");
    if (!place.fit()) {
        return;
    }
    if (!state.castTimer) {
        state.castTimer.emplace();
    }
    state.castTimer->reset();
    castTestRays({place.number(0), place.number(1)});
    state.castTimer->update();

    constexpr auto raysPerPass = static_cast<std::int32_t>(testRayCount);
    constexpr std::int32_t rays = raysPerPass * testPasses;
    Log::printTitle("Test ray cast results");
    printLine("\nTest cast rays:              ", raysPerPass);
    printLine("\nTest cast iterations:        ", testPasses);
    printLine("\nTotal rays cast:             ", rays);
    printLine("\nSeconds taken:               ", state.castTimer->getSeconds());
    printLine("\nClocks taken:                ", state.castTimer->getClocks());
    printLine("\nRays per second (average):   ", static_cast<float>(rays) / state.castTimer->getSeconds());
}

/// Casts rays in all directions, for each first drawing its end's x and then its y at random.
void LevelBspTree::castTestRays(Vector2 start) {
    TARNWICK_LOCATION("LevelBspTree::castTestRays");
    for (std::int32_t pass = 0; pass < testPasses; ++pass) {
        for (std::size_t ray = 0; ray < testRayCount; ++ray) {
            const float x = (randomFloat() - 0.5f) * testRayReach;
            const float y = (randomFloat() - 0.5f) * testRayReach;
            state.testRayStarts[ray] = start;
            state.testRayEnds[ray] = start + Vector2{x, y};
            raycast(start, state.testRayEnds[ray]);
        }
    }
}

} // namespace tarnwick
