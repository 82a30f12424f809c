#include "tools/sim/SimulationRun.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/Geometry.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "graphics/WindowFeed.h"
#include "gui/GameMenus.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "tools/sim/FrameWriter.h"
#include "tools/sim/HeldKeys.h"
#include "tools/sim/LevelStart.h"
#include "tools/sim/PlayerEvents.h"
#include "tools/state/SimulationState.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace tarnwick {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& file, const std::string& reason) {
    throw std::runtime_error(file + ": " + reason);
}

/// Paths of the command line are meant from where the command was given, not from the data folder.
std::string absolutePath(const std::string& path) {
    return path.empty() || path == "-" ? path : fs::absolute(path).string();
}

std::string lastLine(const std::string& fileName) {
    std::ifstream file(fileName);
    if (!file) {
        fail(fileName, "cannot be opened");
    }
    std::string last;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty()) {
            last = std::move(line);
        }
    }
    if (last.empty()) {
        fail(fileName, "holds no state line");
    }
    return last;
}

RunPosition restoreState(const std::string& fileName) {
    if (fileName.empty()) {
        return {};
    }
    try {
        return SimulationState::read(lastLine(fileName));
    } catch (const StateError& error) {
        fail(fileName, error.what());
    }
}

/// Runs each line as if it was typed, and tells what the console answered.
void runConsoleFile(const std::string& fileName, std::ostream& log) {
    if (fileName.empty()) {
        return;
    }
    std::ifstream file(fileName);
    if (!file) {
        fail(fileName, "cannot be opened");
    }
    for (std::string line; std::getline(file, line);) {
        GLConsole::clear();
        GLConsole::runLine(line);
        Game::serveRequests();
        GameMenus::setCurrentMenu(menu::none); // another level starts with the main menu up
        log << GLConsole::outputText() << '\n';
    }
}

/// Where the state lines go.
class Dump {
public:
    explicit Dump(const std::string& fileName)
        : name(fileName) {
        if (name.empty() || name == "-") {
            return;
        }
        file.open(name, std::ios::binary | std::ios::trunc);
        if (!file) {
            fail(name, "cannot be written");
        }
    }

    void write(const RunPosition& position) {
        if (name.empty()) {
            return;
        }
        std::ostream& out = name == "-" ? std::cout : file;
        out << SimulationState::write(position) << '\n';
        if (!out.flush()) {
            fail(name, "could not be written to its end");
        }
    }

private:
    std::string name;
    std::ofstream file;
};

/// Hands what a player does to the game, as the game's own loop does. A window that loses the focus is none
/// of it.
class GameEvents final : public GLWindowEventListener {
public:
    void mouseMoved(std::uint32_t x, std::uint32_t y) override { GameMenus::sendMenuEvent_mouseMoved(x, y); }
    void mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t button) override {
        Game::mousePressed(x, y, button);
    }
    void mouseReleased(std::uint32_t x, std::uint32_t y, std::uint32_t button) override {
        GameMenus::sendMenuEvent_mouseReleased(x, y, button);
    }
    void keyboardPressed(std::uint32_t key) override { Game::keyboardPressed(key); }
    void keyboardReleased(std::uint32_t key) override { GameMenus::sendMenuEvent_keyboardReleased(key); }
};

/// The way of a run through its ticks, one for each pass of the game's loop. A loop of the game's own within
/// a tick, as that in which a name is entered, has ticks too, a pass each: events and time go on in them, and
/// the state is not told, which could not be taken up there.
class Ticks {
public:
    /// Thrown out of a loop within a tick when the run is over.
    struct Over {};

    Ticks(RunPosition& from, const SimulationOptions& options, HeldKeys& heldKeys, PlayerEvents& playerEvents)
        : position(from)
        , dt(options.dt)
        , last(from.tick + options.ticks)
        , keys(heldKeys)
        , events(playerEvents) {
        keys.catchUp(position.tick);
        events.catchUp(position.tick);
        GLWindow::run();
        if (!options.eventsFile.empty()) { // held keys alone are read from the keyboard's state, as in play
            GLWindow::setEventListener(&listener);
        }
        WindowFeed::set([this, usual = GLWindow::getEventListener()] {
            if (GLWindow::getEventListener() != usual) {
                passWithin();
            }
        });
    }
    Ticks(const Ticks&) = delete;
    Ticks& operator=(const Ticks&) = delete;
    ~Ticks() {
        WindowFeed::set(nullptr);
        GLWindow::setEventListener(nullptr);
    }

    bool remain() const { return position.tick < last && Game::running() && GLWindow::exists(); }

