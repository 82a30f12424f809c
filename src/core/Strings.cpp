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
bool isNumber(const char* s, int pointsAllowed) {
    if (s == nullptr || *s == '\0') {
        return false;
    }
    for (const char* c = s; *c != '\0'; ++c) {
        if (isDigit(*c) || (*c == '-' && c == s)) {
            continue;
        }
        if (*c != '.' || pointsAllowed == 0) {
            return false;
        }
        --pointsAllowed;
    }
    return true;
}

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - letterDistance) : c;
}
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + letterDistance) : c;
}

std::string upperCopy(const char* s) {
    std::string copy(s);
    slStringUpper(copy);
    return copy;
}

} // namespace

bool slStringIsNumeric(const char* s) {
    return isNumber(s, 1);
}

bool slStringIsInteger(const char* s) {
    return isNumber(s, 0);
}

bool slStringIsBoolean(const char* s) {
    if (s == nullptr) {
        return false;
    }
    const std::string copy = upperCopy(s);
    return copy == "TRUE" || copy == "FALSE";
}

float slStringToFloat(const char* s) {
    return slStringIsNumeric(s) ? static_cast<float>(std::strtod(s, nullptr)) : 0.0f;
}

int slStringToInt(const char* s) {
    if (!slStringIsInteger(s)) {
        return 0;
    }
    const long value = std::strtol(s, nullptr, 10); // itself stops at the ends of its own range
    constexpr long smallest = std::numeric_limits<std::int32_t>::min();
    constexpr long largest = std::numeric_limits<std::int32_t>::max();
    return static_cast<int>(std::clamp(value, smallest, largest));
}

bool slStringToBool(const char* s) {
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

void slSeparateArgs(const char* s, std::list<std::string>& words) {
    if (s == nullptr) {
        return;
    }
    while (true) {
        while (slIsSeparator(*s)) {
            ++s;
        }
        if (*s == '\0') {
            return;
        }
        const char* end = s;
        while (*end != '\0' && !slIsSeparator(*end)) {
            ++end;
        }
        words.emplace_back(s, end);
        s = end;
    }
}

bool slStringIsNumeric(const std::string& s) {
    return slStringIsNumeric(s.c_str());
}
bool slStringIsInteger(const std::string& s) {
    return slStringIsInteger(s.c_str());
}
bool slStringIsBoolean(const std::string& s) {
    return slStringIsBoolean(s.c_str());
}
float slStringToFloat(const std::string& s) {
    return slStringToFloat(s.c_str());
}
int slStringToInt(const std::string& s) {
    return slStringToInt(s.c_str());
}
bool slStringToBool(const std::string& s) {
    return slStringToBool(s.c_str());
}
void slStringUpper(std::string& s) {
    slStringUpper(s.data());
}
void slStringLower(std::string& s) {
    slStringLower(s.data());
}
void slSeparateArgs(const std::string& s, std::list<std::string>& words) {
    slSeparateArgs(s.c_str(), words);
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
