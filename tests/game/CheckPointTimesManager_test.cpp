#include "game/CheckPointTimesManager.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "level/Level.h"
#include "mechanisms/Trigger.h"
#include "mechanisms/TriggerHandlers.h"
#include "particles/ParticleManager.h"
#include "support/GameSceneTest.h"

#include <cmath>
#include <string>

namespace tarnwick {

/// Squares for letters, 8 pixels a side: white for the level's time, red for slower, green for faster. A fade
/// takes a second. The window is 400 by 300, half a pixel a unit of the virtual screen.
class CheckPointTimesManagerTest : public GameSceneTest {
protected:
    CheckPointTimesManagerTest() {
        data.write("cfg/checkPoints.cfg",
                   "font = gfx\\white.tga fontSize = 16 y_position = 100 fadeTime = 1 "
                   "fontColor_r = 1 fontColor_g = 1 fontColor_b = 1 fontColor_a = 1 "
                   "slowerFontColor_r = 1 slowerFontColor_a = 1 fasterFontColor_g = 1 fasterFontColor_a = 1");
        CheckPointTimesManager::initialise();
    }

    using Manager = CheckPointTimesManager;
    static std::int32_t display() { return static_cast<std::int32_t>(Manager::state.displayState); }
    static float timeLeft() { return Manager::state.displayTimeLeft; }
    static float fadeTime() { return Manager::state.fadeTime; }
    static std::uint32_t firstTime() { return Manager::state.checkPointTimes.begin()->second; }
    static std::size_t known() { return Manager::state.checkPointTimes.size(); }

    /// A frame that took so long.
    static void draw(std::uint32_t milliseconds) {
        Clock::drive(Clock::milliseconds() + milliseconds);
        beginPicture();
        Manager::draw();
    }
    /// Columns of the row through the letters that are lit, from the first to the last.
    static std::int32_t litWidth() { return litInRow(54); }

    Trigger checkPoint;
    Trigger other;
};

TEST_F(CheckPointTimesManagerTest, TimesAreMinutesSecondsAndHundredths) {
    EXPECT_EQ(Manager::formatTime(83450), "01:23:45");
    EXPECT_EQ(Manager::formatTime(0), "00:00:00");
    EXPECT_EQ(Manager::formatTime(9), "00:00:00");
    EXPECT_EQ(Manager::formatTime(10), "00:00:01");
    EXPECT_EQ(Manager::formatTime(3599999), "59:59:99");
    EXPECT_EQ(Manager::formatTime(3600000), "00:00:00"); // hours are dropped
    EXPECT_EQ(Manager::formatTime(3600000 + 61001), "01:01:00");
    EXPECT_EQ(Manager::formatTime(0xFFFFFFFFu), "02:47:29");
}

TEST_F(CheckPointTimesManagerTest, NothingShowsBeforeTheFirstVisit) {
    draw(100);

    EXPECT_EQ(litPixels(), 0);
    EXPECT_EQ(display(), 0);
}

TEST_F(CheckPointTimesManagerTest, AFirstVisitShowsTheTimeInAndOut) {
    Manager::recordTime(&checkPoint, 5000);

    draw(500); // before the time of this frame is taken off: alpha 0
    const std::int32_t litAtStart = litPixels();
    draw(250); // half way in
    const FramePicture::Pixel halfWayIn = pixel(200, 54);
    const std::int32_t stateIn = display();
    draw(250); // three quarters in, and over
    const std::int32_t stateOut = display();
    draw(500); // full
    const FramePicture::Pixel full = pixel(200, 54);
    draw(500);
    const std::int32_t stateAfter = display();
    draw(100);

    EXPECT_EQ(litAtStart, 0);
    const auto half = static_cast<std::uint8_t>(255.0f * std::sqrt(0.5f));
    EXPECT_PRED2(alike, halfWayIn, (FramePicture::Pixel{half, half, half}));
    EXPECT_EQ(stateIn, 1);
    EXPECT_EQ(stateOut, 2);
    EXPECT_EQ(full, white);
    EXPECT_EQ(stateAfter, 0);
    EXPECT_EQ(litPixels(), 0);
}

TEST_F(CheckPointTimesManagerTest, TheTextStandsCentredAtItsHeight) {
    Manager::recordTime(&checkPoint, 0);
    draw(999);

    draw(0);

    EXPECT_EQ(litWidth(), 64); // eight letters
    EXPECT_EQ(litInRow(49), 0);
    EXPECT_EQ(litInRow(50), 64);
    EXPECT_EQ(litInRow(57), 64);
    EXPECT_EQ(litInRow(58), 0);
    EXPECT_NE(pixel(168, 54), black);
    EXPECT_EQ(pixel(167, 54), black);
}

TEST_F(CheckPointTimesManagerTest, ALaterVisitShowsTheDifferenceInTheColourOfSlower) {
    Manager::recordTime(&checkPoint, 5000);

    Manager::recordTime(&checkPoint, 6000);
    draw(999);
    draw(0);

    EXPECT_EQ(display(), 3);
    EXPECT_EQ(litWidth(), 80); // a sign and a blank more
    EXPECT_EQ(pixel(200, 54).green, 0);
    EXPECT_GT(pixel(200, 54).red, 250);
}

/// Letters that tell which they are: cell c has the shade of its column in red and of its row in green.
class CheckPointTextTest : public CheckPointTimesManagerTest {
protected:
    CheckPointTextTest() {
        writePicture("gfx/coded.tga", 16 * 8, [](std::int32_t x, std::int32_t y) {
            return Texel{{shadeOf(x / 8), shadeOf(y / 8), 255}};
        });
        data.write("cfg/checkPoints.cfg",
                   "font = gfx\\coded.tga fontSize = 16 y_position = 100 fadeTime = 1 "
                   "fontColor_r = 1 fontColor_g = 1 fontColor_b = 1 fontColor_a = 1 "
                   "slowerFontColor_r = 1 slowerFontColor_g = 1 slowerFontColor_b = 1 slowerFontColor_a = 1 "
                   "fasterFontColor_r = 1 fasterFontColor_g = 1 fasterFontColor_b = 1 fasterFontColor_a = 1");
        CheckPointTimesManager::initialise();
    }

