#pragma once

#include "core/Vector2.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwick {

/// Builds one line of JSON from front to back: values follow keys, commas set themselves.
///
/// Floats are written with nine significant digits, so that every finite 32-bit float survives the trip bit
/// for bit, the sign of zero included; doubles with seventeen. A number that is not finite is written as
/// a text: "nan", "inf" or "-inf".
class JsonLine {
public:
    JsonLine& openObject();
    JsonLine& closeObject();
    JsonLine& openArray();
    JsonLine& closeArray();
    /// Opens an object or array as the value of `name`.
    JsonLine& key(const char* name);

    JsonLine& number(float value);
    JsonLine& number(double value);
    JsonLine& number(std::uint32_t value);
    JsonLine& number(std::int32_t value);
    JsonLine& number(std::uint64_t value);
    JsonLine& flag(bool value);
    /// Text of any bytes: what is not plain ASCII is written as the code point of its byte.
    JsonLine& string(std::string_view value);
    /// As an array of x and y.
    JsonLine& vector(Vector2 value);
    JsonLine& vector(float x, float y);

    const std::string& text() const { return line; }

private:
    std::string line;
    bool needsComma = false;

    void separate();
    template <typename Value, typename... Format>
    JsonLine& append(Value value, Format... format);
    template <typename Value>
    JsonLine& real(Value value, int digits);
};

} // namespace tarnwick
