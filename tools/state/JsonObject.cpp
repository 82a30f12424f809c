#include "tools/state/JsonObject.h"

#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace tarnwick {

void refuseField(const std::string& what, const char* wanted) {
    throw StateError("\"" + what + "\" is not " + wanted);
}

float asFloat(const nlohmann::json& value, const std::string& what) {
    if (value == "nan") {
        return std::numeric_limits<float>::quiet_NaN();
    }
    if (value == "inf" || value == "-inf") {
        const float infinity = std::numeric_limits<float>::infinity();
        return value == "inf" ? infinity : -infinity;
    }
    if (!value.is_number()) {
        refuseField(what, "a number");
    }
    const auto wide = value.get<double>();
    if (std::abs(wide) > static_cast<double>(std::numeric_limits<float>::max())) {
        refuseField(what, "a 32-bit float");
    }
    return static_cast<float>(wide);
}

std::uint64_t
asBitsBetween(std::int64_t least, std::uint64_t most, const nlohmann::json& value, const std::string& what) {
    if (!value.is_number_integer()) {
        refuseField(what, "a whole number");
    }
    if (value.is_number_unsigned()) {
        const auto bits = value.get<std::uint64_t>();
        if (bits > most) {
            refuseField(what, "in the range of its kind");
        }
        return bits;
    }
    const auto negative = value.get<std::int64_t>();
    if (negative < least) {
        refuseField(what, "in the range of its kind");
    }
    return static_cast<std::uint64_t>(negative);
}

bool asFlag(const nlohmann::json& value, const std::string& what) {
    if (!value.is_boolean()) {
        refuseField(what, "true or false");
    }
    return value.get<bool>();
}

bool asBit(const nlohmann::json& value, const std::string& what) {
    const auto bit = asInteger<std::uint32_t>(value, what);
    if (bit > 1) {
        refuseField(what, "0 or 1");
    }
    return bit == 1;
}

Vector2 asVector(const nlohmann::json& value, const std::string& what) {
    if (asArray(value, what).size() != 2) {
        refuseField(what, "a pair of numbers");
    }
    return {asFloat(value[0], what), asFloat(value[1], what)};
}

std::string asText(const nlohmann::json& value, const std::string& what) {
    if (!value.is_string()) {
        refuseField(what, "a text");
    }
    const auto& coded = value.get_ref<const std::string&>();
    std::string bytes;
    for (std::size_t i = 0; i < coded.size(); ++i) {
        const auto lead = static_cast<unsigned char>(coded[i]);
        if (lead < 0x80) {
            bytes += coded[i];
        } else if (lead <= 0xC3) { // 0xC2, 0xC3: code points 128 to 255 in two bytes; the parser saw to it
            const auto rest = static_cast<unsigned char>(coded[++i]);
            bytes += static_cast<char>((lead & 0x03u) << 6 | (rest & 0x3Fu));
        } else {
            refuseField(what, "a text of bytes");
        }
    }
    return bytes;
}

const nlohmann::json& asArray(const nlohmann::json& value, const std::string& what) {
    if (!value.is_array()) {
        refuseField(what, "a list");
    }
    return value;
}

JsonObject::JsonObject(const nlohmann::json& json, std::string path)
    : object(json)
    , name(std::move(path)) {
    if (!object.is_object()) {
        refuseField(name.empty() ? "the line" : name, "an object");
    }
}

bool JsonObject::has(const char* key) const {
    return object.contains(key);
}

const nlohmann::json& JsonObject::field(const char* key) const {
    const auto found = object.find(key);
    if (found == object.end()) {
        throw StateError("no field \"" + path(key) + "\"");
    }
    return *found;
}

} // namespace tarnwick
