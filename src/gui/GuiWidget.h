#pragma once

#include "core/Colour.h"
#include "graphics/GLWindowEventListener.h"

#include <cstdint>
#include <map>

namespace tarnwick {

class GuiScreen;

/// One thing on a screen: a button, a text, a picture. It uses the window's listener for its own events: its
/// screen calls `mouseMoved`, `mousePressed` and so on with virtual coordinates, and `windowRedrawing` to
/// draw it in the virtual space of 800 by 600 units.
///
/// All virtual operations do nothing here. The callbacks are what the screen that owns the widget wants to
/// hear; they come at once or after a delay of their own, so that an animation or a sound can end before the
/// action runs.
class GuiWidget : public GLWindowEventListener {
public:
    /// Plain functions, static members of a screen. True: the event has changed so much that every delayed
    /// event of the screen must be dropped; a callback that ran without delay is not asked.
    using MouseButtonCallback = bool (*)(GuiWidget& widget,
                                         std::uint32_t x,
                                         std::uint32_t y,
                                         std::uint32_t button);
    using MouseMoveCallback = bool (*)(GuiWidget& widget, std::uint32_t x, std::uint32_t y);
    using KeyCallback = bool (*)(GuiWidget& widget, std::uint32_t key);

    float red = 1.0f; ///< Colour, each 0 to 1.
    float green = 1.0f;
    float blue = 1.0f;
    float alpha = 1.0f;
    std::int32_t width = 100; ///< Virtual units, not below 0.
    std::int32_t height = 20;
    std::int32_t x = 0; ///< Top left corner, virtual units.
    std::int32_t y = 0;
    bool visible = true; ///< Drawn.
    bool enabled = true; ///< Hit by the mouse.
    bool hasFocus = false;

    MouseButtonCallback onMousePressed = nullptr; ///< Set by the screen that owns the widget, as the delays.
    MouseButtonCallback onMouseReleased = nullptr;
    MouseMoveCallback onMouseMoved = nullptr;
    KeyCallback onKeyboardPressed = nullptr;
    KeyCallback onKeyboardReleased = nullptr;
    float mousePressedDelay = 0.0f; ///< Seconds; 0 and below: at once.
    float mouseReleasedDelay = 0.0f;
    float mouseMovedDelay = 0.0f;
    float keyboardPressedDelay = 0.0f;
    float keyboardReleasedDelay = 0.0f;

    GuiScreen* parentScreen = nullptr;                    ///< Set by `GuiScreen::addWidget`, once.
    std::map<std::uint32_t, GuiWidget*> focusTraversal{}; ///< Where the focus goes on a key. Not owned.

    GuiWidget() = default;
    virtual ~GuiWidget() = default;
    GuiWidget(const GuiWidget&) = delete;
    GuiWidget& operator=(const GuiWidget&) = delete;

    virtual void gainedFocus() {}
    virtual void lostFocus() {}
    /// The screen opens.
    virtual void reset() {}

    /// Each is limited to 0..1.
    void setColor(Colour newColour);
    void setColor(float newRed, float newGreen, float newBlue, float newAlpha) {
        setColor({newRed, newGreen, newBlue, newAlpha});
    }
    Colour colour() const { return {red, green, blue, alpha}; }
    void setPosition(std::int32_t newX, std::int32_t newY);
    /// Negative values become 0.
    void setSize(std::int32_t newWidth, std::int32_t newHeight);

    /// From this widget `key` leads to `widget`; replaces what the key led to.
    void addFocusTraversal(std::uint32_t key, GuiWidget* widget);
    /// Gives the focus to where `key` leads. Nothing happens without a screen or for a key that leads
    /// nowhere.
    void doFocusTraversal(std::uint32_t key);
};

} // namespace tarnwick
