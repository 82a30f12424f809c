#include "tools/solve/Search.h"

#include "core/Geometry.h"
#include "game/Camera.h"
#include "game/GameRules.h"
#include "level/Level.h"
#include "mechanisms/MoverManager.h"
#include "mechanisms/TriggerManager.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tarnwick {

namespace {

constexpr std::uint64_t longestFlight = 4000;      ///< Ticks until the camera is at the water.
constexpr std::uint64_t longestFinish = 4000;      ///< Ticks of the finish.
constexpr std::uint64_t stretches[] = {8, 16, 24}; ///< Ticks; one of them for all of an expansion.
constexpr std::uint64_t waitFactor = 4;            ///< Of the long stretch in which nothing is held.
constexpr std::uint32_t mostVisits = 3;            ///< Of one place, unless it is better than before.
constexpr float clearlyBetter = 3.0f;              ///< World units.
constexpr std::size_t mostOpen = 4000;             ///< Stretches in memory.
constexpr std::uint32_t noveltyShare = 4;          ///< One choice of so many is for novelty.
constexpr float lostFactor = 1.5f; ///< Water that is lost counts as so many times the start's way.

constexpr float firedShare = 0.08f; ///< Of the start's way: what a trigger that fired is worth.

constexpr float square = 24.0f;     ///< World units: side of the squares of a place.
constexpr float angleStep = 12.0f;  ///< Degrees.
constexpr float warmthStep = 20.0f; ///< Degrees of temperature.
constexpr float moverStep = 24.0f;  ///< World units along a track.
constexpr float shareSteps = 4.0f;  ///< Steps in which a share is told.

/// Adds a number to a hash.
void mix(std::uint64_t& hash, std::int64_t number) {
    hash ^= static_cast<std::uint64_t>(number) + 0x9E3779B97F4A7C15u + (hash << 6u) + (hash >> 2u);
    hash *= 0xFF51AFD7ED558CCDu;
    hash ^= hash >> 32u;
}

std::int64_t stepOf(float value, float step) {
    return std::isfinite(value) ? static_cast<std::int64_t>(std::floor(value / step)) : 0;
}

/// Water of one state of matter: how much, and where.
struct Matter {
    std::uint32_t count = 0;
    Vector2 sum;

    void add(Vector2 place, std::uint32_t particles) {
        count += particles;
        sum += place * static_cast<float>(particles);
    }
    void mixInto(std::uint64_t& hash, std::uint32_t all) const {
        mix(hash, stepOf(static_cast<float>(count) * shareSteps / static_cast<float>(all), 1.0f));
        if (count > 0) {
            const Vector2 middle = sum / static_cast<float>(count);
            mix(hash, stepOf(middle.x, square));
            mix(hash, stepOf(middle.y, square));
        }
    }
};

/// Whether a trigger changes the way of the water: what it removes, adds or moves, or a check point.
bool changesTheWay(const Trigger& trigger) {
    constexpr std::uint32_t firstOfEntities = 300; // action codes
    constexpr std::uint32_t lastOfMovers = 499;
    constexpr std::uint32_t checkPoint = 901;
    return (trigger.typeId >= firstOfEntities && trigger.typeId <= lastOfMovers) ||
           trigger.typeId == checkPoint;
}

/// Gives how many triggers that change the way have fired.
std::uint32_t mixMechanisms(std::uint64_t& hash) {
    std::uint32_t fired = 0;
    std::int64_t number = 0;
    for (const Trigger& trigger : TriggerManager::triggers) {
        if (trigger.fireCount > 0 && changesTheWay(trigger)) {
            mix(hash, number);
            ++fired;
        }
        ++number;
    }
    for (const Mover& mover : MoverManager::movers) {
        mix(hash, stepOf(mover.position, moverStep));
        mix(hash, static_cast<std::int64_t>(mover.state));
    }
    return fired;
}

} // namespace

Search::Search(HeadlessLevel& level, std::uint64_t seed)
    : game(level)
    , random(seed) {
    for (std::uint64_t i = 0; i < longestFlight && Camera::movingTowardsWaypoint(); ++i) {
        game.tick();
        ++state.ticks;
    }
    startWater = std::max(GameRules::getParticleCount(), 1u);
    state.start = field.distance(Level::waterStart());
    const Sight sight = look();
    state.best = sight.distance;
    addNode(none, {}, game.position().tick, sight);
}

bool Search::step() {
    if (byValue.empty() || finished) {
        return false;
    }
    const std::int32_t from = choose();
    const std::uint64_t length = stretches[random() % std::size(stretches)];
    run(from, {}, length);
    run(from, {.left = true}, length);
    run(from, {.right = true}, length);
    run(from, {}, waitFactor * length);
    close(from);
    forgetTheWorst();
    state.statesKept = byValue.size();
    state.statesKnown = places.size();
    return !finished && !byValue.empty();
}

std::int32_t Search::choose() {
    if (random() % noveltyShare == 0) {
        return -byNovelty.begin()->second;
    }
    return byValue.begin()->second;
}

