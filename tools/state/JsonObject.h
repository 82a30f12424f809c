#pragma once

#include "core/Vector2.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

namespace tarnwick {

// Values of a state line. Each function gives the value of the kind that its name says, or throws
// `StateError` with the name `what` of the field.

[[noreturn]] void refuseField(const std::string& what, const char* wanted);
/// No larger than a 32-bit float can hold; or one of the texts "nan", "inf" and "-inf".
float asFloat(const nlohmann::json& value, const std::string& what);
bool asFlag(const nlohmann::json& value, const std::string& what);
/// A whole number that is 0 or 1.
bool asBit(const nlohmann::json& value, const std::string& what);
/// A list of two numbers.
Vector2 asVector(const nlohmann::json& value, const std::string& what);
/// What `JsonLine::string` wrote: a text of code points up to 255, each of them one byte.
std::string asText(const nlohmann::json& value, const std::string& what);
const nlohmann::json& asArray(const nlohmann::json& value, const std::string& what);

/// The 64 bits of a whole number from `least`, which is not above 0, to `most`.
std::uint64_t
asBitsBetween(std::int64_t least, std::uint64_t most, const nlohmann::json& value, const std::string& what);
/// A whole number in the range of `Integer`.
template <typename Integer>
Integer asInteger(const nlohmann::json& value, const std::string& what) {
    using Range = std::numeric_limits<Integer>;
    const auto least = static_cast<std::int64_t>(Range::min());
    return static_cast<Integer>(asBitsBetween(least, static_cast<std::uint64_t>(Range::max()), value, what));
}

/// An object of the line. Fields that it does not ask for may stand in it. Refers to the parsed line, which
/// must outlive it.
class JsonObject {
public:
    /// `path` is how messages call it; empty for the line itself.
    JsonObject(const nlohmann::json& json, std::string path);

    bool has(const char* key) const;
    const nlohmann::json& field(const char* key) const; ///< Throws `StateError` if it is not there.
    JsonObject child(const char* key) const { return {field(key), path(key)}; }
    float number(const char* key) const { return asFloat(field(key), path(key)); }
    bool flag(const char* key) const { return asFlag(field(key), path(key)); }
    Vector2 vector(const char* key) const { return asVector(field(key), path(key)); }
    const nlohmann::json& array(const char* key) const { return asArray(field(key), path(key)); }
    template <typename Integer>
    Integer integer(const char* key) const {
        return asInteger<Integer>(field(key), path(key));
    }

    // The same for fields that a line need not have: what is missing is `otherwise`.
    float number(const char* key, float otherwise) const { return has(key) ? number(key) : otherwise; }
    bool flag(const char* key, bool otherwise) const { return has(key) ? flag(key) : otherwise; }
    Vector2 vector(const char* key, Vector2 otherwise) const { return has(key) ? vector(key) : otherwise; }
    template <typename Integer>
    Integer integer(const char* key, Integer otherwise) const {
        return has(key) ? integer<Integer>(key) : otherwise;
    }

    std::string path(const char* key) const { return name.empty() ? key : name + "." + key; }

private:
    const nlohmann::json& object;
    std::string name;
};

} // namespace tarnwick
