#include "tools/launcher/NameText.h"

#include <cstdint>

namespace tarnwick {

namespace {

constexpr char noBreakSpace = '\xA0';

/// `text` in Latin-1; as it stands if it is no UTF-8 or has a character that Latin-1 lacks. Those it has take
/// two bytes at most in UTF-8, of which the first is C2 or C3.
std::string toLatin1(const std::string& text) {
    std::string latin;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<std::uint8_t>(text[at]);
        if (byte < 0x80) {
            latin += text[at];
            continue;
        }
        const auto next = static_cast<std::uint8_t>(at + 1 < text.size() ? text[at + 1] : 0);
        if ((byte != 0xC2 && byte != 0xC3) || (next & 0xC0U) != 0x80) {
            return text;
        }
        latin += static_cast<char>((byte & 0x03U) << 6U | (next & 0x3FU));
        ++at;
    }
    return latin;
}

} // namespace

std::string levelNameInGame(const std::string& fileName) {
    std::string name = toLatin1(fileName);
    for (char& c : name) {
        const auto byte = static_cast<std::uint8_t>(c);
        if (c == ' ') {
            c = noBreakSpace;
        } else if (c == '=' || c == '\\' || byte < 0x20 || byte == 0x7F) {
            c = '_';
        }
    }
    return name;
}

std::string upperName(std::string text) {
    for (char& c : text) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return text;
}

} // namespace tarnwick
