#pragma once

#include "core/Clock.h"
#include "support/ModuleReset.h"

#include <gtest/gtest.h>

namespace tarnwick {

/// A test that starts with every module as at program start and with the clock standing at 0.
class ModuleTest : public testing::Test {
protected:
    ModuleTest() {
        ModuleReset::all();
        Clock::drive(0);
    }
    ~ModuleTest() override { ModuleReset::all(); }
};

} // namespace tarnwick
