#include "audio/WavFile.h"

#include "support/WavText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

namespace tarnwick {

namespace {

bool read(const std::string& text, WavFile& wav) {
    return WavFile::read(reinterpret_cast<const std::uint8_t*>(text.data()), text.size(), wav);
}

bool readable(const std::string& text) {
    WavFile wav;
    return read(text, wav);
}

/// Four frames of a file of one channel.
WavText plainWav() {
    WavText wav;
    wav.samples = samples16({100, -200, 300, -400});
    return wav;
}

std::string samplesOf(const std::string& text) {
    WavFile wav;
    return read(text, wav) ? std::string(wav.samples.begin(), wav.samples.end()) : "unreadable";
}

} // namespace

TEST(WavFileTest, TheFieldsAreThoseOfTheFile) {
    WavText text = plainWav();
    text.channels = 2;
    text.sampleRate = 22'050;
    text.byteRate = 88'200;
    text.blockAlign = 4;
    text.fileSize = 12;                     // a lie, which nobody hears
    const std::string bytes = text.bytes(); // the samples are a part of it
    WavFile wav;

    ASSERT_TRUE(read(bytes, wav));

    EXPECT_EQ(wav.channels, 2);
    EXPECT_EQ(wav.sampleRate, 22'050u);
    EXPECT_EQ(wav.byteRate, 88'200u);
    EXPECT_EQ(wav.blockAlign, 4);
    EXPECT_EQ(wav.bitsPerSample, 16);
    EXPECT_EQ(std::string(wav.samples.begin(), wav.samples.end()), text.samples);
}

TEST(WavFileTest, ALongerFormatIsSkipped) {
    WavText text = plainWav();
    text.formatSize = 18;
    text.formatExtra = std::string(2, '\0');

    EXPECT_EQ(samplesOf(text.bytes()), text.samples);
}

TEST(WavFileTest, AShorterFormatIsReadAsIfItWereWhole) {
    WavText text = plainWav();
    text.formatSize = 14;

    EXPECT_EQ(samplesOf(text.bytes()), text.samples);
}

TEST(WavFileTest, OtherChunksBeforeTheSamplesAreSkipped) {
    WavText text = plainWav();
    text.chunksBefore =
        WavText::chunk("LIST", "INFOdata") + WavText::chunk("fact", "") + WavText::chunk("cue ", "1234");

    EXPECT_EQ(samplesOf(text.bytes()), text.samples);
}

TEST(WavFileTest, WhatStandsBehindTheSamplesIsNotRead) {
    WavText text = plainWav();
    text.behind = "LIST\xFF\xFF\xFF\xFFtruncated";

    EXPECT_EQ(samplesOf(text.bytes()), text.samples);
}

TEST(WavFileTest, AnOddChunkIsSkippedWithoutItsPadding) {
    WavText padded = plainWav();
    padded.chunksBefore = WavText::chunk("LIST", "odd") + std::string(1, '\0');
    WavText unpadded = plainWav();
    unpadded.chunksBefore = WavText::chunk("LIST", "odd");

    EXPECT_FALSE(readable(padded.bytes()));
    EXPECT_EQ(samplesOf(unpadded.bytes()), unpadded.samples);
}

TEST(WavFileTest, WrongTagsAreRefused) {
    for (std::string WavText::*const tag : {&WavText::riff, &WavText::wave, &WavText::fmt}) {
        WavText text = plainWav();
        text.*tag = "XXXX";

        EXPECT_FALSE(readable(text.bytes())) << plainWav().*tag;
    }
}

TEST(WavFileTest, FieldsThatMakeNoSoundAreRefused) {
    const auto refused = [](std::uint32_t WavText::*field, std::uint32_t value) {
        WavText text = plainWav();
        text.*field = value;
        return !readable(text.bytes());
    };

    EXPECT_TRUE(refused(&WavText::formatTag, 0));
    EXPECT_TRUE(refused(&WavText::formatTag, 3));
    EXPECT_TRUE(refused(&WavText::formatTag, 0xFFFE));
    EXPECT_TRUE(refused(&WavText::channels, 0));
    EXPECT_TRUE(refused(&WavText::channels, 3));
    EXPECT_TRUE(refused(&WavText::sampleRate, 0));
    EXPECT_TRUE(refused(&WavText::byteRate, 0));
    EXPECT_TRUE(refused(&WavText::blockAlign, 0));
    EXPECT_TRUE(refused(&WavText::bitsPerSample, 0));
}

TEST(WavFileTest, EmptySamplesAreRefused) {
    WavText empty = plainWav();
    empty.samples.clear();
    WavText saysEmpty = plainWav();
    saysEmpty.dataSize = 0;

    EXPECT_FALSE(readable(empty.bytes()));
    EXPECT_FALSE(readable(saysEmpty.bytes()));
}

TEST(WavFileTest, ChunksThatRunPastTheEndAreRefused) {
    for (const std::uint32_t lie : {1'000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        WavText samples = plainWav();
        samples.dataSize = lie;
        WavText other = plainWav();
        other.chunksBefore = "LIST" + WavText::number(lie, 4);
        WavText format = plainWav();
        format.formatSize = lie;

        EXPECT_FALSE(readable(samples.bytes())) << lie;
        EXPECT_FALSE(readable(other.bytes())) << lie;
        EXPECT_FALSE(readable(format.bytes())) << lie;
    }
}

TEST(WavFileTest, SamplesThatSayTheyAreFewerAreFewer) {
    WavText text = plainWav();
    text.dataSize = 4;

    EXPECT_EQ(samplesOf(text.bytes()), text.samples.substr(0, 4));
}

TEST(WavFileTest, EveryFileCutShortIsRefused) {
    WavText text = plainWav();
    text.chunksBefore = WavText::chunk("LIST", "INFO");
    const std::string whole = text.bytes();

    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(readable(whole.substr(0, length))) << length;
    }
    EXPECT_TRUE(readable(whole));
}

TEST(WavFileTest, AFileWithoutSamplesIsRefused) {
    const std::string whole = plainWav().bytes();

    EXPECT_FALSE(readable(whole.substr(0, 36) + WavText::chunk("LIST", "INFO")));
}

TEST(WavFileTest, RandomDamageNeverReadsBeyondTheFile) {
    std::mt19937 random(7);
    const std::string whole = plainWav().bytes();

    for (int round = 0; round < 20'000; ++round) {
        std::string damaged = whole.substr(0, random() % (whole.size() + 1));
        for (int i = 0; i < 3 && !damaged.empty(); ++i) {
            damaged[random() % damaged.size()] = static_cast<char>(random());
        }
        WavFile wav;
        if (read(damaged, wav)) {
            EXPECT_LE(wav.samples.size(), damaged.size());
        }
    }
}

} // namespace tarnwick
