#include "audio/Sound.h"

#include "audio/SoundBuffer.h"
#include "audio/SoundManager.h"
#include "audio/SoundSystem.h"
#include "core/LocationStack.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr double loudnessExponent = static_cast<double>(0.2f); ///< Kept: the float's value, not 1/5.

/// Hundredths of a decibel for a loudness of 0 to 1, cut to a whole number. Steep at the low end, so that the
/// small loudness of a distant sound is still heard.
std::int32_t decibels(float loudness) {
    TARNWICK_LOCATION("Sound::decibels");
    return static_cast<std::int32_t>((1.0 - std::pow(static_cast<double>(loudness), loudnessExponent)) *
                                     SoundBuffer::silence);
}

/// `value` within two bounds; the lower one also for what is no number.
float held(float value, float lowest, float highest) {
    TARNWICK_LOCATION("Sound::held");
    return value > lowest ? std::min(value, highest) : lowest;
}

} // namespace

Sound::Sound()
    : Sound("SND\\DEFAULT.WAV") {
    TARNWICK_LOCATION("Sound::Sound");
}

Sound::Sound(const std::string& fileName)
    : name(fileName) {
    TARNWICK_LOCATION("Sound::Sound");
    duplicate(SoundManager::loadSound(name).buffer.get());
}

Sound::Sound(const char* fileName)
    : Sound(std::string(fileName != nullptr ? fileName : "")) {
    TARNWICK_LOCATION("Sound::Sound");
}

Sound::Sound(const Sound& other)
    : name(other.name)
    , frequency(other.frequency)
    , pan(other.pan) {
    TARNWICK_LOCATION("Sound::Sound");
    SoundManager::loadSound(name);
    duplicate(other.buffer.get());
}

Sound& Sound::operator=(const Sound& other) {
    TARNWICK_LOCATION("Sound::operator=");
    if (this == &other) {
        return *this;
    }
    stop();
    name = other.name;
    frequency = other.frequency;
    pan = other.pan;
    SoundManager::loadSound(name);
    duplicate(other.buffer.get());
    return *this;
}

Sound::~Sound() {
    TARNWICK_LOCATION("Sound::~Sound");
    buffer.reset();
    SoundManager::freeSound(name);
}

/// Takes a stopped duplicate of `source` at full volume, or becomes inert.
void Sound::duplicate(const SoundBuffer* source) {
    TARNWICK_LOCATION("Sound::duplicate");
    buffer = source != nullptr && source->alive() ? source->duplicate() : nullptr;
    baseFrequency = buffer != nullptr ? buffer->getFrequency() : 0;
    setVolume(1.0f);
}

bool Sound::usable() const {
    TARNWICK_LOCATION("Sound::usable");
    return buffer != nullptr && buffer->alive();
}

void Sound::play() {
    TARNWICK_LOCATION("Sound::play");
    SoundSystem::mendLoss();
    if (usable()) {
        setVolume();
        buffer->play(false);
    }
}

void Sound::loop() {
    TARNWICK_LOCATION("Sound::loop");
    SoundSystem::mendLoss();
    if (usable()) {
        setVolume();
        buffer->play(true);
    }
}

void Sound::stop() {
    TARNWICK_LOCATION("Sound::stop");
    if (usable()) {
        buffer->stop();
    }
}

void Sound::rewind() {
    TARNWICK_LOCATION("Sound::rewind");
    if (usable()) {
        buffer->setCurrentPosition(0);
    }
}

void Sound::leaveVoices() {
    TARNWICK_LOCATION("Sound::leaveVoices");
    if (usable()) {
        buffer->leaveVoices();
    }
}

void Sound::setVolume() {
    TARNWICK_LOCATION("Sound::setVolume");
    if (usable()) {
        buffer->setVolume(decibels(held(volume * SoundSystem::getVolume(), 0.0f, 1.0f)));
    }
}

void Sound::setVolume(float newVolume) {
    TARNWICK_LOCATION("Sound::setVolume");
    volume = held(newVolume, 0.0f, 1.0f);
    setVolume();
}

void Sound::setPan(float newPan) {
    TARNWICK_LOCATION("Sound::setPan");
    if (usable()) {
        pan = held(newPan, -1.0f, 1.0f);
        buffer->setPan(static_cast<std::int32_t>(pan * static_cast<float>(SoundBuffer::farthestPan)));
    }
}

void Sound::setFrequency(float newFrequency) {
    TARNWICK_LOCATION("Sound::setFrequency");
    if (!usable()) {
        return;
    }
    frequency = held(newFrequency, -1.0f, 1.0f);
    const auto base = static_cast<float>(baseFrequency);
    const float rate =
        frequency > 0.0f
            ? frequency * static_cast<float>(SoundBuffer::largestFrequency) + base * (1.0f - frequency)
            : base * (frequency + 1.0f) - frequency * static_cast<float>(SoundBuffer::smallestFrequency);
    buffer->setFrequency(static_cast<std::int32_t>(rate));
}

bool Sound::isPlaying() const {
    TARNWICK_LOCATION("Sound::isPlaying");
    return usable() && buffer->isPlaying();
}

bool Sound::isLooping() const {
    TARNWICK_LOCATION("Sound::isLooping");
    return usable() && buffer->isLooping();
}

bool Sound::synchroniseWith(const Sound& other) {
    TARNWICK_LOCATION("Sound::synchroniseWith");
    return usable() && other.usable() && buffer->setCurrentPosition(other.buffer->getCurrentPosition());
}

} // namespace tarnwick
