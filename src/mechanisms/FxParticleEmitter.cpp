#include "mechanisms/FxParticleEmitter.h"

#include "core/ConfigFile.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Random.h"
#include "core/View.h"
#include "mechanisms/FxParticle.h"
#include "mechanisms/FxParticleManager.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr int mostTextureKeys = 8; ///< "texture1" to "texture8".

/// The value at share `r` of the way from `second` to `first`.
float between(float first, float second, float r) {
    TARNWICK_LOCATION("ForceManager::between");
    return (1.0f - r) * second + r * first;
}

Colour between(Colour first, Colour second, float r) {
    TARNWICK_LOCATION("ForceManager::between");
    return {between(first.red, second.red, r), between(first.green, second.green, r),
            between(first.blue, second.blue, r), between(first.alpha, second.alpha, r)};
}

/// Takes "NAME_1" and "NAME_2" if both are there. True then.
bool loadRange(const ConfigFile& config, const std::string& name, float& first, float& second) {
    TARNWICK_LOCATION("ForceManager::loadRange");
    const bool hasFirst = config.variableExists(name + "_1");
    const bool hasSecond = config.variableExists(name + "_2");
    if (!hasFirst || !hasSecond) {
        return false;
    }
    first = config.getVarAsFloat(name + "_1");
    second = config.getVarAsFloat(name + "_2");
    return true;
}

} // namespace

void FxParticleEmitter::setDirection(Vector2 newDirection) {
    TARNWICK_LOCATION("ForceManager::setDirection");
    direction = newDirection;
    if (newDirection == Vector2{}) { // exactly: the level's way to ask for a random one
        direction.x = randomFloat() - 0.5f;
        direction.y = randomFloat() - 0.5f;
    }
    normaliseVector(direction);
}

void FxParticleEmitter::setFrequency(float seconds) {
    TARNWICK_LOCATION("ForceManager::setFrequency");
    frequency = std::max(seconds, shortestFrequency);
}

void FxParticleEmitter::setColors(Colour newColor1, Colour newColor2) {
    TARNWICK_LOCATION("ForceManager::setColors");
    color1 = newColor1;
    color2 = newColor2;
}

void FxParticleEmitter::setLiveTime(float time1, float time2) {
    TARNWICK_LOCATION("ForceManager::setLiveTime");
    liveTime1 = std::max(time1, shortestLiveTime);
    liveTime2 = std::max(time2, shortestLiveTime);
}

void FxParticleEmitter::setBurstSize(std::uint32_t size) {
    TARNWICK_LOCATION("ForceManager::setBurstSize");
    burstSize = std::min(size, largestBurst);
}

void FxParticleEmitter::addTexture(const std::string& name) {
    TARNWICK_LOCATION("ForceManager::addTexture");
    textures.emplace_back(name);
}

void FxParticleEmitter::loadEmitterSettings(const std::string& fileName) {
    TARNWICK_LOCATION("ForceManager::loadEmitterSettings");
    const ConfigFile config(fileName.c_str());
    loadPace(config);
    loadRanges(config);
    loadColors(config);
    loadTextures(config);
}

void FxParticleEmitter::loadPace(const ConfigFile& config) {
    TARNWICK_LOCATION("ForceManager::loadPace");
    if (config.variableExists("active")) {
        active = config.getVarAsBool("active");
    }
    if (config.variableExists("frequency")) {
        setFrequency(config.getVarAsFloat("frequency"));
    }
    if (config.variableExists("burstSize")) { // below 0 it counts as large
        setBurstSize(static_cast<std::uint32_t>(config.getVarAsInt("burstSize")));
    }
    if (config.variableExists("spread")) {
        spread = config.getVarAsFloat("spread") * radiansPerDegree;
    }
}

void FxParticleEmitter::loadRanges(const ConfigFile& config) {
    TARNWICK_LOCATION("ForceManager::loadRanges");
    loadRange(config, "gravity", gravity1, gravity2);
    loadRange(config, "size", size1, size2);
    if (loadRange(config, "liveTime", liveTime1, liveTime2)) {
        setLiveTime(liveTime1, liveTime2);
    }
    loadRange(config, "velocity", velocity1, velocity2);
}

void FxParticleEmitter::loadColors(const ConfigFile& config) {
    TARNWICK_LOCATION("ForceManager::loadColors");
    if (config.variableExists("useAlphaBlending")) {
        useAlphaBlending = config.getVarAsBool("useAlphaBlending");
    }
    bool complete = true;
    float channels[8] = {}; // red, green, blue, alpha of the first, then of the second
    std::size_t next = 0;
    for (const char* const color : {"color_1", "color_2"}) {
        for (const char* const channel : {"_r", "_g", "_b", "_a"}) {
            const std::string key = std::string(color) + channel;
            complete = config.variableExists(key) && complete;
            channels[next++] = config.getVarAsFloat(key);
        }
    }
    if (complete) {
        setColors({channels[0], channels[1], channels[2], channels[3]},
                  {channels[4], channels[5], channels[6], channels[7]});
    }
}

/// Each by itself: a gap does not stop the later ones.
void FxParticleEmitter::loadTextures(const ConfigFile& config) {
    TARNWICK_LOCATION("ForceManager::loadTextures");
    for (int number = 1; number <= mostTextureKeys; ++number) {
        const std::string key = "texture" + std::to_string(number);
        if (config.variableExists(key)) {
            addTexture(config.getVarAsString(key));
        }
    }
}

void FxParticleEmitter::run(float dt) {
    TARNWICK_LOCATION("ForceManager::run");
    if (!active) {
        return;
    }
    timer += dt;
    while (timer >= frequency) {
        timer -= frequency;
        spawnParticle();
    }
}

void FxParticleEmitter::spawnParticle() {
    TARNWICK_LOCATION("ForceManager::spawnParticle");
    if (textures.empty()) {
        return;
    }
    FxParticle particle;
    particle.useAlphaBlending = useAlphaBlending;
    particle.position = position;
    Vector2 flight = direction;
    rotateVector(flight, randomFloat() * spread - spread * 0.5f);
    particle.color = between(color1, color2, randomFloat());
    particle.velocity = flight * between(velocity1, velocity2, randomFloat());
    particle.gravity = between(gravity1, gravity2, randomFloat());
    particle.size = between(size1, size2, randomFloat());
    particle.lifeTime = between(liveTime1, liveTime2, randomFloat());
    particle.timeLeft = particle.lifeTime;
    particle.texture = &textures[randomInt() % textures.size()];
    FxParticleManager::addParticle(particle);
}

void FxParticleEmitter::createBurst() {
    TARNWICK_LOCATION("ForceManager::createBurst");
    for (std::uint32_t i = 0; i < burstSize; ++i) {
        spawnParticle();
    }
}

} // namespace tarnwick
