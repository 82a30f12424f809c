#pragma once

#include "console/GLConsole.h"

#include <string>

namespace tarnwick {

/// Types a line at the console, presses Enter, and gives what was printed below the line.
inline std::string answerTo(const std::string& line) {
    GLConsole::clear();
    GLConsole::runLine(line);
    const std::string echo = "\n" + line;
    const std::string printed = GLConsole::outputText();
    return printed.starts_with(echo) ? printed.substr(echo.size()) : printed;
}

} // namespace tarnwick
