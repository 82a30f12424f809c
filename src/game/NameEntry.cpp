#include "game/NameEntry.h"

#include "audio/Sound.h"
#include "core/ConfigFile.h"
#include "core/GLTexture.h"
#include "core/LocationStack.h"
#include "graphics/GLFont.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "graphics/VirtualScreen.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/GuiDrawing.h"
#include "gui/GuiScreen.h"
#include "gui/MenuLayout.h"

#include <GL/gl.h>

#include <algorithm>
#include <string_view>

namespace tarnwick {

namespace {

constexpr float veilAlpha = 0.9f; ///< Of the black between the menu behind and the entry.

// Virtual units.
constexpr float titleY = 32.0f;
constexpr float requestY = 80.0f;
constexpr float titleSize = 32.0f;
constexpr float nameY = 224.0f;
constexpr float nameBoxHeight = 16.0f;
constexpr float nameSize = 24.0f;

/// In the order in which a game pad turns them.
constexpr std::string_view padLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 ";

/// Letters and digits without accents, and the blank.
bool canBeEntered(std::uint8_t character) {
    TARNWICK_LOCATION("NameEntry::canBeEntered");
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == ' ';
}

} // namespace

std::string NameEntry::ask(GuiScreen* background) {
    TARNWICK_LOCATION("NameEntry::ask");
    GLWindowEventListener* const previousListener = GLWindow::getEventListener();
    NameEntry screen(background);
    GLWindow::setEventListener(&screen);
    while (GLWindow::exists() && screen.active) {
        GLWindow::requestRepaint();
        GLWindow::run();
    }
    GLWindow::setEventListener(previousListener);
    return screen.name();
}

NameEntry::NameEntry(GuiScreen* background)
    : backgroundScreen(background)
    , continueButton(std::make_unique<GuiAnimatedButton>()) {
    TARNWICK_LOCATION("NameEntry::NameEntry");
    readConfiguration();
    for (std::uint32_t key = 0; key < keyNumbers; ++key) {
        heldAtOpening[key] = GLWindow::keyboardKeyPressed(key);
    }
    highScoreSound->play();
}

NameEntry::~NameEntry() {
    TARNWICK_LOCATION("NameEntry::~NameEntry");
}

void NameEntry::readConfiguration() {
    TARNWICK_LOCATION("NameEntry::readConfiguration");
    const ConfigFile config("cfg\\game.cfg");
    cursor = std::make_unique<GLTexture>(config.getVarAsString("cursor"));
    highScoreSound = std::make_unique<Sound>(config.getVarAsString("highScoreSound"));
    const MenuLayout layout("cfg\\menu_levelFinished.cfg");
    layout.dressButton(*continueButton, "continueButton");
    font = std::make_unique<GLFont>(layout.style.font);
    textColour = layout.style.fontColour;
    dropShadowOffset = layout.style.textShadowOffset;
    dropShadowColour = layout.style.textShadowColour;
}

std::string NameEntry::name() const {
    TARNWICK_LOCATION("NameEntry::name");
    return {enteredName.data(), enteredLength};
}

bool NameEntry::overContinueButton(std::uint32_t x, std::uint32_t y) const {
    TARNWICK_LOCATION("NameEntry::overContinueButton");
    const Vector2 pointer = VirtualScreen::at(x, y);
    const auto left = static_cast<float>(continueButton->x);
    const auto top = static_cast<float>(continueButton->y);
    return left <= pointer.x && pointer.x < left + static_cast<float>(continueButton->width) &&
           top <= pointer.y && pointer.y < top + static_cast<float>(continueButton->height);
}

void NameEntry::mouseMoved(std::uint32_t x, std::uint32_t y) {
    TARNWICK_LOCATION("NameEntry::mouseMoved");
    const bool over = overContinueButton(x, y);
    if (closing || over == continueButton->hasFocus) {
        return;
    }
    continueButton->hasFocus = over;
    if (over) {
        continueButton->gainedFocus();
    } else {
        continueButton->lostFocus();
    }
}

void NameEntry::mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t /*button*/) {
    TARNWICK_LOCATION("NameEntry::mousePressed");
    if (!closing && continueButton->hasFocus && overContinueButton(x, y)) {
        accept();
    }
}

