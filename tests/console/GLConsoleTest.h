#pragma once

#include "console/GLConsole.h"
#include "game/BasicCommands.h"
#include "support/LogTest.h"

#include <cstdint>
#include <string>

namespace tarnwick {

/// A console without commands, configuration and text, which knows the basic commands of others; and the view
/// of its inside that the tests need.
class GLConsoleTest : public LogTest {
protected:
    GLConsoleTest() { BasicCommands::handOver(); }

    static std::string line() { return std::string(GLConsole::state.input.text()); }
    static void setLine(const std::string& text) { GLConsole::state.input.set(text); }
    static std::uint32_t cursor() { return GLConsole::state.input.cursor(); }
    static std::int32_t historyIndex() { return GLConsole::state.historyIndex; }
    static std::string history(std::size_t entry) { return GLConsole::state.commandHistory[entry]; }
    static std::string completionTerm() { return GLConsole::state.autoCompleteTerm; }
    static std::uint32_t fontSize() { return GLConsole::state.fontSize; }
    using Rgb = GLConsole::Rgb;
    static Rgb outputTextColour() { return GLConsole::state.outputText; }
    static Rgb outputBackground() { return GLConsole::state.outputBackground; }
    static Rgb inputBackground() { return GLConsole::state.inputBackground; }
    static Rgb inputBorder() { return GLConsole::state.inputBorder; }
    static Rgb inputTextColour() { return GLConsole::state.inputText; }
    static float outputBackgroundAlpha() { return GLConsole::state.outputBackgroundAlpha; }

    static void add(const ConsoleCommand& command) { CommandRegistry::addCommandInternal(command); }
    static void setPicture(std::uint32_t columns, std::uint32_t rows) {
        GLConsole::state.columns = columns;
        GLConsole::state.rows = rows;
    }
    static std::uint32_t drawStart() { return GLConsole::getOutputBufferDrawStart(); }
    /// What a picture shows: the text from the draw start to the write index, round the ring.
    static std::string shownText() {
        std::string text;
        for (std::size_t i = drawStart(); i != Log::outputWriteIndex(); i = (i + 1) % Log::outputCapacity) {
            text += Log::outputByte(i);
        }
        return text;
    }
    static void press(std::uint32_t key) { GLConsole::keyPressed(key); }
    /// Presses the keys of letters, digits and blanks; letters come out in lower case.
    static void type(const std::string& text) {
        for (const char character : text) {
            const bool letter = character >= 'a' && character <= 'z';
            press(static_cast<std::uint32_t>(letter ? character - 'a' + 'A' : character));
        }
    }
};

} // namespace tarnwick
