// Targets that need a level in memory: state lines, the console, and play on levels that nobody would make.

#include "console/GLConsole.h"
#include "fuzz/DrawnLevel.h"
#include "fuzz/FuzzTarget.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "level/LevelFile.h"
#include "tools/state/SimulationState.h"

#include <cstdint>
#include <string>

namespace tarnwick {

namespace {

constexpr int playedTicks = 200;
constexpr int ticksAfterState = 3;

/// A basin with a lift and something of each kind, for state lines and console commands to act upon.
LevelFile basin() {
    LevelFile level;
    const auto block = [&](std::int32_t id, std::int32_t x, std::int32_t y, std::int32_t width,
                           std::int32_t height) {
        LevelFile::PolygonRecord polygon;
        polygon.polygonId = id;
        polygon.surfaceType = 3;
        polygon.layer = 1;
        polygon.points = {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
        level.polygons.push_back(polygon);
    };
    block(0, -200, 40, 400, 40);
    block(0, -240, -200, 40, 280);
    block(0, 200, -200, 40, 280);
    block(1, -20, 0, 40, 10);
    level.objects.push_back({2, "gfx\\stone.tga", 1, {0, 0}, 0});
    level.objects.push_back({3, "gfx\\wheel_frame00.tga", 2, {50, 0}, 1});
    level.forces.push_back({4, {0, 0}, {1.0f, 0.0f}, 1.0f});
    level.movers.push_back({1, 50.0f, {0, 0}, {0, -100}});
    level.triggers.push_back({1, 405, 0.0f, {{-50, -50}, {50, -50}, {50, 50}, {-50, 50}}});
    level.triggers.push_back({4, 301, 0.5f, {{-50, -50}, {50, -50}, {50, 50}, {-50, 50}}});
    level.triggers.push_back({0, 901, 0.0f, {{60, -50}, {90, -50}, {90, 50}, {60, 50}}});
    level.soundSources.push_back({5, {0, 0}, 300, 1, "snd\\drip.wav"});
    level.emitters.push_back({6, {0, 0}, {0.0f, -1.0f}, "fx\\fountain.cfg"});
    return level;
}

} // namespace

void fuzzStateLine(std::string_view bytes) {
    static bool started =
        false; // a refused line changes nothing: the level is loaded again only after a whole one
    static std::string before;
    if (!started) {
        fuzzExpect(startDrawnLevel(basin()), "the basin is a level");
        before = SimulationState::write({});
        started = true;
    }
    RunPosition position;
    try {
        position = SimulationState::read(std::string(bytes));
    } catch (const StateError& error) {
        fuzzExpect(*error.what() != '\0', "a refusal has a reason");
        fuzzExpect(SimulationState::write({}) == before, "a refused line changes nothing");
        return;
    }
    started = false;
    const std::string written = SimulationState::write(position);
    fuzzExpect(startDrawnLevel(basin()), "the basin is a level");
    position = SimulationState::read(written);
    fuzzExpect(SimulationState::write(position) == written, "a state is written as it was read");
    for (int i = 0; i < ticksAfterState; ++i) {
        playTick(position);
    }
    SimulationState::write(position);
}

void fuzzConsole(std::string_view bytes) {
    fuzzExpect(startDrawnLevel(basin()), "the basin is a level");
    RunPosition position;
    while (!bytes.empty() && GLWindow::exists()) {
        const std::size_t end = bytes.find('\n');
        GLConsole::runLine(std::string(bytes.substr(0, end)));
        Game::serveRequests();
        GameMenus::setCurrentMenu(menu::none); // another level starts with the main menu up
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    }
    if (GLWindow::exists() && Game::running()) {
        playTick(position);
    }
}

void fuzzPlay(std::string_view bytes) {
    const LevelFile level = drawLevel(bytes, DrawnNumbers::any);
    if (!startDrawnLevel(level)) {
        return;
    }
    RunPosition position;
    for (int i = 0; i < playedTicks && Game::running(); ++i) {
        playTick(position);
    }
    const std::string written = SimulationState::write(position);
    fuzzExpect(startDrawnLevel(level), "a level loads twice");
    position = SimulationState::read(written);
    fuzzExpect(SimulationState::write(position) == written, "any state can be taken up again");
}

} // namespace tarnwick
