#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace tarnwick {

/// Why a tool cannot go on, in one line for the person at the command line. The name of the file is not in
/// it: the command that read the file puts it in front.
class ToolError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A name between double quotes, fit for one line: control characters become \xNN, and of a name longer than
/// 80 bytes only the beginning is shown.
std::string inQuotes(std::string_view name);

} // namespace tarnwick
