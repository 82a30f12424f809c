#pragma once

#include <list>
#include <string>

namespace tarnwick {

/// Tests and conversions of text. Each takes a C string or a `std::string`, of which only the text up to the
/// first NUL counts. A null pointer gives false, 0, or does nothing.

/// Not empty; digits, `-` at the first position only, `.` once at most. So a lone "-", a lone "." and "-."
/// pass;
/// "+1", "1e5" and a number with a blank before it do not.
bool slStringIsNumeric(const char* s);
/// Not empty; digits, `-` at the first position only. A lone "-" passes.
bool slStringIsInteger(const char* s);
/// "TRUE" or "FALSE" in any mix of upper and lower case.
bool slStringIsBoolean(const char* s);
/// The number, or 0.0 for text that is not numeric.
float slStringToFloat(const char* s);
/// The number, or 0 for text that is no integer. One outside 32 bits gives the nearest end of the range.
int slStringToInt(const char* s);
/// True only for "TRUE" in any mix of upper and lower case.
bool slStringToBool(const char* s);
/// In place; the ASCII letters only.
void slStringUpper(char* s);
void slStringLower(char* s);
/// Appends the words of `s` to `words`. They are separated by runs of blanks, tabs, carriage returns, line
/// feeds, escapes (0x1B) and backspaces (0x08). There is no quoting.
void slSeparateArgs(const char* s, std::list<std::string>& words);

bool slStringIsNumeric(const std::string& s);
bool slStringIsInteger(const std::string& s);
bool slStringIsBoolean(const std::string& s);
float slStringToFloat(const std::string& s);
int slStringToInt(const std::string& s);
bool slStringToBool(const std::string& s);
void slStringUpper(std::string& s);
void slStringLower(std::string& s);
void slSeparateArgs(const std::string& s, std::list<std::string>& words);

/// The six characters that separate words, here and in configuration files.
bool slIsSeparator(char c);

} // namespace tarnwick
