#include "audio/SoundSourceManager.h"
#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/LocationStack.h"
#include "game/Camera.h"
#include "game/CheckPointTimesManager.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "graphics/DynamicPolygonRenderer.h"
#include "graphics/GLFont.h"
#include "graphics/GLWindow.h"
#include "graphics/LevelGeometryRenderer.h"
#include "graphics/ParticleRenderer.h"
#include "gui/GameMenus.h"
#include "gui/GuiDrawing.h"
#include "level/Level.h"
#include "level/LevelObjectsManager.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/MoverManager.h"
#include "mechanisms/TriggerManager.h"
#include "particles/ParticleGroupMover.h"

#include <GL/gl.h>

#include <cstdio>

namespace tarnwick {

namespace {

constexpr float screenWidth = 800.0f; ///< The virtual screen on which texts and menus are laid out.
constexpr float screenHeight = 600.0f;
constexpr float pausedTextSize = 32.0f;
constexpr float cursorShadowOffset = 2.0f; ///< Pixels right and down, of the black copy below.
constexpr float pausedShadowOffset = 2.0f; ///< Right and down, of the black copy below.

constexpr float markArm = 4.0f;         ///< Pixels: arm of the cross at the free camera.
constexpr float markTextOffset = 16.0f; ///< Pixels: its coordinates stand this much below it.
constexpr float markTextSize = 8.0f;

/// Client pixels, scaled so that the client area is 800 by 600 whatever its size.
void beginVirtualScreen() {
    TARNWICK_LOCATION("Game::beginVirtualScreen");
    GLWindow::glBeginDraw2d();
    glScalef(static_cast<float>(GLWindow::getClientWidth()) / screenWidth,
             static_cast<float>(GLWindow::getClientHeight()) / screenHeight, 1.0f);
}

/// One layer of the level, from the back: what can move, then what cannot, then the objects.
void drawLayer(std::uint32_t layer, void (*drawGeometry)()) {
    TARNWICK_LOCATION("Game::drawLayer");
    DynamicPolygonRenderer::drawLayer(layer);
    drawGeometry();
    LevelObjectsManager::drawLayer(layer);
}

/// The outline of what the game camera sees, in the world.
void drawCameraFrame() {
    TARNWICK_LOCATION("Game::drawCameraFrame");
    const Vector2 centre = Camera::position() + Camera::shakeOffset();
    const float halfX = Game::getViewAreaX() * Camera::zoom() / 2.0f;
    const float halfY = Game::getViewAreaY() * Camera::zoom() / 2.0f;
    glColor3f(0.0f, 1.0f, 0.0f);
    glPushMatrix();
    glTranslatef(centre.x, centre.y, 0.0f);
    glRotatef(Camera::angle(), 0.0f, 0.0f, 1.0f);
    glBegin(GL_LINE_LOOP);
    glVertex2f(-halfX, -halfY);
    glVertex2f(halfX, -halfY);
    glVertex2f(halfX, halfY);
    glVertex2f(-halfX, halfY);
    glEnd();
    glPopMatrix();
}

} // namespace

void Game::draw() {
    TARNWICK_LOCATION("Game::draw");
    drawPicture();
    GLWindow::swapBuffers();
}

void Game::drawPicture() {
    TARNWICK_LOCATION("Game::drawPicture");
    const std::uint64_t before = Clock::performanceCounter();
    GLWindow::glBeginDraw2d();
    glClearColor(state.backgroundRed, state.backgroundGreen, state.backgroundBlue, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    if (state.freeCameraEnabled) {
        viewFromFreeCamera();
    } else {
        Camera::viewFrom();
    }
    if (!GameRules::gameIsFinished()) {
        drawLevel();
        if (state.freeCameraEnabled) {
            drawFreeCamera();
        }
    }
    GameRules::draw();
    beginVirtualScreen();
    drawPausedText();
    CheckPointTimesManager::draw();
    drawMenu();
    measureDrawing(Clock::performanceCounter() - before);
    if (state.consoleOpen) {
        GLConsole::draw();
    }
}

void Game::viewFromFreeCamera() {
    TARNWICK_LOCATION("Game::viewFromFreeCamera");
    const float viewX = getViewAreaX();
    const float viewY = getViewAreaY();
    // Depth is flattened, as in the camera's own view.
    glScalef(static_cast<float>(GLWindow::getClientWidth()) / viewX,
             static_cast<float>(GLWindow::getClientHeight()) / viewY, 0.0f);
    glTranslatef(viewX / 2.0f, viewY / 2.0f, 0.0f);
    glScalef(state.freeCameraZoom, state.freeCameraZoom, 1.0f);
    glTranslatef(-state.freeCameraX, -state.freeCameraY, 0.0f);
}

/// Two layers behind the water, three in front of it, and the debug drawings over all.
void Game::drawLevel() {
    TARNWICK_LOCATION("Game::drawLevel");
    glEnable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_CULL_FACE);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    LevelObjectsManager::prepareDraw();
    DynamicPolygonRenderer::prepareDraw();
    drawLayer(0, LevelGeometryRenderer::drawLayer0);
    drawLayer(1, LevelGeometryRenderer::drawLayer1);
    ParticleRenderer::draw();
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    drawLayer(2, LevelGeometryRenderer::drawLayer2);
    drawLayer(3, LevelGeometryRenderer::drawLayer3);
    drawLayer(4, LevelGeometryRenderer::drawLayer4);
    FxParticleManager::draw();
    Level::debugDraw();
    ForceManager::debugDraw();
    ParticleGroupMover::debugDraw();
    TriggerManager::debugDraw();
    LevelObjectsManager::debugDraw();
    SoundSourceManager::debugDraw();
    MoverManager::debugDraw();
    FxParticleManager::debugDraw();
}

/// A cross where the free camera stands, its coordinates, and the frame of the game camera's view.
void Game::drawFreeCamera() {
    TARNWICK_LOCATION("Game::drawFreeCamera");
    const float x = state.freeCameraX;
    const float y = state.freeCameraY;
    const float arm = markArm / state.freeCameraZoom;
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_LINES);
    glVertex2f(x - arm, y);
    glVertex2f(x + arm, y);
    glVertex2f(x, y - arm);
    glVertex2f(x, y + arm);
    glEnd();
    drawCameraFrame();
    glPopAttrib();

