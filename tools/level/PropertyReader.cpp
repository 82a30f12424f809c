#include "tools/level/PropertyReader.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <variant>

namespace tarnwick {

namespace {

/// The bits of "0x" and eight hexadecimal digits; none for any other text.
std::optional<std::uint32_t> bitsIn(std::string_view text) {
    constexpr std::string_view prefix = "0x";
    constexpr std::size_t digits = 8;
    if (text.size() != prefix.size() + digits || !text.starts_with(prefix)) {
        return std::nullopt;
    }
    text.remove_prefix(prefix.size());
    std::uint32_t bits = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bits, 16);
    const bool whole = error == std::errc{} && end == text.data() + text.size();
    return whole ? std::optional(bits) : std::nullopt;
}

} // namespace

void refuse(const TiledObject& object, const std::string& reason) {
    throw ToolError(object.label() + ": " + reason);
}

std::string PropertyReader::text(std::string_view name, std::string_view otherwise) {
    const TiledProperty* const property = find(name);
    if (property == nullptr) {
        return std::string(otherwise);
    }
    if (const auto* const value = std::get_if<std::string>(&property->value)) {
        return *value;
    }
    refuse(object, "property " + inQuotes(name) + " must be a text");
}

std::optional<std::int64_t> PropertyReader::wholeNumber(std::string_view name) {
    const TiledProperty* const property = find(name);
    if (property == nullptr) {
        return std::nullopt;
    }
    if (const auto* const value = std::get_if<std::int64_t>(&property->value)) {
        return *value;
    }
    refuse(object, "property " + inQuotes(name) + " must be a whole number");
}

std::int32_t PropertyReader::number32(std::string_view name, std::int32_t otherwise) {
    const std::int64_t value = wholeNumber(name).value_or(otherwise);
    if (value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max()) {
        refuse(object, std::string(name) + " " + std::to_string(value) + " does not fit into 32 bits");
    }
    return static_cast<std::int32_t>(value);
}

float PropertyReader::decimal(std::string_view name, float otherwise) {
    const TiledProperty* const property = find(name);
    if (property == nullptr) {
        return otherwise;
    }
    if (const auto* const bits = std::get_if<std::string>(&property->value)) {
        if (const std::optional<std::uint32_t> value = bitsIn(*bits)) {
            return std::bit_cast<float>(*value);
        }
    }
    double value = 0.0;
    if (const auto* const whole = std::get_if<std::int64_t>(&property->value)) {
        value = static_cast<double>(*whole);
    } else if (const auto* const decimal = std::get_if<double>(&property->value)) {
        value = *decimal;
    } else {
        refuse(object, "property " + inQuotes(name) + " must be a number");
    }
    if (!(std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max()))) {
        refuse(object, "property " + inQuotes(name) + " is too large for a 32-bit float");
    }
    return static_cast<float>(value);
}

bool PropertyReader::flag(std::string_view name, bool otherwise) {
    const TiledProperty* const property = find(name);
    if (property == nullptr) {
        return otherwise;
    }
    if (const auto* const value = std::get_if<bool>(&property->value)) {
        return *value;
    }
    refuse(object, "property " + inQuotes(name) + " must be true or false");
}

std::uint8_t PropertyReader::flagByte(std::string_view name, bool otherwise) {
    if (!isNumber(name)) {
        return flag(name, otherwise) ? 1 : 0;
    }
    const std::int64_t value = wholeNumber(name).value_or(0);
    if (value < 0 || value > std::numeric_limits<std::uint8_t>::max()) {
        refuse(object, std::string(name) + " " + std::to_string(value) + " does not fit into one byte");
    }
    return static_cast<std::uint8_t>(value);
}

std::string PropertyReader::fileName(std::string_view name, std::string_view otherwise, std::size_t longest) {
    std::string value = text(name, otherwise);
    if (value.size() > longest) {
        refuse(object,
               "its " + std::string(name) + " name is longer than " + std::to_string(longest) + " bytes");
    }
    return value;
}

bool PropertyReader::isNumber(std::string_view name) {
    const TiledProperty* const property = find(name);
    return property != nullptr && std::holds_alternative<std::int64_t>(property->value);
}

void PropertyReader::warnOfOthers(std::vector<std::string>& warnings) const {
    for (const TiledProperty& property : object.properties) {
        if (!asked.contains(property.name)) {
            warnings.push_back(object.label() + ": unknown property " + inQuotes(property.name) +
                               " is left out");
        }
    }
}

const TiledProperty* PropertyReader::find(std::string_view name) {
    asked.emplace(name);
    const auto found = std::find_if(object.properties.begin(), object.properties.end(),
                                    [&](const TiledProperty& property) { return property.name == name; });
    return found == object.properties.end() ? nullptr : &*found;
}

} // namespace tarnwick
