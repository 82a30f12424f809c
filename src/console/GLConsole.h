#pragma once

#include "console/ConsoleCommand.h"
#include "console/InputLine.h"
#include "core/Log.h"
#include "graphics/GLTexture.h"
#include "graphics/QuadArray.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace tarnwick {

/// The in-game text console: shows what the modules print and is the registry of typed commands.
///
/// Every module registers its commands in its `initialise` and removes them in its `shutdown`. `Game` owns
/// the flag that says whether the console is open, and hands it the keys while it is.
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

    /// Registers a command. The function's type says what the command is: a plain action; a setter (argument
    /// only); a getter (value only); or a get-or-set, called with `set` false and a zero value to read and
    /// with `set` true to write, which gives back the value that now holds. A get-or-set for strings has no
    /// flag: an empty text reads.
    ///
    /// A command of the same name, in any case, is replaced. A null or empty name, a name with a blank in it
    /// and a null function are ignored.
    static void addCommand(const char* name, void (*function)());
    static void addCommand(const char* name, void (*function)(std::int32_t));
    static void addCommand(const char* name, void (*function)(bool));
    static void addCommand(const char* name, void (*function)(float));
    static void addCommand(const char* name, void (*function)(const std::string&));
    static void addCommand(const char* name, std::int32_t (*function)());
    static void addCommand(const char* name, bool (*function)());
    static void addCommand(const char* name, float (*function)());
    static void addCommand(const char* name, std::string (*function)());
    static void addCommand(const char* name, std::int32_t (*function)(std::int32_t value, bool set));
    static void addCommand(const char* name, bool (*function)(bool value, bool set));
    static void addCommand(const char* name, float (*function)(float value, bool set));
    static void addCommand(const char* name, std::string (*function)(const std::string& value));

    /// Removes a command, in any case; null and a name that is not there are ignored. Always gives 0.
    static std::int32_t removeCommand(const char* name);

    /// The registry: upper-cased name to command, in the order in which they are listed and completed.
    static const std::map<std::string, ConsoleCommand>& commands() { return state.commands; }

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
        std::map<std::string, ConsoleCommand> commands; ///< By upper-cased name.

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
    static void addCommandInternal(const ConsoleCommand& command);

    static void endOfRuns();
    static void enterLine();
    static void showHistoryEntry(std::int32_t index);
    static void typeCharacter(std::uint32_t key);
    static void autoCompleteCommand();
    static void startCompletion();

    static void conCmdCommands(const std::string& term);
    static std::string conCmdVersion();
    static void conCmdMemory();
    static bool conCmdLogConsole(bool value, bool set);
    static void conCmdMap(const std::string& levelFile);

    static void addGraphicsCommands();
    static bool conCmdFullscreen(bool value, bool set);
    static void conCmdRenderer();
    static void conCmdTextureList();
    static void conCmdTextureMemory();
    static void conCmdTextureReload();
    static void conCmdExtensions();
    static void conCmdIsExtension(const std::string& name);
    static std::int32_t conCmdAntiAliasingSamples(std::int32_t value, bool set);
    static std::int32_t conCmdAnisotropicFilteringLevel(std::int32_t value, bool set);
    static bool conCmdVsyncEnable(bool value, bool set);
    static std::int32_t conCmdTextureQuality(std::int32_t value, bool set);
};

} // namespace tarnwick
