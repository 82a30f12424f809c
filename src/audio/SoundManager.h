#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>

namespace tarnwick {

struct CommandRow;
class SoundBuffer;

/// The cache of all sound effects: the samples of a file are held once, counted by the sounds that have them
/// (`Sound`).
///
/// Names are compared without regard to the case of ASCII letters, and a path is part of the name. A file
/// that cannot be read stays in the cache, too, so that it is tried once only, and `getSoundList` marks it.
class SoundManager {
public:
    SoundManager() = delete;

    /// One file.
    struct SoundInternal {
        std::unique_ptr<SoundBuffer> buffer; ///< The master, which is never played; null: loading failed.
        std::int32_t refCount = 1;           ///< Sounds that hold the entry.

        explicit SoundInternal(std::unique_ptr<SoundBuffer> master);
        ~SoundInternal();
    };

    /// Drops all entries and registers the console commands.
    static void initialise();
    /// Drops all entries, whatever their counts, and removes the console commands.
    static void shutdown();

    /// The entry for `name`, made and loaded if there is none yet; takes one reference.
    static const SoundInternal& loadSound(const std::string& name);
    /// Gives one reference back; the last one frees the samples. An unknown name does nothing.
    static void freeSound(const std::string& name);
    /// Reads a WAV file, found through `DataFiles`. Null for one that is missing, that `WavFile` refuses,
    /// that the platform cannot play or that memory cannot hold; without a device null at once, and no file
    /// is read.
    static std::unique_ptr<SoundBuffer> createSoundBuffer(const std::string& name);
    /// Reads the samples of all entries anew, for a device that is in the place of a lost one. Sounds of a
    /// file that can no longer be read are inert from then on.
    static void renewSamples();
    /// Appends a line an entry, in the order of their names: the name in upper case, and " (loading failed)"
    /// if there are no samples.
    static void getSoundList(std::list<std::string>& list);

private:
    friend class ModuleReset;

    struct State {
        std::map<std::string, SoundInternal> sounds; ///< By upper-cased name; entries stay put.
    };
    /// Never destroyed: sounds in the static lists of other modules may go after every other static object.
    static State& state;

    static const CommandRow commands[];
    static void conCmdSoundList();
    static void conCmdSoundMemory();
};

} // namespace tarnwick
