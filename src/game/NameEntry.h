#pragma once

#include "core/Colour.h"
#include "core/FrameTimer.h"
#include "core/Vector2.h"
#include "graphics/GLWindowEventListener.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <string>

namespace tarnwick {

class GLFont;
class GLTexture;
class GuiAnimatedButton;
class GuiScreen;
class Sound;

/// The screen on which a player enters a name for the table of the best scores: a listener of the window that
/// takes over the input until the player is done.
class NameEntry final : public GLWindowEventListener {
public:
    static constexpr std::size_t longestName = 20; ///< Characters that can be entered.

    /// Shows the screen, with `background` drawn behind it, until the player is done or the window is gone;
    /// the name as far as it was typed then. The game stands still meanwhile.
    static std::string ask(GuiScreen* background);

    /// The screen, with an empty name; plays its sound. `background` is not owned; null for none.
    explicit NameEntry(GuiScreen* background);
    virtual ~NameEntry();
    NameEntry(const NameEntry&) = delete;
    NameEntry& operator=(const NameEntry&) = delete;

    /// The name so far: letters and digits without accents, and blanks.
    std::string name() const;
    /// False once the name has been accepted and its button has played.
    bool isActive() const { return active; }

    void mouseMoved(std::uint32_t x, std::uint32_t y) override;
    void mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t button) override;
    /// On a game pad up and down turn the last letter, right adds one, left and B take one back, A and Start
    /// accept. On the keyboard Enter and Escape accept, Backspace takes a character back; letters, digits and
    /// blanks are entered. A key that was held when the screen opened counts only after its release: it was
    /// meant for what led here, and the keyboard repeats it.
    void keyboardPressed(std::uint32_t key) override;
    void keyboardReleased(std::uint32_t key) override;
    void windowClosing() override;
    void windowRedrawing() override;

private:
    static constexpr std::size_t keyNumbers = 256; ///< Above all that keys have.

    std::array<char, longestName + 1> enteredName{}; ///< Zero-filled behind the name.
    std::uint32_t enteredLength = 0;                 ///< 0 to 20.
    GuiScreen* backgroundScreen = nullptr;           ///< Not owned; may be null.
    bool active = true;                              ///< The loop runs.
    std::unique_ptr<GLTexture> cursor;
    std::unique_ptr<GLFont> font;
    std::unique_ptr<Sound> highScoreSound;
    std::unique_ptr<GuiAnimatedButton> continueButton; ///< Accepts the name.
    Colour textColour;
    Vector2 dropShadowOffset; ///< Virtual units.
    Colour dropShadowColour;
    std::bitset<keyNumbers> heldAtOpening; ///< Keys that have not been seen released yet.
    bool closing = false;                  ///< The name was accepted; input is ignored.
    float closeTimeLeft = 0.8f;            ///< Seconds from then until `active` falls.
    FrameTimer timer;

    void readConfiguration();
    bool overContinueButton(std::uint32_t x, std::uint32_t y) const;
    void accept();
    void turnLetter(bool onward);
    void addLetter();
    void runClosing();
    void drawCentred(const char* text, float y, float boxHeight, float size) const;
    void drawNameEntry() const;
    void drawCursor() const;
};

} // namespace tarnwick
