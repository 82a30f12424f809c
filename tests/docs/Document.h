#pragma once

#include <string>
#include <vector>

namespace tarnwick {

/// One row of a table of a document in `docs/`: the heading above the table and the cells, without blanks and
/// back-quotes around them.
struct DocumentRow {
    std::string heading;
    std::vector<std::string> cells;
};

/// The rows whose first cell is a name in back-quotes, in the order of the document; `fileName` is relative
/// to the project's root. Empty if the file cannot be read.
std::vector<DocumentRow> documentRows(const std::string& fileName);

/// The path of a file of the project, whatever the working directory is.
std::string projectPath(const std::string& fileName);

} // namespace tarnwick
