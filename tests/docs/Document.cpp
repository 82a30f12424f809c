#include "docs/Document.h"

#include <fstream>
#include <sstream>

namespace tarnwick {

namespace {

/// `text` without the characters of `set` at its ends.
std::string trimmed(const std::string& text, const char* set) {
    const std::size_t first = text.find_first_not_of(set);
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(set) - first + 1);
}

/// The cells of "| a | b |".
std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream row(line.substr(1));
    std::string cell;
    while (std::getline(row, cell, '|')) {
        cells.push_back(trimmed(cell, " `"));
    }
    return cells;
}

} // namespace

std::vector<DocumentRow> documentRows(const std::string& fileName) {
    std::vector<DocumentRow> rows;
    std::ifstream file(projectPath(fileName));
    std::string heading;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("#")) {
            heading = trimmed(line, "# `");
        } else if (line.starts_with("| `")) {
            rows.push_back({heading, cellsOf(line)});
        }
    }
    return rows;
}

std::string projectPath(const std::string& fileName) {
    return std::string(TARNWICK_SOURCE_DIR) + "/" + fileName;
}

} // namespace tarnwick
