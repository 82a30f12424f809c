#pragma once

#include <cstdint>
#include <string>

struct SDL_Keysym;

namespace tarnwick {

/// The key numbers that the whole system uses (Win32 virtual key codes), as far as code names them.
namespace key {
constexpr std::uint32_t backspace = 8;
constexpr std::uint32_t tab = 9;
constexpr std::uint32_t enter = 13;
constexpr std::uint32_t pause = 0x13;
constexpr std::uint32_t escape = 0x1B;
constexpr std::uint32_t space = 0x20;
constexpr std::uint32_t pageUp = 0x21;
constexpr std::uint32_t pageDown = 0x22;
constexpr std::uint32_t end = 0x23;
constexpr std::uint32_t home = 0x24;
constexpr std::uint32_t left = 0x25;
constexpr std::uint32_t up = 0x26;
constexpr std::uint32_t right = 0x27;
constexpr std::uint32_t down = 0x28;
constexpr std::uint32_t insert = 0x2D;
constexpr std::uint32_t deleteKey = 0x2E;
constexpr std::uint32_t padA = 0xC3; ///< Buttons of a game pad, by the names on the commonest one.
constexpr std::uint32_t padB = 0xC4;
constexpr std::uint32_t padRightShoulder = 0xC7;
constexpr std::uint32_t padLeftShoulder = 0xC8;
constexpr std::uint32_t padUp = 0xCB; ///< Of its cross.
constexpr std::uint32_t padDown = 0xCC;
constexpr std::uint32_t padLeft = 0xCD;
constexpr std::uint32_t padRight = 0xCE;
constexpr std::uint32_t padMenu = 0xCF;
constexpr std::uint32_t console = 0xDF;  ///< The key left of 1, in any layout.
constexpr std::uint32_t altEnter = 0xE8; ///< Enter with Alt held, where it has a meaning.
} // namespace key

/// Translates SDL's keys into the system's key numbers.
class KeyMap {
public:
    KeyMap() = delete;

    /// The key number of a key event, 0 for a key that the system does not know.
    ///
    /// A key whose keycode is a letter a to z is that letter's capital, so layouts that move letters are
    /// right; everything else goes by its place on the keyboard, so digits, the console key and other scripts
    /// are too.
    static std::uint32_t keyNumber(const SDL_Keysym& keysym);

    /// The key number of the key that SDL calls `name`, in any case, with NumLock on; 0 if there is none.
    static std::uint32_t numberOf(const std::string& name);

    /// The character that a key types without text input (Backspace 8, Tab 9, Enter 13, Escape 27, Ctrl and a
    /// letter 1 to 26), else 0.
    static std::uint8_t controlCharacter(std::uint32_t number, bool controlHeld);

    /// What the key types on a US keyboard: letters, digits and space; else 0. For keys whose text the
    /// keyboard has not told yet.
    static std::uint8_t usCharacter(std::uint32_t number, bool shiftHeld);
};

} // namespace tarnwick
