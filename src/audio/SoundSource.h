#pragma once

#include "audio/Sound.h"
#include "core/Vector2.h"

#include <cstdint>

namespace tarnwick {

/// A sound placed in the level. One that loops is heard all the time and fades with the distance from the
/// view; one that does not is played once by a trigger, at full volume wherever the view is.
class SoundSource {
public:
    static constexpr float smallestStrenght = 1.0f; ///< World units, of `setStrenght`.

    float x = 0.0f; ///< World units.
    float y = 0.0f;
    float strenght = 1000.0f; ///< World units: as far from the view it has faded out.
    Sound sound;
    bool looping = false;
    bool stopped = false;   ///< Silent by order: the update leaves it alone.
    bool outvoiced = false; ///< In reach, and silent because so many others are louder.
    std::int32_t id = -1;   ///< What triggers target; several sources may share it.

    /// A source of the default sound at (0, 0).
    SoundSource() = default;
    /// A stopped source. Takes `sourceStrenght` as it is.
    SoundSource(const Sound& sourceSound,
                Vector2 place,
                bool sourceLooping,
                std::int32_t sourceId,
                float sourceStrenght);
    SoundSource(const Sound& sourceSound,
                float sourceX,
                float sourceY,
                bool sourceLooping,
                std::int32_t sourceId,
                float sourceStrenght)
        : SoundSource(sourceSound, {sourceX, sourceY}, sourceLooping, sourceId, sourceStrenght) {}

    /// World units, at least 1.
    void setStrenght(float newStrenght);
    /// Stops and goes back to the start of the sound.
    void reset();
};

} // namespace tarnwick
