#include "core/CommandRegistry.h"

#include "core/LocationStack.h"
#include "core/Strings.h"

#include <type_traits>

namespace tarnwick {

namespace {

/// What the type of a function says of its command.
struct Kind {
    ConsoleCommand::Type type = ConsoleCommand::Type::voidType;
    bool hasArgument = false;
    bool hasReturn = false;
};

template <typename Value>
constexpr ConsoleCommand::Type typeOf() {
    if constexpr (std::is_same_v<Value, std::int32_t>) {
        return ConsoleCommand::Type::integerType;
    } else if constexpr (std::is_same_v<Value, bool>) {
        return ConsoleCommand::Type::booleanType;
    } else if constexpr (std::is_same_v<Value, float>) {
        return ConsoleCommand::Type::floatType;
    } else {
        static_assert(std::is_same_v<Value, std::string>);
        return ConsoleCommand::Type::stringType;
    }
}

constexpr Kind kindOf(void (*)()) {
    return {};
}
template <typename Value>
constexpr Kind kindOf(void (*)(Value)) {
    return {typeOf<std::remove_cvref_t<Value>>(), true, false};
}
template <typename Value>
constexpr Kind kindOf(Value (*)()) {
    return {typeOf<Value>(), false, true};
}
template <typename Value>
constexpr Kind kindOf(Value (*)(Value, bool)) {
    return {typeOf<Value>(), true, true};
}
constexpr Kind kindOf(std::string (*)(const std::string&)) {
    return {ConsoleCommand::Type::stringType, true, true};
}
template <typename Value>
constexpr Kind kindOf(CommandVariable<Value>) {
    return {typeOf<Value>(), true, true};
}

template <typename Pointer>
constexpr bool isNull(Pointer function) {
    return function == nullptr;
}
template <typename Value>
constexpr bool isNull(CommandVariable<Value> plain) {
    return plain.variable == nullptr;
}

std::string keyOf(std::string name) {
    TARNWICK_LOCATION("CommandRegistry::keyOf");
    slStringUpper(name);
    return name;
}

} // namespace

CommandRegistry::State CommandRegistry::state;

void CommandRegistry::add(CommandTable table) {
    TARNWICK_LOCATION("CommandRegistry::add");
    for (const CommandRow& row : table) {
        addCommand(row.name, row.function);
    }
}

void CommandRegistry::remove(CommandTable table) {
    TARNWICK_LOCATION("CommandRegistry::remove");
    for (const CommandRow& row : table) {
        removeCommand(row.name);
    }
}

void CommandRegistry::addCommand(const char* name, const ConsoleCommand::Function& function) {
    TARNWICK_LOCATION("CommandRegistry::addCommand");
    const Kind kind = std::visit([](auto callable) { return kindOf(callable); }, function);
    addCommandInternal({name == nullptr ? "" : name, function, kind.type, kind.hasArgument, kind.hasReturn});
}

void CommandRegistry::addCommandInternal(const ConsoleCommand& command) {
    TARNWICK_LOCATION("CommandRegistry::addCommandInternal");
    const bool callable = std::visit([](auto function) { return !isNull(function); }, command.function);
    const bool nameable = !command.name.empty() && command.name.find(' ') == std::string::npos;
    if (callable && nameable && command.type <= ConsoleCommand::Type::stringType) {
        state.commands[keyOf(command.name)] = command;
    }
}

std::int32_t CommandRegistry::removeCommand(const char* name) {
    TARNWICK_LOCATION("CommandRegistry::removeCommand");
    if (name != nullptr) {
        state.commands.erase(keyOf(name));
    }
    return 0;
}

void CommandRegistry::clear() {
    TARNWICK_LOCATION("CommandRegistry::clear");
    state.commands.clear();
}

} // namespace tarnwick
