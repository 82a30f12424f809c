#include "console/GLConsole.h"
#include "core/ConfigFile.h"
#include "core/Strings.h"
#include "docs/Document.h"
#include "docs/EveryModule.h"
#include "support/ConsoleAnswer.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <list>
#include <map>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace tarnwick {

namespace {

/// A row of `docs/commands.md`.
struct Row {
    explicit Row(const DocumentRow& row)
        : name(row.cells.at(0))
        , kind(row.cells.at(1))
        , argument(row.cells.at(2))
        , effect(row.cells.at(3))
        , start(row.cells.at(4)) {}

    bool is(const char* ending) const { return kind.ends_with(ending); }

    std::string name;
    std::string kind;
    std::string argument;
    std::string effect;
    std::string start;
};

std::vector<Row> documentedCommands() {
    std::vector<Row> rows;
    for (const DocumentRow& row : documentRows("docs/commands.md")) {
        rows.emplace_back(row);
    }
    return rows;
}

/// The kind as `docs/commands.md` calls it.
std::string kindOf(const ConsoleCommand& command) {
    static constexpr const char* types[] = {"", "integer ", "boolean ", "float ", "string "};
    if (command.type == ConsoleCommand::voidType) {
        return "action";
    }
    const char* const use = !command.hasReturn ? "setter" : command.hasArgument ? "get-or-set" : "getter";
    return std::string(types[static_cast<std::size_t>(command.type)]) + use;
}

/// One line for each command: a difference is then shown by itself.
std::string listOf(const std::multimap<std::string, std::string>& commands) {
    std::string list;
    for (const auto& [name, kind] : commands) {
        list += name + ": " + kind + "\n";
    }
    return list;
}

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> wordsOf(const std::string& text) {
    std::list<std::string> words;
    slSeparateArgs(text, words);
    return {words.begin(), words.end()};
}

/// The names in the places "< name : kind >" of a usage text; a place that takes a text, or has no name,
/// gives an empty one. Nothing if the text has no places.
std::vector<std::string> placesIn(const std::string& usage) {
    std::vector<std::string> names;
    for (std::size_t open = usage.find('<'); open != std::string::npos; open = usage.find('<', open + 1)) {
        const std::string place = usage.substr(open + 1, usage.find('>', open) - open - 1);
        const std::size_t colon = place.find(':');
        const std::string kind = colon == std::string::npos ? "" : trimmed(place.substr(colon + 1));
        names.push_back(
            kind == "" || kind == "string" || kind == "fileName" ? "" : trimmed(place.substr(0, colon)));
    }
    return names;
}

/// Whether the document may call a place of a usage so: by its name, with `_` for a blank, or its last word.
bool names(const std::string& word, const std::string& place) {
    std::string joined = place;
    std::replace(joined.begin(), joined.end(), ' ', '_');
    return place.empty() || word == joined || place.ends_with(" " + word);
}

/// What a getter or a get-or-set prints behind "NAME is ".
std::string valueOf(const std::string& name) {
    const std::string answer = answerTo(name);
    const std::string head = "\n" + name + " is ";
    return answer.starts_with(head) ? answer.substr(head.size()) : "no value:" + answer;
}

/// What holds after a get-or-set was given a value.
std::string valueAfter(const std::string& name, const std::string& value) {
    answerTo(name + " " + value);
    return valueOf(name);
}

/// A number as commands of a kind print it.
std::string printed(const Row& row, float number) {
    return row.is("float get-or-set") ? std::to_string(number) : std::to_string(static_cast<int>(number));
}

/// The lowest and the highest value of a range "1 to 2"; a range that ends in words has one bound.
std::vector<float> boundsIn(const std::string& range) {
    const std::vector<std::string> words = wordsOf(range);
    std::vector<float> bounds;
    if (words.size() > 2 && slStringIsNumeric(words[0]) && words[1] == "to") {
        bounds.push_back(slStringToFloat(words[0]));
        const std::string highest = words[2].substr(0, words[2].find(','));
        if (slStringIsNumeric(highest)) {
            bounds.push_back(slStringToFloat(highest));
        }
    }
    return bounds;
}

/// The start value that a cell names: itself, or the value of a key in "`key` of `file`" or in "file", where
/// the key is called like the command.
std::string startIn(const Row& row) {
    const std::size_t fileStart = row.start.find("cfg/");
    if (fileStart == std::string::npos) {
        return row.start;
    }
    const std::string key = fileStart == 0 ? row.name : row.start.substr(0, row.start.find('`'));
    const ConfigFile file(projectPath("data/" + row.start.substr(fileStart)).c_str());
    EXPECT_TRUE(file.variableExists(key)) << row.name << ": " << row.start;
    if (row.is("boolean get-or-set")) {
        return file.getVarAsBool(key) ? "true" : "false";
    }
    return std::to_string(file.getVarAsFloat(key));
}

/// What the program itself sets when it opens its window, or a level decides, or nothing says.
bool startCanBeRead(const Row& row) {
    static const std::set<std::string> setWithTheWindow = {"AnisotropicFilteringLevel", "AntiAliasingSamples",
                                                           "Fullscreen", "VsyncEnable"};
    return (row.is("getter") || row.is("get-or-set")) && !row.start.empty() &&
           row.start != "those of the level" && !setWithTheWindow.contains(row.name);
}

std::string fileText(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

class CommandsDocumentTest : public ModuleTest {
protected:
    /// Starts every module on the values of the data.
    void start() const {
        folder.write("cfg/water.cfg", fileText(projectPath("data/cfg/water.cfg")));
        folder.write("cfg/console.cfg", fileText(projectPath("data/cfg/console.cfg")));
        startEveryModule(folder);
    }

    const DataFolder folder; ///< Working directory of the modules.
};

TEST_F(CommandsDocumentTest, EveryCommandAndNothingElseIsDocumentedWithItsKind) {
    std::multimap<std::string, std::string> documented; // also holds what stands there twice
    for (const DocumentRow& row : documentRows("docs/commands.md")) {
        EXPECT_EQ(row.cells.size(), 5u) << row.cells[0];
        documented.emplace(row.cells[0], row.cells[1]);
    }
    std::multimap<std::string, std::string> registered;

    startEveryModule(folder);
    for (const auto& [key, command] : GLConsole::commands()) {
        registered.emplace(command.name, kindOf(command));
    }

    EXPECT_EQ(listOf(documented), listOf(registered));
}

TEST_F(CommandsDocumentTest, CommandsStandInTheOrderInWhichTheyAreListed) {
    std::map<std::string, std::string> last;

    for (const DocumentRow& row : documentRows("docs/commands.md")) {
        EXPECT_LT(last[row.heading], row.cells[0]);
        last[row.heading] = row.cells[0];
    }
}

TEST_F(CommandsDocumentTest, EveryCommandHasAnEffectInWholeSentences) {
    for (const Row& row : documentedCommands()) {
        EXPECT_TRUE(row.effect.size() > 1 && row.effect.ends_with('.')) << row.name << ": " << row.effect;
    }
}

TEST_F(CommandsDocumentTest, AnArgumentStandsWhereTheCommandTakesOneThatItsKindDoesNotTell) {
    for (const Row& row : documentedCommands()) {
        if (row.kind == "action" || row.is("getter") || row.is("boolean get-or-set")) {
            EXPECT_EQ(row.argument, "") << row.name;
        } else if (row.is("string setter")) {
            EXPECT_NE(row.argument, "") << row.name;
        }
    }
}

TEST_F(CommandsDocumentTest, TheArgumentsAreThoseOfThePrintedUsage) {
    start();
    std::size_t compared = 0;

    for (const Row& row : documentedCommands()) {
        if (!row.is("string setter")) {
            continue;
        }
        const std::vector<std::string> places = placesIn(answerTo(row.name));
        if (places.size() < 2) {
            continue; // one text, which the document describes
        }
        const std::vector<std::string> words = wordsOf(row.argument.substr(0, row.argument.find(',')));
        ASSERT_EQ(words.size(), places.size()) << row.name << ": " << row.argument;
        for (std::size_t i = 0; i < words.size(); ++i) {
            EXPECT_TRUE(names(words[i], places[i])) << row.name << ": " << words[i] << " for " << places[i];
        }
        ++compared;
    }

    EXPECT_EQ(compared, 7u); // six make something, one casts rays
}

TEST_F(CommandsDocumentTest, TheRangesAreThoseThatHold) {
    start();
    std::size_t compared = 0;

    for (const Row& row : documentedCommands()) {
        const std::vector<float> bounds = boundsIn(row.argument);
        if (bounds.empty()) {
            continue;
        }
        const bool held = row.argument.ends_with(", held there");
        EXPECT_EQ(valueAfter(row.name, printed(row, bounds.front())), printed(row, bounds.front()))
            << row.name;
        EXPECT_EQ(valueAfter(row.name, printed(row, bounds.front() - 1)), printed(row, bounds.front()))
            << row.name;
        if (bounds.size() == 2) {
            EXPECT_EQ(valueAfter(row.name, printed(row, bounds[1])), printed(row, bounds[1])) << row.name;
            EXPECT_EQ(valueAfter(row.name, printed(row, bounds[1] + 1)), printed(row, bounds[1])) << row.name;
            answerTo(row.name + " " + printed(row, bounds[0]));
            EXPECT_EQ(valueAfter(row.name, printed(row, bounds[1] + 1)), printed(row, bounds[held ? 1 : 0]))
                << row.name << ": " << row.argument;
        }
        ++compared;
    }

    EXPECT_EQ(compared, 4u);
}

TEST_F(CommandsDocumentTest, TheStartValuesAreThoseOfTheStartedProgram) {
    start();
    std::size_t compared = 0;

    for (const Row& row : documentedCommands()) {
        if (startCanBeRead(row)) {
            const std::string value = valueOf(row.name);
            const std::string suffix = " at level start";
            const std::string documented = startIn(row);
            const bool ends = documented.ends_with(suffix);
            EXPECT_EQ(value, ends ? documented.substr(0, documented.size() - suffix.size()) : documented)
                << row.name;
            ++compared;
        }
    }

    EXPECT_GE(compared, 34u);
}

TEST_F(CommandsDocumentTest, WhatComesFromTheLevelIsCounted) {
    const std::map<std::string, std::string> inTheLevel = {{"ForceCount", "2"},
                                                           {"FxEmitterCount", "1"},
                                                           {"MoverCount", "4"},
                                                           {"SoundSourceCount", "5"},
                                                           {"TriggerCount", "3"}};
    start();

    std::map<std::string, std::string> counted;
    for (const Row& row : documentedCommands()) {
        if (row.start == "those of the level") {
            counted[row.name] = valueOf(row.name);
        }
    }

    EXPECT_EQ(counted, inTheLevel);
}

TEST_F(CommandsDocumentTest, NothingStartsInAnAction) {
    for (const Row& row : documentedCommands()) {
        if (row.kind == "action") {
            EXPECT_EQ(row.start, "") << row.name;
        }
    }
}

TEST_F(CommandsDocumentTest, ACrashReportCallsAVariableByItsCommand) {
    start();
    std::size_t variables = 0;

    for (const auto& [key, command] : GLConsole::commands()) {
        const std::string ending = "::conCmd" + command.name;
        const auto check = [&](const auto& function) {
            if constexpr (requires { function.location; }) {
                EXPECT_TRUE(std::string(function.location).ends_with(ending)) << function.location;
                ++variables;
            }
        };
        std::visit(check, command.function);
    }

    EXPECT_EQ(variables, 26u);
}

} // namespace tarnwick
