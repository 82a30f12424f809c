// The part of the validator that looks at what acts: movers, triggers, forces, emitters, and their ids.

#include "level/LevelFile.h"
#include "tools/level/LevelFindings.h"
#include "tools/level/LevelNames.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>

namespace tarnwick {

namespace {

constexpr std::int32_t entityRemove = 300; ///< Action codes.
constexpr std::int32_t entityAdd = 301;
constexpr std::int32_t levelEnd = 801;

/// World units that a mover may go in a tick: it looks for what it pushes at each 1.7 of them.
constexpr double longestWay = 100'000.0;
constexpr double longestTick = 1.0 / 30.0; ///< Seconds.

/// What can have an id.
enum Kind : unsigned {
    polygon = 1,
    object = 2,
    force = 4,
    sound = 8,
    emitter = 16,
    mover = 32,
};

/// The kinds that triggers of a type act on, in words; none for types that have no targets.
struct Understood {
    unsigned kinds = 0;
    const char* words = "";
};

std::optional<Understood> understoodBy(std::int32_t type) {
    if (type >= 3 && type <= 5) {
        return Understood{object, "an object"};
    }
    if (type == 100 || type == 101) {
        return Understood{sound, "a sound"};
    }
    if (type >= 200 && type <= 203) {
        return Understood{force, "a force"};
    }
    if (type == entityRemove || type == entityAdd) {
        return Understood{polygon | object | force, "a polygon, an object or a force"};
    }
    if (type >= 401 && type <= 410) {
        return Understood{mover, "a mover"};
    }
    if (type >= 501 && type <= 503) {
        return Understood{emitter, "an emitter"};
    }
    return std::nullopt;
}

class ActorValidator {
public:
    ActorValidator(const LevelFile& read, Findings& list)
        : level(read)
        , findings(list) {
        for (const LevelFile::PolygonRecord& record : level.polygons) {
            kinds[record.polygonId] |= polygon;
        }
        for (const LevelFile::ObjectRecord& record : level.objects) {
            kinds[static_cast<std::int32_t>(record.objectId)] |= object;
        }
        for (const LevelFile::ForceRecord& record : level.forces) {
            kinds[static_cast<std::int32_t>(record.forceId)] |= force;
        }
        for (const LevelFile::SoundSourceRecord& record : level.soundSources) {
            kinds[record.soundId] |= sound;
        }
        for (const LevelFile::EmitterRecord& record : level.emitters) {
            kinds[record.emitterId] |= emitter;
        }
        for (const LevelFile::MoverRecord& record : level.movers) {
            kinds[record.moverId] |= mover;
        }
    }

    void validate() {
        validateForces();
        validateMovers();
        validateTriggers();
        validateUses();
    }

private:
    const LevelFile& level;
    Findings& findings;
    std::map<std::int32_t, unsigned> kinds; ///< Of what has the id.

    unsigned kindsOf(std::int32_t id) const {
        const auto known = kinds.find(id);
        return known != kinds.end() ? known->second : 0;
    }

    void found(const char* thing, std::size_t number, const std::string& text) {
        findings.push_back(thing + (" " + std::to_string(number)) + ": " + text);
    }

    void testFinite(const char* thing, std::size_t number, const char* what, float value) {
        if (!std::isfinite(value)) {
            found(thing, number, std::string("its ") + what + " is not a finite number");
        }
    }

    void validateForces() {
        for (std::size_t number = 0; number < level.forces.size(); ++number) {
            const LevelFile::ForceRecord& record = level.forces[number];
            testFinite("force", number, "strength", record.strength);
            testFinite("force", number, "direction", record.direction.x + record.direction.y);
        }
        for (std::size_t number = 0; number < level.emitters.size(); ++number) {
            const Vector2 direction = level.emitters[number].direction;
            testFinite("emitter", number, "direction", direction.x + direction.y);
        }
    }

