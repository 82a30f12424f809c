#pragma once

#include "core/FrameTimer.h"
#include "graphics/GLWindowEventListener.h"
#include "gui/GuiWidget.h"

#include <cstdint>
#include <deque>
#include <list>
#include <memory>
#include <tuple>
#include <utility>

namespace tarnwick {

/// A screen of widgets: draws them on the `VirtualScreen`, hands mouse and keys to the widget that has the
/// focus, and calls the widgets' callbacks, at once or after the delay of widget and event. A delayed event
/// waits in a queue of its kind; the queues run once a drawn frame.
///
/// The focus follows the mouse: moving onto a widget gives it the focus, and a press goes to the widget that
/// has it, wherever the pointer is. Where widgets overlap, the one added first takes the mouse, though the
/// one added last is drawn on top.
///
/// A screen runs a loop of its own (`run`) or is driven from outside, event by event. It owns its widgets;
/// when the window closes under it they go, before the GL context does, and nobody may touch them afterwards.
class GuiScreen : public GLWindowEventListener {
public:
    float backgroundRed = 0.0f; ///< What the picture is cleared to, 0 to 1.
    float backgroundGreen = 0.0f;
    float backgroundBlue = 0.0f;
    bool clearBackground = true; ///< Clear before drawing.
    bool swapBuffers = true;     ///< Present after drawing; false for a screen on top of something else.

    /// Frees the mouse.
    GuiScreen();
    virtual ~GuiScreen() = default;
    GuiScreen(const GuiScreen&) = delete;
    GuiScreen& operator=(const GuiScreen&) = delete;

    /// Takes the widget over, as the last. Ignored, and not taken over, if it is null or has a screen
    /// already.
    void addWidget(GuiWidget* widget);
    /// In the order of adding, which is the order of drawing.
    const std::list<std::unique_ptr<GuiWidget>>& getWidgets() const { return widgets; }

    /// Runs as the window's listener until `exit` or until the window is gone; then gives the listener back.
    void run();
    void exit() { running = false; }

    /// Takes the focus from who has it. Ignored for null, a widget of another screen, and the one that has
    /// it.
    void setFocusedWidget(GuiWidget* widget);
    GuiWidget* getFocusedWidget() const { return focusedWidget; }
    /// Who gets the focus at the first key. Ignored unless the widget belongs to this screen.
    void setDefaultFocusWidget(GuiWidget* widget);
    /// Whether any event waits for the widget.
    bool delayedEventPending(const GuiWidget* widget) const;
    /// Lets `seconds` pass for the waiting events, in the order presses, releases, moves, key presses, key
    /// releases, each queue from its oldest, and calls what is due. A callback that gives true drops
    /// everything that waits.
    void runDelayedEvents(float seconds);
    /// Drops everything that waits.
    void dropDelayedEvents();

    /// The screen opens: resets every widget, drops what waits, leaves nobody focused, restarts the time.
    virtual void reset();

    /// Positions are client pixels. A widget that is moved over hears each move twice, its callback once.
    void mouseMoved(std::uint32_t clientX, std::uint32_t clientY) override;
    void mousePressed(std::uint32_t clientX, std::uint32_t clientY, std::uint32_t button) override;
    void mouseReleased(std::uint32_t clientX, std::uint32_t clientY, std::uint32_t button) override;
    /// Without a focused widget the key only gives the focus to the default one. A game pad's button is the
    /// key that it stands for.
    void keyboardPressed(std::uint32_t keyOrButton) override;
    void keyboardReleased(std::uint32_t key) override;
    void windowResized() override {}
    void windowClosing() override;
    void windowClosed() override;
    /// Draws the screen, then runs the delayed events with the seconds since the last time.
    void windowRedrawing() override;

    /// What of the screen a `Snapshot` holds; nobody else looks inside.
    class Moment;
    void keep(Moment& moment) const;
    /// Of a moment of this screen. `late`: milliseconds by which the clock has gone on since then.
    void putBack(const Moment& moment, std::uint32_t late);

private:
    friend class GuiScreenTest;
    friend class MenuRows; // tools: dump and restore

    /// An event that waits, with the widget it is for and its arguments.
    template <typename... Arguments>
    struct DelayedEvent {
        using Handler = bool (*)(GuiWidget&, Arguments...);

        float delay = 0.0f; ///< Seconds left.
        Handler handler = nullptr;
        GuiWidget* widget = nullptr; ///< Not owned.
        std::tuple<Arguments...> arguments{};
    };
    using MouseButtonEvent = DelayedEvent<std::uint32_t, std::uint32_t, std::uint32_t>;
    using MouseMoveEvent = DelayedEvent<std::uint32_t, std::uint32_t>;
    using KeyEvent = DelayedEvent<std::uint32_t>;

    FrameTimer frameTimer; ///< Seconds since the last frame.
    bool running = false;  ///< `run` goes on.
    GuiWidget* focusedWidget = nullptr;
    GuiWidget* defaultFocusWidget = nullptr;
    std::list<std::unique_ptr<GuiWidget>> widgets;
    std::deque<MouseButtonEvent> delayedMousePressed;
    std::deque<MouseButtonEvent> delayedMouseReleased;
    std::deque<MouseMoveEvent> delayedMouseMoved;
    std::deque<KeyEvent> delayedKeyboardPressed;
    std::deque<KeyEvent> delayedKeyboardReleased;

    bool ownsWidget(const GuiWidget* widget) const {
        return widget != nullptr && widget->parentScreen == this;
    }
    void drawWidgets();

    template <typename Event, typename... Arguments>
    static void deliver(std::deque<Event>& queue,
                        GuiWidget* widget,
                        typename Event::Handler handler,
                        float delay,
                        Arguments... arguments);
    template <typename Event>
    static bool runQueue(std::deque<Event>& queue, float seconds);
};

class GuiScreen::Moment {
    friend class GuiScreen;
    FrameTimer frameTimer;
    GuiWidget* focusedWidget = nullptr;
    std::deque<MouseButtonEvent> delayedMousePressed;
    std::deque<MouseButtonEvent> delayedMouseReleased;
    std::deque<MouseMoveEvent> delayedMouseMoved;
    std::deque<KeyEvent> delayedKeyboardPressed;
    std::deque<KeyEvent> delayedKeyboardReleased;
};

} // namespace tarnwick
