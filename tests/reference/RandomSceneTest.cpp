#include "reference/RandomSceneTest.h"

#include "core/Random.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "particles/CircleCollision.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"
#include "reference/RandomWindow.h"
#include "support/SceneAccess.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <vector>

namespace tarnwick {

namespace {

/// The fields of a particle as words, so that comparing is comparing bits: -0 differs from 0.
std::vector<std::uint32_t> wordsOf(const Particle& particle) {
    std::vector<std::uint32_t> words;
    const auto add = [&](float value) { words.push_back(std::bit_cast<std::uint32_t>(value)); };
    const auto addVector = [&](Vector2 value) {
        add(value.x);
        add(value.y);
    };
    addVector(particle.position);
    for (const Vector2 trail : particle.trail) {
        addVector(trail);
    }
    addVector(particle.velocity);
    addVector(particle.previousVelocity);
    addVector(particle.pushVelocity);
    add(particle.temperature);
    add(particle.speed);
    words.push_back(particle.gridCellX);
    words.push_back(particle.gridCellY);
    words.push_back(particle.inGrid ? 1 : 0);
    words.push_back(particle.dying ? 1 : 0);
    add(particle.killTimer);
    addVector(particle.groupDirection);
    add(particle.groupFraction);
    return words;
}

std::vector<std::uint32_t> wordsOf(const ParticleGroup& group) {
    std::vector<std::uint32_t> words;
    const auto add = [&](float value) { words.push_back(std::bit_cast<std::uint32_t>(value)); };
    add(group.radius);
    add(group.targetRadius);
    for (const Vector2 value : {group.centre, group.velocity, group.previousVelocity, group.pushVelocity}) {
        add(value.x);
        add(value.y);
    }
    words.push_back(group.colliding ? 1 : 0);
    add(group.temperature);
    words.push_back(group.dying ? 1 : 0);
    add(group.killTimer);
    words.push_back(static_cast<std::uint32_t>(group.members.size()));
    return words;
}

/// The first difference of two lists of records, or an empty text.
template <typename FirstList, typename SecondList>
std::string difference(const FirstList& real, const SecondList& plain, const std::string& what) {
    if (real.size() != plain.size()) {
        return what + ": " + std::to_string(real.size()) + " against " + std::to_string(plain.size());
    }
    auto other = plain.begin();
    std::size_t index = 0;
    for (const auto& record : real) {
        const auto realWords = wordsOf(record);
        const auto plainWords = wordsOf(*other);
        for (std::size_t word = 0; word < realWords.size(); ++word) {
            if (realWords[word] != plainWords[word]) {
                return what + " " + std::to_string(index) + ", word " + std::to_string(word) + ": " +
                       std::to_string(std::bit_cast<float>(realWords[word])) + " against " +
                       std::to_string(std::bit_cast<float>(plainWords[word]));
            }
        }
        ++other;
        ++index;
    }
    return {};
}

} // namespace

RandomSceneTest::RandomSceneTest() {
    GLWindow::createHeadless(800, 600);
}

RandomSceneTest::~RandomSceneTest() {
    GLWindow::close();
}

void RandomSceneTest::addMechanisms(Dice& /*dice*/) {}

void RandomSceneTest::meddleWithMechanisms(Dice& /*dice*/) {}

void RandomSceneTest::runTick(float dt) {
    ParticleManager::runSimulation(dt, Camera::view());
    plain.tick(dt);
}

std::string RandomSceneTest::mechanismsDifference() const {
    return {};
}

/// A handful of convex polygons about the origin, and a wide floor in most scenes.
void RandomSceneTest::buildLevel(Dice& dice) {
    const int count = dice.whole(0, 9);
    for (int i = 0; i < count; ++i) {
        Polygon2D& polygon = Level::polygons.emplace_back();
        const Vector2 middle{dice.between(-300.0f, 300.0f), dice.between(-200.0f, 260.0f)};
        const float size = dice.between(4.0f, 130.0f);
        const int corners = dice.whole(3, 8);
        const float turn = dice.between(0.0f, 6.0f);
        for (int corner = 0; corner < corners; ++corner) {
            const float angle = turn + 6.2831855f * static_cast<float>(corner) / static_cast<float>(corners);
            polygon.addPoint(std::floor(middle.x + size * std::cos(angle)),
                             std::floor(middle.y + size * std::sin(angle)));
        }
        polygon.setFrictionLevel(dice.between(0.0f, 1.0f));
    }
    if (dice.chance(0.8f)) { // a box that is open at a corner, so that some water leaves
        SceneAccess::addPolygon({{-400.0f, 200.0f}, {350.0f, 180.0f}, {350.0f, 240.0f}, {-400.0f, 240.0f}},
                                0.3f);
        SceneAccess::addPolygon(
            {{-400.0f, -250.0f}, {-360.0f, -250.0f}, {-360.0f, 200.0f}, {-400.0f, 200.0f}}, 0.9f);
        SceneAccess::addPolygon({{320.0f, -180.0f}, {350.0f, -180.0f}, {350.0f, 180.0f}, {320.0f, 180.0f}},
                                0.0f);
        SceneAccess::addPolygon(
            {{-360.0f, -250.0f}, {320.0f, -250.0f}, {320.0f, -240.0f}, {-360.0f, -240.0f}}, 1.0f);
    }
    addMechanisms(dice);
    SceneAccess::buildTree();
    plain.collision.root = LevelBspTree::rootNode();
}

void RandomSceneTest::configure(Dice& dice) {
    SceneSettings settings;
    settings.gravity = dice.chance(0.15f) ? 0.0f : dice.between(0.0f, 1500.0f);
    settings.roomTemperature = dice.chance(0.3f) ? dice.between(-5.0f, 130.0f) : 20.0f;
    settings.heatTransferRate = dice.chance(0.2f) ? 1.0f : dice.between(0.0f, 0.5f);
    settings.steamRiseRate = dice.between(-0.5f, 2.0f);
    settings.steamScatterRate = dice.between(0.0f, 3.0f);
    settings.particleKillTime = dice.between(0.01f, 0.6f);
    settings.particleGroupInterpolation = dice.between(0.0f, 1.0f);
    settings.groupExpandSpeed = dice.between(0.0f, 1.0f);
    settings.iceGravityStrenght = dice.between(0.0f, 1.5f);
    SceneAccess::configure(settings);
    plain.settings = {settings.gravity,
                      settings.roomTemperature,
                      settings.heatTransferRate,
                      settings.steamRiseRate,
                      settings.steamScatterRate,
                      settings.particleKillTime,
                      settings.particleGroupInterpolation,
                      settings.groupExpandSpeed,
                      settings.iceGravityStrenght};
}

/// Adds one particle at the head of both lists.
void RandomSceneTest::addParticle(const Particle& particle) {
    ParticleManager::particles.push_front(particle);
    plain.particles.push_front(particle);
}

void RandomSceneTest::fillScene(Dice& dice, int count) {
    const Vector2 middle{dice.between(-150.0f, 150.0f), dice.between(-250.0f, 100.0f)};
    const float spread = dice.between(3.0f, 4.0f * std::sqrt(static_cast<float>(count)));
    for (int i = 0; i < count; ++i) {
        Particle particle;
        particle.position = {middle.x + dice.between(-spread, spread),
                             middle.y + dice.between(-spread, spread)};
        if (i > 0 && dice.chance(0.02f)) {
            particle.position = plain.particles.front().position; // two on one spot
        }
        if (dice.chance(0.01f)) {
            particle.position = {dice.between(-700.0f, 700.0f), dice.between(-700.0f, 700.0f)};
        }
        std::ranges::fill(particle.trail, particle.position);
        if (!dice.chance(0.1f)) { // else at rest, and without gravity it stays so
            particle.velocity = {dice.between(-200.0f, 200.0f), dice.between(-200.0f, 200.0f)};
        }
        particle.temperature = 20.0f;
        addParticle(particle);
    }
}

void RandomSceneTest::moveCamera(Dice& dice) {
    view.position += Vector2{dice.between(-3.0f, 3.0f), dice.between(-3.0f, 3.0f)};
    view.position = {std::clamp(view.position.x, -150.0f, 150.0f),
                     std::clamp(view.position.y, -100.0f, 100.0f)};
    view.angle = std::clamp(view.angle + dice.between(-4.0f, 4.0f), -180.0f, 180.0f);
    view.zoom = std::clamp(view.zoom + dice.between(-0.05f, 0.05f), 0.8f, 2.5f);
    view.shake =
        dice.chance(0.7f) ? Vector2{dice.between(-5.0f, 5.0f), dice.between(-5.0f, 5.0f)} : Vector2{};
    if (dice.chance(0.003f)) {
        view.position = {dice.between(-400.0f, 400.0f), dice.between(-400.0f, 400.0f)};
    }
    SceneAccess::placeCamera(view.position, view.shake, view.angle, view.zoom);
    plain.view = view;
}

/// What triggers and movers would do to particles, groups and edges between two ticks.
void RandomSceneTest::meddle(Dice& dice) {
    const bool hot = dice.chance(0.02f);
    const bool cold = dice.chance(0.01f);
    const bool push = dice.chance(0.1f);
    const bool kill = dice.chance(0.03f);
    const bool stop = dice.chance(0.02f);
    auto twin = plain.particles.begin();
    for (Particle& particle : ParticleManager::particles) {
        if (hot && dice.chance(0.2f)) {
            particle.temperature = twin->temperature = dice.between(90.0f, 160.0f);
        }
        if (cold && dice.chance(0.02f)) {
            particle.temperature = twin->temperature = dice.between(-80.0f, 1.0f);
        }
        if (push && dice.chance(0.1f)) {
            particle.pushVelocity =
                twin->pushVelocity = {dice.between(-600.0f, 600.0f), dice.between(-600.0f, 600.0f)};
        }
        if (kill && dice.chance(0.1f)) {
            ParticleManager::killParticle(particle);
            if (!twin->dying) {
                twin->dying = true;
                twin->killTimer = plain.settings.particleKillTime;
            }
        }
        if (stop && dice.chance(0.2f)) {
            particle.velocity = twin->velocity = {};
        }
        ++twin;
    }
    meddleWithGroups(dice);
    refill(dice);
    meddleWithMechanisms(dice);
    if (dice.chance(0.05f)) {
        switchEdges(dice);
    }
}

/// Water that has left comes back now and then, so that no scene runs dry.
void RandomSceneTest::refill(Dice& dice) {
    std::size_t present = plain.particles.size();
    for (const ParticleGroup& group : plain.groups) {
        present += group.members.size();
    }
    if (present < wanted && dice.chance(0.05f)) {
        const auto missing = static_cast<std::int32_t>(wanted - present);
        const Vector2 middle{dice.between(-100.0f, 100.0f), dice.between(-150.0f, 0.0f)};
        const float radius = dice.between(5.0f, 80.0f);
        ParticleManager::createParticles(middle.x, middle.y, radius, missing);
        plain.createParticles(middle.x, middle.y, radius, missing);
    }
}

void RandomSceneTest::meddleWithGroups(Dice& dice) {
    auto twin = plain.groups.begin();
    for (ParticleGroup& group : ParticleGroupMover::groups) {
        if (dice.chance(0.01f)) {
            ParticleGroupMover::killGroup(group);
            if (!twin->dying) {
                twin->dying = true;
                twin->killTimer = plain.settings.particleKillTime;
            }
        }
        if (dice.chance(0.04f)) {
            group.temperature = twin->temperature = dice.between(-40.0f, 40.0f);
        }
        if (dice.chance(0.05f)) {
            group.pushVelocity =
                twin->pushVelocity = {dice.between(-300.0f, 300.0f), dice.between(-300.0f, 300.0f)};
        }
        ++twin;
    }
}

void RandomSceneTest::switchEdges(Dice& dice) {
    std::vector<LevelBspNode*> nodes;
    LevelBspTree::getNodeList(nodes);
    for (LevelBspNode* node : nodes) {
        node->hasEdge = dice.chance(0.8f);
    }
}

/// The chain of every cell against the list of the plain grid, particle by particle.
std::string RandomSceneTest::gridDifference() const {
    std::vector<const Particle*> real;
    std::vector<const Particle*> twins;
    for (const Particle& particle : ParticleManager::particles) {
        real.push_back(&particle);
    }
    for (const Particle& particle : plain.particles) {
        twins.push_back(&particle);
    }
    std::size_t linked = 0;
    for (const auto& [cell, chain] : plain.grid) {
        const Particle* entry = ParticleMover::particleGrid[cell];
        const Particle* previous = nullptr;
        for (const Particle* twin : chain) {
            const auto index = static_cast<std::size_t>(std::ranges::find(twins, twin) - twins.begin());
            if (entry == nullptr || index >= real.size() || real[index] != entry ||
                entry->gridPrev != previous) {
                return "chain of cell " + std::to_string(cell);
            }
            previous = entry;
            entry = entry->gridNext;
            ++linked;
        }
        if (entry != nullptr) {
            return "end of the chain of cell " + std::to_string(cell);
        }
    }
    const auto inGrid =
        std::ranges::count_if(real, [](const Particle* particle) { return particle->inGrid; });
    const auto heads = std::ranges::count_if(ParticleMover::particleGrid,
                                             [](const Particle* head) { return head != nullptr; });
    if (linked != static_cast<std::size_t>(inGrid) || static_cast<std::size_t>(heads) != plain.grid.size()) {
        return "number of particles or cells in the grid";
    }
    return {};
}

std::string RandomSceneTest::anyDifference() const {
    std::string found = difference(ParticleManager::particles, plain.particles, "particle");
    if (!found.empty()) {
        return found;
    }
    found = difference(ParticleGroupMover::groups, plain.groups, "group");
    if (!found.empty()) {
        return found;
    }
    auto twin = plain.groups.begin();
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        found = difference(group.members, twin->members, "member");
        if (!found.empty()) {
            return found;
        }
        ++twin;
    }
    if (getRandomState() != plain.randomState) {
        return "random state";
    }
    if (CircleCollision::contactNormal() != plain.collision.contactNormal ||
        CircleCollision::contactFriction() != plain.collision.contactFriction) {
        return "result of the last contact";
    }
    return mechanismsDifference();
}

/// Runs one scene side by side and stops at the first difference.
void RandomSceneTest::runScene(std::uint32_t seed, int count, int ticks) {
    ModuleReset::all();
    const RandomWindow window(seed);
    GLWindow::createHeadless(window.width, window.height);
    Level::polygons.clear();
    plain = {};
    view = {};
    view.areaX = window.areaX();
    view.areaY = window.areaY();
    wanted = static_cast<std::size_t>(count);
    Dice dice(seed);
    buildLevel(dice);
    configure(dice);
    seedRandom(seed);
    plain.randomState = seed;
    fillScene(dice, count);
    const float steadyStep = dice.between(1.0f / 200.0f, 1.0f / 30.0f);
    for (int tick = 0; tick < ticks; ++tick) {
        moveCamera(dice);
        meddle(dice);
        const float dt = dice.chance(0.3f) ? dice.between(1.0f / 200.0f, 1.0f / 30.0f) : steadyStep;
        runTick(dt);
        ASSERT_EQ(anyDifference(), "") << "seed " << seed << ", tick " << tick;
    }
    ASSERT_EQ(gridDifference(), "") << "seed " << seed;
}

} // namespace tarnwick
