#include "gui/MenuStyle.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"

namespace tarnwick {

namespace {

/// The four keys of a colour.
Colour colourOf(const ConfigFile& config, const std::string& name) {
    TARNWICK_LOCATION("MenuStyle::colourOf");
    return {config.getVarAsFloat(name + "_r"), config.getVarAsFloat(name + "_g"),
            config.getVarAsFloat(name + "_b"), config.getVarAsFloat(name + "_a")};
}

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
    style.fontColour = colourOf(config, "menuFontColor");
    style.textShadowOffset = offsetOf(config, "textDropShadowOffset");
    style.textShadowColour = colourOf(config, "textDropShadowColor");
    style.labelFontSize = config.getVarAsFloat("labelFontSizes");
    style.buttonShadowOffset = offsetOf(config, "buttonDropShadowOffset");
    style.buttonShadowColour = colourOf(config, "buttonDropShadowColor");
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
