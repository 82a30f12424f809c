// Triggers of every type among water, ice, movers, forces, emitters and objects, beside the plain reading, on
// seeded random scenes: every field equal, bit for bit.

#include "core/Random.h"
#include "game/Camera.h"
#include "level/Level.h"
#include "level/LevelObjectsManager.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/MoverManager.h"
#include "mechanisms/TriggerManager.h"
#include "mechanisms/Triggers_HeatSources.h"
#include "reference/PlainTriggers.h"
#include "reference/RandomSceneTest.h"
#include "support/DataFolder.h"
#include "support/SceneAccess.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>

namespace tarnwick {

namespace {

constexpr std::int32_t types[] = {-1,  100, 101, 0,   1,   2,   3,   4,   5,   200, 201, 202,
                                  203, 300, 301, 401, 402, 403, 404, 405, 406, 407, 408, 409,
                                  410, 501, 502, 503, 601, 602, 603, 604, 701, 702, 801, 901,
                                  77,  0,   1,   2,   200, 202, 203, 702, 404, 405, 410};
constexpr int idCount = 6; ///< Ids of entities and targets: 0 to 5, so that many are shared and some lone.

bool differ(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) != std::bit_cast<std::uint32_t>(b);
}
bool differ(Vector2 a, Vector2 b) {
    return differ(a.x, b.x) || differ(a.y, b.y);
}

} // namespace

class RandomTriggersTest : public RandomSceneTest {
protected:
    void addMechanisms(Dice& dice) override {
        movers = {};
        effects = {};
        triggers = {};
        fires.clear();
        TriggerManager::initialise();
        loadHeat(dice);
        addPolygons(dice);
        addMovers(dice);
        addForces(dice);
        addEmitters(dice);
        addObjects(dice);
        for (int i = dice.whole(1, 40); i > 0; --i) {
            addTrigger(dice);
        }
        Level::findDestructablePolygons();
        Level::findMoveablePolygons();
    }

    void loadHeat(Dice& dice) {
        const int speed = dice.whole(0, 400);
        const int ice = dice.whole(0, 80);
        const int steam = dice.whole(0, 180);
        data.write("cfg/water.cfg", "triggerTemperatureChangeSpeed = " + std::to_string(speed) +
                                        " triggerTemperatureChangeAmountIce = " + std::to_string(ice) +
                                        " triggerTemperatureChangeAmountSteam = " + std::to_string(steam));
        Triggers_HeatSources_LoadSettings();
        triggers.changeSpeed = static_cast<float>(speed);
        triggers.iceBound = static_cast<float>(ice);
        triggers.steamBound = static_cast<float>(steam);
    }

    void addPolygons(Dice& dice) {
        for (int i = dice.whole(0, 6); i > 0; --i) {
            const float x = std::floor(dice.between(-300.0f, 250.0f));
            const float y = std::floor(dice.between(-200.0f, 150.0f));
            const float width = std::floor(dice.between(5.0f, 60.0f));
            const float height = std::floor(dice.between(5.0f, 60.0f));
            SceneAccess::addPolygon({{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}},
                                    dice.between(0.0f, 1.0f));
            Level::polygons.back().id = dice.whole(0, idCount - 1);
        }
        for (const Polygon2D& polygon : Level::polygons) {
            movers.addPolygon(polygon);
        }
        for (PlainMovers::Polygon& polygon : movers.polygons) {
            triggers.polygons.push_back({polygon.id, true, &polygon});
        }
    }

    void addMovers(Dice& dice) {
        for (int i = dice.whole(0, 4); i > 0; --i) {
            PlainMovers::Mover twin;
            Mover mover;
            // Kept from id 0, which is that of the walls.
            mover.id = twin.id = dice.whole(1, idCount - 1);
            mover.speed = twin.speed = dice.between(0.0f, 200.0f);
            twin.end = {std::floor(dice.between(-100.0f, 100.0f)), std::floor(dice.between(-100.0f, 100.0f))};
            mover.setStartPoint(0.0f, 0.0f);
            mover.setEndPoint(twin.end.x, twin.end.y);
            MoverManager::addMover(mover);
            movers.addMover(twin);
        }
    }

    void addForces(Dice& dice) {
        for (int i = dice.whole(0, 6); i > 0; --i) {
            ForceManager::addForce(dice.whole(0, idCount - 1), dice.between(-200.0f, 200.0f),
                                   dice.between(-200.0f, 200.0f), dice.between(-1.0f, 1.0f),
                                   dice.between(-1.0f, 1.0f), dice.between(-800.0f, 800.0f));
            const Force& force = ForceManager::forces.back();
            triggers.forces.push_back(
                {force.id, force.enabled, force.position, force.direction, force.strength});
        }
    }

