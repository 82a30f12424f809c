// Water and ice that moving polygons shove, beside the plain reading, on seeded random scenes: every field
// equal, bit for bit.

#include "game/Camera.h"
#include "level/Level.h"
#include "mechanisms/MoverManager.h"
#include "particles/ParticleManager.h"
#include "reference/PlainMovers.h"
#include "reference/RandomSceneTest.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

class RandomMoversTest : public RandomSceneTest {
protected:
    static constexpr float turn = 6.2831855f; ///< Radians.

    /// Up to 12 polygons on 4 ids, and up to 8 movers, of which some carry nothing.
    void addMechanisms(Dice& dice) override {
        movers = {};
        const int polygons = dice.whole(1, 12);
        for (int i = 0; i < polygons; ++i) {
            addPolygon(dice);
        }
        for (const Polygon2D& polygon : Level::polygons) {
            movers.addPolygon(polygon);
        }
        const int count = dice.whole(1, 8);
        for (int i = 0; i < count; ++i) {
            addMover(dice);
        }
        Level::findMoveablePolygons();
    }

    /// A polygon of 3 to 12 corners, often hollow in places, of either winding.
    static void addPolygon(Dice& dice) {
        Polygon2D& polygon = Level::polygons.emplace_back();
        const Vector2 middle{dice.between(-300.0f, 300.0f), dice.between(-250.0f, 200.0f)};
        const float size = dice.chance(0.2f) ? dice.between(60.0f, 200.0f) : dice.between(5.0f, 50.0f);
        const float hollow = dice.chance(0.5f) ? 1.0f : dice.between(0.3f, 1.0f);
        const int corners = dice.whole(3, 12);
        const float start = dice.between(0.0f, turn);
        const float direction = dice.chance(0.5f) ? 1.0f : -1.0f;
        for (int corner = 0; corner < corners; ++corner) {
            const float angle =
                start + direction * turn * static_cast<float>(corner) / static_cast<float>(corners);
            const float distance = size * dice.between(hollow, 1.0f);
            polygon.addPoint(std::floor(middle.x + distance * std::cos(angle)),
                             std::floor(middle.y + distance * std::sin(angle)));
        }
        polygon.id = dice.whole(1, 4);
        polygon.collideable = !dice.chance(0.1f);
        polygon.setFrictionLevel(dice.between(0.0f, 1.0f));
    }

    void addMover(Dice& dice) {
        PlainMovers::Mover twin;
        Mover mover;
        mover.id = twin.id = dice.whole(1, 5);
        mover.speed = twin.speed =
            dice.chance(0.1f) ? dice.between(-300.0f, 3000.0f) : dice.between(0.0f, 250.0f);
        twin.start = {std::floor(dice.between(-200.0f, 200.0f)), std::floor(dice.between(-200.0f, 200.0f))};
        twin.end = dice.chance(0.1f) ? twin.start
                                     : twin.start + Vector2{std::floor(dice.between(-150.0f, 150.0f)),
                                                            std::floor(dice.between(-150.0f, 150.0f))};
        mover.setStartPoint(twin.start.x, twin.start.y);
        mover.setEndPoint(twin.end.x, twin.end.y);
        twin.state = dice.whole(0, 5);
        mover.state = static_cast<MoverState>(twin.state);
        MoverManager::addMover(mover);
        movers.addMover(twin);
    }

    /// What triggers would do.
    void meddleWithMechanisms(Dice& dice) override {
        auto twin = movers.movers.begin();
        for (Mover& mover : MoverManager::movers) {
            if (dice.chance(0.02f)) {
                twin->state = dice.whole(0, 4);
                mover.state = static_cast<MoverState>(twin->state);
            }
            ++twin;
        }
        auto polygonTwin = movers.polygons.begin();
        for (Polygon2D& polygon : Level::polygons) {
            if (polygon.moveable && dice.chance(0.005f)) {
                polygonTwin->collideable = !polygonTwin->collideable;
                Level::setPolygonCollideable(polygon, polygonTwin->collideable);
            }
            ++polygonTwin;
        }
    }

    void runTick(float dt) override {
        MoverManager::updateCollideableNodes(Camera::view());
        MoverManager::runMovers(dt, Camera::view());
        movers.tick(plain, dt);
        RandomSceneTest::runTick(dt);
    }

    static bool differ(float a, float b) {
        return std::bit_cast<std::uint32_t>(a) != std::bit_cast<std::uint32_t>(b);
    }
    static bool differ(Vector2 a, Vector2 b) { return differ(a.x, b.x) || differ(a.y, b.y); }

    std::string mechanismsDifference() const override {
        auto twin = movers.movers.begin();
        for (const Mover& mover : MoverManager::movers) {
            if (differ(mover.position, twin->position) ||
                mover.state != static_cast<MoverState>(twin->state)) {
                return "position or state of a mover";
            }
            ++twin;
        }
        auto polygonTwin = movers.polygons.begin();
        for (const Polygon2D& polygon : Level::polygons) {
            if (differ({polygon.offsetX, polygon.offsetY}, polygonTwin->offset) ||
                differ({polygon.previousOffsetX, polygon.previousOffsetY}, polygonTwin->previousOffset)) {
                return "offset of a polygon";
            }
            ++polygonTwin;
        }
        return edgesDiffer() ? "a moving edge" : "";
    }

    bool edgesDiffer() const {
        return !std::ranges::equal(MoverManager::collideableNodes, plain.collision.moving,
                                   [](const CollisionNode& a, const CollisionNode& b) {
                                       return !differ(a.start, b.start) && !differ(a.end, b.end) &&
                                              !differ(a.normal, b.normal) &&
                                              !differ(a.direction, b.direction) &&
                                              !differ(a.length, b.length) && !differ(a.friction, b.friction);
                                   });
    }

    PlainMovers movers;
};

TEST_F(RandomMoversTest, SmallScenesAreThePlainReadingToTheLastBit) {
    const std::uint32_t scenes = sanitised ? 10 : 60;
    for (std::uint32_t seed = 3001; seed <= 3000 + scenes; ++seed) {
        runScene(seed, 20 + static_cast<int>(seed - 3000) * 4, sanitised ? 100 : 200);
        ASSERT_FALSE(HasFatalFailure());
    }
}

TEST_F(RandomMoversTest, LargerScenesAreThePlainReadingToTheLastBit) {
    const std::uint32_t scenes = sanitised ? 2 : 8;
    for (std::uint32_t seed = 4001; seed <= 4000 + scenes; ++seed) {
        runScene(seed, 700, sanitised ? 40 : 200);
        ASSERT_FALSE(HasFatalFailure());
    }
}

} // namespace tarnwick
