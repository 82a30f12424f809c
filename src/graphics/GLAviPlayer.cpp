#include "graphics/GLAviPlayer.h"

#include "core/Comfort.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "graphics/AviStream.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>

#include <cmath>
#include <vector>

namespace tarnwick {

namespace {

constexpr float millisecondsPerSecond = 1000.0f;

/// The bound texture is drawn as it stands, without mipmaps.
void setLinearFilters() {
    TARNWICK_LOCATION("GLAviPlayer::setLinearFilters");
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
}

} // namespace

GLAviPlayer::GLAviPlayer() {
    TARNWICK_LOCATION("GLAviPlayer::GLAviPlayer");
    frameTimer.reset();
}

GLAviPlayer::GLAviPlayer(const std::string& fileName) {
    TARNWICK_LOCATION("GLAviPlayer::GLAviPlayer");
    frameTimer.reset();
    open(fileName);
}

GLAviPlayer::~GLAviPlayer() {
    TARNWICK_LOCATION("GLAviPlayer::~GLAviPlayer");
    close();
}

void GLAviPlayer::open(const std::string& fileName) {
    TARNWICK_LOCATION("GLAviPlayer::open");
    close();
    stream = AviStream::open(fileName);
    if (stream != nullptr && (stream->width() < 1 || stream->height() < 1)) {
        return;
    }
    if (stream == nullptr || !prepare()) {
        Log::print("\nUnable to open AVI file '" + fileName + "'");
        close();
        return;
    }
    getAviFrame(0);
    frameTimer.reset();
}

/// What can fail once the stream is there.
bool GLAviPlayer::prepare() {
    TARNWICK_LOCATION("GLAviPlayer::prepare");
    frames = stream->frameCount();
    millisecondsPerFrame = stream->frameDuration();
    if (frames < 1 || frames > mostFrames || millisecondsPerFrame == 0 || !stream->openFrames()) {
        return false;
    }
    createTexture();
    return true;
}

/// A black texture with room for the pictures. What the pictures leave free stays black.
void GLAviPlayer::createTexture() {
    TARNWICK_LOCATION("GLAviPlayer::createTexture");
    widthOfTexture = nextPowerOfTwo(static_cast<std::uint32_t>(stream->width()));
    heightOfTexture = nextPowerOfTwo(static_cast<std::uint32_t>(stream->height()));
    const std::vector<std::uint8_t> zeros(std::size_t{widthOfTexture} * heightOfTexture * 3);
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    setLinearFilters();
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, static_cast<GLsizei>(widthOfTexture),
                 static_cast<GLsizei>(heightOfTexture), 0, GL_RGB, GL_UNSIGNED_BYTE, zeros.data());
}

void GLAviPlayer::close() {
    TARNWICK_LOCATION("GLAviPlayer::close");
    stream.reset();
    if (texture != 0) {
        glDeleteTextures(1, &texture);
    }
    texture = 0;
    shownFrame = 0;
    frames = 0;
    frameElapsed = 0;
}

bool GLAviPlayer::loaded() const {
    TARNWICK_LOCATION("GLAviPlayer::loaded");
    return stream != nullptr && stream->framesOpen();
}

bool GLAviPlayer::finished() const {
    TARNWICK_LOCATION("GLAviPlayer::finished");
    return !loaded() || shownFrame >= frames;
}

void GLAviPlayer::rewind() {
    TARNWICK_LOCATION("GLAviPlayer::rewind");
    if (!loaded()) {
        return;
    }
    getAviFrame(0);
    shownFrame = 0;
    frameElapsed = 0;
    frameTimer.reset();
}

void GLAviPlayer::play() {
    TARNWICK_LOCATION("GLAviPlayer::play");
    if (!loaded() || shownFrame >= frames) {
        return;
    }
    frameTimer.update();
    // To the nearest whole number, halves to the even one.
    const float milliseconds = std::nearbyint(frameTimer.getSeconds() * millisecondsPerSecond);
    const std::uint32_t elapsed = frameElapsed + static_cast<std::uint32_t>(milliseconds);
    if (elapsed <= millisecondsPerFrame) {
        frameElapsed = elapsed;
        return;
    }
    frameElapsed = 0; // the rest is dropped
    ++shownFrame;
    if (shownFrame < frames) {
        getAviFrame(shownFrame);
    }
}

/// Puts picture `index` into the texture. Where the file gives none, the video ends.
void GLAviPlayer::getAviFrame(std::uint32_t index) {
    TARNWICK_LOCATION("GLAviPlayer::getAviFrame");
    if (!loaded()) {
        return;
    }
    const std::uint8_t* const pixels = stream->frame(index);
    if (pixels == nullptr) {
        close();
        return;
    }
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    setLinearFilters();
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, stream->width(), stream->height(), GL_BGR, GL_UNSIGNED_BYTE,
                    pixels);
}

void GLAviPlayer::draw() {
    TARNWICK_LOCATION("GLAviPlayer::draw");
    if (!loaded()) {
        return;
    }
    GLWindow::glBeginDraw2d();
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_ALPHA_TEST);
    glDisable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, texture);
    GLWindow::clearScreen(0.0f, 0.0f, 0.0f);

    const auto width = static_cast<float>(stream->width());
    const auto height = static_cast<float>(stream->height());
    const float right = width / static_cast<float>(widthOfTexture);
    const float top = height / static_cast<float>(heightOfTexture);
    const auto clientHeight = static_cast<float>(GLWindow::getClientHeight());
    const auto clientWidth = static_cast<float>(GLWindow::getClientWidth());
    const float middle = clientWidth / 2.0f;
    float halfWidth = clientHeight * (width / height) / 2.0f;
    float upper = 0.0f;
    if (Comfort::values().keepProportions && halfWidth > middle) { // an upright window: all of it is seen
        halfWidth = middle;
        upper = (clientHeight - clientWidth * (height / width)) / 2.0f;
    }
    const float lower = clientHeight - upper;
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glBegin(GL_QUADS); // the picture stands in the texture on its head
    glTexCoord2f(0.0f, top);
    glVertex2f(middle - halfWidth, upper);
    glTexCoord2f(right, top);
    glVertex2f(middle + halfWidth, upper);
    glTexCoord2f(right, 0.0f);
    glVertex2f(middle + halfWidth, lower);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2f(middle - halfWidth, lower);
    glEnd();
    GLWindow::swapBuffers();
}

} // namespace tarnwick
