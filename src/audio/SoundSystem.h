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
    /// Voices that the sources of a level leave to menus, splashes and loops of the water; half of fewer than
    /// twice as many.
    static constexpr std::size_t voicesLeft = 32;

    /// Opens the default device and tells on the console whether that worked. Does nothing while one is open.
    static void initialise();
    /// The same with a device that is never heard and whose time stands still but for `renderLoopback`: for
    /// tests. It has 1, 2, 6 or 8 channels.
    static void initialiseLoopback(std::size_t channels = 2);
    /// Sees whether the device has gone: it was unplugged, or the sound server has ended. Then opens the
    /// default device anew, again after a while where there is none, and tells on the console of both. All
    /// sounds stay. Those that loop start over, in step; those that played once have ended. Until then sounds
    /// can be made and played, and nothing is heard.
    static void mendLoss();
    /// Closes the device. Sounds that outlive it are inert from then on, also when a device is opened anew.
    static void shutdown();

    /// Loudness of everything, held within 0 to 1. Sounds already playing keep theirs until their volume is
    /// next applied.
    static void setVolume(float volume);
    static float getVolume() { return state.masterVolume; }

    /// Which opening of the device this is, counted from 1; 0 while there is none.
    static std::uint32_t session() { return state.device != nullptr ? state.sessions : 0; }

    /// The next `frames` frames of a loopback device, 44,100 a second: its channels in turn, left and right
    /// first, then centre, subwoofer, and the two behind, and to the sides. Silence in two channels on any
    /// other.
    static std::vector<float> renderLoopback(std::size_t frames);

    // For buffers.

    /// A voice, 0 if there is none, or for one that `leaves` some if no more than those are free. Takes back
    /// the voices of sounds that have ended, if there is no other.
    static std::uint32_t takeVoice(SoundBuffer& buffer, bool leaves);
    /// Gives a voice back, which has been stopped.
    static void freeVoice(std::uint32_t voice);
    static std::size_t voicesInUse() { return state.sounding.size(); }
    /// Voices that can be taken until those to be left are. Takes those of ended sounds back first.
    static std::size_t voicesToSpare();

private:
    friend class ModuleReset;
    friend class SoundLossTest;

    static ALCdevice_struct* openDevice();
    static bool isConnected(ALCdevice_struct* device);
    static bool reopenInPlace(ALCdevice_struct* device);

    /// What is asked of devices that come and go. Tests put their own in its place.
    struct DeviceCalls {
        ALCdevice_struct* (*open)() = openDevice;
        bool (*connected)(ALCdevice_struct* device) = isConnected;
        bool (*reopen)(ALCdevice_struct* device) = reopenInPlace;
    };
    struct State {
        ALCdevice_struct* device = nullptr;         ///< Null when there is no sound.
        ALCcontext_struct* primaryBuffer = nullptr; ///< What all voices are mixed in; null with no device.
        std::size_t loopbackChannels = 0;           ///< Of a device that renders on request; 0: of no other.
        std::uint32_t sessions = 0;                 ///< Openings of a device.
        float masterVolume = 1.0f;                  ///< 0 to 1.
        std::vector<std::uint32_t> freeVoices;      ///< AL names of sources without a buffer.
        std::map<std::uint32_t, SoundBuffer*> sounding; ///< By the voice that the buffer holds.
        bool lost = false;                              ///< The device has gone, and there is no other yet.
        std::uint32_t lastTry = 0; ///< Milliseconds of `Clock`: the last try to open another.
        std::size_t left = 0;      ///< Voices that sources of a level leave free.
        DeviceCalls calls;
    };
    /// Never destroyed: sounds in the static lists of other modules may go after every other static object.
    static State& state;

    static ALCcontext_struct* makeContext(ALCdevice_struct* device);
    static void start();
    static bool replaceDevice();
    static void closeDevice();
    static void makeVoices();
    static void takeBackEnded();
};

} // namespace tarnwick
