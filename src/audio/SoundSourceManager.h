#pragma once

#include "audio/SoundSource.h"
#include "core/View.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tarnwick {

struct CommandRow;

/// Owns the sound sources of the level: starts, stops and fades the looping ones with the view and the state
/// of the game, and plays and silences sources for triggers.
///
/// A looping source is made stopped. At the start of a level it is freed, unless a trigger is there to start
/// it; from then on the update alone decides whether it is heard. Sources of one sound are kept in step, so
/// that they add up to one loud sound. Of more than there are voices for the loudest are heard.
class SoundSourceManager {
public:
    SoundSourceManager() = delete;

    /// Registers the console commands. Calls `shutdown` first, so that it can run again for a new level.
    static void initialise();
    static void shutdown();

    /// Puts a copy in front of the others of its id. One that loops and is not stopped is heard at once.
    static void addSoundSource(const SoundSource& source);
    /// Appends the sources of an id: the looping ones, then those that play once, the newest first. Pointers
    /// are good until `shutdown`.
    static void getSoundSources(std::int32_t id, std::list<SoundSource*>& list);

    /// Frees the sources of an id and plays each, for ever or once.
    static void playSounds(std::int32_t id);
    /// Stops the sources of an id; looping ones until they are played or the level starts again.
    static void stopSounds(std::int32_t id);
    /// Starts, at volume 0 until the next update, the looping sources of all ids but the given ones.
    static void playExcludedSounds(const std::set<std::int32_t>& ids);

    /// Once a tick, also under a menu. A looping source that is not stopped gets 1 less its distance from the
    /// middle of the view over its reach for a volume; it is silent where that is nothing, and while the
    /// level is not `heard`: in menus, in pauses and after the finish. Ids ascend, the newest source of an id
    /// comes first. Of those that should be heard only the loudest are that have voices, of equals the first.
    static void updateAllSounds(const View& view, bool heard);
    /// Brings a source in step with the others of its sound, compared by name and case; the last of them in
    /// the order of the update counts.
    /// Kept: the first silent source that it meets ends the search, also one of another sound; not one that
    /// only lacks a voice.
    static void syncLoopingSound(SoundSource& source);

    /// Stops every source, which does not order it to be silent: the update brings back what should be heard.
    static void pauseAllSounds();
    /// Plays every source that is not stopped, once. The game has no use for it.
    static void resumeAllSounds();
    /// Puts every source back to the start of the level.
    static void resetSounds();

    /// Draws the place, reach, id and sound of every source, if the command asks for it: green for those that
    /// loop, yellow for the others, grey while stopped. Leaves the GL as it was.
    static void debugDraw();

    /// Of all ids.
    static std::size_t sourceCount();
    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// With the sources that there were. One that was silent by order is silent again; the next update starts
    /// those that should be heard.
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;

    using Sources = std::map<std::int32_t, std::list<SoundSource>>; ///< By id, the newest first.

    /// A looping source that is not stopped, as the update finds it.
    struct Candidate {
        SoundSource* source;
        float volume;      ///< Below `smallestVolume`: it should be silent. No number without reach.
        std::size_t order; ///< Of the walk.
    };

    struct State {
        Sources onceSources;
        Sources loopingSources;
        bool soundSourceDraw = false; ///< Draw the sources.
        View view;                    ///< As the last update had it: a new source is heard by it at once.
        bool heard = false;           ///< The same.
        std::vector<Candidate> candidates; ///< Of the update, in its order.
        std::vector<Candidate> loudest;    ///< Those that should be heard, while there are too many.
    };
    static State state;

    static void findCandidates();
    /// Marks and silences those that there is no voice for.
    static void chooseLoudest();
    static void follow(SoundSource& source, float volume);
    static bool shouldBeHeard(float volume);
    static bool goesBefore(const Candidate& one, const Candidate& other);
    /// The last source of the same sound before the first silent one; null if there is none.
    static const SoundSource* lastInStep(const SoundSource& source);
    static void drawSources(const Sources& sources);
    static const CommandRow commands[];
    static void conCmdSoundSourceCreate(const std::string& typed);
    static std::int32_t conCmdSoundSourceCount();
};

class SoundSourceManager::Moment {
    friend class SoundSourceManager;
    std::vector<bool> stopped; ///< Of the sources that loop, then of those that play once, ids ascending.
};

} // namespace tarnwick
