#include "tools/sim/PlayerEvents.h"

#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <stdexcept>

namespace tarnwick {

class PlayerEventsTest : public ModuleTest {
protected:
    PlayerEventsTest() {
        GLWindow::createHeadless(800, 600);
        GLWindow::setEventListener(&listener);
    }
    ~PlayerEventsTest() override { GLWindow::close(); }

    PlayerEvents eventsOf(const std::string& text) const {
        data.write("events.txt", text);
        return PlayerEvents::fromFile("events.txt");
    }
    std::string refusalOf(const std::string& text) const {
        try {
            eventsOf(text);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "accepted";
    }
    /// What the window hears of all ticks up to `ticks`.
    std::string heardUpTo(PlayerEvents events, std::uint64_t ticks) {
        for (std::uint64_t tick = 0; tick <= ticks; ++tick) {
            events.send(tick);
            listener.tick = tick;
            GLWindow::run();
        }
        return listener.heard;
    }

    /// Writes down what it hears, and at which tick.
    struct Listener final : GLWindowEventListener {
        std::string heard;
        std::uint64_t tick = 0;

        void note(const std::string& what) { heard += std::to_string(tick) + " " + what + "\n"; }
        void mouseMoved(std::uint32_t x, std::uint32_t y) override {
            note("moved " + std::to_string(x) + " " + std::to_string(y));
        }
        void mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t button) override {
            note("pressed " + std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(button));
        }
        void mouseReleased(std::uint32_t /*x*/, std::uint32_t /*y*/, std::uint32_t button) override {
            note("released " + std::to_string(button));
        }
        void keyboardPressed(std::uint32_t key) override { note("key " + std::to_string(key)); }
        void keyboardReleased(std::uint32_t key) override { note("key up " + std::to_string(key)); }
    };
    Listener listener;
    const DataFolder data;
};

TEST_F(PlayerEventsTest, ThePointerMovesFastestInTheMiddleOfItsWay) {
    const std::string heard = heardUpTo(eventsOf("2 point 100 50\n6 point 164 50\n"), 9);

    EXPECT_EQ(heard, "2 moved 100 50\n3 moved 110 50\n4 moved 132 50\n5 moved 154 50\n6 moved 164 50\n");
}

TEST_F(PlayerEventsTest, AClickIsWhereThePointerIs) {
    const std::string heard = heardUpTo(eventsOf("1 point 30 40\n2 click\n"), 9);

    EXPECT_EQ(heard, "1 moved 30 40\n2 pressed 30 40 1\n8 released 1\n");
}

TEST_F(PlayerEventsTest, KeysHaveTheirNames) {
    const std::string heard = heardUpTo(eventsOf("# into the menu\n\n0 key Escape\n7 key P\n"), 20);

    EXPECT_EQ(heard, "0 key 27\n6 key up 27\n7 key 80\n13 key up 80\n");
}

TEST_F(PlayerEventsTest, LinesThatMeanNothingAreRefusedByTheirNumber) {
    const std::string forms = "expected TICK point X Y, TICK click or TICK key NAME";

    EXPECT_EQ(refusalOf("0 click\n1 jump\n"), "events.txt: line 2: " + forms);
    EXPECT_EQ(refusalOf("click\n"), "events.txt: line 1: " + forms);
    EXPECT_EQ(refusalOf("1 point 3\n"), "events.txt: line 1: " + forms);
    EXPECT_EQ(refusalOf("1 point 3 -4\n"), "events.txt: line 1: " + forms);
    EXPECT_EQ(refusalOf("1 point 3 99999999999\n"), "events.txt: line 1: " + forms);
    EXPECT_EQ(refusalOf("1 click twice\n"), "events.txt: line 1: " + forms);
    EXPECT_EQ(refusalOf("1 key Nowhere\n"), "events.txt: line 1: there is no key 'Nowhere'");
    EXPECT_EQ(refusalOf("5 point 1 1\n4 point 2 2\n"), "events.txt: line 2: tick 4 comes after tick 5");
}

TEST_F(PlayerEventsTest, AMissingFileIsRefused) {
    EXPECT_THROW(PlayerEvents::fromFile("nowhere.txt"), std::runtime_error);
}

} // namespace tarnwick
