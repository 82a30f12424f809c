#pragma once

#include "gui/GuiFontGroup.h"
#include "gui/GuiRampUp.h"
#include "gui/GuiWidget.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tarnwick {

class Sound;

/// A number that counts up from zero when the screen opens, to a sound. With a label before it, it waits at
/// zero until that one has reached its value.
class GuiScoreLabel : public GuiWidget, public GuiFontGroup, public GuiRampUp {
public:
    using ValueFunction = std::uint32_t (*)();

    ValueFunction valueFunction = nullptr;             ///< Null: the number is 0.
    const GuiScoreLabel* previousScoreLabel = nullptr; ///< Not owned; null: nobody to wait for.

    GuiScoreLabel();
    ~GuiScoreLabel() override;

    /// Seconds, at least 0.01, all of them left.
    void setRampUpTime(float seconds);
    void setRampUpSound(const std::string& name);

    void reset() override;
    void windowRedrawing() override;

private:
    std::unique_ptr<Sound> rampUpSound; ///< Null for none.

    std::uint32_t shownValue();
    void playRampUpSound();
};

} // namespace tarnwick
