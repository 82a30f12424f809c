#include "gui/GuiDrawing.h"

#include "core/LocationStack.h"

#include <GL/gl.h>

namespace tarnwick {

void GuiDrawing::drawPicture(const GLTexture& picture,
                             const Rectangle& place,
                             const Rectangle& portion,
                             Colour colour) {
    TARNWICK_LOCATION("GuiDrawing::drawPicture");
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBindTexture(GL_TEXTURE_2D, picture.textureId);
    glColor4f(colour.red, colour.green, colour.blue, colour.alpha);
    glBegin(GL_QUADS);
    glTexCoord2f(portion.left, portion.top);
    glVertex2f(place.left, place.top);
    glTexCoord2f(portion.right, portion.top);
    glVertex2f(place.right, place.top);
    glTexCoord2f(portion.right, portion.bottom);
    glVertex2f(place.right, place.bottom);
    glTexCoord2f(portion.left, portion.bottom);
    glVertex2f(place.left, place.bottom);
    glEnd();
}

} // namespace tarnwick
