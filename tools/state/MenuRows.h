#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarnwick {

class GuiScreen;
class GuiWidget;
class JsonLine;
class JsonObject;

/// The fields "menu", "lastMenu" and "screen" of a state line: which menu is up, which was up before it, who
/// has its focus and which clicks and keys wait there for their time. How far its animations are is left out.
class MenuRows {
public:
    static void write(JsonLine& out);

    /// Reads and tests the fields and changes nothing. Without "lastMenu" that menu stays; without "screen"
    /// the menu opens anew.
    void read(const JsonObject& in);
    /// Opens the menu. Before the rules, whose timer hears of it. Cannot fail.
    void apply() const;

private:
    static constexpr std::size_t largestArguments = 3;
    static constexpr std::int32_t nobody = -1; ///< For the place of a widget.

    /// An event that waits, in one of the screen's queues.
    struct Event {
        std::size_t queue = 0;  ///< Presses, releases and moves of the mouse, presses and releases of keys.
        std::size_t widget = 0; ///< Place on the screen.
        float delay = 0.0f;     ///< Seconds left.
        std::uint32_t arguments[largestArguments] = {}; ///< As many as its queue's callback takes.
    };
    std::uint32_t menu = 0;
    std::uint32_t lastMenu = 0;
    bool screenPresent = false;
    std::uint32_t clock = 0; ///< At which the screen last let time pass.
    std::int32_t focus = nobody;
    std::vector<Event> events; ///< Queue by queue, oldest first.

    static std::vector<GuiWidget*> widgetsOf(const GuiScreen& screen);
    static std::int32_t placeOf(const GuiScreen& screen, const void* widget);
    static void writeScreen(JsonLine& out, const GuiScreen& screen);
    template <typename Queue>
    static void writeQueue(JsonLine& out, const GuiScreen& screen, std::uint32_t number, const Queue& queue);
    void readScreen(const JsonObject& from);
    void readEvent(const JsonObject& from, std::size_t place, const std::vector<GuiWidget*>& widgets);
    void applyScreen(GuiScreen& screen) const;
};

} // namespace tarnwick
