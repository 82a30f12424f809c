// The simulation beside its plain reading, on seeded random scenes: every field equal, bit for bit.

#include "reference/RandomSceneTest.h"

#include <cstdint>

namespace tarnwick {

class RandomScenesTest : public RandomSceneTest {};

TEST_F(RandomScenesTest, SmallOnesAreThePlainReadingToTheLastBit) {
    const std::uint32_t scenes = sanitised ? 12 : 86;
    for (std::uint32_t seed = 1; seed <= scenes; ++seed) {
        runScene(seed, 20 + static_cast<int>(seed) * 4, 200);
        ASSERT_FALSE(HasFatalFailure());
    }
}

TEST_F(RandomScenesTest, MiddlingOnesAreThePlainReadingToTheLastBit) {
    const std::uint32_t scenes = sanitised ? 3 : 12;
    for (std::uint32_t seed = 1001; seed <= 1000 + scenes; ++seed) {
        runScene(seed, 600, sanitised ? 60 : 200);
        ASSERT_FALSE(HasFatalFailure());
    }
}

TEST_F(RandomScenesTest, LargeOnesAreThePlainReadingToTheLastBit) {
    const std::uint32_t scenes = sanitised ? 1 : 4;
    for (std::uint32_t seed = 2001; seed <= 2000 + scenes; ++seed) {
        runScene(seed, 2000, sanitised ? 20 : 200);
        ASSERT_FALSE(HasFatalFailure());
    }
}

} // namespace tarnwick
