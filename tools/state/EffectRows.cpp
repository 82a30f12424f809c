#include "tools/state/EffectRows.h"

#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "tools/state/JsonLine.h"
#include "tools/state/JsonObject.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

#include <initializer_list>
#include <list>
#include <map>
#include <string>
#include <utility>

namespace tarnwick {

namespace {

constexpr std::size_t flightValues = 8; ///< In a row of "effectParticles".
constexpr std::size_t lookValues = 7;   ///< In a row of "effectLooks".

/// Emitter and texture of a particle by their places in the lists.
using TexturePlaces = std::map<const GLTexture*, std::pair<std::int32_t, std::int32_t>>;

void writeColour(JsonLine& out, const char* key, Colour colour) {
    out.key(key).openArray();
    out.number(colour.red).number(colour.green).number(colour.blue).number(colour.alpha);
    out.closeArray();
}

void writeForce(JsonLine& out, const Force& force) {
    out.openObject();
    out.key("id").number(force.id).key("enabled").flag(force.enabled);
    out.key("position").vector(force.position).key("direction").vector(force.direction);
    out.key("strength").number(force.strength);
    out.closeObject();
}

void writeEmitter(JsonLine& out, const FxParticleEmitter& emitter) {
    out.openObject();
    out.key("id").number(emitter.id).key("active").flag(emitter.active);
    out.key("timer").number(emitter.timer).key("direction").vector(emitter.direction);
    out.key("position").vector(emitter.position).key("frequency").number(emitter.frequency);
    out.key("spread").number(emitter.spread).key("burstSize").number(emitter.burstSize);
    out.key("useAlphaBlending").flag(emitter.useAlphaBlending);
    out.key("velocity").vector(emitter.velocity1, emitter.velocity2);
    out.key("size").vector(emitter.size1, emitter.size2);
    out.key("liveTime").vector(emitter.liveTime1, emitter.liveTime2);
    out.key("gravity").vector(emitter.gravity1, emitter.gravity2);
    writeColour(out, "color1", emitter.color1);
    writeColour(out, "color2", emitter.color2);
    out.key("textures").openArray();
    for (const GLTexture& texture : emitter.textures) {
        out.string(texture.name);
    }
    out.closeArray().closeObject();
}

void writeFlight(JsonLine& out, const FxParticle& particle) {
    out.openArray();
    out.number(particle.position.x).number(particle.position.y);
    out.number(particle.velocity.x).number(particle.velocity.y);
    out.number(particle.size).number(particle.lifeTime).number(particle.timeLeft).number(particle.gravity);
    out.closeArray();
}

void writeLook(JsonLine& out, const FxParticle& particle, const TexturePlaces& places) {
    const auto place = places.find(particle.texture);
    const auto [emitter, texture] = place != places.end() ? place->second : std::pair{-1, -1};
    out.openArray();
    out.number(particle.color.red).number(particle.color.green).number(particle.color.blue);
    out.number(particle.color.alpha).number(particle.useAlphaBlending ? 1 : 0);
    out.number(emitter).number(texture);
    out.closeArray();
}

TexturePlaces texturePlaces() {
    TexturePlaces places;
    std::int32_t emitterPlace = 0;
    for (const FxParticleEmitter& emitter : FxParticleManager::emitters) {
        std::int32_t texturePlace = 0;
        for (const GLTexture& texture : emitter.textures) {
            places.emplace(&texture, std::pair{emitterPlace, texturePlace++});
        }
        ++emitterPlace;
    }
    return places;
}

Colour readColour(const JsonObject& in, const char* key, Colour otherwise) {
    if (!in.has(key)) {
        return otherwise;
    }
    const nlohmann::json& shares = in.array(key);
    if (shares.size() != 4) {
        refuseField(in.path(key), "a list of four numbers");
    }
    return {asFloat(shares[0], in.path(key)), asFloat(shares[1], in.path(key)),
            asFloat(shares[2], in.path(key)), asFloat(shares[3], in.path(key))};
}

/// Refuses an entity that the console made and that is not told whole: there is nothing to take the rest
/// from.
void needAll(const JsonObject& in, std::initializer_list<const char*> keys) {
    for (const char* const key : keys) {
        in.field(key);
    }
}

Force readForce(const JsonObject& in, const Force* ofLevel) {
    if (ofLevel == nullptr) {
        needAll(in, {"position", "direction", "strength"});
    }
    const Force otherwise = ofLevel != nullptr ? *ofLevel : Force{};
    return {.enabled = in.flag("enabled"),
            .id = in.integer<std::int32_t>("id"),
            .position = in.vector("position", otherwise.position),
            .direction = in.vector("direction", otherwise.direction),
            .strength = in.number("strength", otherwise.strength)};
}

/// What the console may have chosen of an emitter. What is missing stays as it is.
void readMaking(const JsonObject& in, FxParticleEmitter& emitter) {
    const auto readRange = [&](const char* key, float& first, float& second) {
        const Vector2 range = in.vector(key, {first, second});
        first = range.x;
        second = range.y;
    };
    emitter.position = in.vector("position", emitter.position);
    emitter.frequency = in.number("frequency", emitter.frequency);
    emitter.spread = in.number("spread", emitter.spread);
    emitter.burstSize = in.integer<std::uint32_t>("burstSize", emitter.burstSize);
    emitter.useAlphaBlending = in.flag("useAlphaBlending", emitter.useAlphaBlending);
    readRange("velocity", emitter.velocity1, emitter.velocity2);
    readRange("size", emitter.size1, emitter.size2);
    readRange("liveTime", emitter.liveTime1, emitter.liveTime2);
    readRange("gravity", emitter.gravity1, emitter.gravity2);
    emitter.color1 = readColour(in, "color1", emitter.color1);
    emitter.color2 = readColour(in, "color2", emitter.color2);
    if (in.has("textures")) {
        emitter.textures.clear();
        for (const nlohmann::json& name : in.array("textures")) {
            emitter.addTexture(asText(name, in.path("textures")));
        }
    }
}

FxParticleEmitter readEmitter(const JsonObject& in, const FxParticleEmitter* ofLevel) {
    if (ofLevel == nullptr) {
        needAll(in, {"position", "frequency", "spread", "burstSize", "useAlphaBlending", "velocity", "size",
                     "liveTime", "gravity", "color1", "color2", "textures"});
    }
    FxParticleEmitter emitter = ofLevel != nullptr ? *ofLevel : FxParticleEmitter();
    emitter.id = in.integer<std::int32_t>("id");
    emitter.active = in.flag("active");
    emitter.timer = in.number("timer");
    emitter.direction = in.vector("direction");
    readMaking(in, emitter);
    if (emitter.frequency < FxParticleEmitter::shortestFrequency) {
        refuseField(in.path("frequency"), "at least 0.001");
    }
    if (emitter.timer < 0.0f || emitter.timer >= emitter.frequency) {
        refuseField(in.path("timer"), "below the frequency");
    }
    if (emitter.burstSize > FxParticleEmitter::largestBurst) {
        refuseField(in.path("burstSize"), "at most 4096");
    }
    return emitter;
}

/// The entity of the level in the place of the next row; null behind them all.
template <typename Entity>
const Entity* entityAt(const std::list<Entity>& level, typename std::list<Entity>::const_iterator& place) {
    return place != level.end() ? &*place++ : nullptr;
}

/// Refuses rows that do not begin with the entities of the level, told by their ids. More may follow: those
/// that the console made.
template <typename Entity>
void testBeginning(const char* key, const std::vector<Entity>& rows, const std::list<Entity>& level) {
    if (rows.size() < level.size()) {
        throw StateError("the state has " + std::to_string(rows.size()) + " entries in \"" + key +
                         "\", the level " + std::to_string(level.size()));
    }
    auto row = rows.begin();
    for (const Entity& entity : level) {
        if (row->id != entity.id) {
            throw StateError(std::string("the state is of another level: the ids of the ") + key + " differ");
        }
        ++row;
    }
}

/// Replaces the values of a list and leaves its nodes where they are; more rows become new nodes.
template <typename Entity>
void replaceValues(std::list<Entity>& list, const std::vector<Entity>& rows) {
    auto row = rows.begin();
    for (Entity& entity : list) {
        entity = *row++;
    }
    list.insert(list.end(), row, rows.end());
}

} // namespace

void EffectRows::write(JsonLine& out) {
    out.key("forces").openArray();
    for (const Force& force : ForceManager::forces) {
        writeForce(out, force);
    }
    out.closeArray().key("emitters").openArray();
    for (const FxParticleEmitter& emitter : FxParticleManager::emitters) {
        writeEmitter(out, emitter);
    }
    out.closeArray().key("effectParticles").openArray();
    for (const FxParticle& particle : FxParticleManager::particles) {
        writeFlight(out, particle);
    }
    out.closeArray().key("effectLooks").openArray();
    const TexturePlaces places = texturePlaces();
    for (const FxParticle& particle : FxParticleManager::particles) {
        writeLook(out, particle, places);
    }
    out.closeArray();
}

void EffectRows::read(const JsonObject& in) {
    readForces(in);
    readEmitters(in);
    readFlights(in);
    readLooks(in);
}

void EffectRows::readForces(const JsonObject& in) {
    auto place = ForceManager::forces.cbegin();
    for (const nlohmann::json& entry : in.array("forces")) {
        forces.push_back(readForce(JsonObject(entry, "forces"), entityAt(ForceManager::forces, place)));
    }
    testBeginning("forces", forces, ForceManager::forces);
}

void EffectRows::readEmitters(const JsonObject& in) {
    auto place = FxParticleManager::emitters.cbegin();
    for (const nlohmann::json& entry : in.array("emitters")) {
        emitters.push_back(
            readEmitter(JsonObject(entry, "emitters"), entityAt(FxParticleManager::emitters, place)));
    }
    testBeginning("emitters", emitters, FxParticleManager::emitters);
}

void EffectRows::readFlights(const JsonObject& in) {
    const char* const key = "effectParticles";
    for (const nlohmann::json& row : in.array(key)) {
        if (asArray(row, key).size() != flightValues) {
            refuseField(key, "a list of rows of 8 values");
        }
        FxParticle& particle = flights.emplace_back().particle;
        particle.position = {asFloat(row[0], key), asFloat(row[1], key)};
        particle.velocity = {asFloat(row[2], key), asFloat(row[3], key)};
        particle.size = asFloat(row[4], key);
        particle.lifeTime = asFloat(row[5], key);
        particle.timeLeft = asFloat(row[6], key);
        particle.gravity = asFloat(row[7], key);
    }
}

void EffectRows::readLooks(const JsonObject& in) {
    const char* const key = "effectLooks";
    if (!in.has(key)) {
        return; // they fly on without a picture
    }
    const nlohmann::json& rows = in.array(key);
    if (rows.size() != flights.size()) {
        refuseField(key, "as long as \"effectParticles\"");
    }
    auto flight = flights.begin();
    for (const nlohmann::json& row : rows) {
        if (asArray(row, key).size() != lookValues) {
            refuseField(key, "a list of rows of 7 values");
        }
        flight->particle.color = {asFloat(row[0], key), asFloat(row[1], key), asFloat(row[2], key),
                                  asFloat(row[3], key)};
        flight->particle.useAlphaBlending = asBit(row[4], key);
        flight->emitter = asInteger<std::int32_t>(row[5], key);
        flight->texture = asInteger<std::int32_t>(row[6], key);
        const auto place = static_cast<std::size_t>(flight->emitter);
        const bool none = flight->emitter == -1 && flight->texture == -1;
        if (!none && (flight->emitter < 0 || place >= emitters.size() || flight->texture < 0 ||
                      static_cast<std::size_t>(flight->texture) >= emitters[place].textures.size())) {
            refuseField(key, "a texture of an emitter");
        }
        ++flight;
    }
}

void EffectRows::apply() {
    replaceValues(ForceManager::forces, forces);
    FxParticleManager::particles.clear(); // first: they point into the emitters
    replaceValues(FxParticleManager::emitters, emitters);
    std::vector<const FxParticleEmitter*> places;
    for (const FxParticleEmitter& emitter : FxParticleManager::emitters) {
        places.push_back(&emitter);
    }
    for (Flight& flight : flights) {
        if (flight.emitter >= 0) {
            const FxParticleEmitter& emitter = *places[static_cast<std::size_t>(flight.emitter)];
            flight.particle.texture = &emitter.textures[static_cast<std::size_t>(flight.texture)];
        }
        FxParticleManager::addParticle(flight.particle);
    }
}

} // namespace tarnwick