    void validateMovers() {
        for (std::size_t number = 0; number < level.movers.size(); ++number) {
            const LevelFile::MoverRecord& record = level.movers[number];
            if (record.moverId == 0) {
                found("mover", number, "has id 0 and carries everything that has no id");
            } else if ((kindsOf(record.moverId) & (polygon | object)) == 0) {
                found("mover", number,
                      "carries nothing: no polygon or object has id " + std::to_string(record.moverId));
            }
            if (record.start == record.end) {
                found("mover", number, "starts where it ends, and moves nothing");
            }
            testFinite("mover", number, "speed", record.speed);
            const double track = std::hypot(static_cast<double>(record.end.x) - record.start.x,
                                            static_cast<double>(record.end.y) - record.start.y);
            const double way = std::min(track, std::abs(static_cast<double>(record.speed)) * longestTick);
            if (way > longestWay) {
                found("mover", number, "goes more than 100000 units in a tick, which takes the game seconds");
            }
        }
    }

    void validateTriggers() {
        bool canEnd = false;
        for (std::size_t number = 0; number < level.triggers.size(); ++number) {
            const LevelFile::TriggerRecord& record = level.triggers[number];
            canEnd = canEnd || record.triggerType == levelEnd;
            if (actionOf(record.triggerType) == nullptr) {
                found("trigger", number,
                      "no trigger has type " + std::to_string(record.triggerType) + "; it does nothing");
            }
            if (std::isnan(record.delay)) {
                found("trigger", number, "its delay is not a number");
            }
            validateTarget(number, record);
        }
        if (!canEnd) {
            findings.emplace_back("no trigger is a Level_end_a: the level cannot be finished");
        }
    }

    void validateTarget(std::size_t number, const LevelFile::TriggerRecord& record) {
        const std::optional<Understood> understood = understoodBy(record.triggerType);
        if (record.targetId == 0) {
            if (record.triggerType == entityRemove || record.triggerType == entityAdd) {
                found("trigger", number,
                      "has target 0 and acts on nothing, but the walls without an id are no longer joined to "
                      "one another: give it a target");
            } else if (understood && understood->kinds != sound) {
                found("trigger", number, "has target 0 and acts on nothing");
            }
            return;
        }
        const std::string id = std::to_string(record.targetId);
        const unsigned there = kindsOf(record.targetId);
        if (there == 0) {
            found("trigger", number, "nothing has its target id " + id);
        } else if (understood && (there & understood->kinds) == 0) {
            found("trigger", number, "nothing that has its target id " + id + " is " + understood->words);
        }
    }

    /// Ids of polygons and objects that no mover and no trigger has.
    void validateUses() {
        std::set<std::int32_t> used;
        for (const LevelFile::MoverRecord& record : level.movers) {
            used.insert(record.moverId);
        }
        for (const LevelFile::TriggerRecord& record : level.triggers) {
            used.insert(record.targetId);
        }
        for (std::size_t number = 0; number < level.polygons.size(); ++number) {
            const std::int32_t id = level.polygons[number].polygonId;
            if (id != 0 && !used.contains(id)) {
                findings.push_back(aboutPolygon(
                    level, number, "has id " + std::to_string(id) + ", which no mover and no trigger uses"));
            }
        }
        for (std::size_t number = 0; number < level.objects.size(); ++number) {
            const LevelFile::ObjectRecord& record = level.objects[number];
            const auto id = static_cast<std::int32_t>(record.objectId);
            if (id != 0 && !used.contains(id)) {
                findings.push_back("object " + std::to_string(number) + " at (" +
                                   std::to_string(record.position.x) + ", " +
                                   std::to_string(record.position.y) + "): has id " + std::to_string(id) +
                                   ", which no mover and no trigger uses");
            }
        }
    }
};

} // namespace

void validateActors(const LevelFile& level, Findings& findings) {
    ActorValidator(level, findings).validate();
}

} // namespace tarnwick
