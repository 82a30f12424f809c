#include "audio/MusicSystem.h"
#include "audio/SoundManager.h"
#include "audio/SoundSystem.h"
#include "console/GLConsole.h"
#include "core/Comfort.h"
#include "core/CrashReport.h"
#include "core/LocationStack.h"
#include "game/BasicCommands.h"
#include "game/Game.h"
#include "game/HighScores.h"
#include "game/KeptSettings.h"
#include "game/Modules.h"
#include "game/StartFile.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/GamePad.h"
#include "graphics/KeyBindings.h"
#include "gui/IntroScreen.h"
#include "gui/Menu_Options.h"

using namespace tarnwick;

namespace {

/// Full screen at the desktop's own size, unless the start asks for a window.
void openWindow(const StartFile& start) {
    TARNWICK_LOCATION("openWindow");
    GLWindow::createWindow("Tarnwick: Version " TARNWICK_VERSION_SHOWN, 800, 600);
    GLWindow::center();
    GLWindow::setCursor(GLWindow::Cursor::none);
    const auto& kept = KeptSettings::window();
    if (start.asksForWindow()) {
        GLWindow::setClientSize(start.windowWidth, start.windowHeight);
        GLWindow::center();
    } else if (kept && !kept->fullscreen) {
        GLWindow::setClientSize(kept->width, kept->height);
        GLWindow::center();
        if (kept->x >= 0 && kept->x < GLWindow::getScreenWidth() && kept->y >= 0 &&
            kept->y < GLWindow::getScreenHeight()) { // else the screen it was on is gone
            GLWindow::setPosition(kept->x, kept->y);
        }
    } else {
        GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    }
    GLWindow::enableVsync(true);
}

/// The quality that was kept, or as many samples as the platform has; without any the picture is the same but
/// for its edges. A new number takes a new GL context, into which the pictures are loaded again.
void smoothEdges() {
    TARNWICK_LOCATION("smoothEdges");
    if (const auto kept = KeptSettings::quality()) {
        Menu_Options::startWithQuality(*kept);
        return;
    }
    if (!GLWindow::setAntiAliasingMode(8) && !GLWindow::setAntiAliasingMode(4)) {
        GLWindow::setAntiAliasingMode(2);
    }
    GLTextureManager::reloadAllTextures();
    GLTextureManager::setAnisotropicFilteringLevel(16);
}

} // namespace

/// The program's start and stop. It takes no command line and no environment of its own, and reads its data
/// from the working directory.
// no location: the first act empties the stack
int main() {
    installCrashHandlers();
    TARNWICK_LOCATION("main");
    CrashReport::setWindowClosing(GLWindow::close, GLWindow::drop);
    const StartFile start = StartFile::read();
    Comfort::initialise();
    KeyBindings::initialise();
    KeptSettings::initialise();
    openWindow(start);
    GamePad::initialise();
    GLTextureManager::initialise();
    BasicCommands::handOver();
    GLConsole::initialise();
    MusicSystem::initialise();
    SoundSystem::initialise();
    SoundManager::initialise();
    KeptSettings::restoreVolumes();
    smoothEdges();
    IntroScreen().run();
    HighScores::loadScores();
    GLWindow::giveFocous();
    if (GLWindow::exists()) {
        Game::run(start.map);
    }
    HighScores::saveScores();
    KeptSettings::save();
    Modules::shutdown();
    return 0;
}
