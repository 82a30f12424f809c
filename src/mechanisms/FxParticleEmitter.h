#pragma once

#include "core/Colour.h"
#include "core/GLTexture.h"
#include "core/Vector2.h"

#include <cstdint>
#include <deque>
#include <string>

namespace tarnwick {

class ConfigFile;

/// A point of the level that gives off effect particles, at a steady pace or in bursts. A small settings file
/// says what they look like; each value of a particle lies at a random place between two of the emitter's.
///
/// A plain value. Particles in flight point into `textures`, so an emitter whose particles fly is not
/// assigned to and stays where it is, as it does in the list of `FxParticleManager`; adding textures is
/// harmless.
///
/// Kept: the locations of its functions stand under `ForceManager`, where crash reports always had them.
class FxParticleEmitter {
public:
    static constexpr float shortestFrequency = 0.001f;  ///< Seconds.
    static constexpr float shortestLiveTime = 0.0001f;  ///< Seconds.
    static constexpr std::uint32_t largestBurst = 4096; ///< Particles.

    std::int32_t id = 0;           ///< What triggers target; need not be the only one.
    Vector2 position;              ///< World units.
    Vector2 direction{1.0f, 0.0f}; ///< Unit vector: the middle of the fan.
    /// Seconds between two particles, at least `shortestFrequency`: in spite of its name no rate.
    float frequency = 1.0f;
    float timer = 0.0f;           ///< Seconds gathered towards the next particle, below `frequency`.
    float spread = 0.0f;          ///< Radians: width of the fan around `direction`.
    std::uint32_t burstSize = 16; ///< Particles of a burst, at most `largestBurst`.
    bool active = true;           ///< Gives off particles by itself.
    bool useAlphaBlending = true; ///< Handed on to the particles; false: additive.
    float velocity1 = 0.0f;       ///< World units per second.
    float velocity2 = 0.0f;
    float size1 = 0.0f; ///< World units.
    float size2 = 0.0f;
    float liveTime1 = 1.0f; ///< Seconds, each at least `shortestLiveTime`.
    float liveTime2 = 1.0f;
    Colour color1{1.0f, 1.0f, 1.0f, 1.0f};
    Colour color2{1.0f, 1.0f, 1.0f, 1.0f};
    float gravity1 = 0.0f; ///< Multipliers of gravity.
    float gravity2 = 0.0f;
    /// Pictures of the particles. Without any the emitter gives nothing. A deque: what is added moves
    /// nothing.
    std::deque<GLTexture> textures;

    /// Takes the direction (x, y), made unit length. Exactly (0, 0) stands for a random one, for which it
    /// draws `randomFloat` twice, x first.
    void setDirection(Vector2 newDirection);
    void setDirection(float x, float y) { setDirection({x, y}); }
    /// The setters hold their values in the ranges given at the fields.
    void setFrequency(float seconds);
    void setColors(Colour newColor1, Colour newColor2);
    void setLiveTime(float time1, float time2);
    void setBurstSize(std::uint32_t size);
    void addTexture(const std::string& name);

    /// Reads the settings from a file. Every key is optional and a missing one leaves its field as it is; the
    /// two ends of a range come together or not at all, and so do the eight keys of the colours. A missing
    /// file changes nothing but tells the console.
    void loadEmitterSettings(const std::string& fileName);

    /// Gives off what has become due in `dt` seconds, all at the emitter's point, while `active`.
    void run(float dt);
    /// Gives off one particle to `FxParticleManager`, or none without textures. Draws `randomFloat` six
    /// times, for direction, colour, speed, gravity, size and life, then `randomInt` once for the texture.
    void spawnParticle();
    /// `spawnParticle`, `burstSize` times, whether `active` or not.
    void createBurst();

private:
    void loadPace(const ConfigFile& config);
    void loadRanges(const ConfigFile& config);
    void loadColors(const ConfigFile& config);
    void loadTextures(const ConfigFile& config);
};

} // namespace tarnwick
