#include "audio/SoundSourceManager.h"

#include "audio/SoundSystem.h"
#include "core/CommandArguments.h"
#include "core/CommandRegistry.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"

#include <algorithm>
#include <cstddef>

namespace tarnwick {

namespace {

constexpr float smallestVolume = 0.0001f; ///< A source below it is stopped.

} // namespace

SoundSourceManager::State SoundSourceManager::state;

constexpr CommandRow SoundSourceManager::commands[] = {
    {"SoundSourceCreate", conCmdSoundSourceCreate},
    {"SoundSourceCount", conCmdSoundSourceCount},
    {"SoundSourceDraw", CommandVariable{&state.soundSourceDraw, "SoundSourceManager::conCmdSoundSourceDraw"}},
};

void SoundSourceManager::initialise() {
    TARNWICK_LOCATION("SoundSourceManager::initialise");
    shutdown();
    Log::print("\nInitialising sound source manager..");
    state.soundSourceDraw = false;
    CommandRegistry::add(commands);
}

void SoundSourceManager::shutdown() {
    TARNWICK_LOCATION("SoundSourceManager::shutdown");
    Log::print("\nShutting down sound source manager..");
    state.onceSources.clear();
    state.loopingSources.clear();
    CommandRegistry::remove(commands);
}

void SoundSourceManager::addSoundSource(const SoundSource& source) {
    TARNWICK_LOCATION("SoundSourceManager::addSoundSource");
    Sources& sources = source.looping ? state.loopingSources : state.onceSources;
    SoundSource& added = sources[source.id].emplace_front(source);
    added.sound.leaveVoices();
    if (added.looping && !added.stopped) {
        added.sound.loop();
    }
}

void SoundSourceManager::getSoundSources(std::int32_t id, std::list<SoundSource*>& list) {
    TARNWICK_LOCATION("SoundSourceManager::getSoundSources");
    for (Sources* const sources : {&state.loopingSources, &state.onceSources}) {
        if (const auto found = sources->find(id); found != sources->end()) {
            for (SoundSource& source : found->second) {
                list.push_back(&source);
            }
        }
    }
}

void SoundSourceManager::playSounds(std::int32_t id) {
    TARNWICK_LOCATION("SoundSourceManager::playSounds");
    std::list<SoundSource*> sources;
    getSoundSources(id, sources);
    for (SoundSource* const source : sources) {
        source->stopped = false;
        if (source->looping) {
            source->sound.loop();
        } else {
            source->sound.play();
        }
    }
}

void SoundSourceManager::stopSounds(std::int32_t id) {
    TARNWICK_LOCATION("SoundSourceManager::stopSounds");
    std::list<SoundSource*> sources;
    getSoundSources(id, sources);
    for (SoundSource* const source : sources) {
        source->stopped = true;
        source->sound.stop();
    }
}

void SoundSourceManager::playExcludedSounds(const std::set<std::int32_t>& ids) {
    TARNWICK_LOCATION("SoundSourceManager::playExcludedSounds");
    for (auto& [id, sources] : state.loopingSources) {
        if (ids.contains(id)) {
            continue;
        }
        for (SoundSource& source : sources) {
            source.sound.setVolume(0.0f);
            source.sound.loop();
            source.stopped = false;
        }
    }
}

void SoundSourceManager::updateAllSounds(const View& view, bool heard) {
    TARNWICK_LOCATION("SoundSourceManager::updateAllSounds");
    state.view = view;
    state.heard = heard;
    findCandidates();
    chooseLoudest();
    for (const Candidate& candidate : state.candidates) {
        if (!candidate.source->outvoiced) {
            follow(*candidate.source, candidate.volume);
        }
    }
}

void SoundSourceManager::findCandidates() {
    TARNWICK_LOCATION("SoundSourceManager::findCandidates");
    const Vector2 ear = state.view.centre();
    state.candidates.clear();
    for (auto& [id, sources] : state.loopingSources) {
        for (SoundSource& source : sources) {
            source.outvoiced = false;
            if (!source.stopped) {
                const float distance = vectorLength(ear - Vector2{source.x, source.y});
                state.candidates.push_back(
                    {&source, 1.0f - distance / source.strenght, state.candidates.size()});
            }
        }
    }
}

void SoundSourceManager::chooseLoudest() {
    TARNWICK_LOCATION("SoundSourceManager::chooseLoudest");
    state.loudest.clear();
    std::size_t playing = 0;
    for (const Candidate& candidate : state.candidates) {
        if (shouldBeHeard(candidate.volume)) {
            state.loudest.push_back(candidate);
            playing += candidate.source->sound.isPlaying() ? 1u : 0u;
        }
    }
    // Every sound is inert without a device, and lacks no voice.
    if (SoundSystem::session() == 0 || state.loudest.size() <= playing + SoundSystem::voicesToSpare()) {
        return;
    }
    for (const Candidate& candidate : state.candidates) {
        if (!shouldBeHeard(candidate.volume)) {
            follow(*candidate.source, candidate.volume); // first, for its voice
        }
    }
    const std::size_t voices = std::min(playing + SoundSystem::voicesToSpare(), state.loudest.size());
    const auto firstWithout = state.loudest.begin() + static_cast<std::ptrdiff_t>(voices);
    std::ranges::nth_element(state.loudest, firstWithout, goesBefore);
    for (auto without = firstWithout; without != state.loudest.end(); ++without) {
        without->source->outvoiced = true;
        without->source->sound.stop();
    }
}

bool SoundSourceManager::goesBefore(const Candidate& one, const Candidate& other) {
    TARNWICK_LOCATION("SoundSourceManager::goesBefore");
    const float volume = one.volume > 0.0f ? one.volume : 0.0f; // what is no number sounds as loud as 0
    const float otherVolume = other.volume > 0.0f ? other.volume : 0.0f;
    return volume != otherVolume ? volume > otherVolume : one.order < other.order;
}

void SoundSourceManager::follow(SoundSource& source, float volume) {
    TARNWICK_LOCATION("SoundSourceManager::follow");
    const bool playing = source.sound.isPlaying();
    if (shouldBeHeard(volume)) {
        if (!playing) {
            syncLoopingSound(source);
            source.sound.loop();
        }
        source.sound.setVolume(volume);
    } else if (playing) {
        source.sound.stop();
        syncLoopingSound(source);
    }
}

/// Also what is no number, of a source without reach, should.
bool SoundSourceManager::shouldBeHeard(float volume) {
    TARNWICK_LOCATION("SoundSourceManager::shouldBeHeard");
    return state.heard && !(volume < smallestVolume);
}

void SoundSourceManager::syncLoopingSound(SoundSource& source) {
    TARNWICK_LOCATION("SoundSourceManager::syncLoopingSound");
    if (const SoundSource* const last = lastInStep(source); last != nullptr) {
        source.sound.synchroniseWith(last->sound);
    }
}

const SoundSource* SoundSourceManager::lastInStep(const SoundSource& source) {
    TARNWICK_LOCATION("SoundSourceManager::lastInStep");
    const SoundSource* last = nullptr;
    for (const auto& [id, sources] : state.loopingSources) {
        for (const SoundSource& other : sources) {
            if (&other == &source) {
                continue;
            }
            if (other.outvoiced) {
                continue;
            }
            if (!other.sound.isPlaying()) {
                return last;
            }
            if (other.sound.getName() == source.sound.getName()) {
                last = &other;
            }
        }
    }
    return last;
}

void SoundSourceManager::pauseAllSounds() {
    TARNWICK_LOCATION("SoundSourceManager::pauseAllSounds");
    for (Sources* const all : {&state.onceSources, &state.loopingSources}) {
        for (auto& [id, sources] : *all) {
            for (SoundSource& source : sources) {
                source.sound.stop();
            }
        }
    }
}

void SoundSourceManager::resumeAllSounds() {
    TARNWICK_LOCATION("SoundSourceManager::resumeAllSounds");
    for (Sources* const all : {&state.onceSources, &state.loopingSources}) {
        for (auto& [id, sources] : *all) {
            for (SoundSource& source : sources) {
                if (!source.stopped) {
                    source.sound.play();
                }
            }
        }
    }
}

void SoundSourceManager::resetSounds() {
    TARNWICK_LOCATION("SoundSourceManager::resetSounds");
    state.soundSourceDraw = false;
    for (Sources* const all : {&state.onceSources, &state.loopingSources}) {
        for (auto& [id, sources] : *all) {
            for (SoundSource& source : sources) {
                source.reset();
            }
        }
    }
}

std::size_t SoundSourceManager::sourceCount() {
    TARNWICK_LOCATION("SoundSourceManager::sourceCount");
    std::size_t count = 0;
    for (const Sources* const all : {&state.loopingSources, &state.onceSources}) {
        for (const auto& [id, sources] : *all) {
            count += sources.size();
        }
    }
    return count;
}

void SoundSourceManager::keep(Moment& moment) {
    TARNWICK_LOCATION("SoundSourceManager::keep");
    moment.stopped.clear();
    for (const Sources* const all : {&state.loopingSources, &state.onceSources}) {
        for (const auto& [id, sources] : *all) {
            for (const SoundSource& source : sources) {
                moment.stopped.push_back(source.stopped);
            }
        }
    }
}

void SoundSourceManager::putBack(const Moment& moment) {
    TARNWICK_LOCATION("SoundSourceManager::putBack");
    auto then = moment.stopped.begin();
    for (Sources* const all : {&state.loopingSources, &state.onceSources}) {
        for (auto& [id, sources] : *all) {
            for (SoundSource& source : sources) {
                if (*then && !source.stopped) {
                    source.sound.stop();
                }
                source.stopped = *then++;
            }
        }
    }
}

void SoundSourceManager::conCmdSoundSourceCreate(const std::string& typed) {
    TARNWICK_LOCATION("SoundSourceManager::conCmdSoundSourceCreate");
    const CommandArguments arguments(
        typed, "\nUSAGE: SoundSourceCreate < x : number > < y : number > < strenght : number > "
               "< looping : true OR false > < id : integer > < fileName > ");
    if (!arguments.fit()) {
        return;
    }
    const Sound sound(arguments.text(5));
    addSoundSource(SoundSource(sound, {arguments.number(0), arguments.number(1)}, arguments.boolean(3),
                               arguments.integer(4), arguments.number(2)));
    updateAllSounds(state.view, state.heard);
}

std::int32_t SoundSourceManager::conCmdSoundSourceCount() {
    TARNWICK_LOCATION("SoundSourceManager::conCmdSoundSourceCount");
    return static_cast<std::int32_t>(state.onceSources.size() + state.loopingSources.size());
}

} // namespace tarnwick