    char text[128];
    std::snprintf(text, sizeof text, "%1f , %2f", static_cast<double>(x), static_cast<double>(y));
    GLFont(GLConsole::getFontTexture())
        .drawString(text, x, y + markTextOffset / state.freeCameraZoom, markTextSize / state.freeCameraZoom,
                    1.0f, 1.0f, 1.0f, 1.0f);
}

void Game::drawPausedText() {
    TARNWICK_LOCATION("Game::drawPausedText");
    if (!state.paused || state.freeCameraEnabled || state.gameFont == nullptr) {
        return;
    }
    const auto drawAt = [](float offset, float shade) {
        state.gameFont->drawStringCentered("Paused", offset, offset, screenWidth, screenHeight,
                                           pausedTextSize, shade, shade, shade, 1.0f);
    };
    drawAt(pausedShadowOffset, 0.0f);
    drawAt(0.0f, 1.0f);
}

/// The menu that is up, and the cursor over it.
void Game::drawMenu() {
    TARNWICK_LOCATION("Game::drawMenu");
    if (!menuUp()) {
        return;
    }
    GameMenus::sendMenuEvent_windowRedrawing();
    if (state.cursorTexture != nullptr) {
        GLWindow::glBeginDraw2d();
        glDisable(GL_CULL_FACE);
        drawCursor(cursorShadowOffset, 0.0f);
        drawCursor(0.0f, 1.0f);
    }
}

/// At the mouse, moved right and down by `offset` pixels, in a shade of grey.
void Game::drawCursor(float offset, float shade) {
    TARNWICK_LOCATION("Game::drawCursor");
    const float x = static_cast<float>(GLWindow::getMouseX()) + offset;
    const float y = static_cast<float>(GLWindow::getMouseY()) + offset;
    const GuiDrawing::Rectangle place{x, y, x + static_cast<float>(state.cursorTexture->width),
                                      y + static_cast<float>(state.cursorTexture->height)};
    GuiDrawing::drawPicture(*state.cursorTexture, place, {}, {shade, shade, shade, 1.0f});
}

/// Adds the cost of one picture; a batch of 32 gives the average, printed if asked for.
void Game::measureDrawing(std::uint64_t ticks) {
    TARNWICK_LOCATION("Game::measureDrawing");
    const bool batchDone =
        averageTicks(ticks, state.drawTicksCount, state.drawTicksSum, state.drawTicksAverage);
    if (batchDone && state.showDrawSpeeds) {
        GLConsole::print("\nDrawing - clock tics: ");
        GLConsole::print(static_cast<std::int32_t>(state.drawTicksAverage));
    }
}

bool Game::conCmdShowDrawSpeeds(bool value, bool set) {
    TARNWICK_LOCATION("Game::conCmdShowDrawSpeeds");
    if (set) {
        state.showDrawSpeeds = value;
    }
    return state.showDrawSpeeds;
}

} // namespace tarnwick
