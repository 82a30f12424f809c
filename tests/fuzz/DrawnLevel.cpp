#include "fuzz/DrawnLevel.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/CommandRegistry.h"
#include "core/Random.h"
#include "fuzz/FuzzTarget.h"
#include "game/BasicCommands.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "game/HighScores.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "level/SurfaceTypeManager.h"
#include "mechanisms/TriggerTypes.h"
#include "support/ModuleReset.h"
#include "tools/level/LevelWriter.h"
#include "tools/state/SimulationState.h"

#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>

namespace tarnwick {

namespace {

constexpr float dt = 0.013333334f; ///< Seconds, as in play.

/// Draws the parts of a level from bytes; zeros behind their end.
class Draws {
public:
    Draws(std::string_view drawn, DrawnNumbers drawnNumbers)
        : bytes(drawn)
        , numbers(drawnNumbers) {}

    bool anything() const { return numbers == DrawnNumbers::any; }

    std::uint32_t byte() {
        const std::uint32_t next = place < bytes.size() ? static_cast<std::uint8_t>(bytes[place]) : 0u;
        ++place;
        return next;
    }
    /// 0 to below `limit`, at most 256.
    std::uint32_t below(std::uint32_t limit) { return byte() % limit; }
    /// World units: near the origin, but for a few.
    std::int32_t coordinate() {
        const auto near = static_cast<std::int32_t>(byte()) * 4 - 512;
        if (near != -512) {
            return near;
        }
        constexpr std::int32_t far[] = {std::numeric_limits<std::int32_t>::min(),
                                        std::numeric_limits<std::int32_t>::max(),
                                        100000,
                                        -100000,
                                        65536,
                                        -1,
                                        0,
                                        1};
        return far[below(std::size(far))];
    }
    LevelFile::Point point() {
        const std::int32_t x = coordinate();
        return {x, coordinate()};
    }
    float number() {
        const std::uint32_t drawn = byte();
        if (drawn < 248 || !anything()) {
            return static_cast<float>(static_cast<std::int32_t>(drawn) - 124);
        }
        constexpr float odd[] = {std::numeric_limits<float>::quiet_NaN(),
                                 std::numeric_limits<float>::infinity(),
                                 -std::numeric_limits<float>::infinity(),
                                 1e30f,
                                 -1e30f,
                                 1e-40f,
                                 0.5f,
                                 -0.0f};
        return odd[drawn - 248];
    }
    std::int32_t id() { return static_cast<std::int32_t>(below(4)); }

private:
    std::string_view bytes;
    DrawnNumbers numbers;
    std::size_t place = 0;
};

LevelFile::TriggerRecord drawTrigger(Draws& draws) {
    LevelFile::TriggerRecord trigger;
    trigger.targetId = draws.id();
    trigger.triggerType = TriggerTypes::table[draws.below(std::size(TriggerTypes::table))].id;
    trigger.delay = draws.number();
    for (LevelFile::Point& corner : trigger.corners) {
        corner = draws.point();
    }
    return trigger;
}

LevelFile::PolygonRecord drawPolygon(Draws& draws) {
    LevelFile::PolygonRecord polygon;
    polygon.polygonId = draws.id();
    polygon.surfaceType = static_cast<std::int32_t>(1 + draws.below(5));
    polygon.polygonMode = static_cast<std::int32_t>(draws.below(draws.anything() ? 5 : 4));
    polygon.layer = draws.below(5);
    const std::uint32_t points = draws.below(12) + (draws.anything() ? 0 : 3);
    for (std::uint32_t i = 0; i < points; ++i) {
        polygon.points.push_back(draws.point());
    }
    return polygon;
}

} // namespace

LevelFile drawLevel(std::string_view bytes, DrawnNumbers numbers) {
    Draws draws(bytes, numbers);
    LevelFile level;
    level.waterStart = {static_cast<std::int32_t>(draws.byte()) - 128,
                        static_cast<std::int32_t>(draws.byte()) - 128};
    level.cameraStart = level.waterStart;
    const std::uint32_t records = draws.below(24);
    for (std::uint32_t i = 0; i < records; ++i) {
        switch (draws.below(8)) {
        case 0: {
            const std::int32_t id = draws.id();
            const LevelFile::Point place = draws.point();
            const float x = draws.number();
            const Vector2 direction{x, draws.number()};
            level.forces.push_back({static_cast<std::uint32_t>(id), place, direction, draws.number()});
            break;
        }
        case 1: {
            const std::int32_t id = draws.id();
            const float speed = draws.number();
            const LevelFile::Point start = draws.point();
            level.movers.push_back({id, speed, start, draws.point()});
            break;
        }
        case 2:
        case 3:
            level.triggers.push_back(drawTrigger(draws));
            break;
        case 4: {
            const std::int32_t id = draws.id();
            const LevelFile::Point place = draws.point();
            const float x = draws.number();
            level.emitters.push_back({id, place, {x, draws.number()}, "fx\\fountain.cfg"});
            break;
        }
        case 5: {
            const auto id = static_cast<std::uint32_t>(draws.id());
            const std::uint32_t layer = draws.below(5);
            level.objects.push_back({id, "gfx\\wheel_frame00.tga", layer, draws.point(), 0});
            break;
        }
        default:
            level.polygons.push_back(drawPolygon(draws));
        }
    }
    return level;
}

bool startDrawnLevel(const LevelFile& level) {
    ModuleReset::all();
    Clock::drive(0);
    seedRandom(0);
    writeFuzzInput("maps/fuzz.rivl", writeLevel(level));
    GLWindow::createHeadless(800, 600);
    BasicCommands::handOver();
    GLConsole::initialise();
    CommandRegistry::removeCommand("BspCast"); // half a million rays: it would take all the time
    SurfaceTypeManager::initialise();
    HighScores::setDefaultScores();
    if (!Game::initialise("maps\\fuzz.rivl")) {
        return false;
    }
    GameMenus::setCurrentMenu(menu::none);
    Camera::setPosition(Level::waterStart());
    Camera::setState(Camera::normal);
    return true;
}

void playTick(RunPosition& position) {
    position.time += static_cast<double>(dt);
    Clock::drive(static_cast<std::uint32_t>(std::floor(position.time * 1000.0)));
    ++position.tick;
    position.dt = dt;
    Game::tick(dt);
    Game::serveRequests();
}

} // namespace tarnwick
