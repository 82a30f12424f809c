#include "core/ConfigFile.h"

#include "console/GLConsole.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <list>
#include <random>
#include <string>

namespace tarnwick {
namespace {

using Tokens = std::list<std::string>;

class ConfigFileTest : public ModuleTest {
protected:
    /// What a file of this content reads as.
    ConfigFile read(const std::string& content) {
        folder.write("test.cfg", content);
        return ConfigFile("test.cfg");
    }
    /// What was printed while a file of this content was read.
    std::string messageOf(const std::string& content) {
        GLConsole::clear();
        read(content);
        return GLConsole::outputText();
    }

    DataFolder folder;
};

TEST_F(ConfigFileTest, APairIsAKeyAndItsValueWhateverStandsBetweenThem) {
    for (const char* content : {"speed=10", "speed = 10", "speed\n=\n10",
                                "\tspeed\r\n=\x1B"
                                "10\b"}) {
        EXPECT_EQ(read(content).getVarAsString("speed"), "10") << content;
    }
}

TEST_F(ConfigFileTest, SeveralPairsMayStandOnOneLine) {
    const ConfigFile config = read("a=1 b=2\nc=3");

    EXPECT_EQ(config.getVarAsInt("a"), 1);
    EXPECT_EQ(config.getVarAsInt("b"), 2);
    EXPECT_EQ(config.getVarAsInt("c"), 3);
}

TEST_F(ConfigFileTest, ContentWithoutAPairIsEmptyAndNoError) {
    for (const char* content : {"", " \n\t", "only some words", "= 5", "a =", "=", "===", "= a ="}) {
        EXPECT_EQ(messageOf(content), "") << content;
        EXPECT_FALSE(read(content).variableExists("a")) << content;
        EXPECT_FALSE(read(content).variableExists("5")) << content;
    }
}

TEST_F(ConfigFileTest, SeveralEqualsSignsBetweenTwoWordsCountAsOne) {
    EXPECT_EQ(read("a == 5").getVarAsString("a"), "5");
    EXPECT_EQ(read("a = = 5").getVarAsString("a"), "5");
    EXPECT_EQ(read("a ==== = == 5").getVarAsString("a"), "5");
}

TEST_F(ConfigFileTest, AWordBetweenTwoEqualsSignsIsDropped) {
    const ConfigFile three = read("a = b = c");
    const ConfigFile four = read("a = b = c = d");

    EXPECT_EQ(three.getVarAsString("a"), "c");
    EXPECT_FALSE(three.variableExists("b"));
    EXPECT_EQ(four.getVarAsString("a"), "d");
}

TEST_F(ConfigFileTest, WordsThatAreNotNextToAnEqualsSignAreComments) {
    const ConfigFile config = read("note a = 1 more words b = 2");

    EXPECT_EQ(config.getVarAsString("a"), "1");
    EXPECT_EQ(config.getVarAsString("b"), "2");
    EXPECT_FALSE(config.variableExists("note"));
    EXPECT_FALSE(config.variableExists("more"));
    EXPECT_FALSE(config.variableExists("words"));
}

TEST_F(ConfigFileTest, ACommentLineWithAnEqualsSignIsASetting) {
    const ConfigFile config = read("// speed = 10");

    EXPECT_EQ(config.getVarAsString("speed"), "10");
    EXPECT_FALSE(config.variableExists("//"));
}

TEST_F(ConfigFileTest, AWordBehindAValueIsDropped) {
    EXPECT_EQ(read("a = 1 metres").getVarAsString("a"), "1");
    const ConfigFile config = read("a = 1 metres b = 2");

    EXPECT_EQ(config.getVarAsString("a"), "1");
    EXPECT_EQ(config.getVarAsString("b"), "2");
    EXPECT_FALSE(config.variableExists("metres"));
}

TEST_F(ConfigFileTest, KeysAreFoundInAnyCaseAndValuesKeepTheirs) {
    const ConfigFile config = read("WaterColour = DarkBlue");

    EXPECT_EQ(config.getVarAsString("watercolour"), "DarkBlue");
    EXPECT_EQ(config.getVarAsString("WATERCOLOUR"), "DarkBlue");
    EXPECT_EQ(config.getVarAsString(std::string("waterColour")), "DarkBlue");
}

TEST_F(ConfigFileTest, OfSeveralSettingsOfOneKeyTheLastCounts) {
    EXPECT_EQ(read("a = 1\nA = 2").getVarAsInt("a"), 2);
}

TEST_F(ConfigFileTest, NumbersAreReadStrictly) {
    const ConfigFile config =
        read("half = -.5 points = 1.2.3 exponent = 1e5 plus = +1 tail = 12abc real = 2.5 whole = -7");

    EXPECT_EQ(config.getVarAsFloat("half"), -0.5f);
    EXPECT_EQ(config.getVarAsFloat("points"), 0.0f);
    EXPECT_EQ(config.getVarAsFloat("exponent"), 0.0f);
    EXPECT_EQ(config.getVarAsFloat("plus"), 0.0f);
    EXPECT_EQ(config.getVarAsFloat("tail"), 0.0f);
    EXPECT_EQ(config.getVarAsInt("real"), 0);
    EXPECT_EQ(config.getVarAsInt(std::string("whole")), -7);
    EXPECT_EQ(config.getVarAsFloat(std::string("real")), 2.5f);
}

TEST_F(ConfigFileTest, OnlyTheWordTrueIsTrue) {
    const ConfigFile config = read("a = tRuE b = 1 c = yes d = false");

    EXPECT_TRUE(config.getVarAsBool("a"));
    EXPECT_TRUE(config.getVarAsBool(std::string("a")));
    EXPECT_FALSE(config.getVarAsBool("b"));
    EXPECT_FALSE(config.getVarAsBool("c"));
    EXPECT_FALSE(config.getVarAsBool("d"));
}

TEST_F(ConfigFileTest, AMissingKeyGivesZeroFalseOrNothing) {
    const ConfigFile config = read("a = 1");
    const char* noName = nullptr;

    EXPECT_FALSE(config.variableExists("b"));
    EXPECT_FALSE(config.variableExists(std::string("b")));
    EXPECT_FALSE(config.variableExists(noName));
    EXPECT_EQ(config.getVarAsString("b"), "");
    EXPECT_EQ(config.getVarAsFloat("b"), 0.0f);
    EXPECT_EQ(config.getVarAsInt("b"), 0);
    EXPECT_FALSE(config.getVarAsBool("b"));
}

TEST_F(ConfigFileTest, LoadingAnotherFileDropsTheOldSettings) {
    ConfigFile config = read("a = 1");
    folder.write("other.cfg", "b = 2");

    config.loadConfigFile("other.cfg");

    EXPECT_FALSE(config.variableExists("a"));
    EXPECT_TRUE(config.variableExists("b"));
}

TEST_F(ConfigFileTest, ClearingDropsTheSettings) {
    ConfigFile config = read("a = 1");

    config.clear();

    EXPECT_FALSE(config.variableExists("a"));
}

TEST_F(ConfigFileTest, NamesAreThoseOfTheDataFiles) {
    folder.write("cfg/Water.cfg", "a = 1");

    const ConfigFile config("CFG\\\\water.CFG");

    EXPECT_TRUE(config.variableExists("a"));
}

TEST_F(ConfigFileTest, NoFileNameIsToldAlone) {
    const ConfigFile config(nullptr);

    EXPECT_EQ(GLConsole::outputText(), "\nError in configuration Loader: no file name given");
}

TEST_F(ConfigFileTest, AMissingFileIsTold) {
    ConfigFile config = read("a = 1");

    config.loadConfigFile("cfg\\missing.cfg");

    EXPECT_EQ(GLConsole::outputText(), "\nCould not open config file: cfg\\missing.cfg");
    EXPECT_FALSE(config.variableExists("a"));
}

TEST_F(ConfigFileTest, AFolderIsNotAFile) {
    std::filesystem::create_directory("folder.cfg");

    const ConfigFile config("folder.cfg");

    EXPECT_EQ(GLConsole::outputText(), "\nCould not open config file: folder.cfg");
}

TEST_F(ConfigFileTest, AFileWithoutTheRightToReadItIsTold) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "nothing is unreadable for root";
    }
    folder.write("secret.cfg", "a = 1");
    std::filesystem::permissions("secret.cfg", std::filesystem::perms::none);