    static std::uint8_t shadeOf(std::int32_t place) { return static_cast<std::uint8_t>(place * 16 + 8); }
    /// What stands there once it has faded in: letters of 8 pixels about the middle of 400.
    static std::string shownText() {
        draw(999);
        draw(0);
        std::string text;
        for (std::int32_t x = 200 - litWidth() / 2 + 4; x < 200 + litWidth() / 2; x += 8) {
            const FramePicture::Pixel letter = pixel(x, 54);
            text += static_cast<char>(letter.green / 16 * 16 + letter.red / 16);
        }
        return text;
    }
};

TEST_F(CheckPointTextTest, AFirstVisitShowsTheTimeOfTheLevelAsItRuns) {
    GameRules::initialise();
    Camera::setState(Camera::normal);
    Manager::recordTime(&checkPoint, 5000);
    Clock::drive(Clock::milliseconds() + 83'450);
    GameRules::update(0.01f);

    EXPECT_EQ(shownText(), "01:23:45");
}

TEST_F(CheckPointTextTest, ASlowerVisitShowsByHowMuch) {
    Manager::recordTime(&checkPoint, 5000);
    Manager::recordTime(&checkPoint, 66'230);

    EXPECT_EQ(shownText(), "+ 01:01:23");
}

TEST_F(CheckPointTextTest, AFasterVisitShowsByHowMuch) {
    Manager::recordTime(&checkPoint, 66'230);
    Manager::recordTime(&checkPoint, 5000);

    EXPECT_EQ(shownText(), "- 01:01:23");
}

TEST_F(CheckPointTextTest, TheSameTimeIsADifferenceOfNothing) {
    Manager::recordTime(&checkPoint, 5000);
    Manager::recordTime(&checkPoint, 5000);

    EXPECT_EQ(shownText(), "+ 00:00:00");
}

TEST_F(CheckPointTextTest, TheDifferenceIsFromTheLastVisitOfTheSameCheckPoint) {
    Manager::recordTime(&checkPoint, 1000);
    Manager::recordTime(&other, 50'000);
    Manager::recordTime(&checkPoint, 9000);
    Manager::recordTime(&checkPoint, 8500);

    EXPECT_EQ(shownText(), "- 00:00:50");
}

TEST_F(CheckPointTimesManagerTest, AFasterVisitShowsInTheOtherColour) {
    Manager::recordTime(&checkPoint, 6000);

    Manager::recordTime(&checkPoint, 5000);
    draw(999);
    draw(0);

    EXPECT_EQ(pixel(200, 54).red, 0);
    EXPECT_GT(pixel(200, 54).green, 250);
}

TEST_F(CheckPointTimesManagerTest, AVisitAtExactlyTheSameTimeCountsAsSlower) {
    Manager::recordTime(&checkPoint, 5000);

    Manager::recordTime(&checkPoint, 5000);
    draw(999);
    draw(0);

    EXPECT_EQ(pixel(200, 54).green, 0);
    EXPECT_GT(pixel(200, 54).red, 250);
}

TEST_F(CheckPointTimesManagerTest, TheDifferenceVanishesAfterOneMoreFrameThatShowsNothing) {
    Manager::recordTime(&checkPoint, 5000);
    Manager::recordTime(&checkPoint, 6000);
    draw(1000);
    const std::int32_t afterFade = display();
    const float left = timeLeft();

    draw(10);

    EXPECT_EQ(afterFade, 4);
    EXPECT_EQ(left, 0.0f); // not renewed
    EXPECT_EQ(litPixels(), 0);
    EXPECT_EQ(display(), 0);
}

TEST_F(CheckPointTimesManagerTest, TheComparisonIsWithTheLastVisitAndNotWithTheBest) {
    Manager::recordTime(&checkPoint, 1000);
    Manager::recordTime(&checkPoint, 9000);

    Manager::recordTime(&checkPoint, 8000);
    draw(999);
    draw(0);

    EXPECT_EQ(pixel(200, 54).red, 0); // faster than 9 seconds
}

TEST_F(CheckPointTimesManagerTest, ASecondCheckPointTakesTheDisplayOverAndBeginsTheFadeAnew) {
    Manager::recordTime(&checkPoint, 1000);
    Manager::recordTime(&checkPoint, 2000);
    draw(900);

    Manager::recordTime(&other, 2100);

    EXPECT_EQ(display(), 1);
    EXPECT_EQ(timeLeft(), 1.0f);
    EXPECT_EQ(known(), 2u);
}

TEST_F(CheckPointTimesManagerTest, TheTimeBeforeAVisitIsNoPartOfItsFade) {
    draw(5000);
    Manager::recordTime(&checkPoint, 1000);

    draw(10);

    EXPECT_EQ(display(), 1);
    EXPECT_EQ(timeLeft(), 1.0f - 0.01f);
}

TEST_F(CheckPointTimesManagerTest, AFadeTakesAtLeastAHundredthOfASecond) {
    data.write("cfg/checkPoints.cfg", "fadeTime = -5");

    Manager::initialise();

    EXPECT_EQ(fadeTime(), 0.01f);
}

TEST_F(CheckPointTimesManagerTest, StartAndEndAreToldAndForgetTheTimes) {
    Manager::recordTime(&checkPoint, 1000);
    GLConsole::clear();

    Manager::initialise();

    EXPECT_EQ(GLConsole::outputText(), "\nShutting down check point times manager.."
                                       "\nInitialising check point times manager..");
    EXPECT_EQ(display(), 0);
    EXPECT_EQ(known(), 0u);
}

TEST_F(CheckPointTimesManagerTest, AfterShutdownAVisitShowsNothing) {
    Manager::shutdown();
    Manager::recordTime(&checkPoint, 1000);

    draw(100);

    EXPECT_EQ(litPixels(), 0);
}

/// The same in a level with a check point of 40 units about (400, 300), the middle of the view.
class CheckPointInPlayTest : public CheckPointTimesManagerTest {
protected:
    CheckPointInPlayTest() {
        level.triggers.push_back({0, 901, 0.0f, {{380, 280}, {420, 280}, {420, 320}, {380, 320}}});
        play();
    }
    static void visit() {
        addWater(400.0f, 300.0f);
        Game::tick(0.01f);
    }
    static void restart() {
        Game::resetLevel();
        ParticleManager::particles.clear();
        Camera::setPosition({400.0f, 300.0f});
        Camera::setState(Camera::normal);
    }
};

TEST_F(CheckPointInPlayTest, WaterAtACheckPointShowsTheTimeOverTheLevel) {
    visit();
    Game::drawPicture();
    Clock::drive(Clock::milliseconds() + 999);
    Game::drawPicture();

    Game::drawPicture();

    EXPECT_GT(pixel(180, 54).red, 250);
    EXPECT_EQ(display(), 1);
}

TEST_F(CheckPointInPlayTest, ItsTimeIsThatOfTheLevel) {
    addWater(200.0f, 100.0f); // or the rules would bring lost water back
    Clock::drive(Clock::milliseconds() + 1230);
    GameRules::update(0.01f);

    visit();

    EXPECT_EQ(firstTime(), 1230u);
}

TEST_F(CheckPointInPlayTest, ARestartKeepsTheTimesSoThatTheNextVisitIsCompared) {
    visit();

    restart();
    visit();

    EXPECT_EQ(known(), 1u);
    EXPECT_EQ(display(), 3);
}

TEST_F(CheckPointInPlayTest, ALevelThatIsLoadedKnowsNoTimes) {
    visit();

    play();

    EXPECT_EQ(known(), 0u);
    EXPECT_EQ(display(), 0);
}

TEST_F(CheckPointInPlayTest, AHandlerWithoutATriggerRecordsNothing) {
    trigFuncCheckPoint(nullptr, nullptr, BodyKind::particle, 0.01f);

    EXPECT_EQ(known(), 0u);
}

} // namespace tarnwick
