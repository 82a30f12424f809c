#pragma once

#include "core/ConsoleCommand.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>

namespace tarnwick {

/// One row of a module's table of commands.
struct CommandRow {
    const char* name; ///< As displayed; without blanks.
    ConsoleCommand::Function function;
};

/// A module's commands: a `constexpr` array of rows that lives as long as the program.
using CommandTable = std::span<const CommandRow>;

/// The registry of typed commands, which the console lists, completes and runs.
///
/// A module has one table of its commands, adds it in its `initialise` and removes it in its `shutdown`. The
/// registry stands under all modules, so that the lowest can have commands and knows nothing of the console.
class CommandRegistry {
public:
    CommandRegistry() = delete;

    static void add(CommandTable table);
    static void remove(CommandTable table);

    /// Registers one command; its kind follows from the function's type. One of the same name, in any case,
    /// is replaced. A null or empty name, a name with a blank in it and a null function are ignored.
    static void addCommand(const char* name, const ConsoleCommand::Function& function);
    /// The end of every registration; also ignores an unknown type.
    static void addCommandInternal(const ConsoleCommand& command);
    /// Removes a command, in any case; null and a name that is not there are ignored. Always gives 0.
    static std::int32_t removeCommand(const char* name);
    static void clear();

    /// Upper-cased name to command, in the order in which they are listed and completed.
    static const std::map<std::string, ConsoleCommand>& commands() { return state.commands; }

private:
    friend class ModuleReset;

    struct State {
        std::map<std::string, ConsoleCommand> commands; ///< By upper-cased name.
    };
    static State state;
};

} // namespace tarnwick
