#include "gui/GuiOptionChooser.h"

#include "audio/Sound.h"
#include "core/LocationStack.h"
#include "graphics/KeyMap.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr float defaultFontSize = 16.0f;
constexpr float dimAlpha = 0.25f; ///< Of an arrow that leads nowhere.

} // namespace

GuiOptionChooser::GuiOptionChooser()
    : GuiFontGroup(defaultFontSize) {
    TARNWICK_LOCATION("GuiOptionChooser::GuiOptionChooser");
    setColor(opaqueBlack);
}

GuiOptionChooser::~GuiOptionChooser() {
    TARNWICK_LOCATION("GuiOptionChooser::~GuiOptionChooser");
}

void GuiOptionChooser::addOption(const std::string& text) {
    TARNWICK_LOCATION("GuiOptionChooser::addOption");
    options.push_back(text);
}

void GuiOptionChooser::setCurrentOption(std::uint32_t index) {
    TARNWICK_LOCATION("GuiOptionChooser::setCurrentOption");
    const auto count = static_cast<std::uint32_t>(options.size());
    currentOption = count == 0 ? 0 : std::min(index, count - 1);
}

std::string GuiOptionChooser::getCurrentText() const {
    TARNWICK_LOCATION("GuiOptionChooser::getCurrentText");
    return currentOption < options.size() ? options[currentOption] : std::string();
}

void GuiOptionChooser::setFramesPerSecond(float speed) {
    TARNWICK_LOCATION("GuiOptionChooser::setFramesPerSecond");
    leftButton.framesPerSecond = speed;
    rightButton.framesPerSecond = speed;
}

void GuiOptionChooser::setButtonStates(GuiAnimatedButton::State state) {
    TARNWICK_LOCATION("GuiOptionChooser::setButtonStates");
    leftButton.state = state;
    rightButton.state = state;
}

void GuiOptionChooser::setOverSound(const std::string& name) {
    TARNWICK_LOCATION("GuiOptionChooser::setOverSound");
    overSound = std::make_unique<Sound>(name);
    overSound->stop();
}

void GuiOptionChooser::setClickedSound(const std::string& name) {
    TARNWICK_LOCATION("GuiOptionChooser::setClickedSound");
    clickedSound = std::make_unique<Sound>(name);
    clickedSound->stop();
}

void GuiOptionChooser::gainedFocus() {
    TARNWICK_LOCATION("GuiOptionChooser::gainedFocus");
    for (GuiAnimatedButton* const arrow : {&leftButton, &rightButton}) {
        arrow->hasFocus = true;
        arrow->gainedFocus();
    }
    if (overSound != nullptr) {
        overSound->setVolume(1.0f);
        overSound->rewind();
        overSound->play();
    }
}

void GuiOptionChooser::lostFocus() {
    TARNWICK_LOCATION("GuiOptionChooser::lostFocus");
    for (GuiAnimatedButton* const arrow : {&leftButton, &rightButton}) {
        arrow->hasFocus = false;
        arrow->lostFocus();
    }
}

void GuiOptionChooser::reset() {
    TARNWICK_LOCATION("GuiOptionChooser::reset");
    leftButton.reset();
    rightButton.reset();
}

void GuiOptionChooser::keyboardPressed(std::uint32_t key) {
    TARNWICK_LOCATION("GuiOptionChooser::keyboardPressed");
    if (key == key::left) { // the keys change the option without a sound
        goBack();
    } else if (key == key::right) {
        goForward();
    }
}

void GuiOptionChooser::mousePressed(std::uint32_t mouseX,
                                    std::uint32_t /*mouseY*/,
                                    std::uint32_t /*button*/) {
    TARNWICK_LOCATION("GuiOptionChooser::mousePressed");
    const float middle = static_cast<float>(x) + static_cast<float>(width) / 2.0f;
    const std::uint32_t before = currentOption;
    if (static_cast<float>(mouseX) <= middle) {
        goBack();
    } else {
        goForward();
    }
    if (currentOption != before) {
        playClicked();
    }
}

void GuiOptionChooser::goBack() {
    TARNWICK_LOCATION("GuiOptionChooser::goBack");
    if (currentOption > 0) {
        --currentOption;
    }
}

void GuiOptionChooser::goForward() {
    TARNWICK_LOCATION("GuiOptionChooser::goForward");
    if (currentOption + 1 < options.size()) {
        ++currentOption;
    }
}

void GuiOptionChooser::playClicked() {
    TARNWICK_LOCATION("GuiOptionChooser::playClicked");
    if (clickedSound != nullptr) {
        clickedSound->setVolume(1.0f);
        clickedSound->rewind();
        clickedSound->play();
    }
}

void GuiOptionChooser::windowRedrawing() {
    TARNWICK_LOCATION("GuiOptionChooser::windowRedrawing");
    const std::string text = getCurrentText();
    const float textWidth = static_cast<float>(text.size()) * fontSize;
    const float centreX = static_cast<float>(x) + static_cast<float>(width) / 2.0f;
    const float centreY = static_cast<float>(y) + static_cast<float>(height) / 2.0f;
    const float textLeft = centreX - textWidth / 2.0f;
    drawText(text, {textLeft, centreY - fontSize / 2.0f}, fontSize, colour());
    drawArrow(leftButton, textLeft, centreY, true, currentOption != 0);
    drawArrow(rightButton, centreX + textWidth / 2.0f, centreY, false, currentOption + 1 < options.size());
}

void GuiOptionChooser::drawArrow(
    GuiAnimatedButton& arrow, float edge, float centreY, bool leftOfEdge, bool lit) {
    TARNWICK_LOCATION("GuiOptionChooser::drawArrow");
    if (const GLTexture* const frame = arrow.getCurrentFrame(); frame != nullptr) {
        const auto frameWidth = static_cast<float>(frame->width);
        const auto frameHeight = static_cast<float>(frame->height);
        arrow.setPosition(static_cast<std::int32_t>(leftOfEdge ? edge - frameWidth : edge),
                          static_cast<std::int32_t>(centreY - frameHeight / 2.0f));
        arrow.setSize(static_cast<std::int32_t>(frame->width), static_cast<std::int32_t>(frame->height));
    }
    arrow.setColor(lit ? opaqueWhite : opaqueWhite.faded(dimAlpha));
    arrow.windowRedrawing();
}

} // namespace tarnwick
