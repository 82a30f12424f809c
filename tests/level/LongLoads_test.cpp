// Loads that take long keep the window alive and end when it is closed.

#include "core/LongWork.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "level/Polygon2D.h"
#include "support/ModuleTest.h"

#include <SDL_events.h>

#include <cmath>
#include <vector>

namespace tarnwick {

namespace {

void closeWindow() {
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = SDL_WINDOWEVENT_CLOSE;
    SDL_PushEvent(&event);
}

void pressKey() {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.state = SDL_PRESSED;
    event.key.keysym.scancode = SDL_SCANCODE_A;
    event.key.keysym.sym = SDLK_a;
    SDL_PushEvent(&event);
}

class KeyCounter final : public GLWindowEventListener {
public:
    int pressed = 0;
    void keyboardPressed(std::uint32_t /*key*/) override { ++pressed; }
};

/// A round outline of so many points, which is cut up ear by ear.
std::vector<Vector2> ring(int points) {
    std::vector<Vector2> outline;
    for (int i = 0; i < points; ++i) {
        const float angle = 6.2831855f * static_cast<float>(i) / static_cast<float>(points);
        outline.push_back({10000.0f * std::cos(angle), 10000.0f * std::sin(angle)});
    }
    return outline;
}

} // namespace

class LongLoadsTest : public ModuleTest {
protected:
    LongLoadsTest() { GLWindow::createHeadless(800, 600); }
    ~LongLoadsTest() override { GLWindow::close(); }
};

TEST_F(LongLoadsTest, CuttingUpAnOutlinePumpsTheWindow) {
    KeyCounter listener;
    GLWindow::setEventListener(&listener);
    pressKey();
    Polygon2D polygon;

    polygon.addPoints(ring(400));

    EXPECT_EQ(listener.pressed, 1);
    EXPECT_EQ(polygon.triangleCount, 398u);
}

TEST_F(LongLoadsTest, ItEndsWithoutTrianglesWhenTheWindowIsClosed) {
    closeWindow();
    Polygon2D polygon;

    polygon.addPoints(ring(400));

    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(polygon.triangleCount, 0u);
}

TEST_F(LongLoadsTest, ATreeEndsInTheMiddleWhenTheWindowIsClosed) {
    for (int i = 0; i < 600; ++i) {
        const auto x = static_cast<float>(7 * i);
        const auto y = static_cast<float>(i % 31);
        Level::polygons.emplace_back().addPoints(
            std::vector<Vector2>{{x, y}, {x + 5.0f, y}, {x + 2.0f, y + 9.0f}});
    }
    LevelBspTree::create();
    std::vector<LevelBspNode*> whole;
    LevelBspTree::getNodeList(whole);
    const std::size_t wholeSize = whole.size();
    closeWindow();

    LevelBspTree::create();

    std::vector<LevelBspNode*> begun;
    LevelBspTree::getNodeList(begun);
    EXPECT_FALSE(GLWindow::exists());
    EXPECT_GE(wholeSize, 1800u);
    EXPECT_LT(begun.size(), wholeSize);
}

TEST_F(LongLoadsTest, WithinATickNobodyHearsOfKeys) {
    KeyCounter listener;
    GLWindow::setEventListener(&listener);
    pressKey();

    EXPECT_TRUE(LongWork::goesOnWithinTick());

    EXPECT_EQ(listener.pressed, 0);
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
    closeWindow();
    EXPECT_FALSE(LongWork::goesOnWithinTick());
}

} // namespace tarnwick
