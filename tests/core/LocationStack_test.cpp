#include "core/LocationStack.h"

#include <gtest/gtest.h>
#include <pthread.h>

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

void* pushInALibrary(void*) {
    LocationStack::push("Library::function");
    return nullptr;
}

// The fault: thread-local arrays of 512 KiB, which a library's thread with a small stack cannot start with;
// and a library's thread that writes over the main thread's places.
TEST_F(LocationStackTest, AThreadWithASmallStackStartsAndLeavesTheMainThreadsPlacesAlone) {
    LocationStack::count = 0;
    LocationStack::use(LocationStack::mainNames);
    LocationStack::push("Main::function");
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 256 * 1024);

    pthread_t thread{};
    const int failure = pthread_create(&thread, &attributes, pushInALibrary, nullptr);
    if (failure == 0) {
        pthread_join(thread, nullptr);
    }
    pthread_attr_destroy(&attributes);

    EXPECT_EQ(failure, 0);
    EXPECT_STREQ(LocationStack::names[0], "Main::function");
    EXPECT_EQ(LocationStack::count, 1);
    LocationStack::use(LocationStack::otherNames);
}

} // namespace
} // namespace tarnwick
