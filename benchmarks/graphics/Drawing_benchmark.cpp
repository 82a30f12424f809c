#include "console/GLConsole.h"
#include "core/Clock.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/ParticleRenderer.h"
#include "gui/GameMenus.h"
#include "level/SurfaceTypeManager.h"
#include "particles/ParticleManager.h"
#include "support/ModuleReset.h"

#include <GL/gl.h>
#include <benchmark/benchmark.h>

#include <ctime>
#include <filesystem>
#include <stdexcept>

// Drawing off screen, at 800 by 600, of the test level with N particles in a settled pool. Run from the root
// of the source tree: it reads `data`.
//
// Two times are told. `ours` is the time that this program spends in its own thread with a driver that does
// nothing, that is, without a GL context: sorting the particles and filling the arrays. The plain time is
// that with the driver: an off-screen software renderer fills every pixel on the same processor, in threads
// of its own.

namespace tarnwick {
namespace {

enum class Driver { none, offscreen };

/// Seconds of processor time that the calling thread has used.
double threadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// The test level with `count` particles in rows, each with a trail, and the camera on them.
class DrawnScene {
public:
    DrawnScene(Driver driver, std::int64_t count)
        : folder(std::filesystem::current_path()) {
        ModuleReset::all();
        std::filesystem::current_path("data");
        if (driver == Driver::offscreen) {
            GLWindow::createOffscreen(800, 600);
            GLTextureManager::initialise();
        } else {
            GLWindow::createHeadless(800, 600);
        }
        Clock::drive(0);
        GLConsole::initialise();
        SurfaceTypeManager::initialise();
        if (!Game::initialise("maps\\testLevel.rivl")) {
            throw std::runtime_error("no test level: run from the root of the source tree");
        }
        GameMenus::setCurrentMenu(menu::none);
        fill(count);
    }
    ~DrawnScene() {
        ModuleReset::all();
        std::filesystem::current_path(folder);
    }
    DrawnScene(const DrawnScene&) = delete;
    DrawnScene& operator=(const DrawnScene&) = delete;

private:
    static constexpr std::int64_t rowLength = 180;
    static constexpr float spacing = 2.2f; ///< World units between drops of a settled pool.

    static void fill(std::int64_t count) {
        ParticleManager::particles.clear();
        for (std::int64_t i = 0; i < count; ++i) {
            Particle& particle = ParticleManager::particles.emplace_back();
            particle.position = {static_cast<float>(i % rowLength) * spacing - 200.0f,
                                 static_cast<float>(i / rowLength) * spacing - 100.0f};
            for (Vector2& place : particle.trail) {
                place = particle.position;
            }
            particle.temperature = 20.0f;
        }
        Camera::setPosition({0.0f, 0.0f});
        Camera::setState(Camera::normal);
    }

    std::filesystem::path folder;
};

/// Times `draw`, which must end what it began: the driver may not save work up for the next run.
template <typename Draw>
void measure(benchmark::State& state, Driver driver, Draw draw) {
    const DrawnScene scene(driver, state.range(0));
    draw(); // takes the memory, compiles the lists
    glFinish();
    double thread = 0.0;
    for ([[maybe_unused]] const auto iteration : state) {
        const double before = threadSeconds();
        draw();
        thread += threadSeconds() - before;
        glFinish();
    }
    const auto pictures = static_cast<double>(state.iterations());
    state.counters["thread_us"] = thread / pictures * 1e6;
    state.counters["thread_ns_per_particle"] = thread / pictures * 1e9 / static_cast<double>(state.range(0));
}

/// The particles alone, as the camera sees them.
void drawParticlesInView() {
    GLWindow::glBeginDraw2d();
    Camera::viewFrom();
    ParticleRenderer::draw();
}

void drawParticlesOurs(benchmark::State& state) {
    measure(state, Driver::none, drawParticlesInView);
}
void drawParticles(benchmark::State& state) {
    measure(state, Driver::offscreen, drawParticlesInView);
}
void drawGameOurs(benchmark::State& state) {
    measure(state, Driver::none, Game::drawPicture);
}
void drawGame(benchmark::State& state) {
    measure(state, Driver::offscreen, Game::drawPicture);
}

BENCHMARK(drawParticlesOurs)
    ->Name("draw_particles_ours")
    ->Arg(128)
    ->Arg(1024)
    ->Arg(4096)
    ->Arg(16384)
    ->UseRealTime();
BENCHMARK(drawParticles)->Name("draw_particles")->Arg(128)->Arg(1024)->Arg(4096)->Arg(16384)->UseRealTime();
BENCHMARK(drawGameOurs)->Name("draw_game_ours")->Arg(128)->Arg(1024)->Arg(4096)->Arg(16384)->UseRealTime();
BENCHMARK(drawGame)->Name("draw_game")->Arg(128)->Arg(1024)->Arg(4096)->Arg(16384)->UseRealTime();

} // namespace
} // namespace tarnwick
