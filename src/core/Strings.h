#pragma once

#include <list>
#include <string>
#include <string_view>

namespace tarnwick {

/// The text of a C string; for a null pointer a view of nothing, whose `data` is null.
constexpr std::string_view slText(const char* s) {
    return s != nullptr ? std::string_view(s) : std::string_view();
}
/// The part of `s` before its first NUL.
constexpr std::string_view slUpToNul(std::string_view s) {
    return s.substr(0, s.find('\0'));
}

/// Tests and conversions of text, of which only the part up to the first NUL counts. Each takes a C string as
/// well as a view or a `std::string`; a null pointer gives false, 0, or does nothing.

/// Not empty; digits, `-` at the first position only, `.` once at most. So a lone "-", a lone "." and "-."
/// pass; "+1", "1e5" and a number with a blank before it do not.
bool slStringIsNumeric(std::string_view s);
inline bool slStringIsNumeric(const char* s) {
    return slStringIsNumeric(slText(s));
}
/// Not empty; digits, `-` at the first position only. A lone "-" passes.
bool slStringIsInteger(std::string_view s);
inline bool slStringIsInteger(const char* s) {
    return slStringIsInteger(slText(s));
}
/// "TRUE" or "FALSE" in any mix of upper and lower case.
bool slStringIsBoolean(std::string_view s);
inline bool slStringIsBoolean(const char* s) {
    return slStringIsBoolean(slText(s));
}
/// The number, or 0.0 for text that is not numeric.
float slStringToFloat(std::string_view s);
inline float slStringToFloat(const char* s) {
    return slStringToFloat(slText(s));
}
/// The number, or 0 for text that is no integer. One outside 32 bits gives the nearest end of the range.
int slStringToInt(std::string_view s);
inline int slStringToInt(const char* s) {
    return slStringToInt(slText(s));
}
/// True only for "TRUE" in any mix of upper and lower case.
bool slStringToBool(std::string_view s);
inline bool slStringToBool(const char* s) {
    return slStringToBool(slText(s));
}
/// In place; the ASCII letters only.
void slStringUpper(char* s);
inline void slStringUpper(std::string& s) {
    slStringUpper(s.data());
}
void slStringLower(char* s);
inline void slStringLower(std::string& s) {
    slStringLower(s.data());
}
/// Appends the words of `s` to `words`. They are separated by runs of blanks, tabs, carriage returns, line
/// feeds, escapes (0x1B) and backspaces (0x08). There is no quoting.
void slSeparateArgs(std::string_view s, std::list<std::string>& words);
inline void slSeparateArgs(const char* s, std::list<std::string>& words) {
    slSeparateArgs(slText(s), words);
}

/// The six characters that separate words, here and in configuration files.
bool slIsSeparator(char c);

} // namespace tarnwick
