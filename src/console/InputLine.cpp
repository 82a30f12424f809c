#include "console/InputLine.h"

#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

std::string_view InputLine::text() const {
    TARNWICK_LOCATION("InputLine::text");
    const auto end = std::find(inputBuffer.begin(), inputBuffer.end(), '\0');
    return {inputBuffer.data(), static_cast<std::size_t>(end - inputBuffer.begin())};
}

void InputLine::set(std::string_view newText) {
    TARNWICK_LOCATION("InputLine::set");
    inputBuffer.fill('\0');
    newText.copy(inputBuffer.data(), capacity);
    moveToEnd();
}

void InputLine::clear() {
    TARNWICK_LOCATION("InputLine::clear");
    set({});
}

bool InputLine::type(char character, bool insert) {
    TARNWICK_LOCATION("InputLine::type");
    if (inputCursor >= capacity) {
        return false;
    }
    if (insert) {
        std::shift_right(inputBuffer.begin() + inputCursor, inputBuffer.end(), 1);
    }
    inputBuffer[inputCursor] = character;
    ++inputCursor;
    return true;
}

bool InputLine::removeLeft() {
    TARNWICK_LOCATION("InputLine::removeLeft");
    if (inputCursor == 0) {
        return false;
    }
    --inputCursor;
    closeGap(inputCursor);
    return true;
}

void InputLine::removeHere() {
    TARNWICK_LOCATION("InputLine::removeHere");
    if (inputCursor < capacity) {
        closeGap(inputCursor);
    }
}

void InputLine::moveLeft() {
    TARNWICK_LOCATION("InputLine::moveLeft");
    if (inputCursor > 0) {
        --inputCursor;
    }
}

void InputLine::moveRight() {
    TARNWICK_LOCATION("InputLine::moveRight");
    if (inputCursor < capacity && inputBuffer[inputCursor] != '\0') {
        ++inputCursor;
    }
}

void InputLine::moveToStart() {
    TARNWICK_LOCATION("InputLine::moveToStart");
    inputCursor = 0;
}

void InputLine::moveToEnd() {
    TARNWICK_LOCATION("InputLine::moveToEnd");
    inputCursor = static_cast<std::uint32_t>(text().size());
}

void InputLine::closeGap(std::uint32_t at) {
    TARNWICK_LOCATION("InputLine::closeGap");
    std::shift_left(inputBuffer.begin() + at, inputBuffer.end(), 1);
    inputBuffer.back() = '\0';
}

} // namespace tarnwick
