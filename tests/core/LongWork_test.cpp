#include "core/LongWork.h"

#include "support/ModuleTest.h"

namespace tarnwick {

namespace {

int asked = 0;
LongWork::Kind kindAsked = LongWork::Kind::load;
bool answer = true;

bool watch(LongWork::Kind kind) {
    ++asked;
    kindAsked = kind;
    return answer;
}

} // namespace

class LongWorkTest : public ModuleTest {
protected:
    LongWorkTest() {
        asked = 0;
        answer = true;
    }

    /// The last of so many answers.
    static bool afterCalls(int calls) {
        bool goesOn = true;
        for (int i = 0; i < calls; ++i) {
            goesOn = LongWork::goesOn();
        }
        return goesOn;
    }
};

TEST_F(LongWorkTest, WithoutAWatchAllWorkGoesOn) {
    EXPECT_TRUE(afterCalls(1000));
    EXPECT_TRUE(LongWork::goesOnWithinTick());
}

TEST_F(LongWorkTest, TheWatchIsAskedAtEvery256thCallAndItsAnswerStands) {
    LongWork::setWatch(watch);
    answer = false;

    EXPECT_TRUE(afterCalls(255));
    EXPECT_EQ(asked, 0);
    EXPECT_FALSE(afterCalls(1));
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(afterCalls(255));
    answer = true;
    EXPECT_TRUE(afterCalls(1));
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(kindAsked, LongWork::Kind::load);
}

TEST_F(LongWorkTest, WithinATickTheWatchIsAskedAtOnce) {
    LongWork::setWatch(watch);
    answer = false;

    EXPECT_FALSE(LongWork::goesOnWithinTick());
    EXPECT_EQ(kindAsked, LongWork::Kind::tick);
    EXPECT_TRUE(LongWork::goesOn()); // of a load, which nobody asked for yet
}

} // namespace tarnwick
