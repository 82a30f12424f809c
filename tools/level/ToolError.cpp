#include "tools/level/ToolError.h"

#include <cstddef>

namespace tarnwick {

namespace {

constexpr std::size_t longestShown = 80; ///< Bytes of a name in a message.

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace

std::string inQuotes(std::string_view name) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::size_t shown = name.size();
    if (shown > longestShown) {
        shown = longestShown;
        while (shown > 0 && continuesCharacter(name[shown])) {
            --shown; // a character of several bytes stays whole
        }
    }
    std::string text = "\"";
    for (const char character : name.substr(0, shown)) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7F) {
            text += "\\x";
            text += digits[byte >> 4U];
            text += digits[byte & 0xFU];
        } else {
            text += character;
        }
    }
    return text + (shown < name.size() ? "...\"" : "\"");
}

} // namespace tarnwick
