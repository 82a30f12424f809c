#include "tools/sim/HeldKeys.h"

#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <stdexcept>

namespace tarnwick {

class HeldKeysTest : public ModuleTest {
protected:
    HeldKeysTest() { GLWindow::createHeadless(800, 600); }
    ~HeldKeysTest() override { GLWindow::close(); }

    HeldKeys keysOf(const std::string& text) {
        data.write("keys.txt", text);
        return HeldKeys::fromFile("keys.txt");
    }
    std::string refusalOf(const std::string& text) {
        try {
            keysOf(text);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "accepted";
    }
    /// What the window holds down once `ticksRun` ticks have run.
    static std::string held(HeldKeys& keys, std::uint64_t ticksRun) {
        keys.send(ticksRun);
        GLWindow::run();
        return std::string(GLWindow::keyboardKeyPressed(key::left) ? "L" : "-") +
               (GLWindow::keyboardKeyPressed(key::right) ? "R" : "-");
    }

    DataFolder data;
};

TEST_F(HeldKeysTest, KeysAreHeldFromTheirTickOn) {
    HeldKeys keys = keysOf("0 left\n3 right\n4 both\n6 none\n");

    EXPECT_EQ(held(keys, 0), "L-");
    EXPECT_EQ(held(keys, 2), "L-");
    EXPECT_EQ(held(keys, 3), "-R");
    EXPECT_EQ(held(keys, 4), "LR");
    EXPECT_EQ(held(keys, 5), "LR");
    EXPECT_EQ(held(keys, 6), "--");
}

TEST_F(HeldKeysTest, ARunThatStartsLateHoldsWhatHoldsThen) {
    HeldKeys keys = keysOf("0 left\n100 right\n200 none\n");

    EXPECT_EQ(held(keys, 150), "-R");
}

TEST_F(HeldKeysTest, TheLaterOfTwoLinesForATickWins) {
    HeldKeys keys = keysOf("5 left\n5 right\n");

    EXPECT_EQ(held(keys, 5), "-R");
}

TEST_F(HeldKeysTest, EmptyLinesAndNotesArePassedOver) {
    HeldKeys keys = keysOf("# turn left first\n\n  0   left  \r\n");

    EXPECT_EQ(held(keys, 0), "L-");
}

TEST_F(HeldKeysTest, ABadLineIsRefusedWithItsNumber) {
    EXPECT_EQ(refusalOf("0 left\nx left\n"), "keys.txt: line 2: expected TICK left|right|none|both");
    EXPECT_EQ(refusalOf("0\n"), "keys.txt: line 1: expected TICK left|right|none|both");
    EXPECT_EQ(refusalOf("-1 left\n"), "keys.txt: line 1: expected TICK left|right|none|both");
    EXPECT_EQ(refusalOf("99999999999999999999 left\n"),
              "keys.txt: line 1: expected TICK left|right|none|both");
    EXPECT_EQ(refusalOf("0 up\n"), "keys.txt: line 1: 'up' is none of left, right, none, both");
    EXPECT_EQ(refusalOf("0 left right\n"), "keys.txt: line 1: expected TICK left|right|none|both");
    EXPECT_EQ(refusalOf("7 left\n3 none\n"), "keys.txt: line 2: tick 3 comes after tick 7");
}

TEST_F(HeldKeysTest, AMissingFileIsRefused) {
    EXPECT_THROW(HeldKeys::fromFile("missing.txt"), std::runtime_error);
}

} // namespace tarnwick
