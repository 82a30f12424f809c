#include "gui/GuiImage.h"

#include "core/LocationStack.h"
#include "gui/GuiDrawing.h"

namespace tarnwick {

GuiImage::GuiImage() {
    TARNWICK_LOCATION("GuiImage::GuiImage");
    setImagePortion(0.0f, 0.0f, static_cast<float>(image.width), static_cast<float>(image.height));
}

void GuiImage::setImage(const std::string& name) {
    TARNWICK_LOCATION("GuiImage::setImage");
    image = name;
    setImagePortion(0.0f, 0.0f, static_cast<float>(image.width), static_cast<float>(image.height));
}

void GuiImage::setImagePortion(float left, float top, float newWidth, float newHeight) {
    TARNWICK_LOCATION("GuiImage::setImagePortion");
    portionX = left;
    portionY = top;
    portionWidth = newWidth;
    portionHeight = newHeight;
}

void GuiImage::windowRedrawing() {
    TARNWICK_LOCATION("GuiImage::windowRedrawing");
    GuiDrawing::Rectangle portion{0.0f, 0.0f, 0.0f, 0.0f};
    if (image.width != 0 && image.height != 0) {
        const auto imageWidth = static_cast<float>(image.width);
        const auto imageHeight = static_cast<float>(image.height);
        portion.left = portionX / imageWidth;
        portion.top = portionY / imageHeight;
        portion.right = portion.left + portionWidth / imageWidth;
        portion.bottom = portion.top + portionHeight / imageHeight;
    }
    const auto left = static_cast<float>(x);
    const auto top = static_cast<float>(y);
    const GuiDrawing::Rectangle place{left, top, left + static_cast<float>(width),
                                      top + static_cast<float>(height)};
    GuiDrawing::drawPicture(image, place, portion, colour());
}

} // namespace tarnwick
