#pragma once

#include "core/LongTimer.h"

#include <cstdint>

namespace tarnwick {

class JsonLine;
class JsonObject;

/// The rows "rules" and "ambience" of a state line: the time, the check point and the finish, and what the
/// sounds of the water remember.
class GameRows {
public:
    /// Writes what a level changes of them.
    static void write(JsonLine& out);

    /// Reads and tests the rows and changes nothing. Without "ambience" the sounds keep what they remember.
    /// Throws `StateError` for one that is not whole.
    void read(const JsonObject& in);
    /// Hands what was read to the modules. Cannot fail.
    void apply() const;

private:
    /// What sounds of water, ice and steam have before and between ticks, without the sounds themselves.
    struct Ambience {
        float waterSpeed = 0.0f;
        float waterLevel = 0.0f;
        float iceSpeed = 0.0f;
        std::uint32_t iceCount = 0;
        float pendingFreeze = 0.0f;
        float freezeLevel = 0.0f;
        float frictionLevel = 0.0f;
        std::uint32_t steamCount = 0;
        float pendingEvaporation = 0.0f;
        float evaporationLevel = 0.0f;
        float steamLevel = 0.0f;
    };
    /// What a level changes of the rules.
    struct Rules {
        LongTimer levelTimer;
        bool levelEnding = false;
        float finishTimeLeft = 0.0f;
        std::uint32_t endOfLevelParticleCount = 0;
        float checkPointX = 0.0f;
        float checkPointY = 0.0f;
        std::uint32_t checkPointParticleCount = 0;
    };
    Rules rules;
    Ambience ambience;

    static Ambience ambienceNow();
    static void writeRules(JsonLine& out);
    static void writeAmbience(JsonLine& out);
    void readRules(const JsonObject& from);
    void readAmbience(const JsonObject& in);
    void applyRules() const;
    void applyAmbience() const;
};

} // namespace tarnwick
