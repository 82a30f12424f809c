#include "mechanisms/PushField.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <vector>

namespace tarnwick {

class PushFieldTest : public testing::Test {
protected:
    void addParticle(float x, float y) { particles.emplace_back().position = {x, y}; }
    /// Water in a heap, some of it on one spot, and a few strays.
    void addRandomParticles(std::uint32_t seed) {
        std::mt19937 engine(seed);
        std::uniform_real_distribution<float> heap(-60.0f, 60.0f);
        std::uniform_real_distribution<float> stray(-5000.0f, 5000.0f);
        for (int i = 0; i < 500; ++i) {
            if (i % 50 == 0) {
                addParticle(stray(engine), stray(engine));
            } else if (i % 7 == 0) {
                const Vector2 last = particles.back().position;
                addParticle(last.x, last.y);
            } else {
                addParticle(heap(engine), heap(engine));
            }
        }
        addParticle(1e30f, -1e30f);
        addParticle(std::numeric_limits<float>::quiet_NaN(), 0.0f);
    }
    /// The candidates that pass a test, in the order of the list.
    template <typename Test>
    std::vector<std::uint32_t> search(const Test& test) const {
        std::vector<std::uint32_t> found;
        std::uint32_t candidate = 0;
        for (const Particle& particle : particles) {
            if (field.isLeft(candidate) && test(particle.position)) {
                found.push_back(candidate);
            }
            ++candidate;
        }
        return found;
    }

    ParticleList particles;
    PushField field;
};

TEST_F(PushFieldTest, WithoutParticlesNothingIsFound) {
    field.load(particles);
    std::vector<std::uint32_t> found{1, 2};
    std::vector<Particle*> taken;

    field.findInBox({-1e30f, -1e30f, 1e30f, 1e30f}, found);
    field.takeWithin({0.0f, 0.0f}, 1e9f, taken);

    EXPECT_TRUE(found.empty());
    EXPECT_TRUE(taken.empty());
}

TEST_F(PushFieldTest, ABoxHoldsWhatASearchThroughTheListFinds) {
    addRandomParticles(1);
    field.load(particles);
    std::mt19937 engine(2);
    std::uniform_real_distribution<float> place(-80.0f, 80.0f);
    std::vector<std::uint32_t> found;
    for (int i = 0; i < 500; ++i) {
        const Box box = Box::around({place(engine), place(engine)}, {place(engine), place(engine)});

        field.findInBox(box, found);

        ASSERT_EQ(found, search([&](Vector2 position) {
                      return position.x >= box.minX && position.x <= box.maxX && position.y >= box.minY &&
                             position.y <= box.maxY;
                  }));
    }
}

TEST_F(PushFieldTest, TheWholePlaneHoldsAllThatStandSomewhere) {
    addRandomParticles(3);
    field.load(particles);
    std::vector<std::uint32_t> found;

    field.findInBox({-1e38f, -1e38f, 1e38f, 1e38f}, found);

    EXPECT_EQ(found.size(), particles.size() - 1); // one is nowhere
}

TEST_F(PushFieldTest, TakingWithinADistanceIsThatOfASearchThroughTheListToo) {
    addRandomParticles(4);
    field.load(particles);
    std::mt19937 engine(5);
    std::uniform_real_distribution<float> place(-60.0f, 60.0f);
    std::size_t takenCount = 0;
    for (int i = 0; i < 100; ++i) {
        const Vector2 middle{place(engine), place(engine)};
        const std::vector<std::uint32_t> expected = search([&](Vector2 position) {
            const Vector2 apart = position - middle;
            return apart.x * apart.x + apart.y * apart.y <= 36.0f;
        });
        std::vector<Particle*> expectedParticles;
        for (const std::uint32_t candidate : expected) {
            expectedParticles.push_back(&*std::next(particles.begin(), candidate));
        }
        std::vector<Particle*> taken;

        field.takeWithin(middle, 6.0f, taken);

        ASSERT_EQ(taken, expectedParticles);
        for (const std::uint32_t candidate : expected) {
            ASSERT_FALSE(field.isLeft(candidate));
        }
        takenCount += taken.size();
    }
    EXPECT_GT(takenCount, 100u);
}

TEST_F(PushFieldTest, TheNextOneLeftIsLookedForInTheOrderOfTheList) {
    for (int i = 0; i < 5; ++i) {
        addParticle(0.0f, 0.0f);
    }
    field.load(particles);

    field.take(2);
    field.take(1);
    field.take(4);

    EXPECT_EQ(field.nextLeft(0), 3u);
    EXPECT_EQ(field.nextLeft(2), 3u);
    EXPECT_EQ(field.nextLeft(3), PushField::none);
    EXPECT_EQ(field.nextLeft(4), PushField::none);
}

TEST_F(PushFieldTest, LoadingMakesAllOfThemCandidatesAgain) {
    addParticle(1.0f, 2.0f);
    field.load(particles);
    field.take(0);
    particles.front().position = {100.0f, 2.0f};

    field.load(particles);

    std::vector<std::uint32_t> found;
    field.findInBox({99.0f, 1.0f, 101.0f, 3.0f}, found);
    EXPECT_EQ(found, std::vector<std::uint32_t>{0});
    EXPECT_EQ(field.position(0), (Vector2{100.0f, 2.0f}));
}

} // namespace tarnwick
