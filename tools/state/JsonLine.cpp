#include "tools/state/JsonLine.h"

#include <charconv>
#include <cmath>

namespace tarnwick {

namespace {

constexpr int floatDigits = 9;   ///< Significant digits that tell any two 32-bit floats apart.
constexpr int doubleDigits = 17; ///< The same for 64 bits.

} // namespace

void JsonLine::separate() {
    if (needsComma) {
        line += ',';
    }
    needsComma = true;
}

JsonLine& JsonLine::openObject() {
    separate();
    line += '{';
    needsComma = false;
    return *this;
}

JsonLine& JsonLine::closeObject() {
    line += '}';
    needsComma = true;
    return *this;
}

JsonLine& JsonLine::openArray() {
    separate();
    line += '[';
    needsComma = false;
    return *this;
}

JsonLine& JsonLine::closeArray() {
    line += ']';
    needsComma = true;
    return *this;
}

JsonLine& JsonLine::key(const char* name) {
    separate();
    line += '"';
    line += name;
    line += "\":";
    needsComma = false;
    return *this;
}

template <typename Value, typename... Format>
JsonLine& JsonLine::append(Value value, Format... format) {
    separate();
    char digits[32];
    const std::to_chars_result result = std::to_chars(digits, digits + sizeof digits, value, format...);
    line.append(digits, result.ptr);
    return *this;
}

template <typename Value>
JsonLine& JsonLine::real(Value value, int digits) {
    if (std::isnan(value)) {
        return string("nan");
    }
    if (std::isinf(value)) {
        return string(value < 0 ? "-inf" : "inf");
    }
    return append(value, std::chars_format::general, digits);
}

JsonLine& JsonLine::number(float value) {
    return real(value, floatDigits);
}

JsonLine& JsonLine::number(double value) {
    return real(value, doubleDigits);
}

JsonLine& JsonLine::number(std::uint32_t value) {
    return append(value);
}
JsonLine& JsonLine::number(std::int32_t value) {
    return append(value);
}
JsonLine& JsonLine::number(std::uint64_t value) {
    return append(value);
}

JsonLine& JsonLine::flag(bool value) {
    separate();
    line += value ? "true" : "false";
    return *this;
}

JsonLine& JsonLine::string(std::string_view value) {
    constexpr std::string_view hexDigits = "0123456789abcdef";
    separate();
    line += '"';
    for (const char character : value) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < ' ' || byte > '~' || byte == '"' || byte == '\\') {
            line += "\\u00";
            line += hexDigits[byte >> 4];
            line += hexDigits[byte & 15];
        } else {
            line += character;
        }
    }
    line += '"';
    return *this;
}

JsonLine& JsonLine::vector(Vector2 value) {
    return vector(value.x, value.y);
}

JsonLine& JsonLine::vector(float x, float y) {
    return openArray().number(x).number(y).closeArray();
}

} // namespace tarnwick
