#include "gui/IntroScreen.h"

#include "audio/MusicSystem.h"
#include "core/LocationStack.h"
#include "graphics/GLAviPlayer.h"
#include "graphics/GLWindow.h"

namespace tarnwick {

IntroScreen::IntroScreen()
    : player(std::make_unique<GLAviPlayer>("vid\\intro.avi")) {
    TARNWICK_LOCATION("IntroScreen::IntroScreen");
}

IntroScreen::~IntroScreen() {
    TARNWICK_LOCATION("IntroScreen::~IntroScreen");
}

void IntroScreen::run() {
    TARNWICK_LOCATION("IntroScreen::run");
    GLWindowEventListener* const previousListener = GLWindow::getEventListener();
    GLWindow::setEventListener(this);
    player->rewind();
    MusicSystem::play("vid\\intro.ogg", false);
    running = true;
    while (GLWindow::exists() && running && !player->finished()) {
        GLWindow::requestRepaint(); // which tells the desktop what the cursor looks like
        GLWindow::run();
        GLWindow::setCursor(GLWindow::mouseInClientArea() ? GLWindow::Cursor::none : GLWindow::Cursor::arrow);
        player->play();
        player->draw();
    }
    MusicSystem::stop();
    GLWindow::setEventListener(previousListener);
}

void IntroScreen::mousePressed(std::uint32_t /*x*/, std::uint32_t /*y*/, std::uint32_t /*button*/) {
    TARNWICK_LOCATION("IntroScreen::mousePressed");
    running = false;
}

void IntroScreen::keyboardPressed(std::uint32_t /*key*/) {
    TARNWICK_LOCATION("IntroScreen::keyboardPressed");
    running = false;
}

void IntroScreen::windowClosing() {
    TARNWICK_LOCATION("IntroScreen::windowClosing");
    GLWindow::close();
}

} // namespace tarnwick
