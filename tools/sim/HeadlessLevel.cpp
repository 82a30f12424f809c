#include "tools/sim/HeadlessLevel.h"

#include "core/Clock.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"

#include <cmath>
#include <filesystem>

namespace tarnwick {

HeadlessLevel::HeadlessLevel(const Asked& asked) {
    const std::filesystem::path startFolder = std::filesystem::current_path();
    enterDataFolder(asked.dataFolder);
    GLWindow::createHeadless(800, 600);
    startLevel(findLevel(asked.level, startFolder), asked.level);
    GameMenus::setCurrentMenu(menu::none);
    GLWindow::run();
}

void HeadlessLevel::hold(Held keys) {
    if (keys == held) {
        return; // the window need not be asked
    }
    HeldKeys::send(held, keys);
    held = keys;
    GLWindow::run();
}

void HeadlessLevel::tick() {
    beginTick();
    Game::serveRequests();
}

void HeadlessLevel::tickAndPassDrawing() {
    beginTick();
    passDrawing();
    Game::serveRequests();
}

void HeadlessLevel::beginTick() {
    run.time += static_cast<double>(tickLength);
    Clock::drive(static_cast<std::uint32_t>(std::floor(run.time * 1000.0)));
    ++run.tick;
    run.dt = tickLength;
    Game::tick(tickLength);
}

} // namespace tarnwick
