#include "console/GLConsole.h"
#include "docs/Document.h"
#include "docs/EveryModule.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <map>

namespace tarnwick {

namespace {

/// The kind as `docs/commands.md` calls it.
std::string kindOf(const ConsoleCommand& command) {
    static constexpr const char* types[] = {"", "integer ", "boolean ", "float ", "string "};
    if (command.type == ConsoleCommand::voidType) {
        return "action";
    }
    const char* const use = !command.hasReturn ? "setter" : command.hasArgument ? "get-or-set" : "getter";
    return std::string(types[command.type]) + use;
}

/// One line for each command: a difference is then shown by itself.
std::string listOf(const std::multimap<std::string, std::string>& commands) {
    std::string list;
    for (const auto& [name, kind] : commands) {
        list += name + ": " + kind + "\n";
    }
    return list;
}

} // namespace

class CommandsDocumentTest : public ModuleTest {
protected:
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

} // namespace tarnwick
