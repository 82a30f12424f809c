#pragma once

#include "core/Colour.h"
#include "core/Vector2.h"

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

    void setDropShadowColor(Colour colour);
    void setDropShadowColor(float red, float green, float blue, float alpha) {
        setDropShadowColor({red, green, blue, alpha});
    }
    void setDropShadowOffset(Vector2 offset);
    void setDropShadowOffset(float x, float y) { setDropShadowOffset({x, y}); }

protected:
    ~GuiDropShadow() = default;

    Vector2 dropShadowOffset() const { return {dropShadowOffsetX, dropShadowOffsetY}; }
    Colour dropShadowColour() const {
        return {dropShadowRed, dropShadowGreen, dropShadowBlue, dropShadowAlpha};
    }
};

} // namespace tarnwick
