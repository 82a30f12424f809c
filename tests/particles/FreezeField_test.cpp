#include "particles/FreezeField.h"

#include "core/Random.h"
#include "particles/ParticleGroupMover.h"
#include "support/ModuleTest.h"

#include <cmath>
#include <functional>
#include <list>
#include <vector>

namespace tarnwick {

class FreezeFieldTest : public ModuleTest {
protected:
    /// The order in which members join by the rule: all frozen, then all free ones, then each find to its
    /// end.
    static std::vector<float> plainOrder(Vector2 from, std::list<Particle> frozen, std::list<Particle> free) {
        std::vector<float> order;
        const std::function<void(Vector2)> gather = [&](Vector2 place) {
            std::list<Vector2> found;
            for (std::list<Particle>* const list : {&frozen, &free}) {
                for (auto q = list->begin(); q != list->end();) {
                    const Vector2 apart = q->position - place;
                    if (apart.x * apart.x + apart.y * apart.y <= 144.0f) {
                        order.push_back(q->temperature);
                        found.push_back(q->position);
                        q = list->erase(q);
                    } else {
                        ++q;
                    }
                }
            }
            for (const Vector2 next : found) {
                gather(next);
            }
        };
        gather(from);
        return order;
    }
};

TEST_F(FreezeFieldTest, MembersJoinInTheOrderOfTheFullSearch) {
    for (const float spread : {40.0f, 150.0f, 260.0f}) {
        ParticleList frozen(60);
        ParticleList free(240);
        float name = 0.0f; // the temperature tells who is who
        for (ParticleList* const list : {&frozen, &free}) {
            for (Particle& particle : *list) {
                particle.position = {randomFloat() * spread - 50.0f, randomFloat() * spread - 50.0f};
                particle.temperature = name++;
            }
        }
        Particle seed;
        const std::vector<float> expected = plainOrder(seed.position, frozen, free);
        ParticleGroup group;

        FreezeField(frozen, free).gather(seed, group);

        std::vector<float> order;
        for (auto member = group.members.rbegin(); member != group.members.rend(); ++member) {
            order.push_back(member->temperature);
        }
        EXPECT_EQ(order, expected);
        EXPECT_EQ(frozen.size() + free.size() + order.size(), 300u);
    }
}

TEST_F(FreezeFieldTest, ExactlyTwelveUnitsAreWithinReach) {
    ParticleList frozen;
    ParticleList free(2);
    free.front().position = {0.0f, -12.0f};
    free.back().position = {12.00001f, 0.0f};
    Particle seed;
    ParticleGroup group;

    FreezeField(frozen, free).gather(seed, group);

    EXPECT_EQ(group.members.size(), 1u);
}

TEST_F(FreezeFieldTest, PlacesBeyondAllMeasureAreNearNobody) {
    ParticleList frozen;
    ParticleList free(4);
    auto particle = free.begin();
    (particle++)->position = {std::nanf(""), 0.0f};
    (particle++)->position = {1e30f, 0.0f};
    (particle++)->position = {-1e30f, 1e38f};
    Particle seed;
    ParticleGroup group;

    FreezeField(frozen, free).gather(seed, group);

    EXPECT_EQ(group.members.size(), 1u);
    EXPECT_EQ(free.size(), 3u);
}

TEST_F(FreezeFieldTest, TheRecursionMayBeCalledByItself) {
    ParticleList frozen(1);
    ParticleList free(1);
    free.front().position = {20.0f, 0.0f};
    frozen.front().position = {10.0f, 0.0f};
    ParticleGroup group;
    Particle& from = group.members.emplace_front();

    ParticleGroupMover::particleGroupRecursive(from, group, frozen, free);

    ASSERT_EQ(group.members.size(), 3u);
    EXPECT_EQ(group.members.front().position.x, 20.0f);
}

} // namespace tarnwick
