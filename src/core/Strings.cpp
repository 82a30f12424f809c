#include "core/Strings.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace tarnwick {

namespace {

constexpr char letterDistance = 'a' - 'A'; ///< 32: lower case lies this far above upper case.

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether `s` consists of digits, a `-` at the front, and at most `pointsAllowed` points.
bool isNumber(std::string_view s, int pointsAllowed) {
    const std::string_view text = slUpToNul(s);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isDigit(text[i]) || (text[i] == '-' && i == 0)) {
            continue;
        }
        if (text[i] != '.' || pointsAllowed == 0) {
            return false;
        }
        --pointsAllowed;
    }
    return !text.empty();
}

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - letterDistance) : c;
}
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + letterDistance) : c;
}

std::string upperCopy(std::string_view s) {
    std::string copy(slUpToNul(s));
    slStringUpper(copy);
    return copy;
}

} // namespace

bool slStringIsNumeric(std::string_view s) {
    return isNumber(s, 1);
}

bool slStringIsInteger(std::string_view s) {
    return isNumber(s, 0);
}

bool slStringIsBoolean(std::string_view s) {
    const std::string copy = upperCopy(s);
    return copy == "TRUE" || copy == "FALSE";
}

float slStringToFloat(std::string_view s) {
    return slStringIsNumeric(s) ? static_cast<float>(std::strtod(std::string(s).c_str(), nullptr)) : 0.0f;
}

int slStringToInt(std::string_view s) {
    if (!slStringIsInteger(s)) {
        return 0;
    }
    const long value =
        std::strtol(std::string(s).c_str(), nullptr, 10); // itself stops at the ends of its own range
    constexpr long smallest = std::numeric_limits<std::int32_t>::min();
    constexpr long largest = std::numeric_limits<std::int32_t>::max();
    return static_cast<int>(std::clamp(value, smallest, largest));
}

bool slStringToBool(std::string_view s) {
    return slStringIsBoolean(s) && upperCopy(s) == "TRUE";
}

void slStringUpper(char* s) {
    for (; s != nullptr && *s != '\0'; ++s) {
        *s = upper(*s);
    }
}

void slStringLower(char* s) {
    for (; s != nullptr && *s != '\0'; ++s) {
        *s = lower(*s);
    }
}

void slSeparateArgs(std::string_view s, std::list<std::string>& words) {
    const std::string_view text = slUpToNul(s);
    for (std::size_t begin = 0; begin < text.size();) {
        if (slIsSeparator(text[begin])) {
            ++begin;
            continue;
        }
        std::size_t end = begin;
        while (end < text.size() && !slIsSeparator(text[end])) {
            ++end;
        }
        words.emplace_back(text.substr(begin, end - begin));
        begin = end;
    }
}

bool slIsSeparator(char c) {
    switch (c) {
    case ' ':
    case '\r':
    case '\n':
    case '\t':
    case '\x1B':
    case '\b':
        return true;
    default:
        return false;
    }
}

} // namespace tarnwick
