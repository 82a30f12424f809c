#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

struct ALCcontext_struct;
struct ALCdevice_struct;

namespace tarnwick {

class SoundBuffer;

/// The output device of the sound effects, and its voices: a sound holds one while it is heard.
///
/// Without a device every sound is inert, and the game goes on in silence. The headless runner opens none.
class SoundSystem {
public:
    SoundSystem() = delete;

    static constexpr std::size_t largestVoiceCount = 256; ///< Asked of the device; it may have fewer.

    /// Opens the default device and tells on the console whether that worked. Does nothing while one is open.
    static void initialise();
    /// The same with a device that is never heard and whose time stands still but for `renderLoopback`: for
    /// tests.
    static void initialiseLoopback();
    /// Closes the device. Sounds that outlive it are inert from then on, also when a device is opened anew.
    static void shutdown();

    /// Loudness of everything, held within 0 to 1. Sounds already playing keep theirs until their volume is
    /// next applied.
    static void setVolume(float volume);
    static float getVolume() { return state.masterVolume; }

    /// Which opening of the device this is, counted from 1; 0 while there is none.
    static std::uint32_t session() { return state.device != nullptr ? state.sessions : 0; }

    /// The next `frames` frames of a loopback device: left, right, 44,100 a second. Silence on any other.
    static std::vector<float> renderLoopback(std::size_t frames);

    // For buffers.

    /// A free voice, 0 if all sound. Takes back those of sounds that have ended, if there is no other.
    static std::uint32_t takeVoice(SoundBuffer& buffer);
    /// Gives a voice back, which has been stopped.
    static void freeVoice(std::uint32_t voice);
    static std::size_t voicesInUse() { return state.sounding.size(); }

private:
    friend class ModuleReset;

    struct State {
        ALCdevice_struct* device = nullptr;         ///< Null when there is no sound.
        ALCcontext_struct* primaryBuffer = nullptr; ///< What all voices are mixed in; null with no device.
        bool loopback = false;                      ///< The device renders on request.
        std::uint32_t sessions = 0;                 ///< Openings of a device.
        float masterVolume = 1.0f;                  ///< 0 to 1.
        std::vector<std::uint32_t> freeVoices;      ///< AL names of sources without a buffer.
        std::map<std::uint32_t, SoundBuffer*> sounding; ///< By the voice that the buffer holds.
    };
    /// Never destroyed: sounds in the static lists of other modules may go after every other static object.
    static State& state;

    static void start(ALCdevice_struct* device, const std::int32_t* attributes);
    static void makeVoices();
};

} // namespace tarnwick
