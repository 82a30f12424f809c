#include "gui/IntroScreen.h"

#include "audio/MusicSystem.h"
#include "graphics/GLWindow.h"
#include "support/AviFile.h"
#include "support/DrawingTest.h"
#include "support/Keyboard.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <filesystem>

namespace tarnwick {

namespace {

/// Drives the clock: each pass of the loop asks for a repaint, and each repaint takes 20 milliseconds.
class DrivenIntro final : public IntroScreen {
public:
    std::uint32_t passes = 0;
    bool soundHeard = false;

    void windowRedrawing() override {
        soundHeard = soundHeard || Mix_PlayingMusic() != 0;
        ++passes;
        Clock::drive(passes * 20);
    }
};

void sendEvent(Uint32 type) {
    SDL_Event event{};
    event.type = type;
    if (type == SDL_MOUSEBUTTONDOWN) {
        event.button.button = SDL_BUTTON_MIDDLE;
        event.button.clicks = 1;
    } else {
        event.window.event = SDL_WINDOWEVENT_CLOSE;
    }
    SDL_PushEvent(&event);
}

} // namespace

class IntroScreenTest : public DrawingTest {
protected:
    IntroScreenTest() {
        AviFile file;
        for (int i = 0; i < 4; ++i) {
            file.addFrame(200);
        }
        data.write("vid/intro.avi", file.bytes());
        GLWindow::run(); // what came with the window is heard by nobody
        GLWindow::setEventListener(&previous);
    }

    struct Listener final : GLWindowEventListener {};
    Listener previous;
};

TEST_F(IntroScreenTest, TheVideoPlaysToItsEndAndTheListenerIsBack) {
    DrivenIntro intro;

    intro.run();

    EXPECT_EQ(intro.passes, 12u); // 4 pictures of 40 ms, each gone with the first pass above that
    EXPECT_EQ(GLWindow::getEventListener(), &previous);
}

TEST_F(IntroScreenTest, ItCanBeShownAgain) {
    DrivenIntro intro;
    intro.run();
    intro.passes = 0;
    Clock::drive(0);

    intro.run();

    EXPECT_EQ(intro.passes, 12u);
}

TEST_F(IntroScreenTest, AKeySkipsIt) {
    DrivenIntro intro;
    pressKey(SDL_SCANCODE_F1, SDLK_F1);

    intro.run();

    EXPECT_EQ(intro.passes, 1u);
    EXPECT_EQ(GLWindow::getEventListener(), &previous);
}

TEST_F(IntroScreenTest, AClickSkipsIt) {
    DrivenIntro intro;
    sendEvent(SDL_MOUSEBUTTONDOWN);

    intro.run();

    EXPECT_EQ(intro.passes, 1u);
}

TEST_F(IntroScreenTest, ItsSoundEndsWithTheKeyThatSkipsIt) {
    SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
    std::filesystem::copy_file(TARNWICK_SOURCE_DIR "/data/vid/intro.ogg", data.path() / "vid/intro.ogg");
    MusicSystem::initialise();
    DrivenIntro intro;
    pressKey(SDL_SCANCODE_F1, SDLK_F1);

    intro.run();
    const bool streamLeft = MusicSystem::resume();
    SDL_ResetHint(SDL_HINT_AUDIODRIVER);

    EXPECT_TRUE(intro.soundHeard);
    EXPECT_FALSE(streamLeft) << "closed, and not only paused";
}

TEST_F(IntroScreenTest, ClosingTheWindowLeavesTheLoop) {
    DrivenIntro intro;
    sendEvent(SDL_WINDOWEVENT);

    intro.run();

    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(intro.passes, 0u);
}

TEST_F(IntroScreenTest, WithoutAVideoItEndsAtOnce) {
    std::filesystem::remove(data.path() / "vid/intro.avi");
    DrivenIntro intro;

    intro.run();

    EXPECT_EQ(intro.passes, 0u);
    EXPECT_EQ(GLWindow::getEventListener(), &previous);
}

TEST_F(IntroScreenTest, WithoutAWindowItEndsAtOnce) {
    DrivenIntro intro;
    GLWindow::close();

    intro.run();

    EXPECT_EQ(intro.passes, 0u);
}

} // namespace tarnwick
