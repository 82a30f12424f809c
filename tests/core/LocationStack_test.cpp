#include "core/LocationStack.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

void innerFunction() {
    TARNWICK_LOCATION("Inner::function");
    EXPECT_EQ(LocationStack::count, 2);
    EXPECT_STREQ(LocationStack::names[0], "Outer::function");
    EXPECT_STREQ(LocationStack::names[1], "Inner::function");
}

void outerFunction() {
    TARNWICK_LOCATION("Outer::function");
    innerFunction();
    EXPECT_EQ(LocationStack::count, 1);
}

class LocationStackTest : public testing::Test {
protected:
    ~LocationStackTest() override { LocationStack::count = 0; }
};

TEST_F(LocationStackTest, AScopeIsOnTheStackForTheLifeOfItsFunction) {
    LocationStack::count = 0;

    outerFunction();

    EXPECT_EQ(LocationStack::count, 0);
}

TEST_F(LocationStackTest, APopClearsNothing) {
    LocationStack::count = 0;

    { TARNWICK_LOCATION("Past::function"); }

    EXPECT_STREQ(LocationStack::names[0], "Past::function");
}

TEST_F(LocationStackTest, TheCountWrapsRoundInsideTheArray) {
    LocationStack::count = 65535;

    LocationStack::push("Last::entry");
    LocationStack::push("First::entry");

    EXPECT_EQ(LocationStack::count, 1);
    EXPECT_STREQ(LocationStack::names[65535], "Last::entry");
    EXPECT_STREQ(LocationStack::names[0], "First::entry");
    LocationStack::pop();
    LocationStack::pop();
    EXPECT_EQ(LocationStack::count, 65535);
}

} // namespace
} // namespace tarnwick