    const ConfigFile config("secret.cfg");

    EXPECT_EQ(GLConsole::outputText(), "\nCould not open config file: secret.cfg");
}

TEST_F(ConfigFileTest, AFileBeyondAllMeasureIsRefused) {
    folder.write("huge.cfg", "a = 1");
    std::filesystem::resize_file("huge.cfg", static_cast<std::uintmax_t>(ConfigFile::largestFile) + 1);

    const ConfigFile config("huge.cfg");

    EXPECT_EQ(GLConsole::outputText(), "Error reading config file: huge.cfg");
    EXPECT_FALSE(config.variableExists("a"));
}

TEST_F(ConfigFileTest, ANulByteEndsTheText) {
    const ConfigFile config = read(std::string("a = 1 b\0 = 2 c = 3", 18));

    EXPECT_EQ(config.getVarAsInt("a"), 1);
    EXPECT_FALSE(config.variableExists("b"));
    EXPECT_FALSE(config.variableExists("c"));
}

TEST_F(ConfigFileTest, RandomBytesGiveNoMessageAndAnEvenCount) {
    std::mt19937 random(1);
    const std::string alphabet = std::string("ab=  \n\t\x1B\b\r\0\xFF", 12);
    for (int round = 0; round < 300; ++round) {
        std::string content(random() % 200, ' ');
        for (char& c : content) {
            c = round % 2 == 0 ? static_cast<char>(random()) : alphabet[random() % alphabet.size()];
        }

        EXPECT_EQ(messageOf(content), "") << round;
    }
}

TEST_F(ConfigFileTest, TokensAreAppended) {
    ConfigFile config;
    Tokens tokens{"first"};

    config.separateTokens("a=b\t== c", tokens);
    config.separateTokens("", tokens);
    config.separateTokens(nullptr, tokens);

    EXPECT_EQ(tokens, (Tokens{"first", "a", "=", "b", "=", "=", "c"}));
}

TEST_F(ConfigFileTest, AnObserverHearsTheFilesAndTheKeysAskedFor) {
    class Listener : public ConfigFile::Observer {
    public:
        void fileRead(const std::string& name) override { heard += "file " + name + "\n"; }
        void keyAsked(const std::string& key) override { heard += "key " + key + "\n"; }
        std::string heard;
    };
    Listener listener;
    ConfigFile::setObserver(&listener);

    const ConfigFile config = read("speed = 10");
    config.getVarAsFloat("speed");
    config.variableExists(std::string("Missing"));
    const ConfigFile none("no\\file.cfg");
    ConfigFile::setObserver(nullptr);
    config.getVarAsInt("unheard");

    EXPECT_EQ(listener.heard, "file test.cfg\nkey SPEED\nkey MISSING\nfile no\\file.cfg\n");
}

} // namespace
} // namespace tarnwick
