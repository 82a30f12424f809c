#include "tools/state/MenuRows.h"

#include "gui/GameMenus.h"
#include "gui/GuiScreen.h"
#include "gui/GuiWidget.h"
#include "gui/MenuNumber.h"
#include "tools/state/JsonLine.h"
#include "tools/state/JsonObject.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

#include <iterator>
#include <tuple>

namespace tarnwick {

namespace {

constexpr std::size_t argumentCounts[] = {3, 3, 2, 1, 1}; ///< Of the callbacks, queue by queue.
constexpr std::size_t firstArgument = 3; ///< In an event's row, behind queue, widget and delay.

/// Whether the widget takes the events of a queue.
bool listens(const GuiWidget& widget, std::size_t queue) {
    const bool callbacks[] = {widget.onMousePressed != nullptr, widget.onMouseReleased != nullptr,
                              widget.onMouseMoved != nullptr, widget.onKeyboardPressed != nullptr,
                              widget.onKeyboardReleased != nullptr};
    return queue < std::size(callbacks) && callbacks[queue];
}

std::uint32_t readMenu(const JsonObject& in, const char* key, std::uint32_t otherwise) {
    const auto number = in.integer<std::uint32_t>(key, otherwise);
    if (number > menu::last) {
        refuseField(in.path(key), "the number of a menu");
    }
    return number;
}

} // namespace

void MenuRows::write(JsonLine& out) {
    out.key("menu").number(GameMenus::getCurrentMenu()).key("lastMenu").number(GameMenus::getLastMenu());
    if (const GuiScreen* const screen = GameMenus::currentScreen(); screen != nullptr) {
        writeScreen(out, *screen);
    }
}

void MenuRows::writeScreen(JsonLine& out, const GuiScreen& screen) {
    out.key("screen").openObject();
    out.key("clock").number(SimulationState::lastClockOf(screen.frameTimer));
    out.key("focus").number(placeOf(screen, screen.focusedWidget));
    out.key("waiting").openArray();
    writeQueue(out, screen, 0, screen.delayedMousePressed);
    writeQueue(out, screen, 1, screen.delayedMouseReleased);
    writeQueue(out, screen, 2, screen.delayedMouseMoved);
    writeQueue(out, screen, 3, screen.delayedKeyboardPressed);
    writeQueue(out, screen, 4, screen.delayedKeyboardReleased);
    out.closeArray().closeObject();
}

template <typename Queue>
void MenuRows::writeQueue(JsonLine& out, const GuiScreen& screen, std::uint32_t number, const Queue& queue) {
    for (const auto& event : queue) {
        out.openArray().number(number).number(placeOf(screen, event.widget)).number(event.delay);
        std::apply([&out](auto... arguments) { (out.number(arguments), ...); }, event.arguments);
        out.closeArray();
    }
}

std::int32_t MenuRows::placeOf(const GuiScreen& screen, const void* widget) {
    std::int32_t place = 0;
    for (const auto& other : screen.getWidgets()) {
        if (other.get() == widget) {
            return place;
        }
        ++place;
    }
    return nobody;
}

void MenuRows::read(const JsonObject& in) {
    in.field("menu");
    menu = readMenu(in, "menu", menu::none);
    lastMenu = readMenu(in, "lastMenu", GameMenus::getLastMenu());
    screenPresent = in.has("screen");
    if (screenPresent) {
        readScreen(in.child("screen"));
    }
}

void MenuRows::readScreen(const JsonObject& from) {
    const GuiScreen* const screen = GameMenus::state.screens[menu].get();
    const auto widgets = screen != nullptr ? widgetsOf(*screen) : std::vector<GuiWidget*>();
    clock = from.integer<std::uint32_t>("clock");
    focus = from.integer<std::int32_t>("focus");
    if (focus < nobody || focus >= static_cast<std::int32_t>(widgets.size())) {
        refuseField(from.path("focus"), "the place of a widget");
    }
    for (std::size_t i = 0; i < from.array("waiting").size(); ++i) {
        readEvent(from, i, widgets);
    }
}

std::vector<GuiWidget*> MenuRows::widgetsOf(const GuiScreen& screen) {
    std::vector<GuiWidget*> widgets;
    for (const auto& widget : screen.getWidgets()) {
        widgets.push_back(widget.get());
    }
    return widgets;
}

void MenuRows::readEvent(const JsonObject& from, std::size_t place, const std::vector<GuiWidget*>& widgets) {
    const std::string what = from.path("waiting");
    const nlohmann::json& row = asArray(from.array("waiting")[place], what);
    if (row.size() <= firstArgument) {
        refuseField(what, "a list of events");
    }
    Event& event = events.emplace_back();
    event.queue = asInteger<std::uint32_t>(row[0], what);
    event.widget = asInteger<std::uint32_t>(row[1], what);
    event.delay = asFloat(row[2], what);
    if (event.widget >= widgets.size() || !listens(*widgets[event.widget], event.queue) ||
        row.size() != firstArgument + argumentCounts[event.queue]) {
        refuseField(what, "a list of events of the menu that is up");
    }
    for (std::size_t i = firstArgument; i < row.size(); ++i) {
        event.arguments[i - firstArgument] = asInteger<std::uint32_t>(row[i], what);
    }
}

void MenuRows::apply() const {
    GameMenus::setCurrentMenu(menu);
    GameMenus::state.lastMenu = lastMenu;
    if (GuiScreen* const screen = GameMenus::currentScreen(); screen != nullptr && screenPresent) {
        applyScreen(*screen);
    }
}

void MenuRows::applyScreen(GuiScreen& screen) const {
    const std::vector<GuiWidget*> widgets = widgetsOf(screen);
    if (focus != nobody) {
        screen.setFocusedWidget(widgets[static_cast<std::size_t>(focus)]);
    }
    for (const Event& event : events) {
        GuiWidget* const widget = widgets[event.widget];
        const auto& [a, b, c] = event.arguments;
        switch (event.queue) {
        case 0:
            screen.delayedMousePressed.push_back({event.delay, widget->onMousePressed, widget, {a, b, c}});
            break;
        case 1:
            screen.delayedMouseReleased.push_back({event.delay, widget->onMouseReleased, widget, {a, b, c}});
            break;
        case 2:
            screen.delayedMouseMoved.push_back({event.delay, widget->onMouseMoved, widget, {a, b}});
            break;
        case 3:
            screen.delayedKeyboardPressed.push_back({event.delay, widget->onKeyboardPressed, widget, {a}});
            break;
        default:
            screen.delayedKeyboardReleased.push_back({event.delay, widget->onKeyboardReleased, widget, {a}});
            break;
        }
    }
    SimulationState::setLastClock(screen.frameTimer, clock);
}

} // namespace tarnwick
