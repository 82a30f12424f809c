#pragma once

#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "gui/GuiScreen.h"
#include "gui/MenuStyle.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

class GuiAnimatedButton;
class GuiFontGroup;
class GuiImage;
class GuiLabel;
class GuiOptionChooser;
class GuiTextBox;

/// Puts the widgets of a menu on its screen, as the menu's own configuration file and the general one say: a
/// widget called "start" takes its keys `start_x`, `start_y` and so on. Lives while the menu is built.
///
/// What only shows something does not take the mouse: pictures as large as the screen lie below the buttons.
class MenuLayout {
public:
    /// What a button does, by mouse and by key alike.
    using Action = void (*)(GuiWidget& button);

    static constexpr float actionDelay = 0.8f; ///< Seconds from the click to the action: its animation runs.

    explicit MenuLayout(const char* fileName);

    /// The screen's picture, at its own size about its place.
    void addLogo(GuiScreen& screen) const;
    /// A button with its two callbacks.
    template <Action Act>
    GuiAnimatedButton& addButton(GuiScreen& screen, const std::string& name) const {
        return addButton(screen, name, clicked<Act>, pressed<Act>);
    }
    /// A line of text in the size of all labels.
    GuiLabel& addLabel(GuiScreen& screen, const std::string& name, const std::string& text) const;
    /// One in a size of its own, `name_fontSize`.
    GuiLabel& addSizedLabel(GuiScreen& screen, const std::string& name, const std::string& text) const;
    GuiOptionChooser& addChooser(GuiScreen& screen, const std::string& name) const;
    /// A centred text; `name_w` breaks its lines.
    void addTextBox(GuiScreen& screen, const std::string& name) const;
    void addTextBox(GuiScreen& screen, const std::string& name, const std::string& boxText) const;

    /// Adds a widget of any kind at its place, for the screen to dress.
    template <typename Widget>
    Widget& add(GuiScreen& screen, const std::string& name) const {
        TARNWICK_LOCATION("MenuLayout::add");
        auto* const widget = new Widget;
        screen.addWidget(widget);
        place(*widget, name);
        return *widget;
    }
    /// The width and height of a widget.
    void size(GuiWidget& widget, const std::string& name) const;
    /// The letters of all menus and their shadow.
    template <typename TextWidget>
    void dressText(TextWidget& widget) const {
        dressText(widget, widget);
    }
    /// Everything of a button but its callbacks.
    void dressButton(GuiAnimatedButton& button, const std::string& name) const;

    float number(const std::string& key) const { return config.getVarAsFloat(key); }
    std::string text(const std::string& key) const { return config.getVarAsString(key); }

    /// The ways of the keys in a column: Down and Tab to the next, Up to the one before, Tab from the last to
    /// the first.
    /// Kept: from the last, Up leads past the one above it to the one two above.
    static void linkColumn(const std::vector<GuiWidget*>& column);

    /// Actions that many buttons have.
    template <std::uint32_t Number>
    static void openMenu(GuiWidget& /*button*/) {
        TARNWICK_LOCATION("MenuLayout::openMenu");
        setMenu(Number);
    }
    static void goBack(GuiWidget& button);

    const MenuStyle style; // read before the menu's own file

private:
    const ConfigFile config;

    void place(GuiWidget& widget, const std::string& name) const;
    void dressText(GuiWidget& widget, GuiFontGroup& text) const;
    GuiAnimatedButton& addButton(GuiScreen& screen,
                                 const std::string& name,
                                 GuiWidget::MouseButtonCallback onClick,
                                 GuiWidget::KeyCallback onKey) const;
    static void setMenu(std::uint32_t number);
    static bool isActionKey(std::uint32_t key);

    template <Action Act>
    static bool
    clicked(GuiWidget& button, std::uint32_t /*x*/, std::uint32_t /*y*/, std::uint32_t /*button*/) {
        TARNWICK_LOCATION("MenuLayout::clicked");
        Act(button);
        return true;
    }
    template <Action Act>
    static bool pressed(GuiWidget& button, std::uint32_t key) {
        TARNWICK_LOCATION("MenuLayout::pressed");
        if (!isActionKey(key)) {
            return false;
        }
        Act(button);
        return true;
    }
};

} // namespace tarnwick
