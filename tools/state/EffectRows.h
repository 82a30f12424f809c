#pragma once

#include "mechanisms/Force.h"
#include "mechanisms/FxParticle.h"
#include "mechanisms/FxParticleEmitter.h"

#include <cstdint>
#include <vector>

namespace tarnwick {

class JsonLine;
class JsonObject;

/// The rows "forces", "emitters", "effectParticles" and "effectLooks" of a state line. Forces and emitters
/// are written whole, so that those which the console made come back too.
class EffectRows {
public:
    /// Writes the lists as they stand.
    static void write(JsonLine& out);

    /// Reads and tests all rows and changes nothing. Throws `StateError` for forces or emitters that do not
    /// begin with those of the level.
    void read(const JsonObject& in);
    /// Puts what was read into the lists. Forces and emitters of the level stay where they are in memory.
    /// Cannot fail.
    void apply();

private:
    /// A particle in flight; its texture by the place in the lists, -1 for none.
    struct Flight {
        FxParticle particle;
        std::int32_t emitter = -1;
        std::int32_t texture = -1;
    };
    std::vector<Force> forces;
    std::vector<FxParticleEmitter> emitters;
    std::vector<Flight> flights;

    void readForces(const JsonObject& in);
    void readEmitters(const JsonObject& in);
    void readFlights(const JsonObject& in);
    void readLooks(const JsonObject& in);
};

} // namespace tarnwick
