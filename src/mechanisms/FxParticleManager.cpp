#include "mechanisms/FxParticleManager.h"

#include "console/GLConsole.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/Strings.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "particles/ParticleManager.h"
#include "particles/ViewRectangle.h"

#include <algorithm>
#include <iterator>

namespace tarnwick {

namespace {

constexpr float reachOfView = 0.5f;        ///< Of the view's width, from its middle: where emitters run.
constexpr std::size_t createArguments = 6; ///< Of `FxEmitterCreate`.
constexpr std::size_t createNumbers = 4;   ///< The first of them: x, y, direction.

} // namespace

std::list<FxParticleEmitter> FxParticleManager::emitters;
std::list<FxParticle> FxParticleManager::particles;
FxParticleManager::State FxParticleManager::state;

void FxParticleManager::initalise() {
    TARNWICK_LOCATION("FxParticleManager::initalise");
    shutdown();
    state.fxEmitterDraw = false;
    Log::print("\nInitialising FX particle manager..");
    GLConsole::addCommand("FxEmitterCreate", conCmdFxEmitterCreate);
    GLConsole::addCommand("FxEmitterDraw", conCmdFxEmitterDraw);
    GLConsole::addCommand("FxEmitterCount", conCmdFxEmitterCount);
    GLConsole::addCommand("FxParticleCount", conCmdFxParticleCount);
}

void FxParticleManager::shutdown() {
    TARNWICK_LOCATION("FxParticleManager::shutdown");
    Log::print("\nShutting down FX particle manager..");
    particles.clear(); // first: they point into the emitters
    emitters.clear();
    GLConsole::removeCommand("FxEmitterCreate");
    GLConsole::removeCommand("FxEmitterDraw");
    GLConsole::removeCommand("FxEmitterCount");
    GLConsole::removeCommand("FxParticleCount");
}

void FxParticleManager::addEmitter(const FxParticleEmitter& emitter) {
    TARNWICK_LOCATION("FxParticleManager::addEmitter");
    emitters.push_back(emitter);
}

void FxParticleManager::addParticle(const FxParticle& particle) {
    TARNWICK_LOCATION("FxParticleManager::addParticle");
    particles.push_back(particle);
}

void FxParticleManager::run(float dt) {
    TARNWICK_LOCATION("FxParticleManager::run");
    runEmitters(dt);
    runParticles(dt);
}

void FxParticleManager::runEmitters(float dt) {
    TARNWICK_LOCATION("FxParticleManager::runEmitters");
    const Vector2 view = Camera::position() + Camera::shakeOffset();
    // Kept: a square as wide as the view; how high the view is does not count.
    const float reach = Game::getViewAreaX() * reachOfView * Camera::zoom();
    for (FxParticleEmitter& emitter : emitters) {
        const Vector2 place = emitter.position;
        if (place.x >= view.x - reach && place.x <= view.x + reach && place.y >= view.y - reach &&
            place.y <= view.y + reach) {
            emitter.run(dt);
        }
    }
}

void FxParticleManager::runParticles(float dt) {
    TARNWICK_LOCATION("FxParticleManager::runParticles");
    Vector2 gravityStep{0.0f, 1.0f}; // falls the way the water falls
    rotateVector(gravityStep, Camera::angle() * radiansPerDegree);
    gravityStep = gravityStep * ParticleManager::gravity() * dt;
    for (auto place = particles.begin(); place != particles.end();) {
        FxParticle& particle = *place;
        particle.timeLeft -= dt;
        if (!(particle.timeLeft > 0.0f)) {
            place = particles.erase(place);
            continue;
        }
        particle.position += particle.velocity * dt;
        // Kept: `dt` enters twice, here and in the step, so the effective acceleration falls with the tick.
        particle.velocity += gravityStep * particle.gravity * dt;
        ++place;
    }
}

void FxParticleManager::debugDraw() {
    TARNWICK_LOCATION("FxParticleManager::debugDraw");
}

void FxParticleManager::conCmdFxEmitterCreate(const std::string& arguments) {
    TARNWICK_LOCATION("FxParticleManager::conCmdFxEmitterCreate");
    std::list<std::string> words;
    slSeparateArgs(arguments, words);
    const auto isNumeric = [](const std::string& word) { return slStringIsNumeric(word); };
    if (words.size() != createArguments ||
        !std::all_of(words.begin(), std::next(words.begin(), createNumbers), isNumeric) ||
        !slStringIsInteger(*std::next(words.begin(), createNumbers))) {
        Log::print("\nUSAGE: Emitter create "); // Kept: the usage calls the command so
        Log::print("< x : number > < y : number > ");
        Log::print("< dir_x : number > < dir_y : number > ");
        Log::print("< id : integer > ");
        Log::print("< emitter settings : fileName > ");
        return;
    }
    const auto idWord = std::next(words.begin(), createNumbers);
    float numbers[createNumbers] = {};
    std::transform(words.begin(), idWord, numbers,
                   [](const std::string& word) { return slStringToFloat(word); });
    FxParticleEmitter emitter;
    emitter.position = {numbers[0], numbers[1]};
    emitter.id = slStringToInt(*idWord);
    emitter.setDirection(numbers[2], numbers[3]);
    emitter.loadEmitterSettings(words.back());
    addEmitter(emitter);
}

bool FxParticleManager::conCmdFxEmitterDraw(bool value, bool set) {
    TARNWICK_LOCATION("FxParticleManager::conCmdFxEmitterDraw");
    if (set) {
        state.fxEmitterDraw = value;
    }
    return state.fxEmitterDraw;
}

std::int32_t FxParticleManager::conCmdFxEmitterCount() {
    TARNWICK_LOCATION("FxParticleManager::conCmdFxEmitterCount");
    return static_cast<std::int32_t>(emitters.size());
}

std::int32_t FxParticleManager::conCmdFxParticleCount() {
    TARNWICK_LOCATION("FxParticleManager::conCmdFxParticleCount");
    return static_cast<std::int32_t>(particles.size());
}

} // namespace tarnwick
