#include "core/ConsoleCommand.h"

#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/Strings.h"

#include <cassert>
#include <list>
#include <string_view>

namespace tarnwick {

namespace {

constexpr const char* badKind = "\nBAD COMMAND. NON VOID FUNCTION WITH NO RETURN OR ARGUMENT !";
constexpr const char* badType = "\nBAD COMMAND. FUNCTION RETURN / ARGUMENT TYPES ARE NOT KNOWN !";
constexpr const char* nothingUsage = " < nothing >";

/// What a typed word must look like for one kind of value, and the usage texts that say so.
template <typename Value>
struct WordSyntax {
    bool (*test)(std::string_view);
    Value (*convert)(std::string_view);
    const char* setterUsage;
    const char* getOrSetUsage;
};

constexpr WordSyntax<std::int32_t> integerSyntax{slStringIsInteger, slStringToInt, " < integer number >",
                                                 " < integer number OR nothing >"};
constexpr WordSyntax<bool> booleanSyntax{slStringIsBoolean, slStringToBool, " < true OR false >",
                                         " < true OR false OR nothing >"};
constexpr WordSyntax<float> floatSyntax{slStringIsNumeric, slStringToFloat, " < number >",
                                        " < number OR nothing >"};

/// The function as what `type`, `hasArgument` and `hasReturn` call for.
template <typename Function>
Function functionOf(const ConsoleCommand& command) {
    TARNWICK_LOCATION("ConsoleCommand::functionOf");
    const Function* const function = std::get_if<Function>(&command.function);
    assert(function != nullptr); // the registry sets the three fields from the function's own type
    return *function;
}

void printUsage(const ConsoleCommand& command, const char* usage) {
    TARNWICK_LOCATION("ConsoleCommand::printUsage");
    Log::print("\nUSAGE: ");
    Log::print(command.name);
    Log::print(usage);
}

/// `verb` is " is " for a value that was read and " is now " for one that was set.
template <typename Value>
void printValue(const ConsoleCommand& command, const char* verb, const Value& value) {
    TARNWICK_LOCATION("ConsoleCommand::printValue");
    Log::print("\n");
    Log::print(command.name);
    Log::print(verb);
    Log::print(value);
}

void callVoidFunction(const ConsoleCommand& command, const std::list<std::string>& words) {
    TARNWICK_LOCATION("ConsoleCommand::callVoidFunction");
    if (!words.empty()) {
        printUsage(command, nothingUsage);
        return;
    }
    functionOf<void (*)()>(command)();
}

/// Reads or sets: through the command's function, or the variable itself.
template <typename Value>
Value callGetOrSet(const ConsoleCommand& command, Value value, bool set) {
    TARNWICK_LOCATION("ConsoleCommand::callGetOrSet");
    const auto* const plain = std::get_if<CommandVariable<Value>>(&command.function);
    if (plain == nullptr) {
        return functionOf<Value (*)(Value, bool)>(command)(value, set);
    }
    const LocationScope ownLocation(plain->location);
    if (set) {
        *plain->variable = value;
    }
    return *plain->variable;
}

/// Integer, boolean and float commands differ in their words alone.
template <typename Value>
void callValueFunction(const ConsoleCommand& command,
                       const std::list<std::string>& words,
                       const WordSyntax<Value>& syntax) {
    TARNWICK_LOCATION("ConsoleCommand::callValueFunction");
    const bool oneGoodWord = words.size() == 1 && syntax.test(words.front());
    if (!command.hasArgument && !command.hasReturn) {
        Log::print(badKind);
    } else if (!command.hasArgument) {
        if (words.empty()) {
            printValue(command, " is ", functionOf<Value (*)()>(command)());
        } else {
            printUsage(command, nothingUsage);
        }
    } else if (!command.hasReturn) {
        if (oneGoodWord) {
            functionOf<void (*)(Value)>(command)(syntax.convert(words.front()));
        } else {
            printUsage(command, syntax.setterUsage);
        }
    } else if (words.empty()) {
        printValue(command, " is ", callGetOrSet(command, Value{}, false));
    } else if (oneGoodWord) {
        printValue(command, " is now ", callGetOrSet(command, syntax.convert(words.front()), true));
    } else {
        printUsage(command, syntax.getOrSetUsage);
    }
}

/// Words are not counted: the function takes the text as it was typed.
void callStringFunction(const ConsoleCommand& command, const std::string& argument) {
    TARNWICK_LOCATION("ConsoleCommand::callStringFunction");
    if (!command.hasArgument && !command.hasReturn) {
        Log::print(badKind);
    } else if (!command.hasArgument) {
        if (argument.empty()) {
            printValue(command, " is ", functionOf<std::string (*)()>(command)());
        } else {
            printUsage(command, nothingUsage);
        }
    } else if (!command.hasReturn) {
        functionOf<void (*)(const std::string&)>(command)(argument);
    } else {
        const std::string value = functionOf<std::string (*)(const std::string&)>(command)(argument);
        printValue(command, argument.empty() ? " is " : " is now ", value);
    }
}

} // namespace

void ConsoleCommand::call(const std::string& argument) const {
    TARNWICK_LOCATION("ConsoleCommand::call");
    std::list<std::string> words;
    slSeparateArgs(argument, words);
    switch (type) {
    case voidType:
        callVoidFunction(*this, words);
        break;
    case integerType:
        callValueFunction(*this, words, integerSyntax);
        break;
    case booleanType:
        callValueFunction(*this, words, booleanSyntax);
        break;
    case floatType:
        callValueFunction(*this, words, floatSyntax);
        break;
    case stringType:
        callStringFunction(*this, argument);
        break;
    default:
        Log::print(badType);
        break;
    }
}

} // namespace tarnwick
