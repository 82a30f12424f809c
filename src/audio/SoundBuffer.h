#pragma once

#include <cstdint>
#include <memory>

namespace tarnwick {

struct WavFile;

/// A platform sound buffer: samples of a file, with a position, rate, loudness and place of its own. The
/// samples are shared: the master in the cache holds them, and a sound has a duplicate.
///
/// It takes a voice of the device while it is heard, and keeps what it needs to go on without one. When all
/// voices sound, `play` does nothing: the newest is not heard, and all others go on.
///
/// Valid as long as the device that it was made on, or the one in the place of that, is open (`alive`). After
/// that nothing may be called but `alive`, `size` and the destructor.
class SoundBuffer {
public:
    static constexpr std::int32_t silence = -10'000;          ///< Hundredths of a decibel; 0 is full.
    static constexpr std::int32_t smallestFrequency = 100;    ///< Hertz.
    static constexpr std::int32_t largestFrequency = 200'000; ///< Hertz.
    static constexpr std::int32_t farthestPan = 10'000;       ///< To the right; negative to the left.

    /// A buffer of all samples of a file, at its rate and full loudness in the centre. Null without a device,
    /// and for what the platform cannot play: a depth other than 8, 16, 24 or 32 bits, a frame that is not as
    /// long as its channels and depth say, less than one frame, a rate outside the two frequencies, 2 GiB and
    /// more in two channels. What stands behind the last whole frame is not played. Throws `std::bad_alloc`
    /// where the memory is not there.
    static std::unique_ptr<SoundBuffer> create(const WavFile& wav);
    /// Another buffer on the same samples, as new. Also of one that plays.
    std::unique_ptr<SoundBuffer> duplicate() const;
    SoundBuffer(const SoundBuffer&) = delete;
    SoundBuffer& operator=(const SoundBuffer&) = delete;
    ~SoundBuffer();

    bool alive() const;
    /// Bytes, as in the file.
    std::uint32_t size() const;

    /// Plays on from the position, to the end or for ever. While it plays already only that is set.
    void play(bool loop);
    /// Keeps the position.
    void stop();
    bool isPlaying();
    /// Plays for ever; false while stopped.
    bool isLooping();

    /// Hundredths of a decibel, `silence` to 0.
    void setVolume(std::int32_t newVolume);
    std::int32_t getVolume() const { return volume; }
    /// Frames a second, within the two frequencies.
    void setFrequency(std::int32_t newFrequency);
    std::int32_t getFrequency() const { return frequency; }
    /// A panned buffer is heard as one point at the same power everywhere. At 0 both channels go to their
    /// sides: to the sample on a device of two channels, summed on one of a single channel, and mostly to the
    /// two in front where there are more.
    void setPan(std::int32_t newPan);

    /// Bytes from the start to the frame that is next mixed.
    std::uint32_t getCurrentPosition();
    /// False for a position at or behind the end. One inside a frame goes back to its start.
    bool setCurrentPosition(std::uint32_t bytes);

    /// From now on takes a voice only while more are free than `SoundSystem::voicesLeft` says.
    void leaveVoices() { leavesVoices = true; }

    // For the device.

    /// Lets go of the voice if the sound has come to its end; the position is then at the start.
    void giveBackIfEnded();
    /// The device of the voice is no more: goes to the start without it.
    void loseVoice();
    /// After the loss of the device, which ended all that sounded: plays from the start if it looped.
    void startOver();
    /// All buffers on these samples have those of `other`, which is of a new device, and are as good as ever.
    void takeSamples(const SoundBuffer& other);

private:
    struct Samples;

    explicit SoundBuffer(std::shared_ptr<Samples> sharedSamples);

    std::shared_ptr<Samples> samples;
    std::uint32_t voice = 0; ///< AL name of the source; 0 while it is not heard.
    std::uint32_t frame = 0; ///< Position while there is no voice.
    bool looping = false;    ///< Of the last `play`.
    bool leavesVoices = false;
    std::int32_t volume = 0;
    std::int32_t frequency = 0;
    std::int32_t pan = 0;

    void giveBack();
    void applyVolume() const;
    void applyFrequency() const;
    void applyPan() const;
};

} // namespace tarnwick
