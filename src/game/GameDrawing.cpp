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
#include "graphics/Screenshot.h"
#include "graphics/VirtualScreen.h"
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

namespace tarnwick {

namespace {

constexpr float pausedTextSize = 32.0f;
constexpr float cursorShadowOffset = 2.0f; ///< Pixels right and down, of the black copy below.
constexpr float pausedShadowOffset = 2.0f; ///< Right and down, of the black copy below.

/// One layer of the level, from the back: what can move, then what cannot, then the objects.
void drawLayer(std::uint32_t layer, void (*drawGeometry)()) {
    TARNWICK_LOCATION("Game::drawLayer");
    DynamicPolygonRenderer::drawLayer(layer);
    drawGeometry();
    LevelObjectsManager::drawLayer(layer);
}

} // namespace

void Game::draw() {
    TARNWICK_LOCATION("Game::draw");
    drawPicture();
    if (state.screenshotRequested) {
        state.screenshotRequested = false;
        Screenshot::save();
    }
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
    if (state.freeCamera.enabled) {
        state.freeCamera.viewFrom();
    } else {
        Camera::viewFrom();
    }
    if (!GameRules::gameIsFinished()) {
        drawLevel();
        if (state.freeCamera.enabled) {
            state.freeCamera.draw();
        }
    }
    GameRules::draw();
    VirtualScreen::begin(1.0f);
    drawPausedText();
    CheckPointTimesManager::draw();
    drawMenu();
    state.drawTicks.add(Clock::performanceCounter() - before);
    if (state.consoleOpen) {
        GLConsole::draw();
    }
}

/// Two layers behind the water, three in front of it, and the debug drawings over all.
void Game::drawLevel() {
    TARNWICK_LOCATION("Game::drawLevel");
    glEnable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_CULL_FACE);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    const View view = Camera::view();
    LevelObjectsManager::prepareDraw(view);
    DynamicPolygonRenderer::prepareDraw(view);
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
    TriggerManager::debugDraw(view);
    LevelObjectsManager::debugDraw();
    SoundSourceManager::debugDraw();
    MoverManager::debugDraw();
    FxParticleManager::debugDraw();
}

void Game::drawPausedText() {
    TARNWICK_LOCATION("Game::drawPausedText");
    if (!state.paused || state.freeCamera.enabled || state.gameFont == nullptr) {
        return;
    }
    const auto drawAt = [](float offset, Colour colour) {
        state.gameFont->drawStringCentered("Paused", {offset, offset},
                                           {VirtualScreen::width, VirtualScreen::height}, pausedTextSize,
                                           colour);
    };
    drawAt(pausedShadowOffset, opaqueBlack);
    drawAt(0.0f, opaqueWhite);
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

} // namespace tarnwick
