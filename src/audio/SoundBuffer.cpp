#include "audio/SoundBuffer.h"

#include "audio/SoundSystem.h"
#include "audio/WavFile.h"
#include "core/LocationStack.h"

#include <AL/al.h>
#include <AL/alext.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace tarnwick {

namespace {

constexpr std::size_t bitsInByte = 8;
constexpr float largestSample = 2147483648.0f; ///< 2^31: full scale of 32 bits.
constexpr double hundredthsInTenfold = 2000.0; ///< Hundredths of a decibel that make ten times the amplitude.
constexpr std::size_t largestBuffer =
    std::numeric_limits<ALsizei>::max(); ///< Bytes that the AL can be given.

/// The AL knows no integers of 24 and 32 bits: both become floats.
bool isWide(const WavFile& wav) {
    TARNWICK_LOCATION("SoundBuffer::isWide");
    return wav.bitsPerSample > 16;
}

ALenum formatOf(const WavFile& wav) {
    TARNWICK_LOCATION("SoundBuffer::formatOf");
    if (isWide(wav)) {
        return AL_FORMAT_STEREO_FLOAT32;
    }
    return wav.bitsPerSample == 8 ? AL_FORMAT_STEREO8 : AL_FORMAT_STEREO16;
}

/// What `stereoFrames` makes of a file, without making it.
std::size_t bytesOfStereo(const WavFile& wav) {
    TARNWICK_LOCATION("SoundBuffer::bytesOfStereo");
    const std::size_t sampleSize = isWide(wav) ? sizeof(float) : wav.bitsPerSample / bitsInByte;
    return wav.samples.size() / wav.blockAlign * 2 * sampleSize;
}

bool canBePlayed(const WavFile& wav) {
    TARNWICK_LOCATION("SoundBuffer::canBePlayed");
    const bool knownDepth = wav.bitsPerSample == 8 || wav.bitsPerSample == 16 || wav.bitsPerSample == 24 ||
                            wav.bitsPerSample == 32;
    const auto rate = std::int64_t{wav.sampleRate};
    return knownDepth && wav.blockAlign == wav.channels * (wav.bitsPerSample / bitsInByte) &&
           wav.samples.size() >= wav.blockAlign && rate >= SoundBuffer::smallestFrequency &&
           rate <= SoundBuffer::largestFrequency && bytesOfStereo(wav) <= largestBuffer;
}

/// One sample of 24 or 32 bits, -1 to 1.
float wideSample(const std::uint8_t* bytes, std::size_t count) {
    TARNWICK_LOCATION("SoundBuffer::wideSample");
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < count; ++i) {
        bits |= std::uint32_t{bytes[i]} << (bitsInByte * (i + sizeof bits - count));
    }
    return static_cast<float>(std::bit_cast<std::int32_t>(bits)) / largestSample;
}

/// The whole frames of the file in two channels. A file of one channel is heard at full loudness only if both
/// sides have it: the AL would place it in the room and take 4.5 decibels off.
std::vector<std::uint8_t> stereoFrames(const WavFile& wav) {
    TARNWICK_LOCATION("SoundBuffer::stereoFrames");
    const std::size_t sampleSize = wav.bitsPerSample / bitsInByte;
    const std::size_t count = wav.samples.size() / wav.blockAlign * wav.channels;
    const std::size_t copies = wav.channels == 1 ? 2 : 1;
    std::vector<std::uint8_t> frames;
    frames.reserve(bytesOfStereo(wav));
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* const sample = wav.samples.data() + i * sampleSize;
        for (std::size_t copy = 0; copy < copies; ++copy) {
            if (isWide(wav)) {
                const auto bytes =
                    std::bit_cast<std::array<std::uint8_t, sizeof(float)>>(wideSample(sample, sampleSize));
                frames.insert(frames.end(), bytes.begin(), bytes.end());
            } else {
                frames.insert(frames.end(), sample, sample + sampleSize);
            }
        }
    }
    return frames;
}

} // namespace

/// An AL buffer, which goes with the last sound buffer on it, or with the device.
struct SoundBuffer::Samples {
    ALuint buffer = 0;
    std::uint32_t session = 0;   ///< Opening of the device that it is of.
    std::int32_t rate = 0;       ///< Hertz.
    std::uint32_t frameSize = 0; ///< Bytes in the file.
    std::uint32_t size = 0;      ///< Bytes in the file.
    std::uint32_t frames = 0;

