#include "gui/MenuLayout.h"

#include "graphics/KeyMap.h"
#include "gui/GameMenus.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/GuiImage.h"
#include "gui/GuiLabel.h"
#include "gui/GuiOptionChooser.h"
#include "gui/GuiTextBox.h"

#include <algorithm>

namespace tarnwick {

namespace {

/// A number of a file as whole virtual units, cut toward zero.
std::int32_t toUnits(float value) {
    TARNWICK_LOCATION("MenuLayout::toUnits");
    constexpr float farAway = 1e6f; // beyond every screen, and a whole number in 32 bits
    return static_cast<std::int32_t>(std::clamp(value, -farAway, farAway));
}

} // namespace

MenuLayout::MenuLayout(const char* fileName)
    : style(MenuStyle::read())
    , config(fileName) {
    TARNWICK_LOCATION("MenuLayout::MenuLayout");
}

void MenuLayout::place(GuiWidget& widget, const std::string& name) const {
    TARNWICK_LOCATION("MenuLayout::place");
    widget.setPosition(toUnits(number(name + "_x")), toUnits(number(name + "_y")));
    widget.enabled = false;
}

void MenuLayout::size(GuiWidget& widget, const std::string& name) const {
    TARNWICK_LOCATION("MenuLayout::size");
    widget.setSize(toUnits(number(name + "_w")), toUnits(number(name + "_h")));
}

void MenuLayout::dressText(GuiWidget& widget, GuiFontGroup& text) const {
    TARNWICK_LOCATION("MenuLayout::dressText");
    widget.setColor(style.fontColour);
    text.setFont(style.font);
    text.dropShadowEnabled = true;
    text.setDropShadowOffset(style.textShadowOffset);
    text.setDropShadowColor(style.textShadowColour);
}

void MenuLayout::dressButton(GuiAnimatedButton& button, const std::string& name) const {
    TARNWICK_LOCATION("MenuLayout::dressButton");
    place(button, name);
    size(button, name);
    button.enabled = true;
    button.setFramesOutOfFocus(text(name + "_frames_outOfFocus"));
    button.setFramesInFocus(text(name + "_frames_inFocus"));
    button.setFramesClicked(text(name + "_frames_clicked"));
    button.dropShadowEnabled = true;
    button.setDropShadowOffset(style.buttonShadowOffset);
    button.setDropShadowColor(style.buttonShadowColour);
    button.setClickedSound(style.clickedSound);
    button.setOverSound(style.overSound);
    button.framesPerSecond = style.animationSpeed;
}

void MenuLayout::addLogo(GuiScreen& screen) const {
    TARNWICK_LOCATION("MenuLayout::addLogo");
    auto& logo = add<GuiImage>(screen, "logo");
    logo.setImage(text("logo"));
    const auto width = static_cast<std::int32_t>(logo.image.width);
    const auto height = static_cast<std::int32_t>(logo.image.height);
    logo.setSize(width, height);
    logo.setPosition(logo.x - width / 2, logo.y - height / 2);
}

GuiAnimatedButton& MenuLayout::addButton(GuiScreen& screen,
                                         const std::string& name,
                                         GuiWidget::MouseButtonCallback onClick,
                                         GuiWidget::KeyCallback onKey) const {
    TARNWICK_LOCATION("MenuLayout::addButton");
    auto& button = add<GuiAnimatedButton>(screen, name);
    dressButton(button, name);
    button.onMousePressed = onClick;
    button.mousePressedDelay = actionDelay;
    button.onKeyboardPressed = onKey;
    button.keyboardPressedDelay = actionDelay;
    return button;
}

GuiLabel&
MenuLayout::addLabel(GuiScreen& screen, const std::string& name, const std::string& labelText) const {
    TARNWICK_LOCATION("MenuLayout::addLabel");
    auto& label = add<GuiLabel>(screen, name);
    dressText(label);
    label.setFontSize(style.labelFontSize);
    label.setText(labelText);
    return label;
}

GuiLabel&
MenuLayout::addSizedLabel(GuiScreen& screen, const std::string& name, const std::string& labelText) const {
    TARNWICK_LOCATION("MenuLayout::addSizedLabel");
    GuiLabel& label = addLabel(screen, name, labelText);
    label.setFontSize(number(name + "_fontSize"));
    return label;
}

GuiOptionChooser& MenuLayout::addChooser(GuiScreen& screen, const std::string& name) const {
    TARNWICK_LOCATION("MenuLayout::addChooser");
    auto& chooser = add<GuiOptionChooser>(screen, name);
    size(chooser, name);
    chooser.enabled = true;
    dressText(chooser);
    chooser.setFontSize(style.chooserFontSize);
    chooser.setLeftButtonFramesOutOfFocus(style.chooserLeft.outOfFocus);
    chooser.setLeftButtonFramesInFocus(style.chooserLeft.inFocus);
    chooser.setLeftButtonFramesClicked(style.chooserLeft.clicked);
    chooser.setRightButtonFramesOutOfFocus(style.chooserRight.outOfFocus);
    chooser.setRightButtonFramesInFocus(style.chooserRight.inFocus);
    chooser.setRightButtonFramesClicked(style.chooserRight.clicked);
    chooser.setFramesPerSecond(style.animationSpeed);
    chooser.setOverSound(style.chooserOverSound);
    chooser.setClickedSound(style.chooserClickedSound);
    return chooser;
}

void MenuLayout::addTextBox(GuiScreen& screen, const std::string& name) const {
    TARNWICK_LOCATION("MenuLayout::addTextBox");
    addTextBox(screen, name, text(name + "_text"));
}

void MenuLayout::addTextBox(GuiScreen& screen, const std::string& name, const std::string& boxText) const {
    TARNWICK_LOCATION("MenuLayout::addTextBox");
    auto& box = add<GuiTextBox>(screen, name);
    dressText(box);
    box.setSize(toUnits(number(name + "_w")), box.height);
    box.centered = true;
    box.setFontSize(number(name + "_fontSize"));
    box.setText(boxText);
}

void MenuLayout::linkColumn(const std::vector<GuiWidget*>& column) {
    TARNWICK_LOCATION("MenuLayout::linkColumn");
    for (std::size_t i = 0; i + 1 < column.size(); ++i) {
        column[i]->addFocusTraversal(key::down, column[i + 1]);
        column[i]->addFocusTraversal(key::tab, column[i + 1]);
        if (i > 0) {
            column[i]->addFocusTraversal(key::up, column[i - 1]);
        }
    }
    column.back()->addFocusTraversal(key::tab, column.front());
    if (column.size() > 2) {
        column.back()->addFocusTraversal(key::up, column[column.size() - 3]);
    }
}

void MenuLayout::setMenu(std::uint32_t number) {
    TARNWICK_LOCATION("MenuLayout::setMenu");
    GameMenus::setCurrentMenu(number);
}

void MenuLayout::goBack(GuiWidget& /*button*/) {
    TARNWICK_LOCATION("MenuLayout::goBack");
    GameMenus::setCurrentMenu(GameMenus::getLastMenu());
}

bool MenuLayout::isActionKey(std::uint32_t key) {
    TARNWICK_LOCATION("MenuLayout::isActionKey");
    return key == key::enter || key == key::space;
}

} // namespace tarnwick
