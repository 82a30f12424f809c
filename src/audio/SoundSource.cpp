#include "audio/SoundSource.h"

#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

SoundSource::SoundSource(
    const Sound& sourceSound, Vector2 place, bool sourceLooping, std::int32_t sourceId, float sourceStrenght)
    : x(place.x)
    , y(place.y)
    , strenght(sourceStrenght)
    , sound(sourceSound)
    , looping(sourceLooping)
    , stopped(true)
    , id(sourceId) {
    TARNWICK_LOCATION("SoundSource::SoundSource");
}

void SoundSource::setStrenght(float newStrenght) {
    TARNWICK_LOCATION("SoundSource::setStrenght");
    strenght = std::max(newStrenght, smallestStrenght);
}

void SoundSource::reset() {
    TARNWICK_LOCATION("SoundSource::reset");
    stopped = true;
    sound.stop();
    sound.rewind();
}

} // namespace tarnwick
