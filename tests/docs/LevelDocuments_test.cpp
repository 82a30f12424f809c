// What `docs/level-making.md` and `docs/level-format.md` say of surfaces and triggers, held against the
// tables.

#include "docs/Document.h"
#include "level/SurfaceTypes.h"
#include "mechanisms/TriggerTypes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

/// What stands between back-quotes.
std::vector<std::string> quotedIn(const std::string& text) {
    std::vector<std::string> quoted;
    std::size_t begin = text.find('`');
    while (begin != std::string::npos) {
        const std::size_t end = text.find('`', begin + 1);
        quoted.push_back(text.substr(begin + 1, end - begin - 1));
        begin = text.find('`', end + 1);
    }
    return quoted;
}

/// The names of a cell such as "`Mover_stop_1`, `_a`": a lone ending goes with the stem before it.
std::vector<std::string> typesIn(const std::string& cell) {
    std::vector<std::string> types = quotedIn("`" + cell + "`");
    for (std::size_t i = 1; i < types.size(); ++i) {
        if (types[i].starts_with("_")) {
            types[i] = types[i - 1].substr(0, types[i - 1].rfind('_')) + types[i];
        }
    }
    return types;
}

std::string textOf(const std::string& fileName) {
    std::ifstream file(projectPath(fileName));
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The text from behind `begin` to `end`; empty if either is missing.
std::string between(const std::string& text, const std::string& begin, const std::string& end) {
    const std::size_t found = text.find(begin);
    if (found == std::string::npos) {
        return "";
    }
    const std::size_t first = found + begin.size();
    const std::size_t last = text.find(end, first);
    return last == std::string::npos ? "" : text.substr(first, last - first);
}

/// One line each, sorted: a difference is then shown by itself.
std::string listOf(std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    std::string list;
    for (const std::string& name : names) {
        list += name + "\n";
    }
    return list;
}

} // namespace

TEST(LevelDocumentsTest, EveryTypeOfTriggerAndNoOtherStandsInTheTableOfTypes) {
    std::vector<std::string> documented;
    const std::string table = between(textOf("docs/level-making.md"), "| type | acts on | does |", "\n\n");
    for (const DocumentRow& row : documentRows("docs/level-making.md")) {
        if (row.heading == "Triggers" && table.find(row.cells[0]) != std::string::npos) {
            const std::vector<std::string> types = typesIn(row.cells[0]);
            documented.insert(documented.end(), types.begin(), types.end());
        }
    }
    std::vector<std::string> known;
    for (const TriggerTypes::Row& row : TriggerTypes::table) {
        known.emplace_back(row.name);
    }

    EXPECT_EQ(listOf(documented), listOf(known));
}

TEST(LevelDocumentsTest, TheTypesThatKnowNoDelayAreNamed) {
    const std::vector<std::string> documented =
        quotedIn(between(textOf("docs/level-making.md"), "knows no delay:", ".\n"));
    std::vector<std::string> known;
    for (const TriggerTypes::Row& row : TriggerTypes::table) {
        if (row.body == TriggerTypes::needsBody) {
            known.emplace_back(row.name);
        }
    }

    EXPECT_EQ(listOf(documented), listOf(known));
}

TEST(LevelDocumentsTest, EverySurfaceIsOfferedToTheLevelMaker) {
    const std::vector<std::string> documented =
        quotedIn(between(textOf("docs/level-making.md"), "| `surface` | text |", ": how fast"));
    std::vector<std::string> known;
    for (const SurfaceTypes::Row& row : SurfaceTypes::table) {
        known.emplace_back(row.name);
    }

    EXPECT_EQ(documented, known);
}

TEST(LevelDocumentsTest, TheLevelFileTellsTheNumberOfEverySurface) {
    std::string known;
    for (const SurfaceTypes::Row& row : SurfaceTypes::table) {
        known += (known.empty() ? "" : ", ") + std::to_string(row.number) + " " + row.name;
    }

    EXPECT_EQ(between(textOf("docs/level-format.md"), "| surface | `i32` | ", " |"), known);
}

} // namespace tarnwick
