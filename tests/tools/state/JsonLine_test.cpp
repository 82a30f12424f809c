#include "tools/state/JsonLine.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace tarnwick {

TEST(JsonLineTest, CommasStandBetweenValuesOnly) {
    JsonLine out;
    out.openObject().key("a").number(1).key("b").openArray().number(2).number(3).closeArray();
    out.key("c").openArray().closeArray().key("d").flag(true).closeObject();

    EXPECT_EQ(out.text(), R"({"a":1,"b":[2,3],"c":[],"d":true})");
}

TEST(JsonLineTest, FloatsHaveNineSignificantDigits) {
    JsonLine out;
    out.openArray().number(1.0f / 75.0f).number(0.1f).number(2.0f).number(1e-20f).number(-0.0f).closeArray();

    EXPECT_EQ(out.text(), "[0.0133333337,0.100000001,2,9.99999968e-21,-0]");
}

TEST(JsonLineTest, EveryFloatSurvivesTheTrip) {
    std::uint32_t bits = 1;
    for (int i = 0; i < 20000; ++i) {
        bits = bits * 1664525u + 1013904223u; // any sequence that visits all magnitudes
        const auto value = std::bit_cast<float>(bits);
        if (!std::isfinite(value)) {
            continue;
        }
        JsonLine out;
        out.number(value);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(std::strtof(out.text().c_str(), nullptr)), bits);
    }
}

TEST(JsonLineTest, TextKeepsEveryByte) {
    JsonLine out;
    out.string(std::string_view("gfx\\a \"b\"\n\xE4\xFF\0", 13));

    EXPECT_EQ(out.text(), R"("gfx\u005ca \u0022b\u0022\u000a\u00e4\u00ff\u0000")");
}

TEST(JsonLineTest, DoublesHaveSeventeenSignificantDigits) {
    JsonLine out;
    out.number(0.1);

    EXPECT_EQ(out.text(), "0.10000000000000001");
}

TEST(JsonLineTest, WhatIsNoFiniteNumberIsAText) {
    JsonLine out;
    out.openArray().number(std::numeric_limits<float>::infinity()).number(std::nan(""));
    out.number(-std::numeric_limits<double>::infinity()).number(-std::nanf("")).closeArray();

    EXPECT_EQ(out.text(), R"(["inf","nan","-inf","nan"])");
}

} // namespace tarnwick
