#include "core/Random.h"

#include "reference/PlainRandom.h"
#include "support/ModuleTest.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

namespace tarnwick {
namespace {

#ifdef __OPTIMIZE__
constexpr std::uint32_t heavyCount = 4'000'000;
#else
constexpr std::uint32_t heavyCount = 200'000;
#endif

class RandomTest : public ModuleTest {};

TEST_F(RandomTest, TheFirstDrawsFromStateZeroAreAlwaysTheSame) {
    if (LDBL_MANT_DIG != 64) {
        GTEST_SKIP() << "the sequence of this platform is another one";
    }
    constexpr std::array<std::uint32_t, 4> expected{0x59FE3544, 0x5B380F0F, 0x5B67A2A8, 0x5BEBF2D5};

    for (const std::uint32_t draw : expected) {
        EXPECT_EQ(randomInt(), draw);
    }
}

TEST_F(RandomTest, TheSequenceFromStateZeroIsThatOfThePlainStep) {
    std::uint32_t plain = 0;
    for (std::uint32_t i = 0; i < heavyCount; ++i) {
        plain = plainRandomStep(plain);
        ASSERT_EQ(randomInt(), plain) << "draw " << i;
    }
}

TEST_F(RandomTest, EverySeedSteppedEquallyFollowsThePlainStep) {
    constexpr std::uint32_t stride = 0xFFFFFFFFu / heavyCount;
    std::uint32_t seed = 0;
    for (std::uint32_t i = 0; i < heavyCount; ++i, seed += stride) {
        ASSERT_EQ(Random::nextState(seed), plainRandomStep(seed)) << "seed " << seed;
    }
}

TEST_F(RandomTest, SeedsOfEveryMagnitudeFollowThePlainStep) {
    for (std::uint32_t power = 0; power < 32; ++power) {
        const std::uint32_t first = 1u << power;
        for (std::uint32_t i = 0; i < heavyCount / 64; ++i) {
            ASSERT_EQ(Random::nextState(first + i), plainRandomStep(first + i)) << "seed " << first + i;
            ASSERT_EQ(Random::nextState(first - i), plainRandomStep(first - i)) << "seed " << first - i;
        }
    }
}

TEST_F(RandomTest, TheStepInExtendedArithmeticIsThePlainOne) {
    if (LDBL_MANT_DIG != 64) {
        GTEST_SKIP() << "steps are taken in double here";
    }
    std::uint32_t seed = 0;
    for (std::uint32_t i = 0; i < heavyCount / 4; ++i, seed += 4099) {
        ASSERT_EQ(Random::nextStateExtended(seed), plainRandomStep(seed)) << "seed " << seed;
    }
}

TEST_F(RandomTest, AFloatIsMadeOfTheLow24BitsOfTheNewState) {
    for (int i = 0; i < 10'000; ++i) {
        const std::uint32_t next = Random::nextState(getRandomState());
        const double exact = (next & 0xFFFFFFu) / 16777215.0;

        EXPECT_EQ(randomFloat(), static_cast<float>(exact));
        EXPECT_EQ(getRandomState(), next);
    }
}

TEST_F(RandomTest, EveryFloatRoundsAsThroughDouble) {
    for (std::uint32_t low = 0; low <= 0xFFFFFFu; low += 5) {
        ASSERT_EQ(static_cast<float>(low) / 16777215.0f, static_cast<float>(low / 16777215.0)) << low;
    }
}

TEST_F(RandomTest, FloatsFillTheRangeFromZeroToOneEvenly) {
    constexpr int draws = 100'000;
    std::array<int, 10> tenths{};
    for (int i = 0; i < draws; ++i) {
        const float value = randomFloat();
        ASSERT_GE(value, 0.0f);
        ASSERT_LE(value, 1.0f);
        ++tenths[static_cast<std::size_t>(value * 9.999f)];
    }
    for (const int count : tenths) {
        EXPECT_GT(count, draws / 20);
        EXPECT_LT(count, draws / 5);
    }
}

TEST_F(RandomTest, TheSameSeedGivesTheSameSequence) {
    seedRandom(12345);
    const std::uint32_t first = randomInt();
    randomInt();

    seedRandom(12345);

    EXPECT_EQ(randomInt(), first);
}

TEST_F(RandomTest, ARangeLiesBetweenTheNegatedEnds) {
    for (int i = 0; i < 1000; ++i) {
        const float value = randomRange(2.0f, 5.0f);

        EXPECT_GE(value, -5.0f);
        EXPECT_LE(value, -2.0f);
    }
}

} // namespace
} // namespace tarnwick
