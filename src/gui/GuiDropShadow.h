#pragma once

#include "graphics/Colour.h"

namespace tarnwick {

/// The shadow of a text or a picture: the same once more, below it, at an offset and in one colour. A part of
/// widgets; never deleted through this class.
class GuiDropShadow {
public:
    bool dropShadowEnabled = false;
    float dropShadowOffsetX = 0.0f; ///< Virtual units, right and down.
    float dropShadowOffsetY = 0.0f;
    float dropShadowRed = 0.0f; ///< 0 to 1, as the other three.
    float dropShadowGreen = 0.0f;
    float dropShadowBlue = 0.0f;
    float dropShadowAlpha = 1.0f;

    void setDropShadowColor(float red, float green, float blue, float alpha);
    void setDropShadowOffset(float x, float y);

protected:
    ~GuiDropShadow() = default;

    Colour dropShadowColour() const {
        return {dropShadowRed, dropShadowGreen, dropShadowBlue, dropShadowAlpha};
    }
};

} // namespace tarnwick
