#pragma once

#include "console/InputLine.h"
#include "core/CommandRegistry.h"
#include "core/ConsoleCommand.h"
#include "core/GLTexture.h"
#include "core/Log.h"
#include "core/QuadArray.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tarnwick {

/// The in-game text console: shows what the modules print, and runs the commands that they registered.
///
/// `Game` owns the flag that says whether the console is open, and hands it the keys while it is.
///
/// A command may do anything: start a level and with it a frame loop of its own, remove itself, destroy the
/// window.
class GLConsole {
public:
    GLConsole() = delete;

    static constexpr std::size_t historyCapacity = 16; ///< Lines.

    /// Empties output and input, registers the basic commands alone and reads `cfg//console.cfg`.
    static void initialise();
    /// Drops all commands, the history and a completion run, and ends logging. What was printed stays.
    static void shutdown();

    /// Empties the output and the line being typed.
    static void clear();
    /// Empties the registry but for the basic commands.
    static void clearCommands();

    // What is printed goes to the log, which the console shows; see there.
    static void print(const char* text) { Log::print(text); }
    static void print(const std::string& text) { Log::print(text); }
    static void print(char character) { Log::print(character); }
    static void print(std::uint32_t number) { Log::print(number); }
    static void print(std::int32_t number) { Log::print(number); }
    static void print(float number) { Log::print(number); }
    static void print(double number) { Log::print(number); }
    static void print(bool value) { Log::print(value); }
    static void printTitle(const char* text) { Log::printTitle(text); }
    static void printTitle(const std::string& text) { Log::printTitle(text.c_str()); }
    static std::string outputText() { return Log::outputText(); }
    static void enableLogging() { Log::enableLogging(); }
    static void disableLogging() { Log::disableLogging(); }

    // Commands go to the registry; see there.
    static void addCommand(const char* name, const ConsoleCommand::Function& function) {
        CommandRegistry::addCommand(name, function);
    }
    static std::int32_t removeCommand(const char* name) { return CommandRegistry::removeCommand(name); }
    static const std::map<std::string, ConsoleCommand>& commands() { return CommandRegistry::commands(); }

    /// Hands over the basic commands of others: the console knows no module. Every `clearCommands` registers
    /// them with the console's own; so this comes before `initialise`.
    static void setBasicCommands(std::vector<CommandTable> tables);

    /// Executes the line in the input buffer and leaves the buffer alone. Bad input ends in a printed usage
    /// line.
    static void runCommand();

    /// Does what typing `text` into an empty line and pressing Enter does: it is printed, kept in the history
    /// and executed. What is beyond `InputLine::capacity` bytes is refused, as when typing.
    static void runLine(const std::string& text);

    /// One key press, by virtual key number: edits the line, completes it, steps through the history, or runs
    /// it.
    static void keyPressed(std::uint32_t key);

    /// Draws the console over the whole client area: the newest rows of the output, and below them the line
    /// being typed with its cursor, which is flat while typing inserts and high while it overwrites. Leaves
    /// the GL as it was. Without a character sheet only the panels are drawn.
    static void draw();
    /// The character sheet; the default picture if there is none.
    static GLTexture getFontTexture();
    static void setFontTexture(const GLTexture& texture);

private:
    friend class ModuleReset;
    friend class GLConsoleTest;

    using Rgb = std::array<float, 3>; ///< Red, green, blue, 0 to 1.

    struct State {
        InputLine input;                                         ///< The line being typed.
        std::array<std::string, historyCapacity> commandHistory; ///< Entry 0 is the latest line.
        std::int32_t historyIndex = -1;                          ///< Entry now shown; -1: none.
        /// What was typed before the first Tab of a completion run, upper-cased; empty: no run is on.
        std::string autoCompleteTerm;
        std::vector<CommandTable> basicCommands; ///< Those that others handed over.

        std::uint32_t fontSize = 8;             ///< Width and height of a character cell, pixels; at least 1.
        std::uint32_t columns = 80;             ///< Characters a row, at least 80.
        std::uint32_t rows = 16;                ///< Rows of output, at least 16.
        std::unique_ptr<GLTexture> fontTexture; ///< The character sheet: 16 by 16 cells. May be null.
        QuadArray textQuads;                    ///< Of the text being drawn; kept for its memory.
        Rgb outputBackground{};
        float outputBackgroundAlpha = 0.0f; ///< 0 to 1.
        Rgb outputText{};
        Rgb inputBackground{};
        Rgb inputBorder{};
        Rgb inputText{};
    };
    static State state;

    static std::uint32_t getOutputBufferDrawStart();
    static void loadConfiguration();

    static void fitToWindow();
    static void drawBackground();
    static void drawOutputText();
    static void advance(std::uint8_t character, std::uint32_t& column, std::uint32_t& row);
    static void drawInputLine();
    static void drawText();

    static void addBasicGLConsoleCommands();

    static void endOfRuns();
    static void enterLine();
    static void showHistoryEntry(std::int32_t index);
    static void typeCharacter(std::uint32_t key);
    static void autoCompleteCommand();
    static void startCompletion();

    static const CommandRow ownCommands[];
    static void conCmdCommands(const std::string& term);
    static std::string conCmdVersion();
    static void conCmdMemory();
    static bool conCmdLogConsole(bool value, bool set);
};

} // namespace tarnwick
