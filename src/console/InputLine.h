#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tarnwick {

/// The line that is being typed at the console, and its cursor. A line may fill the buffer with no room for a
/// terminator.
class InputLine {
public:
    static constexpr std::size_t capacity = 256; ///< Bytes.

    /// The bytes in front of the first zero, or all of them; good until the next change.
    std::string_view text() const;
    /// Insertion point, 0 to the length of the text.
    std::uint32_t cursor() const { return inputCursor; }

    /// Takes at most `capacity` bytes of `newText`, which holds no zeros, and goes to their end.
    void set(std::string_view newText);
    void clear();

    /// Stores a character that is not 0 at the cursor, over the one that stands there or, with `insert`, in
    /// front of it; the last byte of a full line then falls out. False with the cursor behind the last byte.
    bool type(char character, bool insert);
    /// Removes the character left of the cursor; false if there is none.
    bool removeLeft();
    /// Removes the character at the cursor, if there is one.
    void removeHere();

    void moveLeft();
    void moveRight();
    void moveToStart();
    void moveToEnd();

private:
    void closeGap(std::uint32_t at);

    std::array<char, capacity> inputBuffer{}; ///< Filled up with zeros.
    std::uint32_t inputCursor = 0;
};

} // namespace tarnwick
