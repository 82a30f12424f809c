#pragma once

#include "audio/Sound.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>

namespace tarnwick {

class ConfigFile;

/// The one-shot sounds of a body that hits something: splashes of water and cracks of ice. There are three
/// levels of strength with four variants each. How sharply the body's average speed fell in a tick gives the
/// level, its size the loudness, and chance the rest.
class GameSfx_Disturbance {
public:
    static constexpr std::size_t levelCount = 3;
    static constexpr std::size_t variantCount = 4;

    struct Settings {
        std::array<float, levelCount> levelSpeeds{}; ///< Falls of speed from which a level sounds, units/s.
        float randomnessPitch = 0.0f;                ///< Width of the random pitch.
        float randomnessVolume = 0.0f;               ///< Largest random cut of the volume.
    };
    /// What a tick asks for.
    struct Hit {
        std::size_t level = 0;   ///< 1 to 3; 0: nothing sounds.
        std::size_t variant = 0; ///< 0 to 3.
        float volume = 0.0f;     ///< At most 1 once it is set; below 0 it is silent.
        float pitch = 0.0f;      ///< 0 is the sound as it was recorded.
    };

    Settings settings;

    /// Reads the five keys that begin with `prefix`, as in "water_disturbance_level1_speed".
    static Settings readSettings(const ConfigFile& config, const std::string& prefix);

    /// Makes those of the twelve sounds that are not made yet, from the files named by the keys that begin
    /// with `prefix`, as in "waterSound_disturbance_level_1_4".
    void makeSounds(const ConfigFile& config, const std::string& prefix);
    void deleteSounds();

    /// Answers a fall of the average speed of a body of `share` times 128 particles. A level sounds once at a
    /// time; the three can overlap. Looks at no state of the game. Draws as `choose` does.
    void playDisturbanceSounds(float fall, float share);

    /// What is to sound. Draws in every call, whatever comes of it: `randomInt` for the variant,
    /// `randomFloat` for the volume and `randomFloat` for the pitch.
    static Hit choose(const Settings& settings, float fall, float share);

private:
    friend class GameSfxSoundsTest;

    using Variants = std::array<std::unique_ptr<Sound>, variantCount>;
    std::array<Variants, levelCount> sounds; ///< Null until made.
};

} // namespace tarnwick