    Samples() = default;
    Samples(const Samples&) = delete;
    Samples& operator=(const Samples&) = delete;
    ~Samples() {
        TARNWICK_LOCATION("SoundBuffer::Samples::~Samples");
        if (session == SoundSystem::session()) {
            alDeleteBuffers(1, &buffer);
        }
    }
};

SoundBuffer::SoundBuffer(std::shared_ptr<Samples> sharedSamples)
    : samples(std::move(sharedSamples))
    , frequency(samples->rate) {
    TARNWICK_LOCATION("SoundBuffer::SoundBuffer");
}

std::unique_ptr<SoundBuffer> SoundBuffer::create(const WavFile& wav) {
    TARNWICK_LOCATION("SoundBuffer::create");
    if (SoundSystem::session() == 0 || !canBePlayed(wav)) {
        return nullptr;
    }
    const std::vector<std::uint8_t> frames = stereoFrames(wav);
    alGetError();
    ALuint name = 0;
    alGenBuffers(1, &name);
    if (alGetError() != AL_NO_ERROR) {
        return nullptr;
    }
    const auto made = std::make_shared<Samples>();
    made->buffer = name;
    made->session = SoundSystem::session();
    made->rate = static_cast<std::int32_t>(wav.sampleRate);
    made->frameSize = wav.blockAlign;
    made->size = static_cast<std::uint32_t>(wav.samples.size());
    made->frames = made->size / made->frameSize;
    alBufferData(name, formatOf(wav), frames.data(), static_cast<ALsizei>(frames.size()), made->rate);
    if (alGetError() != AL_NO_ERROR) {
        return nullptr;
    }
    return std::unique_ptr<SoundBuffer>(new SoundBuffer(made));
}

std::unique_ptr<SoundBuffer> SoundBuffer::duplicate() const {
    TARNWICK_LOCATION("SoundBuffer::duplicate");
    return std::unique_ptr<SoundBuffer>(new SoundBuffer(samples));
}

SoundBuffer::~SoundBuffer() {
    TARNWICK_LOCATION("SoundBuffer::~SoundBuffer");
    if (alive()) {
        stop();
    }
}

bool SoundBuffer::alive() const {
    TARNWICK_LOCATION("SoundBuffer::alive");
    return samples->session == SoundSystem::session();
}

std::uint32_t SoundBuffer::size() const {
    TARNWICK_LOCATION("SoundBuffer::size");
    return samples->size;
}

void SoundBuffer::play(bool loop) {
    TARNWICK_LOCATION("SoundBuffer::play");
    const bool goesOn = isPlaying();
    looping = loop;
    if (goesOn) {
        alSourcei(voice, AL_LOOPING, looping ? AL_TRUE : AL_FALSE); // playing it anew would start it over
        return;
    }
    voice = SoundSystem::takeVoice(*this, leavesVoices);
    if (voice == 0) {
        return;
    }
    alSourcei(voice, AL_BUFFER, static_cast<ALint>(samples->buffer));
    alSourcei(voice, AL_LOOPING, looping ? AL_TRUE : AL_FALSE);
    alSourcei(voice, AL_SAMPLE_OFFSET, static_cast<ALint>(frame));
    applyVolume();
    applyFrequency();
    applyPan();
    alSourcePlay(voice);
}

void SoundBuffer::stop() {
    TARNWICK_LOCATION("SoundBuffer::stop");
    if (isPlaying()) {
        ALint offset = 0;
        alGetSourcei(voice, AL_SAMPLE_OFFSET, &offset); // stopping sets it to 0
        frame = static_cast<std::uint32_t>(offset);
        giveBack();
    }
}

bool SoundBuffer::isPlaying() {
    TARNWICK_LOCATION("SoundBuffer::isPlaying");
    if (voice == 0 || looping) { // one that loops has no end of which the device would have to be asked
        return voice != 0;
    }
    ALint voiceState = AL_STOPPED;
    alGetSourcei(voice, AL_SOURCE_STATE, &voiceState);
    if (voiceState == AL_PLAYING) {
        return true;
    }
    frame = 0; // it ended by itself
    giveBack();
    return false;
}

