#include "gui/Menu_LevelFinished.h"

#include "core/LocationStack.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "game/HighScores.h"
#include "gui/GameMenus.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/GuiImage.h"
#include "gui/GuiLabel.h"
#include "gui/GuiLevelTimeDisplay.h"
#include "gui/GuiScoreLabel.h"
#include "gui/GuiWaterLevel.h"
#include "gui/MenuLayout.h"

namespace tarnwick {

namespace {

constexpr float fullMark = 128.0f; ///< Particles of a level's start.

} // namespace

Menu_LevelFinished::Menu_LevelFinished() {
    TARNWICK_LOCATION("Menu_LevelFinished::Menu_LevelFinished");
    const MenuLayout layout("cfg\\menu_levelFinished.cfg");
    addBackground(layout);
    addScores(layout);
    waterRampUpTime = layout.number("waterRampUpTime");
    setDefaultFocusWidget(&layout.addButton<continueToScores>(*this, "continueButton"));
}

/// The column of water, and over it the picture that is its frame.
void Menu_LevelFinished::addBackground(const MenuLayout& layout) {
    TARNWICK_LOCATION("Menu_LevelFinished::addBackground");
    waterLevel = &layout.add<GuiWaterLevel>(*this, "waterLevel");
    layout.size(*waterLevel, "waterLevel");
    auto& background = layout.add<GuiImage>(*this, "backgroundImage");
    layout.size(background, "backgroundImage");
    background.setImage(layout.text("backgroundImage"));
}

void Menu_LevelFinished::addScores(const MenuLayout& layout) {
    TARNWICK_LOCATION("Menu_LevelFinished::addScores");
    const float timeRampUpTime = layout.number("timeRampUpTime");
    layout.addLabel(*this, "waterScoreLabel", "Water score:");
    waterCount = &addCount(layout, "waterScoreCount", "waterRampUpSound");
    waterCount->valueFunction = GameRules::getWaterScore;

    auto& time = layout.add<GuiLevelTimeDisplay>(*this, "timeDisplay");
    layout.size(time, "timeDisplay");
    layout.dressText(time);
    time.setFontSize(layout.number("timeDisplay_fontSize"));
    time.setRampUpTime(timeRampUpTime);
    time.previousScoreLabel = waterCount;

    layout.addLabel(*this, "timeScoreLabel", "Time  score:");
    GuiScoreLabel& timeCount = addCount(layout, "timeScoreCount", "timeRampUpSound");
    timeCount.valueFunction = GameRules::getTimeScore;
    timeCount.setRampUpTime(timeRampUpTime);
    timeCount.previousScoreLabel = waterCount;

    layout.addLabel(*this, "totalScoreLabel", "Total score:");
    GuiScoreLabel& totalCount = addCount(layout, "totalScoreCount", "totalRampUpSound");
    totalCount.valueFunction = GameRules::getTotalScore;
    totalCount.setRampUpTime(layout.number("totalRampUpTime"));
    totalCount.previousScoreLabel = &timeCount;
}

GuiScoreLabel&
Menu_LevelFinished::addCount(const MenuLayout& layout, const std::string& name, const std::string& sound) {
    TARNWICK_LOCATION("Menu_LevelFinished::addCount");
    auto& count = layout.add<GuiScoreLabel>(*this, name);
    layout.dressText(count);
    count.setFontSize(layout.style.labelFontSize);
    count.setRampUpSound(layout.text(sound));
    return count;
}

void Menu_LevelFinished::reset() {
    TARNWICK_LOCATION("Menu_LevelFinished::reset");
    continued = false;
    const float fraction = static_cast<float>(GameRules::getParticleCount()) / fullMark;
    waterCount->setRampUpTime(waterRampUpTime * fraction);
    waterLevel->setRampUpTimePerParticle(waterRampUpTime * fraction);
    GuiScreen::reset();
}

/// Asks for a name if the score is one of the ten best, then shows them, with the main menu as the way back.
void Menu_LevelFinished::continueToScores(GuiWidget& button) {
    TARNWICK_LOCATION("Menu_LevelFinished::continueToScores");
    auto& screen = dynamic_cast<Menu_LevelFinished&>(*button.parentScreen);
    if (screen.continued) {
        return;
    }
    screen.dropDelayedEvents(); // the screen is drawn behind the entry of the name, and would run them
    HighScores::checkScore(GameRules::getTotalScore(), &screen);
    Game::restart();
    screen.continued = true;
    GameMenus::setCurrentMenu(menu::main);
    GameMenus::setCurrentMenu(menu::highScores);
}

} // namespace tarnwick
