#include "core/Comfort.h"

#include "core/Log.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <string>

namespace tarnwick {

class ComfortTest : public ModuleTest {
protected:
    static bool isOn(const Comfort::Entry& entry) {
        return Comfort::values().*std::get<Comfort::Switch>(entry.kind).field;
    }

    const DataFolder folder;
};

/// Finds an entry whose start is not off: the plain game would be another one.
TEST_F(ComfortTest, WithoutTheFileEverythingIsOffAndNothingIsSaid) {
    Comfort::initialise();

    for (const Comfort::Entry& entry : Comfort::entries) {
        EXPECT_FALSE(isOn(entry)) << entry.key;
    }
    EXPECT_EQ(Log::outputText(), "");
}

/// Finds an entry that reads another one's key, or two that share a field.
TEST_F(ComfortTest, EachKeySwitchesItsOwnEntryAlone) {
    for (const Comfort::Entry& written : Comfort::entries) {
        folder.write("cfg/comfort.cfg", std::string(written.key) + " = TRUE");

        Comfort::initialise();

        for (const Comfort::Entry& entry : Comfort::entries) {
            EXPECT_EQ(isOn(entry), entry.key == written.key) << entry.key << " by " << written.key;
        }
    }
}

/// Finds a reader that takes any text, or any number, for yes.
TEST_F(ComfortTest, OnlyTheWordTrueSwitchesOn) {
    for (const char* text : {"FALSE", "1", "yes", "on"}) {
        folder.write("cfg/comfort.cfg", std::string("keepProportions = ") + text);

        Comfort::initialise();

        EXPECT_FALSE(Comfort::values().keepProportions) << text;
    }
}

/// Finds values that outlive the file they came from.
TEST_F(ComfortTest, WhatTheFileLeavesOutIsOff) {
    folder.write("cfg/comfort.cfg", "keepProportions = true");
    Comfort::initialise();
    ASSERT_TRUE(Comfort::values().keepProportions);
    folder.write("cfg/comfort.cfg", "notes of a player");

    Comfort::initialise();

    EXPECT_FALSE(Comfort::values().keepProportions);
    EXPECT_EQ(Log::outputText(), "");
}

} // namespace tarnwick
