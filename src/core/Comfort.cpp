#include "core/Comfort.h"

#include "core/ConfigFile.h"
#include "core/DataFiles.h"
#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr const char* fileName = "cfg\\comfort.cfg";

/// Puts the value of one entry into the field that its kind names.
struct ReadEntry {
    const ConfigFile& config;
    const char* key;
    Comfort::Values& values;

    void operator()(const Comfort::Switch& entry) const {
        TARNWICK_LOCATION("ReadEntry::operator()");
        values.*entry.field = config.getVarAsBool(key);
    }
    void operator()(const Comfort::Number& entry) const {
        TARNWICK_LOCATION("ReadEntry::operator()");
        const float value = config.getVarAsFloat(key);
        const bool off = value == 0.0f; // exactly: what the reader gives for no number
        values.*entry.field = off ? 0.0f : std::clamp(value, entry.smallest, entry.largest);
    }
};

} // namespace

Comfort::State Comfort::state;

void Comfort::initialise() {
    TARNWICK_LOCATION("Comfort::initialise");
    state = {};
    if (!DataFiles::open(fileName).is_open()) { // asked first: the reader would print that there is none
        return;
    }
    const ConfigFile config(fileName);
    for (const Entry& entry : entries) {
        std::visit(ReadEntry{config, entry.key, state}, entry.kind);
    }
}

} // namespace tarnwick
