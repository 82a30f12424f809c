#include "audio/SoundSystem.h"

#include "audio/SoundBuffer.h"
#include "core/LocationStack.h"
#include "core/Log.h"

#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr const char* failure = "\nError initialising sound subsystem.";
constexpr ALCint loopbackRate = 44'100; ///< Hertz.
constexpr std::size_t loopbackChannels = 2;

/// A function of an extension, which the library has no symbol for.
template <typename Function>
Function extension(const char* name) {
    TARNWICK_LOCATION("SoundSystem::extension");
    return reinterpret_cast<Function>(alcGetProcAddress(nullptr, name));
}

} // namespace

SoundSystem::State& SoundSystem::state = *new State;

void SoundSystem::initialise() {
    TARNWICK_LOCATION("SoundSystem::initialise");
    if (state.device == nullptr) {
        state.loopback = false;
        start(alcOpenDevice(nullptr), nullptr);
    }
}

void SoundSystem::initialiseLoopback() {
    TARNWICK_LOCATION("SoundSystem::initialiseLoopback");
    if (state.device != nullptr) {
        return;
    }
    const auto open = extension<LPALCLOOPBACKOPENDEVICESOFT>("alcLoopbackOpenDeviceSOFT");
    // Without the limiter and the model of a head, which would change what is measured.
    const ALCint attributes[] = {ALC_FORMAT_CHANNELS_SOFT,
                                 ALC_STEREO_SOFT,
                                 ALC_FORMAT_TYPE_SOFT,
                                 ALC_FLOAT_SOFT,
                                 ALC_FREQUENCY,
                                 loopbackRate,
                                 ALC_HRTF_SOFT,
                                 ALC_FALSE,
                                 ALC_OUTPUT_LIMITER_SOFT,
                                 ALC_FALSE,
                                 0};
    state.loopback = open != nullptr;
    start(open != nullptr ? open(nullptr) : nullptr, attributes);
}

/// What both kinds of device have in common, from the open device on.
void SoundSystem::start(ALCdevice_struct* device, const std::int32_t* attributes) {
    TARNWICK_LOCATION("SoundSystem::start");
    state.masterVolume = 1.0f;
    state.device = device;
    if (state.device == nullptr) {
        Log::print(failure);
        return;
    }
    state.primaryBuffer = alcCreateContext(state.device, attributes);
    if (state.primaryBuffer == nullptr || alcMakeContextCurrent(state.primaryBuffer) == ALC_FALSE) {
        Log::print(failure);
        shutdown();
        return;
    }
    ++state.sessions;
    makeVoices();
    if (state.freeVoices.empty()) {
        Log::print(failure); // the device stays open
    }
    Log::print("\nSound subsystem initialised successfully.");
}

void SoundSystem::makeVoices() {
    TARNWICK_LOCATION("SoundSystem::makeVoices");
    alGetError();
    while (state.freeVoices.size() < largestVoiceCount) {
        ALuint voice = 0;
        alGenSources(1, &voice);
        if (alGetError() != AL_NO_ERROR) {
            break;
        }
        alSourcei(voice, AL_SOURCE_RELATIVE, AL_TRUE);
        alSourcef(voice, AL_ROLLOFF_FACTOR, 0.0f);
        state.freeVoices.push_back(voice);
    }
    std::ranges::reverse(state.freeVoices); // the first made is the first taken
}

void SoundSystem::shutdown() {
    TARNWICK_LOCATION("SoundSystem::shutdown");
    if (state.primaryBuffer != nullptr) {
        for (const auto& [voice, buffer] : state.sounding) {
            alSourceStop(voice);
            state.freeVoices.push_back(voice);
        }
        alDeleteSources(static_cast<ALsizei>(state.freeVoices.size()), state.freeVoices.data());
        alcMakeContextCurrent(nullptr);
        alcDestroyContext(state.primaryBuffer);
        state.primaryBuffer = nullptr;
    }
    state.sounding.clear();
    state.freeVoices.clear();
    if (state.device != nullptr) {
        alcCloseDevice(state.device);
        state.device = nullptr;
    }
}

void SoundSystem::setVolume(float volume) {
    TARNWICK_LOCATION("SoundSystem::setVolume");
    state.masterVolume = volume > 0.0f ? std::min(volume, 1.0f) : 0.0f; // 0 also for what is no number
}

std::vector<float> SoundSystem::renderLoopback(std::size_t frames) {
    TARNWICK_LOCATION("SoundSystem::renderLoopback");
    std::vector<float> samples(frames * loopbackChannels);
    if (state.device != nullptr && state.loopback) {
        const auto render = extension<LPALCRENDERSAMPLESSOFT>("alcRenderSamplesSOFT");
        render(state.device, samples.data(), static_cast<ALCsizei>(frames));
    }
    return samples;
}

std::uint32_t SoundSystem::takeVoice(SoundBuffer& buffer) {
    TARNWICK_LOCATION("SoundSystem::takeVoice");
    if (state.freeVoices.empty()) {
        for (auto next = state.sounding.begin(); next != state.sounding.end();) {
            SoundBuffer* const holder = next->second;
            ++next; // before the holder may take its entry away
            holder->giveBackIfEnded();
        }
    }
    if (state.freeVoices.empty()) {
        return 0;
    }
    const std::uint32_t voice = state.freeVoices.back();
    state.freeVoices.pop_back();
    state.sounding.emplace(voice, &buffer);
    return voice;
}

void SoundSystem::freeVoice(std::uint32_t voice) {
    TARNWICK_LOCATION("SoundSystem::freeVoice");
    state.sounding.erase(voice);
    state.freeVoices.push_back(voice);
}

} // namespace tarnwick