    void addEmitters(Dice& dice) {
        for (int i = dice.whole(0, 3); i > 0; --i) {
            FxParticleEmitter emitter;
            PlainEmitter& twin = effects.emitters.emplace_back();
            emitter.id = dice.whole(0, idCount - 1);
            twin.x = emitter.position.x = dice.between(-200.0f, 200.0f);
            emitter.burstSize = twin.burstSize = 5;
            emitter.setFrequency(dice.between(0.02f, 0.3f));
            twin.frequency = emitter.frequency;
            emitter.active = twin.active = dice.chance(0.5f);
            emitter.setLiveTime(0.2f, 0.1f);
            twin.liveTime[0] = emitter.liveTime1;
            twin.liveTime[1] = emitter.liveTime2;
            emitter.addTexture("gfx\\a.tga");
            twin.textures = 1;
            FxParticleManager::addEmitter(emitter);
            triggers.emitters.push_back({emitter.id, &twin});
        }
    }

    /// The twins stand in the order of the targets: animated objects first, newest in front.
    void addObjects(Dice& dice) {
        for (int i = dice.whole(0, 4); i > 0; --i) {
            LevelObject object;
            object.id = static_cast<std::uint32_t>(dice.whole(0, idCount - 1));
            object.frameCount = dice.chance(0.5f) ? 1 : 4;
            object.frames.resize(object.frameCount);
            object.currentFrame = object.frameCount - 1;
            object.loopsDone = 7;
            LevelObjectsManager::addObject(object);
        }
        for (const auto* list :
             {&LevelObjectsManager::animatedObjects, &LevelObjectsManager::staticObjects}) {
            for (const LevelObject& object : *list) {
                triggers.objects.push_back({static_cast<std::int32_t>(object.id), object.enabled,
                                            object.paused, object.currentFrame, object.frameTime,
                                            object.loopCount, object.loopsDone});
            }
        }
    }

    static Vector2 corner(Dice& dice, Vector2 middle, float size) {
        return {std::floor(middle.x + dice.between(-size, size)),
                std::floor(middle.y + dice.between(-size, size))};
    }

    /// Rectangles, any four corners, slivers, lines and points, some of them far from the view.
    void addTrigger(Dice& dice) {
        PlainTriggers::Trigger twin;
        twin.type = types[dice.whole(0, std::size(types) - 1)];
        twin.target = dice.whole(0, idCount - 1);
        twin.delay = dice.chance(0.3f) ? dice.between(-0.1f, 0.5f) : 0.0f;
        const Vector2 middle = dice.chance(0.9f)
                                   ? Vector2{dice.between(-250.0f, 250.0f), dice.between(-200.0f, 200.0f)}
                                   : Vector2{dice.between(-900.0f, 900.0f), dice.between(-900.0f, 900.0f)};
        const float size = dice.chance(0.2f) ? 200.0f : dice.between(5.0f, 80.0f);
        const Vector2 a = corner(dice, middle, size);
        const Vector2 c = corner(dice, middle, size);
        const int shape = dice.whole(0, 9);
        const Vector2 any = corner(dice, middle, size);
        if (shape < 5) {
            std::ranges::copy(std::initializer_list<Vector2>{a, {c.x, a.y}, c, {a.x, c.y}}, twin.corners);
        } else if (shape < 8) {
            std::ranges::copy(std::initializer_list<Vector2>{a, any, c, corner(dice, middle, size)},
                              twin.corners);
        } else if (shape == 8) {
            const Vector2 between = (a + c) * 0.5f;
            std::ranges::copy(std::initializer_list<Vector2>{a, between, c, between + Vector2{0.01f, 0.0f}},
                              twin.corners);
        } else {
            std::ranges::copy(std::initializer_list<Vector2>{a, a, c, c}, twin.corners);
        }
        TriggerManager::addTrigger(twin.type, twin.target, twin.delay, twin.corners[0], twin.corners[1],
                                   twin.corners[2], twin.corners[3]);
        triggers.triggers.push_back(twin);
    }

    void meddleWithMechanisms(Dice& dice) override {
        if (dice.chance(0.03f)) {
            TriggerManager::resetTriggers();
            triggers.reset();
        }
        if (dice.chance(0.1f)) { // no type of the table rests by itself
            const int place = dice.whole(0, static_cast<int>(triggers.triggers.size()) - 1);
            auto& twin = *std::next(triggers.triggers.begin(), place);
            auto& trigger = *std::next(TriggerManager::triggers.rbegin(), place);
            trigger.cooldownLeft = twin.cooldownLeft = dice.between(0.0f, 0.5f);
        }
    }

