#include "gui/GuiScreen.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "graphics/GLWindow.h"
#include "graphics/GamePad.h"
#include "graphics/VirtualScreen.h"

#include <GL/gl.h>

#include <algorithm>
#include <utility>

namespace tarnwick {

namespace {

/// A position of the virtual screen in whole units, halves away from zero. Beside the screen, left and above,
/// it is as far away as beyond its other edges: no widget is there.
std::uint32_t wholeUnits(float position) {
    TARNWICK_LOCATION("GuiScreen::wholeUnits");
    constexpr float farAway = 1e9f; // beyond every widget, and a whole number in 32 bits
    const float whole = round(position);
    return static_cast<std::uint32_t>(whole < 0.0f ? farAway : std::min(whole, farAway));
}

/// A client position in virtual units.
std::pair<std::uint32_t, std::uint32_t> toVirtual(std::uint32_t clientX, std::uint32_t clientY) {
    TARNWICK_LOCATION("GuiScreen::toVirtual");
    const Vector2 position = VirtualScreen::at(clientX, clientY);
    return {wholeUnits(position.x), wholeUnits(position.y)};
}

bool contains(const GuiWidget& widget, std::uint32_t x, std::uint32_t y) {
    TARNWICK_LOCATION("GuiScreen::contains");
    const std::int64_t right = std::int64_t{widget.x} + widget.width;
    const std::int64_t bottom = std::int64_t{widget.y} + widget.height;
    return widget.x <= std::int64_t{x} && std::int64_t{x} < right && widget.y <= std::int64_t{y} &&
           std::int64_t{y} < bottom;
}

} // namespace

GuiScreen::GuiScreen() {
    TARNWICK_LOCATION("GuiScreen::GuiScreen");
    GLWindow::unRestrictMouse();
}

void GuiScreen::addWidget(GuiWidget* widget) {
    TARNWICK_LOCATION("GuiScreen::addWidget");
    if (widget == nullptr || widget->parentScreen != nullptr) {
        return; // one that is in the list already has this screen
    }
    widgets.emplace_back(widget);
    widget->parentScreen = this;
}

void GuiScreen::run() {
    TARNWICK_LOCATION("GuiScreen::run");
    GLWindowEventListener* const previousListener = GLWindow::getEventListener();
    GLWindow::setEventListener(this);
    running = true;
    while (running && GLWindow::exists()) {
        GLWindow::requestRepaint();
        GLWindow::run();
    }
    GLWindow::setEventListener(previousListener);
}

void GuiScreen::setFocusedWidget(GuiWidget* widget) {
    TARNWICK_LOCATION("GuiScreen::setFocusedWidget");
    if (!ownsWidget(widget) || widget == focusedWidget) {
        return;
    }
    if (focusedWidget != nullptr) {
        focusedWidget->hasFocus = false;
        focusedWidget->lostFocus();
    }
    widget->hasFocus = true;
    widget->gainedFocus();
    focusedWidget = widget;
}

void GuiScreen::setDefaultFocusWidget(GuiWidget* widget) {
    TARNWICK_LOCATION("GuiScreen::setDefaultFocusWidget");
    if (ownsWidget(widget)) {
        defaultFocusWidget = widget;
    }
}

bool GuiScreen::delayedEventPending(const GuiWidget* widget) const {
    TARNWICK_LOCATION("GuiScreen::delayedEventPending");
    const auto waitsIn = [widget](const auto& queue) {
        return std::ranges::any_of(queue, [widget](const auto& event) { return event.widget == widget; });
    };
    return waitsIn(delayedMousePressed) || waitsIn(delayedMouseReleased) || waitsIn(delayedMouseMoved) ||
           waitsIn(delayedKeyboardPressed) || waitsIn(delayedKeyboardReleased);
}

void GuiScreen::dropDelayedEvents() {
    TARNWICK_LOCATION("GuiScreen::dropDelayedEvents");
    delayedMousePressed.clear();
    delayedMouseReleased.clear();
    delayedMouseMoved.clear();
    delayedKeyboardPressed.clear();
    delayedKeyboardReleased.clear();
}

void GuiScreen::runDelayedEvents(float seconds) {
    TARNWICK_LOCATION("GuiScreen::runDelayedEvents");
    if (runQueue(delayedMousePressed, seconds) || runQueue(delayedMouseReleased, seconds) ||
        runQueue(delayedMouseMoved, seconds) || runQueue(delayedKeyboardPressed, seconds) ||
        runQueue(delayedKeyboardReleased, seconds)) {
        dropDelayedEvents();
    }
}

/// Lets `seconds` pass in one queue. True when a callback wants everything dropped; the rest of the queue has
/// not been walked then.
template <typename Event>
bool GuiScreen::runQueue(std::deque<Event>& queue, float seconds) {
    TARNWICK_LOCATION("GuiScreen::runQueue");
    std::size_t next = 0; // a place and not an iterator: callbacks may empty the queue, or fill it
    while (next < queue.size()) {
        queue[next].delay -= seconds;
        if (queue[next].delay > 0.0f) {
            ++next;
            continue;
        }
        const Event event = queue[next];
        queue.erase(queue.begin() + static_cast<std::ptrdiff_t>(next));
        const bool dropAll =
            std::apply([&event](auto... arguments) { return event.handler(*event.widget, arguments...); },
                       event.arguments);
        if (dropAll) {
            return true;
        }
    }
    return false;
}

/// Calls the callback at once, or lets the event wait.
template <typename Event, typename... Arguments>
void GuiScreen::deliver(std::deque<Event>& queue,
                        GuiWidget* widget,
                        typename Event::Handler handler,
                        float delay,
                        Arguments... arguments) {
    TARNWICK_LOCATION("GuiScreen::deliver");
    if (handler == nullptr) {
        return;
    }
    if (delay > 0.0f) {
        queue.push_back({delay, handler, widget, {arguments...}});
    } else {
        handler(*widget, arguments...);
    }
}

void GuiScreen::reset() {
    TARNWICK_LOCATION("GuiScreen::reset");
    for (const auto& widget : widgets) {
        widget->reset(); // Kept: not its `hasFocus`. Who had it gains it anew only once the mouse has been
                         // elsewhere.
    }
    dropDelayedEvents();
    focusedWidget = nullptr;
    frameTimer.reset();
}

void GuiScreen::mouseMoved(std::uint32_t clientX, std::uint32_t clientY) {
    TARNWICK_LOCATION("GuiScreen::mouseMoved");
    const auto [x, y] = toVirtual(clientX, clientY);
    bool found = false;
    for (const auto& widget : widgets) {
        if (!found && widget->enabled && contains(*widget, x, y)) {
            if (!widget->hasFocus) {
                widget->hasFocus = true;
                widget->gainedFocus();
            }
            widget->mouseMoved(x, y);
            found = true;
            focusedWidget = widget.get();
        } else if (widget->hasFocus) {
            widget->hasFocus = false;
            widget->lostFocus();
        }
    }
    if (!found) {
        focusedWidget = nullptr;
        return;
    }
    // The second time, this one as the focused widget: who counts moves counts two.
    focusedWidget->mouseMoved(x, y);
    deliver(delayedMouseMoved, focusedWidget, focusedWidget->onMouseMoved, focusedWidget->mouseMovedDelay, x,
            y);
}

void GuiScreen::mousePressed(std::uint32_t clientX, std::uint32_t clientY, std::uint32_t button) {
    TARNWICK_LOCATION("GuiScreen::mousePressed");
    if (focusedWidget == nullptr) {
        return;
    }
    const auto [x, y] = toVirtual(clientX, clientY);
    focusedWidget->mousePressed(x, y, button);
    if (GuiWidget* const widget = focusedWidget; widget != nullptr) { // the press may have moved the focus
        deliver(delayedMousePressed, widget, widget->onMousePressed, widget->mousePressedDelay, x, y, button);
    }
}

void GuiScreen::mouseReleased(std::uint32_t clientX, std::uint32_t clientY, std::uint32_t button) {
    TARNWICK_LOCATION("GuiScreen::mouseReleased");
    if (focusedWidget == nullptr) {
        return;
    }
    const auto [x, y] = toVirtual(clientX, clientY);
    focusedWidget->mouseReleased(x, y, button);
    if (GuiWidget* const widget = focusedWidget; widget != nullptr) {
        deliver(delayedMouseReleased, widget, widget->onMouseReleased, widget->mouseReleasedDelay, x, y,
                button);
    }
}

void GuiScreen::keyboardPressed(std::uint32_t keyOrButton) {
    TARNWICK_LOCATION("GuiScreen::keyboardPressed");
    const std::uint32_t key = GamePad::asMenuKey(keyOrButton);
    if (focusedWidget == nullptr) {
        if (ownsWidget(defaultFocusWidget)) {
            defaultFocusWidget->hasFocus = true;
            defaultFocusWidget->gainedFocus();
            focusedWidget = defaultFocusWidget;
        }
        return; // the key itself is spent
    }
    focusedWidget->keyboardPressed(key);
    if (GuiWidget* const widget = focusedWidget; widget != nullptr) {
        deliver(delayedKeyboardPressed, widget, widget->onKeyboardPressed, widget->keyboardPressedDelay, key);
    }
    if (focusedWidget != nullptr) { // a callback without delay may have changed the screen
        focusedWidget->doFocusTraversal(key);
    }
}

void GuiScreen::keyboardReleased(std::uint32_t key) {
    TARNWICK_LOCATION("GuiScreen::keyboardReleased");
    if (focusedWidget == nullptr) {
        return;
    }
    focusedWidget->keyboardReleased(key);
    if (GuiWidget* const widget = focusedWidget; widget != nullptr) {
        deliver(delayedKeyboardReleased, widget, widget->onKeyboardReleased, widget->keyboardReleasedDelay,
                key);
    }
}

void GuiScreen::windowClosing() {
    TARNWICK_LOCATION("GuiScreen::windowClosing");
    GLWindow::close();
}

void GuiScreen::windowClosed() {
    TARNWICK_LOCATION("GuiScreen::windowClosed");
    dropDelayedEvents();
    focusedWidget = nullptr;
    defaultFocusWidget = nullptr;
    widgets.clear();
}

void GuiScreen::keep(Moment& moment) const {
    TARNWICK_LOCATION("GuiScreen::keep");
    moment.frameTimer = frameTimer;
    moment.focusedWidget = focusedWidget;
    moment.delayedMousePressed = delayedMousePressed;
    moment.delayedMouseReleased = delayedMouseReleased;
    moment.delayedMouseMoved = delayedMouseMoved;
    moment.delayedKeyboardPressed = delayedKeyboardPressed;
    moment.delayedKeyboardReleased = delayedKeyboardReleased;
}

void GuiScreen::putBack(const Moment& moment, std::uint32_t late) {
    TARNWICK_LOCATION("GuiScreen::putBack");
    setFocusedWidget(moment.focusedWidget);
    delayedMousePressed = moment.delayedMousePressed;
    delayedMouseReleased = moment.delayedMouseReleased;
    delayedMouseMoved = moment.delayedMouseMoved;
    delayedKeyboardPressed = moment.delayedKeyboardPressed;
    delayedKeyboardReleased = moment.delayedKeyboardReleased;
    frameTimer = moment.frameTimer;
    frameTimer.shift(late);
}

void GuiScreen::windowRedrawing() {
    TARNWICK_LOCATION("GuiScreen::windowRedrawing");
    if (clearBackground) {
        GLWindow::clearScreen(backgroundRed, backgroundGreen, backgroundBlue);
    }
    glPushAttrib(GL_ENABLE_BIT | GL_LIGHTING_BIT); // the second holds the shade model
    drawWidgets();
    if (swapBuffers) {
        GLWindow::swapBuffers();
    }
    glPopAttrib();
    frameTimer.update();
    runDelayedEvents(frameTimer.getSeconds());
}

void GuiScreen::drawWidgets() {
    TARNWICK_LOCATION("GuiScreen::drawWidgets");
    glDisable(GL_LIGHTING);
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    glShadeModel(GL_FLAT);
    VirtualScreen::begin(0.0f);
    for (const auto& widget : widgets) {
        if (widget->visible) {
            widget->windowRedrawing();
        }
    }
}

} // namespace tarnwick
