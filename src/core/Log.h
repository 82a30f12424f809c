#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

namespace tarnwick {

/// The diagnostics channel of all modules: what a module has to tell is printed here, and the console shows
/// it.
///
/// Printed text is not line buffered and carries its own "\n" at its start; it goes round a fixed ring and,
/// on request, into a file. It stands under every other module, so that the lowest of them can tell what
/// failed.
class Log {
public:
    Log() = delete;

    static constexpr std::size_t outputCapacity = 65'535; ///< Bytes; the oldest are overwritten unnoticed.

    /// Prints a text; null prints nothing. The text goes to the file first, then to the ring. Never takes
    /// memory, so it may be called freely from anywhere.
    static void print(const char* text);
    static void print(std::string_view text);
    static void print(char character);
    static void print(std::uint32_t number);
    static void print(std::int32_t number);
    /// Six digits behind the point, as `printf` writes "%1f".
    static void print(float number);
    static void print(double number);
    /// "true" or "false".
    static void print(bool value);

    /// Prints the text between two bars of 64 asterisks, with an empty line around each.
    static void printTitle(const char* text);

    /// Everything printed since the last `clear`, or the newest `outputCapacity` bytes of it.
    static std::string outputText();
    /// Empties the ring; the file keeps what it has.
    static void clear();

    /// A byte of the ring; a newline where nothing was printed yet. `index` is below `outputCapacity`.
    static char outputByte(std::size_t index) { return outputBuffer[index]; }
    /// Next byte of the ring to write, behind the newest.
    static std::uint32_t outputWriteIndex() { return state.outputWriteIndex; }

    /// Starts mirroring what is printed to "ConsoleLog.txt", which is emptied; prints whether that worked.
    /// Does nothing while logging is on.
    static void enableLogging();
    static void disableLogging();
    static bool loggingEnabled() { return state.loggingEnabled; }

private:
    friend class ModuleReset;
    friend class LogTest;

    struct State {
        std::uint32_t outputWriteIndex = 0; ///< Next byte of the ring to write.
        bool outputWrapped = false;         ///< The ring was filled at least once since `clear`.
        std::ofstream logFile;              ///< Open while logging.
        bool loggingEnabled = false;
        std::string logFileName = "ConsoleLog.txt";
    };
    static State state;
    /// The ring; newlines where nothing was printed yet. Outside `State` for its size.
    static std::array<char, outputCapacity> outputBuffer;

    static void write(std::string_view text);
    static void writeToLog(std::string_view text);
};

} // namespace tarnwick
