#include "graphics/PlainDrawing.h"

#include "core/LocationStack.h"

#include <GL/gl.h>

namespace tarnwick {

namespace {

void setEnabled(GLenum capability, bool on) {
    TARNWICK_LOCATION("PlainDrawing::setEnabled");
    if (on) {
        glEnable(capability);
    } else {
        glDisable(capability);
    }
}

} // namespace

void PlainDrawing::beginFlat() {
    TARNWICK_LOCATION("PlainDrawing::beginFlat");
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    glDisable(GL_FOG);
    glDisable(GL_CULL_FACE);
    glDisable(GL_STENCIL_TEST);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

void PlainDrawing::drawRectangle(const Box& box, Colour colour) {
    TARNWICK_LOCATION("PlainDrawing::drawRectangle");
    glColor4f(colour.red, colour.green, colour.blue, colour.alpha);
    glRectf(box.minX, box.minY, box.maxX, box.maxY);
}

void PlainDrawing::setBlending(bool on) {
    TARNWICK_LOCATION("PlainDrawing::setBlending");
    setEnabled(GL_BLEND, on);
}

void PlainDrawing::setPictures(bool on) {
    TARNWICK_LOCATION("PlainDrawing::setPictures");
    setEnabled(GL_TEXTURE_2D, on);
}

void PlainDrawing::bindPicture(std::uint32_t textureId) {
    TARNWICK_LOCATION("PlainDrawing::bindPicture");
    glBindTexture(GL_TEXTURE_2D, textureId);
}

void PlainDrawing::beginSprites() {
    TARNWICK_LOCATION("PlainDrawing::beginSprites");
    glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
}

void PlainDrawing::setSpritesCover(bool cover) {
    TARNWICK_LOCATION("PlainDrawing::setSpritesCover");
    glBlendFunc(GL_SRC_ALPHA, cover ? GL_ONE_MINUS_SRC_ALPHA : GL_ONE);
}

void PlainDrawing::endSprites() {
    TARNWICK_LOCATION("PlainDrawing::endSprites");
    glPopAttrib();
}

} // namespace tarnwick
