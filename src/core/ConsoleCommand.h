#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace tarnwick {

/// A value that a command reads and sets as it stands, most often a flag.
template <typename Value>
struct CommandVariable {
    Value* variable = nullptr;
    const char* location =
        nullptr; ///< What a crash report calls the command: "Class::conCmdName". A literal.
};
template <typename Value>
CommandVariable(Value*, const char*) -> CommandVariable<Value>;

/// One entry of the registry of commands: a function, and how a typed line calls it.
///
/// `type`, `hasArgument` and `hasReturn` say what the function is; `CommandRegistry::addCommand` sets them
/// from the function's signature, so that they always fit the alternative that `function` holds.
struct ConsoleCommand {
    enum class Type : std::uint32_t {
        voidType = 0,
        integerType = 1,
        booleanType = 2,
        floatType = 3,
        stringType = 4,
    };
    using enum Type;

    /// A plain action; a setter (argument only); a getter (value only); or a get-or-set, called with `set`
    /// false and a zero value to read and with `set` true to write, which gives back the value that now
    /// holds. A get-or-set for strings has no flag: an empty text reads. A variable is a get-or-set without a
    /// body.
    using Function = std::variant<void (*)(),
                                  void (*)(std::int32_t),
                                  void (*)(bool),
                                  void (*)(float),
                                  void (*)(const std::string&),
                                  std::int32_t (*)(),
                                  bool (*)(),
                                  float (*)(),
                                  std::string (*)(),
                                  std::int32_t (*)(std::int32_t value, bool set),
                                  bool (*)(bool value, bool set),
                                  float (*)(float value, bool set),
                                  std::string (*)(const std::string& value),
                                  CommandVariable<std::int32_t>,
                                  CommandVariable<bool>,
                                  CommandVariable<float>>;

    std::string name; ///< As registered, mixed case: this is what is displayed.
    Function function;
    Type type = voidType;
    bool hasArgument = false; ///< The function takes a value.
    bool hasReturn = false;   ///< The function gives a value.

    /// Calls the function with what was typed behind the command's name and prints the answer, or how the
    /// command is used if the text does not fit. The command must outlive the call: a function may remove
    /// itself from the registry, so the caller holds a copy.
    void call(const std::string& argument) const;
};

} // namespace tarnwick