void NameEntry::keyboardPressed(std::uint32_t key) {
    TARNWICK_LOCATION("NameEntry::keyboardPressed");
    if (closing || (key < keyNumbers && heldAtOpening[key])) {
        return;
    }
    if (key == key::enter || key == key::escape || key == key::padA || key == key::padMenu) {
        accept();
    } else if (key == key::padUp || key == key::padDown) {
        turnLetter(key == key::padUp);
    } else if (key == key::padRight) {
        addLetter();
    } else if (key == key::backspace || key == key::padB || key == key::padLeft) {
        if (enteredLength > 0) {
            enteredName[--enteredLength] = '\0';
        }
    } else if (enteredLength < longestName) {
        const std::uint8_t character = GLWindow::keyboardKeyToAscii(key);
        if (canBeEntered(character)) {
            enteredName[enteredLength++] = static_cast<char>(character);
        }
    }
}

/// The next of all letters, or the one before, in place of the last one; the first letter of an empty name.
void NameEntry::turnLetter(bool onward) {
    TARNWICK_LOCATION("NameEntry::turnLetter");
    if (enteredLength == 0) {
        addLetter();
        return;
    }
    char& letter = enteredName[enteredLength - 1];
    const std::size_t place = padLetters.find(letter);
    const std::size_t step = onward ? 1 : padLetters.size() - 1;
    letter = padLetters[(place + step) % padLetters.size()];
}

void NameEntry::addLetter() {
    TARNWICK_LOCATION("NameEntry::addLetter");
    if (enteredLength < longestName) {
        enteredName[enteredLength++] = padLetters.front();
    }
}

void NameEntry::keyboardReleased(std::uint32_t key) {
    TARNWICK_LOCATION("NameEntry::keyboardReleased");
    if (key < keyNumbers) {
        heldAtOpening.reset(key);
    }
}

/// The name stands; the button plays until the screen goes.
void NameEntry::accept() {
    TARNWICK_LOCATION("NameEntry::accept");
    continueButton->keyboardPressed(key::enter);
    closing = true;
}

void NameEntry::windowClosing() {
    TARNWICK_LOCATION("NameEntry::windowClosing");
    GLWindow::close();
}

void NameEntry::runClosing() {
    TARNWICK_LOCATION("NameEntry::runClosing");
    timer.update();
    if (!closing) {
        return;
    }
    if (closeTimeLeft <= 0.0f) {
        active = false;
    }
    closeTimeLeft -= timer.getSeconds();
}

void NameEntry::windowRedrawing() {
    TARNWICK_LOCATION("NameEntry::windowRedrawing");
    runClosing();
    GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
    if (backgroundScreen != nullptr) {
        backgroundScreen->windowRedrawing();
    }
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_COLOR_BUFFER_BIT);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    drawNameEntry();
    drawCursor();
    glPopAttrib();
    GLWindow::swapBuffers();
}

void NameEntry::drawNameEntry() const {
    TARNWICK_LOCATION("NameEntry::drawNameEntry");
    VirtualScreen::begin(1.0f);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(0.0f, 0.0f, 0.0f, veilAlpha);
    const Box window = VirtualScreen::window();
    glRectf(window.minX, window.minY, window.maxX, window.maxY);
    drawCentred("New high score!", titleY, titleSize, titleSize);
    drawCentred("Please enter name:", requestY, titleSize, titleSize);
    drawCentred(enteredName.data(), nameY, nameBoxHeight, nameSize);
    continueButton->windowRedrawing();
}

/// Across the screen, with the shadow below.
void NameEntry::drawCentred(const char* text, float y, float boxHeight, float size) const {
    TARNWICK_LOCATION("NameEntry::drawCentred");
    const auto drawAt = [&](Vector2 offset, Colour colour) {
        font->drawStringCentered(text, {offset.x, y + offset.y}, {VirtualScreen::width, boxHeight}, size,
                                 colour);
    };
    drawAt(dropShadowOffset, dropShadowColour);
    drawAt({}, textColour);
}

void NameEntry::drawCursor() const {
    TARNWICK_LOCATION("NameEntry::drawCursor");
    GLWindow::glBeginDraw2d();
    const auto x = static_cast<float>(GLWindow::getMouseX());
    const auto y = static_cast<float>(GLWindow::getMouseY());
    const GuiDrawing::Rectangle place{x, y, x + static_cast<float>(cursor->width),
                                      y + static_cast<float>(cursor->height)};
    GuiDrawing::drawPicture(*cursor, place, {}, opaqueWhite);
}

} // namespace tarnwick
