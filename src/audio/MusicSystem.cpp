#include "audio/MusicSystem.h"

#include "core/CommandRegistry.h"
#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "core/Log.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr std::int32_t sampleRate = 44'100; ///< Hertz, of the mix.
constexpr std::int32_t channels = 2;
constexpr std::int32_t framesInBuffer = 1024; ///< 23 milliseconds, the grain of positions.
constexpr std::int32_t fullVolume = 255;
constexpr double millisecondsInSecond = 1000.0;

bool openDevice() {
    TARNWICK_LOCATION("MusicSystem::openDevice");
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
        return false;
    }
    if (Mix_OpenAudioDevice(sampleRate, AUDIO_S16SYS, channels, framesInBuffer, nullptr,
                            SDL_AUDIO_ALLOW_FREQUENCY_CHANGE) != 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    return true;
}

/// Null for what cannot be played. Asks `DataFiles` first, which refuses pipes and devices: reading those
/// might never end.
Mix_Music* openStream(const std::string& fileName) {
    TARNWICK_LOCATION("MusicSystem::openStream");
    return DataFiles::open(fileName).is_open() ? Mix_LoadMUS(DataFiles::find(fileName).c_str()) : nullptr;
}

} // namespace

MusicSystem::State MusicSystem::state;

constexpr CommandRow MusicSystem::commands[] = {
    {"MusicSystemInitialised", conCmdMusicSystemInitialised},
    {"MusicPlay", conCmdMusicPlay},
    {"MusicVolume", conCmdMusicVolume},
};

void MusicSystem::initialise() {
    TARNWICK_LOCATION("MusicSystem::initialise");
    state.initialised = state.initialised || openDevice();
    Log::print(state.initialised ? "\nMusic subsystem initialised successfully."
                                 : "\nError initialising music subsystem.");
    state.pausedPosition = 0;
    state.volume = fullVolume;
    CommandRegistry::add(commands);
}

void MusicSystem::shutdown() {
    TARNWICK_LOCATION("MusicSystem::shutdown");
    if (state.initialised) {
        stop();
        Mix_CloseAudio();
        Mix_Quit();
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        state.initialised = false;
    }
    CommandRegistry::remove(commands);
}

bool MusicSystem::play(const std::string& fileName, bool loop) {
    TARNWICK_LOCATION("MusicSystem::play");
    state.pausedPosition = 0; // also when the call goes on to fail
    if (!state.initialised || fileName.empty() || !stop()) {
        return false;
    }
    state.stream = openStream(fileName);
    if (state.stream == nullptr) {
        return false;
    }
    state.looping = loop;
    startStream(0.0);
    applyVolume();
    return true;
}

bool MusicSystem::stop() {
    TARNWICK_LOCATION("MusicSystem::stop");
    if (state.stream != nullptr) {
        Mix_HaltMusic();
        Mix_FreeMusic(state.stream); // cannot fail
        state.stream = nullptr;
    }
    return true;
}

bool MusicSystem::pause() {
    TARNWICK_LOCATION("MusicSystem::pause");
    if (state.stream == nullptr) {
        return false;
    }
    // Before the halt, which forgets it. Formats that have no position give -1.
    const double seconds = std::max(Mix_GetMusicPosition(state.stream), 0.0);
    state.pausedPosition = static_cast<std::uint32_t>(seconds * millisecondsInSecond);
    Mix_HaltMusic();
    return true;
}

bool MusicSystem::resume() {
    TARNWICK_LOCATION("MusicSystem::resume");
    if (state.stream == nullptr) {
        return false;
    }
    const double seconds = static_cast<double>(state.pausedPosition) / millisecondsInSecond;
    const double duration = Mix_MusicDuration(state.stream);
    // A position behind the end breaks all later ones. Formats that do not know their length give -1.
    if (!startStream(duration > 0.0 ? std::min(seconds, duration) : seconds)) {
        startStream(0.0); // a format without positions
    }
    return true;
}

bool MusicSystem::startStream(double seconds) {
    TARNWICK_LOCATION("MusicSystem::startStream");
    constexpr int forEver = -1;
    constexpr int once = 0;
    constexpr int noFade = 0;
    // Not a start and then a seek: between the two a buffer from the file's beginning could be heard.
    return Mix_FadeInMusicPos(state.stream, state.looping ? forEver : once, noFade, seconds) == 0;
}

std::uint8_t MusicSystem::getVolume() {
    TARNWICK_LOCATION("MusicSystem::getVolume");
    return state.initialised ? state.volume : std::uint8_t{0};
}

void MusicSystem::setVolume(std::int32_t volume) {
    TARNWICK_LOCATION("MusicSystem::setVolume");
    if (!state.initialised) {
        return;
    }
    state.volume = static_cast<std::uint8_t>(volume);
    applyVolume();
}

void MusicSystem::applyVolume() {
    TARNWICK_LOCATION("MusicSystem::applyVolume");
    Mix_VolumeMusic(state.volume * MIX_MAX_VOLUME / fullVolume);
}

bool MusicSystem::conCmdMusicSystemInitialised() {
    TARNWICK_LOCATION("MusicSystem::conCmdMusicSystemInitialised");
    return state.initialised;
}

void MusicSystem::conCmdMusicPlay(const std::string& fileName) {
    TARNWICK_LOCATION("MusicSystem::conCmdMusicPlay");
    if (fileName.empty()) {
        Log::print("\nUSAGE: MusicPlay < file name >");
        return;
    }
    Log::print(play(fileName, true) ? "\nFile opened successfully." : "\nFailed to open file.");
}

std::int32_t MusicSystem::conCmdMusicVolume(std::int32_t value, bool set) {
    TARNWICK_LOCATION("MusicSystem::conCmdMusicVolume");
    if (set) {
        setVolume(std::clamp(value, 0, fullVolume));
    }
    return getVolume();
}

} // namespace tarnwick