bool SoundBuffer::isLooping() {
    TARNWICK_LOCATION("SoundBuffer::isLooping");
    return isPlaying() && looping;
}

void SoundBuffer::setVolume(std::int32_t newVolume) {
    TARNWICK_LOCATION("SoundBuffer::setVolume");
    if (volume != newVolume) {
        volume = newVolume;
        applyVolume();
    }
}

void SoundBuffer::setFrequency(std::int32_t newFrequency) {
    TARNWICK_LOCATION("SoundBuffer::setFrequency");
    if (frequency != newFrequency) {
        frequency = newFrequency;
        applyFrequency();
    }
}

void SoundBuffer::setPan(std::int32_t newPan) {
    TARNWICK_LOCATION("SoundBuffer::setPan");
    if (pan != newPan) {
        pan = newPan;
        applyPan();
    }
}

std::uint32_t SoundBuffer::getCurrentPosition() {
    TARNWICK_LOCATION("SoundBuffer::getCurrentPosition");
    ALint offset = static_cast<ALint>(frame);
    if (isPlaying()) {
        alGetSourcei(voice, AL_SAMPLE_OFFSET, &offset);
    }
    return static_cast<std::uint32_t>(offset) * samples->frameSize;
}

bool SoundBuffer::setCurrentPosition(std::uint32_t bytes) {
    TARNWICK_LOCATION("SoundBuffer::setCurrentPosition");
    const std::uint32_t target = bytes / samples->frameSize;
    if (target >= samples->frames) {
        return false;
    }
    if (isPlaying()) {
        alSourcei(voice, AL_SAMPLE_OFFSET, static_cast<ALint>(target));
    }
    frame = target;
    return true;
}

void SoundBuffer::giveBackIfEnded() {
    TARNWICK_LOCATION("SoundBuffer::giveBackIfEnded");
    isPlaying();
}

void SoundBuffer::loseVoice() {
    TARNWICK_LOCATION("SoundBuffer::loseVoice");
    voice = 0;
    frame = 0;
}

void SoundBuffer::startOver() {
    TARNWICK_LOCATION("SoundBuffer::startOver");
    if (!looping || !alive()) {
        return;
    }
    if (voice == 0) {
        play(true);
    } else {
        alSourceRewind(voice);
        alSourcePlay(voice);
    }
}

void SoundBuffer::takeSamples(const SoundBuffer& other) {
    TARNWICK_LOCATION("SoundBuffer::takeSamples");
    std::swap(samples->buffer, other.samples->buffer);
    std::swap(samples->session, other.samples->session);
    std::swap(samples->rate, other.samples->rate);
    std::swap(samples->frameSize, other.samples->frameSize);
    std::swap(samples->size, other.samples->size);
    std::swap(samples->frames, other.samples->frames);
}

void SoundBuffer::giveBack() {
    TARNWICK_LOCATION("SoundBuffer::giveBack");
    alSourceStop(voice);
    alSourcei(voice, AL_BUFFER, 0);
    SoundSystem::freeVoice(voice);
    voice = 0;
}

void SoundBuffer::applyVolume() const {
    TARNWICK_LOCATION("SoundBuffer::applyVolume");
    if (voice != 0) {
        const double gain = volume <= silence ? 0.0 : std::pow(10.0, volume / hundredthsInTenfold);
        alSourcef(voice, AL_GAIN, static_cast<float>(gain));
    }
}

void SoundBuffer::applyFrequency() const {
    TARNWICK_LOCATION("SoundBuffer::applyFrequency");
    if (voice != 0) {
        alSourcef(voice, AL_PITCH, static_cast<float>(frequency) / static_cast<float>(samples->rate));
    }
}

void SoundBuffer::applyPan() const {
    TARNWICK_LOCATION("SoundBuffer::applyPan");
    if (voice != 0) {
        const float side = static_cast<float>(pan) / static_cast<float>(farthestPan);
        // Not by AL_DIRECT_CHANNELS_SOFT in the centre: it drops a side that the device has no channel for,
        // and a device of one channel has neither.
        alSourcei(voice, AL_SOURCE_SPATIALIZE_SOFT, pan == 0 ? AL_FALSE : AL_TRUE);
        alSource3f(voice, AL_POSITION, side, 0.0f, -std::sqrt(1.0f - side * side));
    }
}

} // namespace tarnwick