    /// One pass of the game's loop; `draw` is its drawing.
    template <typename Draw>
    void run(const Draw& draw) {
        send();
        GLWindow::run();
        count();
        Game::tick(dt);
        draw();
        Game::serveRequests();
    }

private:
    RunPosition& position;
    float dt;
    std::uint64_t last;
    HeldKeys& keys;
    PlayerEvents& events;
    GameEvents listener;

    void passWithin() {
        if (position.tick >= last) {
            throw Over();
        }
        send();
        count();
    }
    void send() {
        keys.send(position.tick);
        events.send(position.tick);
    }
    void count() {
        position.time += static_cast<double>(dt);
        Clock::drive(static_cast<std::uint32_t>(std::floor(position.time * 1000.0)));
        ++position.tick;
        position.dt = dt;
    }
};

/// Runs what is left of the ticks, and writes what was asked for of each. A tick in which a loop within it
/// came to the run's end is not written.
void runTicks(
    Ticks& ticks, const RunPosition& position, std::uint64_t every, Dump& dump, FrameWriter& frames) {
    try {
        while (ticks.remain()) {
            ticks.run([&] {
                if (frames.wantsFrames() && position.tick % every == 0) {
                    frames.writeFrame();
                } else {
                    passDrawing();
                }
            });
            if (position.tick % every == 0) {
                dump.write(position);
            }
        }
    } catch (const Ticks::Over&) { // nothing is to be undone
    }
}

void writeSummary(const RunPosition& position, std::ostream& out) {
    std::size_t water = 0;
    std::size_t steam = 0;
    std::size_t ice = 0;
    float speedSum = 0.0f;
    for (const Particle& particle : ParticleManager::particles) {
        ++(particle.temperature >= steamTemperature ? steam : water);
        speedSum += vectorLength(particle.velocity);
    }
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        ice += group.members.size();
    }
    const std::size_t loose = water + steam;
    out << "level      " << Game::currentMap() << '\n'
        << "ticks      " << position.tick << ", " << position.time << " s\n"
        << "particles  " << loose + ice << ": " << water << " water, " << steam << " steam, " << ice
        << " ice in " << ParticleGroupMover::groups.size() << " groups\n"
        << "speed      " << (loose == 0 ? 0.0f : speedSum / static_cast<float>(loose))
        << " units/s on average\n"
        << "camera     at (" << Camera::position().x << ", " << Camera::position().y << "), turned by "
        << Camera::angle() << " degrees, state " << static_cast<std::int32_t>(Camera::getState()) << '\n'
        << "time       " << static_cast<double>(GameRules::getLevelTime()) / 1000.0 << " s of play"
        << (GameRules::gameIsFinished() ? ", the level is finished\n" : "\n") << "score      "
        << GameRules::getTotalScore() << ": " << GameRules::getTimeScore() << " for the time, "
        << GameRules::getWaterScore() << " for the water\n";
}

} // namespace

void runSimulation(const SimulationOptions& options, std::ostream& out, std::ostream& log) {
    const fs::path startFolder = fs::current_path();
    const std::string inputFile = absolutePath(options.inputFile);
    const std::string stateFile = absolutePath(options.stateFile);
    const std::string consoleFile = absolutePath(options.consoleFile);
    const std::string eventsFile = absolutePath(options.eventsFile);
    PlayerEvents events = eventsFile.empty() ? PlayerEvents() : PlayerEvents::fromFile(eventsFile);
    HeldKeys keys = inputFile.empty() ? HeldKeys() : HeldKeys::fromFile(inputFile);
    const std::string dumpFile = absolutePath(options.dumpFile);
    FrameWriter frames(options);
    enterDataFolder(options.dataFolder);
    const ModulesStop atTheEnd;
    frames.openWindow(options.width, options.height);
    startLevel(findLevel(options.level, startFolder), options.level);
    if (!options.menus) {
        GameMenus::setCurrentMenu(menu::none);
    }
    if (options.noFlight) {
        skipFlight();
    }
    RunPosition position = restoreState(stateFile);
    if (position.time + static_cast<double>(options.dt) * static_cast<double>(options.ticks) >=
        SimulationState::clockRange) {
        fail(stateFile,
             "from its time on the ticks would go beyond the 4294967 seconds that the clock can tell");
    }
    runConsoleFile(consoleFile, log);
    Dump dump(dumpFile);
    dump.write(position);
    frames.writeFrame();
    {
        Ticks ticks(position, options, keys, events);
        runTicks(ticks, position, options.dumpEvery, dump, frames);
    }
    frames.writeScreenshot();
    writeSummary(position, dumpFile == "-" ? log : out);
}

} // namespace tarnwick
