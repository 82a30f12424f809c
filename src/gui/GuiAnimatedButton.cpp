#include "gui/GuiAnimatedButton.h"

#include "audio/Sound.h"
#include "core/FrameFiles.h"
#include "core/LocationStack.h"
#include "graphics/KeyMap.h"
#include "gui/GuiDrawing.h"
#include "gui/GuiScreen.h"

namespace tarnwick {

namespace {

/// Replaces the pictures of a state.
void setFrames(const std::string& name, std::vector<GLTexture>& frames) {
    TARNWICK_LOCATION("GuiAnimatedButton::setFrames");
    std::vector<std::string> files;
    GuiAnimatedButton::findFrames(name, files);
    frames.clear();
    frames.reserve(files.size()); // a handle that moved would be counted anew
    for (const std::string& file : files) {
        frames.emplace_back(file);
    }
}

} // namespace

GuiAnimatedButton::GuiAnimatedButton() {
    TARNWICK_LOCATION("GuiAnimatedButton::GuiAnimatedButton");
}

GuiAnimatedButton::~GuiAnimatedButton() {
    TARNWICK_LOCATION("GuiAnimatedButton::~GuiAnimatedButton");
}

void GuiAnimatedButton::setFramesOutOfFocus(const std::string& name) {
    TARNWICK_LOCATION("GuiAnimatedButton::setFramesOutOfFocus");
    setFrames(name, framesOutOfFocus);
}

void GuiAnimatedButton::setFramesInFocus(const std::string& name) {
    TARNWICK_LOCATION("GuiAnimatedButton::setFramesInFocus");
    setFrames(name, framesInFocus);
}

void GuiAnimatedButton::setFramesClicked(const std::string& name) {
    TARNWICK_LOCATION("GuiAnimatedButton::setFramesClicked");
    setFrames(name, framesClicked);
}

void GuiAnimatedButton::findFrames(const std::string& name, std::vector<std::string>& list) {
    TARNWICK_LOCATION("GuiAnimatedButton::findFrames");
    for (std::string& file : FrameFiles::find(name)) {
        list.push_back(std::move(file));
    }
}

void GuiAnimatedButton::setOverSound(const std::string& name) {
    TARNWICK_LOCATION("GuiAnimatedButton::setOverSound");
    overSound = std::make_unique<Sound>(name);
    overSound->stop();
}

void GuiAnimatedButton::setClickedSound(const std::string& name) {
    TARNWICK_LOCATION("GuiAnimatedButton::setClickedSound");
    clickedSound = std::make_unique<Sound>(name);
    clickedSound->stop();
}

const std::vector<GLTexture>& GuiAnimatedButton::framesOfState() const {
    TARNWICK_LOCATION("GuiAnimatedButton::framesOfState");
    if (state == outOfFocus) {
        return framesOutOfFocus;
    }
    return state == inFocus ? framesInFocus : framesClicked;
}

const GLTexture* GuiAnimatedButton::getCurrentFrame() const {
    TARNWICK_LOCATION("GuiAnimatedButton::getCurrentFrame");
    const std::vector<GLTexture>& frames = framesOfState();
    return currentFrame < frames.size() ? &frames[currentFrame] : nullptr;
}

void GuiAnimatedButton::resetAnimation() {
    TARNWICK_LOCATION("GuiAnimatedButton::resetAnimation");
    currentFrame = 0;
    frameTime = 0.0f;
}

void GuiAnimatedButton::runAnimation(float seconds, float speed) {
    TARNWICK_LOCATION("GuiAnimatedButton::runAnimation");
    if (!(speed > 0.0f)) {
        return;
    }
    frameTime += seconds;
    if (frameTime < 1.0f / speed) {
        return;
    }
    frameTime = 0.0f;
    if (state == inFocus && !hasFocus) {
        stepBack();
    } else {
        step(static_cast<std::uint32_t>(framesOfState().size()));
    }
}

/// One picture on. Past the last one the animation out of focus starts again, the others stay.
void GuiAnimatedButton::step(std::uint32_t frameCount) {
    TARNWICK_LOCATION("GuiAnimatedButton::step");
    if (currentFrame + 1 < frameCount) {
        ++currentFrame;
    } else if (state == outOfFocus || frameCount == 0) {
        currentFrame = 0;
    } else {
        currentFrame = frameCount - 1;
    }
}

/// The focus has gone: back to the first picture, and only then out of focus.
void GuiAnimatedButton::stepBack() {
    TARNWICK_LOCATION("GuiAnimatedButton::stepBack");
    if (currentFrame > 0) {
        --currentFrame;
    } else {
        state = outOfFocus;
    }
}

void GuiAnimatedButton::reset() {
    TARNWICK_LOCATION("GuiAnimatedButton::reset");
    resetAnimation();
    state = outOfFocus;
}

void GuiAnimatedButton::gainedFocus() {
    TARNWICK_LOCATION("GuiAnimatedButton::gainedFocus");
    if (state != outOfFocus) {
        return;
    }
    state = inFocus;
    resetAnimation();
    if (overSound != nullptr && !overSound->isPlaying()) {
        overSound->rewind();
        overSound->setVolume(1.0f);
        overSound->play();
    }
}

void GuiAnimatedButton::mousePressed(std::uint32_t /*mouseX*/,
                                     std::uint32_t /*mouseY*/,
                                     std::uint32_t /*button*/) {
    TARNWICK_LOCATION("GuiAnimatedButton::mousePressed");
    click();
}

void GuiAnimatedButton::keyboardPressed(std::uint32_t key) {
    TARNWICK_LOCATION("GuiAnimatedButton::keyboardPressed");
    if (key == key::space || key == key::enter) {
        click();
    }
}

void GuiAnimatedButton::click() {
    TARNWICK_LOCATION("GuiAnimatedButton::click");
    if (state == clicked) {
        return;
    }
    state = clicked;
    resetAnimation();
    if (clickedSound != nullptr) {
        clickedSound->rewind();
        clickedSound->setVolume(1.0f);
        clickedSound->play();
    }
    clickOthers();
}

/// The other buttons of the screen, without a sound. The arrows inside a chooser are not in its list.
void GuiAnimatedButton::clickOthers() {
    TARNWICK_LOCATION("GuiAnimatedButton::clickOthers");
    if (parentScreen == nullptr) {
        return;
    }
    for (const auto& widget : parentScreen->getWidgets()) {
        auto* const other = dynamic_cast<GuiAnimatedButton*>(widget.get());
        if (other != nullptr && other->state != clicked) {
            other->state = clicked;
            other->resetAnimation();
        }
    }
}

void GuiAnimatedButton::windowRedrawing() {
    TARNWICK_LOCATION("GuiAnimatedButton::windowRedrawing");
    frameTimer.update();
    runAnimation(frameTimer.getSeconds(), framesPerSecond);
    const GLTexture* const frame = getCurrentFrame();
    if (frame == nullptr) {
        return;
    }
    const auto frameWidth = static_cast<float>(frame->width);
    const auto frameHeight = static_cast<float>(frame->height);
    const float left = static_cast<float>(x) + (static_cast<float>(width) - frameWidth) / 2.0f;
    const float top = static_cast<float>(y) + (static_cast<float>(height) - frameHeight) / 2.0f;
    const auto drawAt = [&](Vector2 offset, Colour shade) {
        const GuiDrawing::Rectangle place{left + offset.x, top + offset.y, left + offset.x + frameWidth,
                                          top + offset.y + frameHeight};
        GuiDrawing::drawPicture(*frame, place, {}, shade);
    };
    if (dropShadowEnabled) {
        drawAt(dropShadowOffset(), dropShadowColour());
    }
    drawAt({}, colour());
}

} // namespace tarnwick
