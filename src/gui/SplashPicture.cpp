#include "gui/SplashPicture.h"

#include "core/Comfort.h"
#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/Vector2.h"
#include "graphics/VirtualScreen.h"

#include <GL/gl.h>

#include <algorithm>

namespace tarnwick {

namespace {

/// Frames per second: stands for 0, by which nothing is divided.
constexpr float slowestAnimation = 0.000001f;
constexpr float dimness = 0.25f;     ///< Light of what lies beside the screen.
constexpr float shadowOffset = 1.0f; ///< Units, to the right and down.
constexpr std::int32_t largestClientSize = 65535;

/// A space in client pixels with (0, 0) at the top left and y downwards.
void beginDraw2d(std::int32_t clientWidth, std::int32_t clientHeight) {
    TARNWICK_LOCATION("SplashPicture::beginDraw2d");
    const auto width = static_cast<float>(clientWidth);
    const auto height = static_cast<float>(clientHeight);
    glViewport(0, 0, clientWidth, clientHeight);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glScalef(2.0f / width, -2.0f / height, 1.0f);
    glTranslatef(-width / 2.0f, -height / 2.0f, 0.0f);
    glMatrixMode(GL_MODELVIEW);
}

/// The bound texture whole, centred on `middle`; `half` is half its width and height.
void drawCentred(Vector2 middle, Vector2 half) {
    TARNWICK_LOCATION("SplashPicture::drawCentred");
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2f(middle.x - half.x, middle.y - half.y);
    glTexCoord2f(1.0f, 0.0f);
    glVertex2f(middle.x + half.x, middle.y - half.y);
    glTexCoord2f(1.0f, 1.0f);
    glVertex2f(middle.x + half.x, middle.y + half.y);
    glTexCoord2f(0.0f, 1.0f);
    glVertex2f(middle.x - half.x, middle.y + half.y);
    glEnd();
}

} // namespace

SplashPicture::SplashPicture()
    : SplashPicture(ConfigFile("cfg\\splashScreen.cfg")) {
    TARNWICK_LOCATION("SplashPicture::SplashPicture");
}

SplashPicture::SplashPicture(const ConfigFile& config)
    : background(config.getVarAsString("splashBackground")) {
    TARNWICK_LOCATION("SplashPicture::SplashPicture");
    const float shareWide = config.getVarAsFloat("splashBackgroundW") / static_cast<float>(background.width);
    const float shareHigh = config.getVarAsFloat("splashBackgroundH") / static_cast<float>(background.height);
    left = 0.5f - shareWide * 0.5f;
    right = 0.5f + shareWide * 0.5f;
    top = 0.5f - shareHigh * 0.5f;
    bottom = 0.5f + shareHigh * 0.5f;
    animation.setTexture(config.getVarAsString("splashAnimation"));
    animation.x = config.getVarAsFloat("splashAnimationX");
    animation.y = config.getVarAsFloat("splashAnimationY");
    speed = config.getVarAsFloat("splashAnimationSpeed");
    if (!(speed > 0.0f)) {
        speed = slowestAnimation;
    }
}

void SplashPicture::advance(float seconds) {
    TARNWICK_LOCATION("SplashPicture::advance");
    animation.frameTime += seconds;
    if (animation.frameTime > 1.0f / speed) {
        animation.frameTime = 0.0f;
        ++animation.currentFrame;
        if (animation.currentFrame >= animation.frameCount) {
            animation.currentFrame = 0;
        }
    }
}

void SplashPicture::draw(std::int32_t clientWidth, std::int32_t clientHeight) const {
    TARNWICK_LOCATION("SplashPicture::draw");
    const std::int32_t width = std::clamp(clientWidth, 1, largestClientSize);
    const std::int32_t height = std::clamp(clientHeight, 1, largestClientSize);
    beginDraw2d(width, height);
    glLoadIdentity();
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    if (Comfort::values().keepProportions) {
        drawBeside(width, height);
    }
    VirtualScreen::fit(width, height, 0.0f);
    drawBackground(1.0f);
    drawAnimation();
}

/// What lies beside the screen: the picture once more, as dim as the wings of a stage, over the whole window.
void SplashPicture::drawBeside(std::int32_t width, std::int32_t height) const {
    TARNWICK_LOCATION("SplashPicture::drawBeside");
    const float unitsX = static_cast<float>(width) / VirtualScreen::width;
    const float unitsY = static_cast<float>(height) / VirtualScreen::height;
    const float scale = std::max(unitsX, unitsY); // the larger one: nothing of the window is left
    glPushMatrix();
    glTranslatef((static_cast<float>(width) - VirtualScreen::width * scale) / 2.0f,
                 (static_cast<float>(height) - VirtualScreen::height * scale) / 2.0f, 0.0f);
    glScalef(scale, scale, 0.0f);
    drawBackground(dimness);
    glPopMatrix();
}

void SplashPicture::drawBackground(float light) const {
    TARNWICK_LOCATION("SplashPicture::drawBackground");
    glBindTexture(GL_TEXTURE_2D, background.textureId);
    glColor4f(light, light, light, 1.0f);
    glBegin(GL_QUADS);
    glTexCoord2f(left, top);
    glVertex2f(0.0f, 0.0f);
    glTexCoord2f(right, top);
    glVertex2f(VirtualScreen::width, 0.0f);
    glTexCoord2f(right, bottom);
    glVertex2f(VirtualScreen::width, VirtualScreen::height);
    glTexCoord2f(left, bottom);
    glVertex2f(0.0f, VirtualScreen::height);
    glEnd();
}

/// The frame on its shadow.
void SplashPicture::drawAnimation() const {
    TARNWICK_LOCATION("SplashPicture::drawAnimation");
    const GLTexture* const frame = animation.frame();
    const Vector2 middle{animation.x, animation.y};
    Vector2 half;
    if (frame != nullptr) {
        half = {static_cast<float>(frame->width) * 0.5f, static_cast<float>(frame->height) * 0.5f};
        glBindTexture(GL_TEXTURE_2D, frame->textureId);
    }
    glColor4f(0.0f, 0.0f, 0.0f, 1.0f);
    drawCentred(middle + Vector2{shadowOffset, shadowOffset}, half);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    drawCentred(middle, half);
}

} // namespace tarnwick
