#include "gui/MenuStyle.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "graphics/ReadColour.h"

namespace tarnwick {

namespace {

Vector2 offsetOf(const ConfigFile& config, const std::string& name) {
    TARNWICK_LOCATION("MenuStyle::offsetOf");
    return {config.getVarAsFloat(name + "_x"), config.getVarAsFloat(name + "_y")};
}

MenuStyle::Frames framesOf(const ConfigFile& config, const std::string& name) {
    TARNWICK_LOCATION("MenuStyle::framesOf");
    return {config.getVarAsString(name + "_frames_outOfFocus"),
            config.getVarAsString(name + "_frames_inFocus"), config.getVarAsString(name + "_frames_clicked")};
}

} // namespace

MenuStyle MenuStyle::read() {
    TARNWICK_LOCATION("MenuStyle::read");
    const ConfigFile config("cfg\\menu_general.cfg");
    MenuStyle style;
    style.font = config.getVarAsString("menuFont");
    style.fontColour = readColour(config, "menuFontColor");
    style.textShadowOffset = offsetOf(config, "textDropShadowOffset");
    style.textShadowColour = readColour(config, "textDropShadowColor");
    style.labelFontSize = config.getVarAsFloat("labelFontSizes");
    style.buttonShadowOffset = offsetOf(config, "buttonDropShadowOffset");
    style.buttonShadowColour = readColour(config, "buttonDropShadowColor");
    style.animationSpeed = config.getVarAsFloat("menuAnimationSpeeds");
    style.overSound = config.getVarAsString("menuOverSound");
    style.clickedSound = config.getVarAsString("menuClickedSound");
    style.chooserFontSize = config.getVarAsFloat("optionChooserFontSizes");
    style.chooserLeft = framesOf(config, "optionChooserLeftButtons");
    style.chooserRight = framesOf(config, "optionChooserRightButtons");
    style.chooserOverSound = config.getVarAsString("optionChooserSound_over");
    style.chooserClickedSound = config.getVarAsString("optionChooserSound_clicked");
    style.backgroundSound = config.getVarAsString("menuBgSound");
    return style;
}

} // namespace tarnwick