void Search::run(std::int32_t from, Held held, std::uint64_t ticks) {
    if (finished) {
        return;
    }
    const Node& node = nodes[static_cast<std::size_t>(from)];
    node.snapshot->putBack();
    game.setPosition(node.position);
    const std::uint64_t begin = node.position.tick;
    game.hold(held);
    if (!runTicks(ticks)) {
        return; // all water is lost: no way on from here
    }
    if (GameRules::finishHasBegun()) {
        finish(from, held, begin);
        return;
    }
    const Sight sight = look();
    Place& place = places[sight.place];
    const bool better = place.visits == 0 || sight.distance < place.best - clearlyBetter;
    if (!better && place.visits >= mostVisits) {
        return;
    }
    ++place.visits;
    place.best = place.visits == 1 ? sight.distance : std::min(place.best, sight.distance);
    addNode(from, held, begin, sight);
}

/// False when the water is lost.
bool Search::runTicks(std::uint64_t ticks) {
    for (std::uint64_t i = 0; i < ticks && !GameRules::finishHasBegun(); ++i) {
        game.tick();
        ++state.ticks;
        if (Camera::movingTowardsWaypoint()) {
            return false;
        }
    }
    return true;
}

/// Lets the finish run to its end, with nothing held.
void Search::finish(std::int32_t from, Held held, std::uint64_t begin) {
    result = wayTo(from);
    result.hold(begin, held);
    result.hold(game.position().tick, {});
    game.hold({});
    for (std::uint64_t i = 0; i < longestFinish && !GameRules::gameIsFinished(); ++i) {
        game.tick();
        ++state.ticks;
    }
    finished = GameRules::gameIsFinished();
    result.ticks = game.position().tick;
    result.water = GameRules::getParticleCount();
    result.time = GameRules::getLevelTime();
    result.score = GameRules::getTotalScore();
}

void Search::addNode(std::int32_t parent, Held held, std::uint64_t begin, const Sight& sight) {
    const auto number = static_cast<std::int32_t>(nodes.size());
    Node& node = nodes.emplace_back();
    node.parent = parent;
    node.held = held;
    node.begin = begin;
    node.value = sight.distance;
    node.place = sight.place;
    node.position = game.position();
    if (spare.empty()) {
        node.snapshot = std::make_unique<Snapshot>();
    } else {
        node.snapshot = std::move(spare.back());
        spare.pop_back();
    }
    node.snapshot->take();
    open(number);
    if (sight.distance < state.best) {
        state.best = sight.distance;
        bestNode = number;
    }
}

void Search::open(std::int32_t number) {
    Node& node = nodes[static_cast<std::size_t>(number)];
    node.novelty = places[node.place].visits;
    byValue.emplace(node.value, number);
    byNovelty.emplace(node.novelty, -number);
}

/// It is not gone on from again; its memory serves another.
void Search::close(std::int32_t number) {
    Node& node = nodes[static_cast<std::size_t>(number)];
    byValue.erase({node.value, number});
    byNovelty.erase({node.novelty, -number});
    spare.push_back(std::move(node.snapshot));
}

void Search::forgetTheWorst() {
    while (byValue.size() > mostOpen) {
        close(std::prev(byValue.end())->second);
    }
}

Search::Sight Search::look() {
    Sight sight;
    Matter water;
    Matter steam;
    Matter ice;
    float sum = 0.0f;
    float warmth = 0.0f;
    const auto see = [&](Vector2 place, std::uint32_t particles) {
        sum += std::min(field.distance(place), lostFactor * state.start) * static_cast<float>(particles);
        visitedCells.insert(field.cellAt(place));
    };
    for (const Particle& particle : ParticleManager::particles) {
        (particle.temperature >= steamTemperature ? steam : water).add(particle.position, 1);
        warmth += particle.temperature;
        see(particle.position, 1);
    }
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        const auto members = static_cast<std::uint32_t>(group.members.size());
        ice.add(group.centre, members);
        warmth += group.temperature * static_cast<float>(members);
        see(group.centre, members);
    }
    sight.water = water.count + steam.count + ice.count;
    const std::uint32_t lost = startWater > sight.water ? startWater - sight.water : 0;
    const auto all = static_cast<float>(sight.water + lost);
    sight.distance = (sum + static_cast<float>(lost) * lostFactor * state.start) / all;
    std::uint64_t& hash = sight.place;
    water.mixInto(hash, startWater);
    steam.mixInto(hash, startWater);
    ice.mixInto(hash, startWater);
    mix(hash, stepOf(warmth / all, warmthStep));
    mix(hash, stepOf(Camera::angle(), angleStep));
    sight.distance -= static_cast<float>(mixMechanisms(hash)) * firedShare * state.start;
    return sight;
}

Witness Search::wayTo(std::int32_t number) const {
    std::vector<std::int32_t> way;
    for (std::int32_t at = number; at != none; at = nodes[static_cast<std::size_t>(at)].parent) {
        way.push_back(at);
    }
    Witness found;
    for (auto at = way.rbegin(); at != way.rend(); ++at) {
        const Node& node = nodes[static_cast<std::size_t>(*at)];
        found.hold(node.begin, node.held);
    }
    return found;
}

} // namespace tarnwick
