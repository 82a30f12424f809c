#include "core/Log.h"

#include "core/LocationStack.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace tarnwick {

namespace {

constexpr const char* titleBar = "\n\n****************************************************************\n\n";

/// Characters of the longest number printed: a double has up to 309 digits before the point.
constexpr std::size_t longestNumber = 320;

} // namespace

Log::State Log::state;

constinit std::array<char, Log::outputCapacity> Log::outputBuffer = [] {
    std::array<char, outputCapacity> empty{};
    empty.fill('\n');
    return empty;
}();

void Log::print(const char* text) {
    TARNWICK_LOCATION("Log::print");
    if (text != nullptr) {
        write(text);
    }
}

void Log::print(std::string_view text) {
    TARNWICK_LOCATION("Log::print");
    write(text);
}

void Log::print(char character) {
    TARNWICK_LOCATION("Log::print");
    write({&character, 1});
}

void Log::print(std::uint32_t number) {
    TARNWICK_LOCATION("Log::print");
    std::array<char, longestNumber> text{};
    std::snprintf(text.data(), text.size(), "%1u", number);
    write(text.data());
}

void Log::print(std::int32_t number) {
    TARNWICK_LOCATION("Log::print");
    std::array<char, longestNumber> text{};
    std::snprintf(text.data(), text.size(), "%1i", number);
    write(text.data());
}

void Log::print(float number) {
    TARNWICK_LOCATION("Log::print");
    print(static_cast<double>(number));
}

void Log::print(double number) {
    TARNWICK_LOCATION("Log::print");
    std::array<char, longestNumber> text{};
    std::snprintf(text.data(), text.size(), "%1f", number);
    write(text.data());
}

void Log::print(bool value) {
    TARNWICK_LOCATION("Log::print");
    write(value ? "true" : "false");
}

void Log::printTitle(const char* text) {
    TARNWICK_LOCATION("Log::printTitle");
    print(titleBar);
    print(text);
    print(titleBar);
}

std::string Log::outputText() {
    TARNWICK_LOCATION("Log::outputText");
    std::string text;
    if (state.outputWrapped) {
        text.assign(outputBuffer.data() + state.outputWriteIndex, outputCapacity - state.outputWriteIndex);
    }
    text.append(outputBuffer.data(), state.outputWriteIndex);
    return text;
}

void Log::clear() {
    TARNWICK_LOCATION("Log::clear");
    outputBuffer.fill('\n');
    state.outputWriteIndex = 0;
    state.outputWrapped = false;
}

void Log::write(std::string_view text) {
    TARNWICK_LOCATION("Log::write");
    if (state.loggingEnabled) {
        writeToLog(text);
    }
    while (!text.empty()) {
        const std::size_t count = std::min(text.size(), outputCapacity - state.outputWriteIndex);
        std::memcpy(outputBuffer.data() + state.outputWriteIndex, text.data(), count);
        text.remove_prefix(count);
        state.outputWriteIndex += static_cast<std::uint32_t>(count);
        if (state.outputWriteIndex == outputCapacity) {
            state.outputWriteIndex = 0;
            state.outputWrapped = true;
        }
    }
}

// The file

void Log::enableLogging() {
    TARNWICK_LOCATION("Log::enableLogging");
    if (state.loggingEnabled) {
        return;
    }
    state.logFile.clear();
    state.logFile.rdbuf()->pubsetbuf(nullptr, 0); // unbuffered: after a crash the file holds all
    state.logFile.open(state.logFileName, std::ios::binary | std::ios::trunc);
    if (!state.logFile.good()) {
        state.logFile.close();
        print("\nUnable to write log to ");
        print(state.logFileName);
        return;
    }
    state.loggingEnabled = true;
    print("\nCommencing console log to ");
    print(state.logFileName);
}

void Log::disableLogging() {
    TARNWICK_LOCATION("Log::disableLogging");
    if (!state.loggingEnabled) {
        return;
    }
    state.logFile.close();
    state.loggingEnabled = false;
    print("\nLogging stopped. All output saved to ");
    print(state.logFileName);
}

void Log::writeToLog(std::string_view text) {
    TARNWICK_LOCATION("Log::writeToLog");
    state.logFile.write(text.data(), static_cast<std::streamsize>(text.size()));
    if (state.logFile.good()) {
        return;
    }
    state.logFile.close();
    state.loggingEnabled = false; // before the message, which must not come back here
    print("\nLogging to ");
    print(state.logFileName);
    print(" stopped because of a write error.");
}

} // namespace tarnwick
