#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace tarnwick {

class SoundBuffer;

/// A sound effect: a value that plays one WAV file, with a volume, pan and frequency of its own. The samples
/// are shared by all sounds of the file through `SoundManager`.
///
/// A sound never fails. One whose file could not be loaded, or that was made without a device or outlives its
/// device, is inert: every operation does nothing and every question is answered with false. It still holds
/// its reference, its name and the volume that it was given. With a lost device in whose place there is
/// another it goes on.
class Sound {
public:
    /// The sound of "SND\DEFAULT.WAV".
    Sound();
    /// Stopped at the start of the file, at full volume, in the centre, at the file's rate.
    explicit Sound(const std::string& fileName);
    /// Null reads as an empty name, which no file has.
    explicit Sound(const char* fileName);
    /// A stopped sound of the same file.
    /// Kept: its volume is 1 whatever that of `other` is, and it is heard in the centre at the file's rate
    /// while `pan` and `frequency` say what they say in `other`.
    Sound(const Sound& other);
    /// Becomes what a copy of `other` is.
    /// Kept: the reference to the old file is not given back, so its entry stays for the rest of the run.
    Sound& operator=(const Sound& other);
    /// Stops.
    ~Sound();

    /// Plays on from the position to the end. One that plays goes on, and no longer loops.
    void play();
    /// Plays on from the position, for ever. One that plays goes on, and loops.
    void loop();
    /// Stops; the position stays.
    void stop();
    /// Sets the position to the start, also while it plays.
    void rewind();
    /// From now on is heard only while enough voices are free for sounds that matter more.
    void leaveVoices();

    /// Applies the volume and that of `SoundSystem`.
    void setVolume();
    /// Held within 0 to 1 and applied; a small volume is still well heard. Stored also by an inert sound.
    void setVolume(float newVolume);
    /// -1, left, to 1, right; held within.
    void setPan(float newPan);
    /// -1 to 1, held within: 100 hertz at -1, the file's rate at 0, 200,000 hertz at 1, in a straight line
    /// on either side of 0.
    void setFrequency(float newFrequency);

    bool isPlaying() const;
    /// Whether it plays for ever; false while it is stopped.
    bool isLooping() const;

    /// Takes over the position of `other`, in bytes of the file. False if either is inert, or if this one is
    /// not as long.
    bool synchroniseWith(const Sound& other);

    /// The file as it was named.
    const std::string& getName() const { return name; }
    float getVolume() const { return volume; }
    float getPan() const { return pan; }
    float getFrequency() const { return frequency; }
    /// Hertz, of the file; 0 for a sound that was inert from the start.
    std::int32_t getBaseFrequency() const { return baseFrequency; }

private:
    std::unique_ptr<SoundBuffer> buffer; ///< A duplicate of the one in the cache; null: inert.
    std::string name;
    std::int32_t baseFrequency = 0; ///< Hertz.
    float volume = 1.0f;            ///< 0 to 1.
    float frequency = 0.0f;         ///< -1 to 1; 0 is `baseFrequency`.
    float pan = 0.0f;               ///< -1 to 1; 0 is the centre.

    bool usable() const;
    void duplicate(const SoundBuffer* source);
};

} // namespace tarnwick