    void runTick(float dt) override {
        MoverManager::updateCollideableNodes(Camera::view());
        MoverManager::runMovers(dt, Camera::view());
        FxParticleManager::run(dt, Camera::view());
        movers.tick(plain, dt);
        effects.view = plain.view;
        effects.gravity = plain.settings.gravity;
        effects.randomState = plain.randomState;
        effects.tick(dt);
        plain.randomState = effects.randomState;
        RandomSceneTest::runTick(dt);
        TriggerManager::runTriggers(dt, Camera::view());
        triggers.tick({plain, movers, effects}, dt);
        for (const PlainTriggers::Trigger& trigger : triggers.triggers) {
            fires[trigger.type] = std::max(fires[trigger.type], trigger.fireCount);
        }
    }

    std::string mechanismsDifference() const override {
        if (triggersDiffer()) {
            return "fires or rest of a trigger";
        }
        if (forcesDiffer() || objectsDiffer() || emittersDiffer()) {
            return "a force, an object or an emitter";
        }
        return polygonsDiffer() || moversDiffer() ? "a polygon or a mover" : "";
    }

    bool triggersDiffer() const {
        auto twin = triggers.triggers.rbegin();
        return !std::ranges::all_of(TriggerManager::triggers, [&](const Trigger& trigger) {
            const PlainTriggers::Trigger& other = *twin++;
            return trigger.fireCount == other.fireCount && !differ(trigger.cooldownLeft, other.cooldownLeft);
        });
    }
    bool forcesDiffer() const {
        return !std::ranges::equal(ForceManager::forces, triggers.forces, {}, &Force::enabled,
                                   &PlainTriggers::Force::enabled);
    }
    bool objectsDiffer() const {
        auto twin = triggers.objects.begin();
        const auto same = [&](const LevelObject& object) {
            const PlainTriggers::Object& other = *twin++;
            return object.enabled == other.enabled && object.paused == other.paused &&
                   object.currentFrame == other.currentFrame && object.loopCount == other.loopCount &&
                   object.loopsDone == other.loopsDone;
        };
        return !std::ranges::all_of(LevelObjectsManager::animatedObjects, same) ||
               !std::ranges::all_of(LevelObjectsManager::staticObjects, same);
    }
    bool emittersDiffer() const {
        return FxParticleManager::particles.size() != effects.particles.size() ||
               !std::ranges::equal(FxParticleManager::emitters, effects.emitters, {},
                                   &FxParticleEmitter::active, &PlainEmitter::active);
    }
    bool polygonsDiffer() const {
        auto twin = triggers.polygons.begin();
        return !std::ranges::all_of(Level::polygons, [&](const Polygon2D& polygon) {
            const PlainTriggers::Polygon& other = *twin++;
            return polygon.visible == other.visible && polygon.collideable == other.polygon->collideable &&
                   !differ({polygon.offsetX, polygon.offsetY}, other.polygon->offset);
        });
    }
    bool moversDiffer() const {
        auto twin = movers.movers.begin();
        return !std::ranges::all_of(MoverManager::movers, [&](const Mover& mover) {
            const PlainMovers::Mover& other = *twin++;
            return mover.state == static_cast<MoverState>(other.state) &&
                   !differ(mover.position, other.position);
        });
    }

    DataFolder data;
    PlainMovers movers;
    PlainEffects effects;
    PlainTriggers triggers;
    std::map<std::int32_t, std::uint32_t> fires; ///< Most fires of a trigger of each type in a scene.
};

TEST_F(RandomTriggersTest, SmallScenesAreThePlainReadingToTheLastBit) {
    const std::uint32_t scenes = sanitised ? 12 : 200;
    std::map<std::int32_t, int> scenesWithType;
    for (std::uint32_t seed = 5001; seed <= 5000 + scenes; ++seed) {
        runScene(seed, 20 + static_cast<int>(seed - 5000) * 2, sanitised ? 100 : 150);
        ASSERT_FALSE(HasFatalFailure());
        for (const auto& [type, count] : fires) {
            scenesWithType[type] += count > 0 ? 1 : 0;
        }
    }
    for (const std::int32_t type : types) {
        EXPECT_TRUE(sanitised || scenesWithType[type] >= 5) << type; // nobody stood by idle
    }
}

TEST_F(RandomTriggersTest, LargerScenesAreThePlainReadingToTheLastBit) {
    const std::uint32_t scenes = sanitised ? 2 : 10;
    for (std::uint32_t seed = 6001; seed <= 6000 + scenes; ++seed) {
        runScene(seed, 600, sanitised ? 40 : 150);
        ASSERT_FALSE(HasFatalFailure());
    }
}

} // namespace tarnwick
