#include "core/Comfort.h"

#include "core/Log.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <string>

namespace tarnwick {

class ComfortTest : public ModuleTest {
protected:
    static bool isOn(const Comfort::Entry& entry) {
        const auto* const isSwitch = std::get_if<Comfort::Switch>(&entry.kind);
        return isSwitch != nullptr ? Comfort::values().*isSwitch->field
                                   : Comfort::values().*std::get<Comfort::Number>(entry.kind).field != 0.0f;
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
        const bool isSwitch = std::holds_alternative<Comfort::Switch>(written.kind);
        folder.write("cfg/comfort.cfg", std::string(written.key) + (isSwitch ? " = TRUE" : " = 2"));

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

/// Finds a number beyond what the game can do with it.
TEST_F(ComfortTest, ANumberIsBroughtIntoItsRangeAndWhatIsNoneIsOff) {
    const auto stepsOf = [this](const char* text) {
        folder.write("cfg/comfort.cfg", std::string("volumeSteps = ") + text);
        Comfort::initialise();
        return Comfort::values().volumeSteps;
    };

    EXPECT_EQ(stepsOf("8"), 8.0f);
    EXPECT_EQ(stepsOf("1000"), 20.0f);
    EXPECT_EQ(stepsOf("-3"), 1.0f);
    EXPECT_EQ(stepsOf("0"), 0.0f);
    EXPECT_EQ(stepsOf("many"), 0.0f);
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
