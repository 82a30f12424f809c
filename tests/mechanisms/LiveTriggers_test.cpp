#include "mechanisms/LiveTriggers.h"

#include "mechanisms/TriggerManager.h"
#include "support/ModuleTest.h"

#include <cmath>
#include <iterator>
#include <random>
#include <vector>

namespace tarnwick {

class LiveTriggersTest : public ModuleTest {
protected:
    static Trigger& add(Vector2 a, Vector2 b, Vector2 c, Vector2 d) {
        TriggerManager::addTrigger(-1, 0, 0.0f, a, b, c, d);
        return TriggerManager::triggers.front();
    }
    static Trigger& addSquare(float x, float y, float side) {
        return add({x, y}, {x + side, y}, {x + side, y + side}, {x, y + side});
    }
    std::vector<const Trigger*> visited(Vector2 point) const {
        std::vector<const Trigger*> found;
        live.visitAt(point, [&](Trigger& trigger) { found.push_back(&trigger); });
        return found;
    }
    float whole(int low, int high) {
        return static_cast<float>(std::uniform_int_distribution<int>(low, high)(engine));
    }
    float between(float low, float high) { return std::uniform_real_distribution<float>(low, high)(engine); }
    /// A corner far from or near to `middle`, often on it.
    Vector2 corner(Vector2 middle, float size) {
        const bool same = whole(0, 9) == 0.0f;
        return same ? middle : middle + Vector2{whole(-100, 100), whole(-100, 100)} * size;
    }

    LiveTriggers live;
    std::mt19937 engine{7};
};

TEST_F(LiveTriggersTest, WithoutTriggersNothingIsVisited) {
    EXPECT_TRUE(live.empty());
    EXPECT_TRUE(visited({0.0f, 0.0f}).empty());
}

TEST_F(LiveTriggersTest, TriggersAreVisitedInTheOrderInWhichTheyCameIn) {
    std::vector<const Trigger*> all;
    for (int i = 0; i < 9; ++i) {
        Trigger& trigger = addSquare(0.0f, 0.0f, 10.0f);
        all.push_back(&trigger);
        live.add(trigger);
    }

    EXPECT_EQ(live.size(), 9u);
    EXPECT_EQ(visited({5.0f, 5.0f}), all);
}

TEST_F(LiveTriggersTest, WhatIsFarAwayIsNotVisited) {
    live.add(addSquare(0.0f, 0.0f, 10.0f));
    Trigger& other = addSquare(50.0f, 0.0f, 10.0f);
    live.add(other);

    EXPECT_TRUE(visited({-1.0f, 5.0f}).empty());
    EXPECT_TRUE(visited({5.0f, 11.0f}).empty());
    EXPECT_EQ(visited({55.0f, 5.0f}), std::vector<const Trigger*>{&other});
}

TEST_F(LiveTriggersTest, AClearedRowIsEmptyAndTakesNewTriggers) {
    for (int i = 0; i < 3; ++i) {
        live.add(addSquare(0.0f, 0.0f, 10.0f));
    }
    Trigger& only = addSquare(0.0f, 0.0f, 10.0f);

    live.clear();
    live.add(only);

    EXPECT_EQ(visited({5.0f, 5.0f}), std::vector<const Trigger*>{&only});
}

TEST_F(LiveTriggersTest, APointThatIsNoNumberVisitsEveryTriggerAndNoEmptyLane) {
    Trigger& only = addSquare(0.0f, 0.0f, 10.0f);
    live.add(only);

    EXPECT_EQ(visited({std::nanf(""), 0.0f}), std::vector<const Trigger*>{&only});
}

TEST_F(LiveTriggersTest, ARegionWithoutAreaReachesEverywhere) {
    const Vector2 point{3.0f, 4.0f};
    Trigger& spot = add(point, point, point, point);
    Trigger& line = add({0.0f, 0.0f}, {10.0f, 10.0f}, {20.0f, 20.0f}, {5.0f, 5.0f});
    Trigger& triangle = add({0.0f, 0.0f}, {10.0f, 0.0f}, {0.0f, 10.0f}, {0.0f, 10.0f});
    live.add(spot);
    live.add(line);
    live.add(triangle);

    EXPECT_EQ(visited({1e9f, -1e9f}), (std::vector<const Trigger*>{&spot, &line, &triangle}));
}

TEST_F(LiveTriggersTest, NoPointOfARegionLiesOutsideItsReach) {
    int inside = 0;
    for (int trial = 0; trial < 3000; ++trial) {
        const Vector2 middle{whole(-4000, 4000), whole(-4000, 4000)};
        const float size = std::ldexp(1.0f, static_cast<int>(whole(-8, 8)));
        const bool thin = whole(0, 3) == 0.0f; // three corners nearly in line
        const Vector2 a = corner(middle, size);
        const Vector2 b = corner(middle, size);
        const Vector2 bend{between(-1.0f, 1.0f), between(-1.0f, 1.0f)};
        const Vector2 c = thin ? (a + b) * 0.5f + bend : corner(middle, size);
        TriggerManager::triggers.clear();
        const Trigger& trigger = add(a, b, c, corner(middle, size));
        live.clear();
        live.add(TriggerManager::triggers.front());
        for (int i = 0; i < 200; ++i) {
            const Vector2 start = i % 2 == 0 ? trigger.triangleA[i % 3] : trigger.triangleB[i % 3];
            const float way = size * std::pow(10.0f, between(-3.0f, 5.0f));
            const float angle = between(0.0f, 6.3f);
            const Vector2 edge = trigger.edgesA[(i / 2) % 3]; // often straight on along an edge
            const Vector2 point =
                start + (i % 4 == 0 ? edge : Vector2{std::cos(angle), std::sin(angle)}) * way;

            const bool isInside = TriggerManager::pointInTrigger(point, trigger);

            inside += isInside ? 1 : 0;
            ASSERT_TRUE(!isInside || visited(point).size() == 1u) << "trial " << trial;
        }
    }
    EXPECT_GT(inside, 50000);
}

} // namespace tarnwick
