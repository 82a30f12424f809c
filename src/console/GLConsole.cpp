#include "console/GLConsole.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/Strings.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"

#include <algorithm>
#include <fstream>
#include <utility>

namespace tarnwick {

namespace {

constexpr std::uint32_t tabWidth = 8; ///< Columns between two tab stops.

std::string upperCased(std::string text) {
    TARNWICK_LOCATION("GLConsole::upperCased");
    slStringUpper(text);
    return text;
}

/// A line of the kernel's memory table ("MemTotal:  16384 kB") in bytes; 0 if it cannot be read.
std::uint64_t memoryTableEntry(const std::string& label) {
    TARNWICK_LOCATION("GLConsole::memoryTableEntry");
    std::ifstream table("/proc/meminfo");
    std::string word;
    while (table >> word) {
        std::uint64_t kibibytes = 0;
        if (word == label && table >> kibibytes) {
            return kibibytes * 1024;
        }
    }
    return 0;
}

} // namespace

GLConsole::State GLConsole::state;

constexpr CommandRow GLConsole::ownCommands[] = {
    {"Quit", GLWindow::close},  {"Clear", clear},         {"Commands", conCmdCommands},
    {"Version", conCmdVersion}, {"Memory", conCmdMemory}, {"LogConsole", conCmdLogConsole},
};

void GLConsole::initialise() {
    TARNWICK_LOCATION("GLConsole::initialise");
    clear();
    clearCommands();
    state.fontTexture.reset();
    loadConfiguration();
}

void GLConsole::shutdown() {
    TARNWICK_LOCATION("GLConsole::shutdown");
    state.fontTexture.reset();
    CommandRegistry::clear();
    state.commandHistory.fill({});
    state.historyIndex = -1;
    state.autoCompleteTerm.clear();
    disableLogging();
}

void GLConsole::clear() {
    TARNWICK_LOCATION("GLConsole::clear");
    state.input.clear();
    Log::clear();
}

void GLConsole::clearCommands() {
    TARNWICK_LOCATION("GLConsole::clearCommands");
    CommandRegistry::clear();
    addBasicGLConsoleCommands();
}

void GLConsole::loadConfiguration() {
    TARNWICK_LOCATION("GLConsole::loadConfiguration");
    const ConfigFile config("cfg//console.cfg");
    state.fontTexture = std::make_unique<GLTexture>(config.getVarAsString("fontTextureName"));
    state.fontSize = static_cast<std::uint32_t>(std::max(config.getVarAsInt("fontSize"), 1));
    state.outputBackground = {config.getVarAsFloat("output_background_r"),
                              config.getVarAsFloat("output_background_g"),
                              config.getVarAsFloat("output_background_b")};
    state.outputBackgroundAlpha = config.getVarAsFloat("output_background_a");
    state.outputText = {config.getVarAsFloat("output_text_r"), config.getVarAsFloat("output_text_g"),
                        config.getVarAsFloat("output_text_b")};
    state.inputBackground = {config.getVarAsFloat("input_background_r"),
                             config.getVarAsFloat("input_background_g"),
                             config.getVarAsFloat("input_background_b")};
    state.inputBorder = {config.getVarAsFloat("input_border_r"), config.getVarAsFloat("input_border_g"),
                         config.getVarAsFloat("input_border_b")};
    state.inputText = {config.getVarAsFloat("input_text_r"), config.getVarAsFloat("input_text_g"),
                       config.getVarAsFloat("input_text_b")};
    if (config.getVarAsBool("enableLogging")) {
        enableLogging();
    }
}

// Output and logging

std::uint32_t GLConsole::getOutputBufferDrawStart() {
    TARNWICK_LOCATION("GLConsole::getOutputBufferDrawStart");
    std::uint32_t index = Log::outputWriteIndex();
    std::uint32_t column = 0;
    std::uint32_t lines = 0;
    while (lines < state.rows) {
        index = index == 0 ? Log::outputCapacity - 1 : index - 1;
        const char character = Log::outputByte(index);
        // Kept: a tab is measured from the row's end, since the walk does not know where the row begins.
        const std::uint32_t step = character == '\t' ? tabWidth - column % tabWidth : 1;
        if (character == '\n' || column + step >= state.columns) {
            ++lines;
            column = 0;
        } else {
            column += step;
        }
    }
    return index + 1 == Log::outputCapacity ? 0 : index + 1;
}

// Commands

void GLConsole::setBasicCommands(std::vector<CommandTable> tables) {
    TARNWICK_LOCATION("GLConsole::setBasicCommands");
    state.basicCommands = std::move(tables);
}

void GLConsole::runCommand() {
    TARNWICK_LOCATION("GLConsole::runCommand");
    const std::string_view typed = state.input.text();
    const std::size_t start = typed.find_first_not_of(' ');
    if (start == std::string_view::npos) {
        return;
    }
    const std::size_t blank = std::min(typed.find(' ', start), typed.size());
    const std::string word = upperCased(std::string(typed.substr(start, blank - start)));
    const std::string argument(typed.substr(std::min(blank + 1, typed.size())));
    const auto found = commands().find(word);
    if (found == commands().end()) {
        print("\nUNKNOWN COMMAND. USE 'COMMANDS' FOR A LIST OF AVAILABLE COMMANDS.");
        return;
    }
    const ConsoleCommand command = found->second; // a copy: the command may remove itself while it runs
    command.call(argument);
}

// Editing

void GLConsole::runLine(const std::string& text) {
    TARNWICK_LOCATION("GLConsole::runLine");
    keyPressed(key::escape);
    state.input.set(text.c_str());
    keyPressed(key::enter);
}

void GLConsole::keyPressed(std::uint32_t key) {
    TARNWICK_LOCATION("GLConsole::keyPressed");
    switch (key) {
    case key::backspace:
        if (state.input.removeLeft()) {
            endOfRuns();
        }
        break;
    case key::tab:
        autoCompleteCommand();
        state.historyIndex = -1;
        break;
    case key::enter:
        enterLine();
        endOfRuns();
        break;
    case key::escape:
        state.input.clear();
        endOfRuns();
        break;
    case key::end:
        state.input.moveToEnd();
        break;
    case key::home:
        state.input.moveToStart();
        break;
    case key::left:
        state.input.moveLeft();
        break;
    case key::up:
        showHistoryEntry(state.historyIndex + 1);
        break;
    case key::right:
        state.input.moveRight();
        break;
    case key::down:
        showHistoryEntry(state.historyIndex - 1);
        break;
    case key::deleteKey:
        state.input.removeHere();
        endOfRuns();
        break;
    default:
        typeCharacter(key);
        break;
    }
}

/// The line was changed by hand: the next Tab completes anew, and the next Up shows the latest line.
void GLConsole::endOfRuns() {
    TARNWICK_LOCATION("GLConsole::endOfRuns");
    state.autoCompleteTerm.clear();
    state.historyIndex = -1;
}

void GLConsole::enterLine() {
    TARNWICK_LOCATION("GLConsole::enterLine");
    print("\n");
    Log::print(state.input.text());
    std::shift_right(state.commandHistory.begin(), state.commandHistory.end(), 1);
    state.commandHistory.front() = state.input.text();
    runCommand();
    state.input.clear(); // only now: the command may have run a frame loop in which keys were typed
}

void GLConsole::showHistoryEntry(std::int32_t index) {
    TARNWICK_LOCATION("GLConsole::showHistoryEntry");
    const auto entry = static_cast<std::size_t>(index); // a negative one lies far beyond the capacity
    if (entry >= historyCapacity || state.commandHistory[entry].empty()) {
        return;
    }
    state.historyIndex = index;
    state.input.set(state.commandHistory[entry]);
    state.autoCompleteTerm.clear();
}

void GLConsole::typeCharacter(std::uint32_t key) {
    TARNWICK_LOCATION("GLConsole::typeCharacter");
    const std::uint8_t character = GLWindow::keyboardKeyToAscii(key);
    if (character != 0 &&
        state.input.type(static_cast<char>(character), GLWindow::keyboardKeyToggled(key::insert))) {
        endOfRuns();
    }
}

// Completion

void GLConsole::autoCompleteCommand() {
    TARNWICK_LOCATION("GLConsole::autoCompleteCommand");
    if (state.autoCompleteTerm.empty()) {
        startCompletion();
        return;
    }
    const auto shown = commands().find(upperCased(std::string(state.input.text())));
    if (shown == commands().end()) {
        startCompletion();
        return;
    }
    const auto next = std::next(shown);
    if (next == commands().end() || !next->first.starts_with(state.autoCompleteTerm)) {
        state.input.set(state.autoCompleteTerm); // past the last match: round to the first
        startCompletion();
        return;
    }
    state.input.set(next->second.name);
}

void GLConsole::startCompletion() {
    TARNWICK_LOCATION("GLConsole::startCompletion");
    state.autoCompleteTerm = upperCased(std::string(state.input.text()));
    const auto match = commands().lower_bound(state.autoCompleteTerm);
    if (match != commands().end() && match->first.starts_with(state.autoCompleteTerm) &&
        match->first.size() <= InputLine::capacity) {
        state.input.set(match->second.name);
    }
    state.input.moveToEnd();
}

// Basic commands

void GLConsole::addBasicGLConsoleCommands() {
    TARNWICK_LOCATION("GLConsole::addBasicGLConsoleCommands");
    CommandRegistry::add(ownCommands);
    for (const CommandTable table : state.basicCommands) {
        CommandRegistry::add(table);
    }
}

void GLConsole::conCmdCommands(const std::string& term) {
    TARNWICK_LOCATION("GLConsole::conCmdCommands");
    printTitle("Command list: Use Commands < term > to filter listings");
    const std::string wanted = upperCased(term.substr(std::min(term.find_first_not_of(' '), term.size())));
    for (auto entry = commands().lower_bound(wanted);
         entry != commands().end() && entry->first.starts_with(wanted); ++entry) {
        print("\n");
        print(entry->second.name);
    }
    print("\n");
}

std::string GLConsole::conCmdVersion() {
    TARNWICK_LOCATION("GLConsole::conCmdVersion");
    return "1.00";
}

void GLConsole::conCmdMemory() {
    TARNWICK_LOCATION("GLConsole::conCmdMemory");
    const std::uint64_t total = memoryTableEntry("MemTotal:");
    const std::uint64_t available = memoryTableEntry("MemAvailable:");
    printTitle("Memory usage");
    print("\nSystem memory usage: \n");
    print("\nTotal : ");
    print(std::to_string(total)); // more than 32 bits hold
    print("\t bytes");
    print("\nFree  : ");
    print(std::to_string(available));
    print("\t bytes");
    print("\nUsed  : ");
    print(std::to_string(total - available));
    print("\t bytes");
    print("\n");
}

bool GLConsole::conCmdLogConsole(bool value, bool set) {
    TARNWICK_LOCATION("GLConsole::conCmdLogConsole");
    if (set && value) {
        enableLogging();
    } else if (set) {
        disableLogging();
    }
    return Log::loggingEnabled();
}

} // namespace tarnwick
