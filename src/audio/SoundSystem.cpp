#include "audio/SoundSystem.h"

#include "audio/SoundBuffer.h"
#include "audio/SoundManager.h"
#include "core/Clock.h"
#include "core/LocationStack.h"
#include "core/Log.h"

#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include <algorithm>
#include <utility>

namespace tarnwick {

namespace {

constexpr const char* failure = "\nError initialising sound subsystem.";
constexpr ALCint loopbackRate = 44'100; ///< Hertz.
constexpr std::size_t stereo = 2;
constexpr std::uint32_t retryInterval = 3'000; ///< Milliseconds: a try may take one or two frames.

/// A function of an extension, which the library has no symbol for.
template <typename Function>
Function extension(const char* name) {
    TARNWICK_LOCATION("SoundSystem::extension");
    return reinterpret_cast<Function>(alcGetProcAddress(nullptr, name));
}

/// The AL's name for an arrangement of loudspeakers.
ALCint arrangementOf(std::size_t channels) {
    TARNWICK_LOCATION("SoundSystem::arrangementOf");
    switch (channels) {
    case 1:
        return ALC_MONO_SOFT;
    case 6:
        return ALC_5POINT1_SOFT;
    case 8:
        return ALC_7POINT1_SOFT;
    default:
        return ALC_STEREO_SOFT;
    }
}

} // namespace

SoundSystem::State& SoundSystem::state = *new State;

void SoundSystem::initialise() {
    TARNWICK_LOCATION("SoundSystem::initialise");
    if (state.device == nullptr) {
        state.loopbackChannels = 0;
        start();
    }
}

void SoundSystem::initialiseLoopback(std::size_t channels) {
    TARNWICK_LOCATION("SoundSystem::initialiseLoopback");
    if (state.device == nullptr) {
        state.loopbackChannels = channels;
        start();
    }
}

/// Null where there is none.
ALCdevice_struct* SoundSystem::openDevice() {
    TARNWICK_LOCATION("SoundSystem::openDevice");
    if (state.loopbackChannels == 0) {
        return alcOpenDevice(nullptr);
    }
    const auto open = extension<LPALCLOOPBACKOPENDEVICESOFT>("alcLoopbackOpenDeviceSOFT");
    return open != nullptr ? open(nullptr) : nullptr;
}

/// Without the model of a head, which a device for headphones may bring: no sound has a place in the room. A
/// loopback device has no limiter, either, which would change what is measured.
ALCcontext_struct* SoundSystem::makeContext(ALCdevice_struct* device) {
    TARNWICK_LOCATION("SoundSystem::makeContext");
    const ALCint plain[] = {ALC_HRTF_SOFT, ALC_FALSE, 0};
    const ALCint loopback[] = {ALC_FORMAT_CHANNELS_SOFT,
                               arrangementOf(state.loopbackChannels),
                               ALC_FORMAT_TYPE_SOFT,
                               ALC_FLOAT_SOFT,
                               ALC_FREQUENCY,
                               loopbackRate,
                               ALC_HRTF_SOFT,
                               ALC_FALSE,
                               ALC_OUTPUT_LIMITER_SOFT,
                               ALC_FALSE,
                               0};
    return alcCreateContext(device, state.loopbackChannels == 0 ? plain : loopback);
}

/// What both kinds of device have in common.
void SoundSystem::start() {
    TARNWICK_LOCATION("SoundSystem::start");
    state.masterVolume = 1.0f;
    state.lost = false;
    state.device = state.calls.open();
    if (state.device == nullptr) {
        Log::print(failure);
        return;
    }
    state.primaryBuffer = makeContext(state.device);
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
    state.left = std::min(voicesLeft, state.freeVoices.size() / 2);
}

void SoundSystem::mendLoss() {
    TARNWICK_LOCATION("SoundSystem::mendLoss");
    if (state.device == nullptr || state.calls.connected(state.device)) {
        return;
    }
    const std::uint32_t now = Clock::milliseconds();
    if (state.lost && now - state.lastTry < retryInterval) {
        return;
    }
    if (!state.lost) {
        Log::print("\nThe sound device is lost.");
    }
    state.lost = true;
    state.lastTry = now;
    if (state.calls.reopen(state.device)) {
        for (const auto& [voice, buffer] : state.sounding) {
            buffer->startOver();
        }
    } else if (!replaceDevice()) {
        return;
    }
    state.lost = false;
    Log::print("\nThe sound device is open again.");
}

/// Without the extension that tells it is taken to be there.
bool SoundSystem::isConnected(ALCdevice_struct* device) {
    TARNWICK_LOCATION("SoundSystem::isConnected");
    if (alcIsExtensionPresent(device, "ALC_EXT_disconnect") == ALC_FALSE) {
        return true;
    }
    ALCint connected = ALC_TRUE;
    alcGetIntegerv(device, ALC_CONNECTED, 1, &connected);
    return connected != ALC_FALSE;
}

/// The device goes on as the default one of now, with all its voices and samples. False without the
/// extension.
bool SoundSystem::reopenInPlace(ALCdevice_struct* device) {
    TARNWICK_LOCATION("SoundSystem::reopenInPlace");
    using Reopen = ALCboolean (*)(ALCdevice*, const ALCchar*, const ALCint*);
    const auto reopen = extension<Reopen>("alcReopenDeviceSOFT");
    return reopen != nullptr && reopen(device, nullptr, nullptr) != ALC_FALSE;
}

/// Another device in the place of one that has gone, with the samples of all sounds. False, and all is as it
/// was, if there is none.
bool SoundSystem::replaceDevice() {
    TARNWICK_LOCATION("SoundSystem::replaceDevice");
    ALCdevice_struct* const device = state.calls.open();
    ALCcontext_struct* const context = device != nullptr ? makeContext(device) : nullptr;
    if (context == nullptr) {
        if (device != nullptr) {
            alcCloseDevice(device);
        }
        return false;
    }
    const auto sounding = state.sounding;
    for (const auto& [voice, buffer] : sounding) {
        buffer->loseVoice();
    }
    closeDevice();
    state.device = device;
    state.primaryBuffer = context;
    alcMakeContextCurrent(context);
    ++state.sessions;
    makeVoices();
    SoundManager::renewSamples();
    for (const auto& [voice, buffer] : sounding) {
        buffer->startOver();
    }
    return true;
}

void SoundSystem::shutdown() {
    TARNWICK_LOCATION("SoundSystem::shutdown");
    closeDevice();
}

void SoundSystem::closeDevice() {
    TARNWICK_LOCATION("SoundSystem::closeDevice");
    if (state.primaryBuffer != nullptr) {
        for (const auto& [voice, buffer] : state.sounding) {
            state.freeVoices.push_back(voice);
        }
        alDeleteSources(static_cast<ALsizei>(state.freeVoices.size()), state.freeVoices.data());
        alcMakeContextCurrent(nullptr);
        alcDestroyContext(std::exchange(state.primaryBuffer, nullptr));
    }
    state.sounding.clear();
    state.freeVoices.clear();
    if (state.device != nullptr) {
        alcCloseDevice(std::exchange(state.device, nullptr));
    }
}

void SoundSystem::setVolume(float volume) {
    TARNWICK_LOCATION("SoundSystem::setVolume");
    state.masterVolume = volume > 0.0f ? std::min(volume, 1.0f) : 0.0f; // 0 also for what is no number
}

std::vector<float> SoundSystem::renderLoopback(std::size_t frames) {
    TARNWICK_LOCATION("SoundSystem::renderLoopback");
    const bool renders = state.device != nullptr && state.loopbackChannels != 0;
    std::vector<float> samples(frames * (renders ? state.loopbackChannels : stereo));
    if (renders) {
        const auto render = extension<LPALCRENDERSAMPLESSOFT>("alcRenderSamplesSOFT");
        render(state.device, samples.data(), static_cast<ALCsizei>(frames));
    }
    return samples;
}

std::uint32_t SoundSystem::takeVoice(SoundBuffer& buffer, bool leaves) {
    TARNWICK_LOCATION("SoundSystem::takeVoice");
    const std::size_t left = leaves ? state.left : 0;
    if (state.freeVoices.size() <= left) {
        takeBackEnded();
    }
    if (state.freeVoices.size() <= left) {
        return 0;
    }
    const std::uint32_t voice = state.freeVoices.back();
    state.freeVoices.pop_back();
    state.sounding.emplace(voice, &buffer);
    return voice;
}

std::size_t SoundSystem::voicesToSpare() {
    TARNWICK_LOCATION("SoundSystem::voicesToSpare");
    takeBackEnded();
    return state.freeVoices.size() - std::min(state.freeVoices.size(), state.left);
}

void SoundSystem::takeBackEnded() {
    TARNWICK_LOCATION("SoundSystem::takeBackEnded");
    for (auto next = state.sounding.begin(); next != state.sounding.end();) {
        SoundBuffer* const holder = next->second;
        ++next; // before the holder may take its entry away
        holder->giveBackIfEnded();
    }
}

void SoundSystem::freeVoice(std::uint32_t voice) {
    TARNWICK_LOCATION("SoundSystem::freeVoice");
    state.sounding.erase(voice);
    state.freeVoices.push_back(voice);
}

} // namespace tarnwick
