#pragma once

#include "core/GLTexture.h"
#include "gui/GuiWidget.h"

#include <string>

namespace tarnwick {

/// A picture, or a part of one, stretched to the widget's rectangle.
class GuiImage : public GuiWidget {
public:
    GLTexture image;
    float portionX = 0.0f; ///< The part that shows, pixels of the image.
    float portionY = 0.0f;
    float portionWidth = 0.0f;
    float portionHeight = 0.0f;

    GuiImage();
    /// Takes another picture, the whole of it.
    void setImage(const std::string& name);
    /// Shows a part, given in pixels of the image.
    void setImagePortion(float left, float top, float newWidth, float newHeight);

    void windowRedrawing() override;
};

} // namespace tarnwick
