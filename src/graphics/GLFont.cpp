#include "graphics/GLFont.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"

#include <GL/gl.h>

#include <array>

namespace tarnwick {

namespace {

constexpr float cellSize = 0.0625f; ///< Of the picture's width and height: 16 cells each way.
constexpr std::size_t charactersAtOnce = 64;

/// One corner of a cell, in the layout of `GL_T2F_V3F`.
struct Corner {
    float s, t;
    float x, y, z;
};

/// Quads of characters, gathered and drawn together in the order in which they came.
class CharacterQuads {
public:
    void add(std::uint8_t character, Vector2 place, float size) {
        TARNWICK_LOCATION("CharacterQuads::add");
        if (count == corners.size()) {
            draw();
        }
        const float left = static_cast<float>(character & 15) * cellSize;
        const float top = static_cast<float>(character >> 4) * cellSize;
        const float right = left + cellSize;
        const float bottom = top + cellSize;
        corners[count++] = {left, top, place.x, place.y, 0.0f};
        corners[count++] = {right, top, place.x + size, place.y, 0.0f};
        corners[count++] = {right, bottom, place.x + size, place.y + size, 0.0f};
        corners[count++] = {left, bottom, place.x, place.y + size, 0.0f};
    }

    void draw() {
        TARNWICK_LOCATION("CharacterQuads::draw");
        if (count == 0) {
            return;
        }
        glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        glInterleavedArrays(GL_T2F_V3F, 0, corners.data());
        glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(count));
        glPopClientAttrib();
        count = 0;
    }

private:
    std::array<Corner, charactersAtOnce * 4> corners;
    std::size_t count = 0;
};

} // namespace

// Not as the default picture first: without another user it would be read and uploaded for each of them.
GLFont::GLFont(const GLTexture& source)
    : GLTexture(source) {
    TARNWICK_LOCATION("GLFont::GLFont");
}

GLFont::GLFont(const GLFont& source)
    : GLTexture(source) {
    TARNWICK_LOCATION("GLFont::GLFont");
}

GLFont::GLFont(const std::string& fileName)
    : GLTexture(fileName) {
    TARNWICK_LOCATION("GLFont::GLFont");
}

GLFont& GLFont::operator=(const GLTexture& source) {
    TARNWICK_LOCATION("GLFont::operator=");
    if (source != *this) {
        GLTexture::operator=(source);
    }
    return *this;
}

GLFont&
GLFont::operator=(const GLFont& source) { // NOLINT(bugprone-unhandled-self-assignment): compared above
    TARNWICK_LOCATION("GLFont::operator=");
    return *this = static_cast<const GLTexture&>(source);
}

GLFont& GLFont::operator=(const std::string& fileName) {
    TARNWICK_LOCATION("GLFont::operator=");
    GLTexture::operator=(fileName);
    return *this;
}

void GLFont::drawString(std::string_view text, Vector2 place, float size, Colour colour) const {
    TARNWICK_LOCATION("GLFont::drawString");
    if (text.data() == nullptr || !(size > 0.0f)) {
        return;
    }
    glBindTexture(GL_TEXTURE_2D, textureId);
    const std::string_view shown = slUpToNul(text);
    if (shown.find_first_not_of('\n') == std::string_view::npos) { // nothing to be seen
        return;
    }
    glPushAttrib(GL_ENABLE_BIT);
    glEnable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_ALPHA_TEST);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(colour.red, colour.green, colour.blue, colour.alpha);
    CharacterQuads quads;
    Vector2 pen = place;
    for (const char character : shown) {
        if (character == '\n') {
            pen = {place.x, pen.y + size};
            continue;
        }
        quads.add(static_cast<std::uint8_t>(character), pen, size);
        pen.x += size;
    }
    quads.draw();
    glPopAttrib();
}

void GLFont::drawStringCentered(
    std::string_view text, Vector2 corner, Vector2 extent, float size, Colour colour) const {
    TARNWICK_LOCATION("GLFont::drawStringCentered");
    if (text.data() == nullptr || !(size > 0.0f)) {
        return;
    }
    const auto length = static_cast<float>(slUpToNul(text).size());
    const float left = round(corner.x + extent.x / 2.0f - length * size / 2.0f);
    const float top = round(corner.y + extent.y / 2.0f - size / 2.0f);
    drawString(text, {left, top}, size, colour);
}

} // namespace tarnwick
