#pragma once

#include "gui/GuiScreen.h"

#include <string>

namespace tarnwick {

class GuiScoreLabel;
class GuiWaterLevel;
class MenuLayout;

/// The scores of a finished level, counted up one after the other: the water, then the time and its score
/// together, then the total.
class Menu_LevelFinished : public GuiScreen {
public:
    Menu_LevelFinished();

    /// The less water there is, the sooner its count ends.
    void reset() override;

private:
    GuiScoreLabel* waterCount = nullptr; ///< Both on this screen.
    GuiWaterLevel* waterLevel = nullptr;
    float waterRampUpTime = 0.0f; ///< Seconds for 128 particles.
    bool continued = false;       ///< The button has acted since the screen opened.

    void addBackground(const MenuLayout& layout);
    void addScores(const MenuLayout& layout);
    GuiScoreLabel& addCount(const MenuLayout& layout, const std::string& name, const std::string& sound);
    static void continueToScores(GuiWidget& button);
};

} // namespace tarnwick
