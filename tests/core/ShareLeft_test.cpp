#include "core/ShareLeft.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(ShareLeft, IsTheShareAfterASecondAndAllAtOnce) {
    EXPECT_EQ(shareLeft(0.3f, 1.0f), 0.3f);
    EXPECT_EQ(shareLeft(0.3f, 0.0f), 1.0f);
    EXPECT_EQ(shareLeft(0.25f, 0.5f), 0.5f);
}

TEST(ShareLeft, NothingIsLeftOfNothingAndAllOfAll) {
    EXPECT_EQ(shareLeft(0.0f, 0.01f), 0.0f);
    EXPECT_EQ(shareLeft(1.0f, 0.01f), 1.0f);
}

TEST(ShareLeft, IsTakenInDoubleAndRoundedOnce) {
    EXPECT_EQ(shareLeft(0.03f, 0.153f), 0x1.2b6986p-1f); // in floats the last bit comes out otherwise
}

} // namespace
} // namespace tarnwick
