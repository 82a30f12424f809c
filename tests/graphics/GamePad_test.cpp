#include "graphics/GamePad.h"

#include "core/Log.h"
#include "graphics/GLWindowEventListener.h"
#include "graphics/KeyMap.h"
#include "support/ModuleTest.h"
#include "support/VirtualPad.h"

#include <cmath>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

/// Writes down which keys go down (positive) and up (negative).
class KeyListener final : public GLWindowEventListener {
public:
    void keyboardPressed(std::uint32_t key) override { keys.push_back(static_cast<int>(key)); }
    void keyboardReleased(std::uint32_t key) override { keys.push_back(-static_cast<int>(key)); }

    std::vector<int> keys;
};

} // namespace

class GamePadTest : public ModuleTest {
protected:
    GamePadTest() {
        GLWindow::createHeadless(800, 600);
        GLWindow::setEventListener(&listener);
    }
    ~GamePadTest() override { GLWindow::setEventListener(nullptr); }

    static constexpr int a = static_cast<int>(key::padA);
    static constexpr int shoulder = static_cast<int>(key::padLeftShoulder);

    const DataFolder data;
    KeyListener listener;
};

/// Finds a pad that plays although nobody switched it on.
TEST_F(GamePadTest, WithoutTheComfortNobodyListensToAPad) {
    GamePad::initialise();
    SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER);
    {
        VirtualPad pad;

        pad.press(SDL_CONTROLLER_BUTTON_A);
        pad.lean(1.0f);

        EXPECT_TRUE(listener.keys.empty());
        EXPECT_EQ(GamePad::turn(), 0.0f);
    }
    SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
}

/// Finds a button that is lost, comes twice or stays down.
TEST_F(GamePadTest, AButtonIsAKeyThatGoesDownAndUp) {
    VirtualPad::look(data);
    VirtualPad pad;

    pad.hold(SDL_CONTROLLER_BUTTON_A);
    EXPECT_TRUE(GLWindow::keyboardKeyPressed(key::padA));
    pad.hold(SDL_CONTROLLER_BUTTON_A, false);

    EXPECT_FALSE(GLWindow::keyboardKeyPressed(key::padA));
    EXPECT_EQ(listener.keys, (std::vector<int>{a, -a}));
}

/// Finds a stick without a rest in the middle, or with a step behind it.
TEST_F(GamePadTest, TheLeftStickTurnsInProportion) {
    VirtualPad::look(data);
    VirtualPad pad;

    pad.lean(0.15f);
    EXPECT_EQ(GamePad::turn(), 0.0f);
    pad.lean(0.2f);
    EXPECT_NEAR(GamePad::turn(), 0.0f, 0.03f);
    pad.lean(0.59f);
    EXPECT_NEAR(GamePad::turn(), 0.5f, 0.001f); // half of the way from rest to the end
    pad.lean(-1.0f);
    EXPECT_EQ(GamePad::turn(), -1.0f);
}

/// Finds a cross that turns nothing, the wrong way, or farther than a key does.
TEST_F(GamePadTest, ShouldersAndTheCrossTurnAsFarAsTheStickCan) {
    VirtualPad::look(data);
    VirtualPad pad;

    pad.hold(SDL_CONTROLLER_BUTTON_LEFTSHOULDER);
    EXPECT_EQ(GamePad::turn(), -1.0f);
    pad.hold(SDL_CONTROLLER_BUTTON_DPAD_LEFT);
    EXPECT_EQ(GamePad::turn(), -1.0f);
    pad.hold(SDL_CONTROLLER_BUTTON_RIGHTSHOULDER);
    EXPECT_EQ(GamePad::turn(), 0.0f);
    pad.hold(SDL_CONTROLLER_BUTTON_LEFTSHOULDER, false);
    pad.hold(SDL_CONTROLLER_BUTTON_DPAD_LEFT, false);
    EXPECT_EQ(GamePad::turn(), 1.0f);
}

/// Finds a button that is held for ever because its pad is gone.
TEST_F(GamePadTest, PulledOutItLetsGoOfWhatWasHeld) {
    VirtualPad::look(data);
    {
        VirtualPad pad;
        pad.lean(1.0f);
        pad.hold(SDL_CONTROLLER_BUTTON_LEFTSHOULDER);
    }

    EXPECT_EQ(listener.keys, (std::vector<int>{shoulder, -shoulder}));
    EXPECT_FALSE(GLWindow::keyboardKeyPressed(key::padLeftShoulder));
    EXPECT_EQ(GamePad::turn(), 0.0f);
}

/// Finds a pad that is known only if it was there at the start, or one that another one replaces.
TEST_F(GamePadTest, EveryPadPlaysWheneverItCame) {
    VirtualPad::look(data);
    VirtualPad first;
    VirtualPad second;
    second.press(SDL_CONTROLLER_BUTTON_A);
    second.unplug();
    first.press(SDL_CONTROLLER_BUTTON_A);

    EXPECT_EQ(listener.keys, (std::vector<int>{a, -a, a, -a}));
}

/// Finds a motor that is never told, or told although the player wants it still.
TEST_F(GamePadTest, TheMotorShakesIfThePlayerWantsIt) {
    VirtualPad::look(data);
    VirtualPad pad;

    GamePad::rumble(0.5f);
    EXPECT_EQ(pad.lastRumble(), 32767);
    GamePad::rumble(5.0f);
    EXPECT_EQ(pad.lastRumble(), 65535);

    data.write("cfg/comfort.cfg", "gamePad = TRUE");
    Comfort::initialise();
    GamePad::rumble(0.1f);
    EXPECT_EQ(pad.lastRumble(), 65535);
}

/// Finds a table of pads that is not read.
TEST_F(GamePadTest, ThePlayersTableOfPadsIsRead) {
    data.write("cfg/gamecontrollerdb.txt",
               "03000000341a00003608000000000001,Of a Test,a:b1,b:b2,platform:Linux,\n");

    VirtualPad::look(data);

    EXPECT_NE(Log::outputText().find("1 game pads are described"), std::string::npos) << Log::outputText();
}

} // namespace tarnwick
