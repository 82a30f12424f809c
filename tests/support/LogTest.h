#pragma once

#include "core/Log.h"
#include "support/ModuleTest.h"

#include <string>
#include <utility>

namespace tarnwick {

/// An empty log; and the view of its inside that the tests need.
class LogTest : public ModuleTest {
protected:
    static constexpr const char* titleBar =
        "\n\n****************************************************************\n\n";

    static std::string logFileName() { return Log::state.logFileName; }
    static void setLogFileName(std::string name) { Log::state.logFileName = std::move(name); }
};

} // namespace tarnwick
