#include "graphics/PictureHead.h"

#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "support/TgaFile.h"

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace tarnwick {

namespace {

std::string lowFirst(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(value >> (8 * i));
    }
    return text;
}

std::string highFirst(std::uint32_t value, int bytes) {
    const std::string text = lowFirst(value, bytes);
    return {text.rbegin(), text.rend()};
}

std::string png(std::uint32_t width, std::uint32_t height) {
    return std::string("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16) + highFirst(width, 4) + highFirst(height, 4);
}

std::string bmp(std::uint32_t width, std::uint32_t height) {
    return "BM" + std::string(12, '\0') + lowFirst(40, 4) + lowFirst(width, 4) + lowFirst(height, 4);
}

std::string oldBmp(std::uint32_t width, std::uint32_t height) {
    return "BM" + std::string(12, '\0') + lowFirst(12, 4) + lowFirst(width, 2) + lowFirst(height, 2) +
           lowFirst(1, 2) + lowFirst(8, 2);
}

/// With a comment and a table before the size, as files have them.
std::string jpeg(std::uint32_t width, std::uint32_t height, char frame = '\xC0') {
    return std::string("\xFF\xD8\xFF\xFE\0\5abc\xFF\xFF\xC4\0\4xy\xFF", 17) + frame + highFirst(17, 2) +
           '\x08' + highFirst(height, 2) + highFirst(width, 2);
}

/// With a table of four colours and an extension of two parts before the picture.
std::string gif(std::uint32_t width, std::uint32_t height) {
    return std::string("GIF89a\1\0\1\0\x81\0\0", 13) + std::string(12, ',') +
           std::string("!\xFE\3,,,\2,,\0,\0\0\0\0", 15) + lowFirst(width, 2) + lowFirst(height, 2);
}

} // namespace

/// Only the length of the files counts behind their heads, so they are holes.
class PictureHeadTest : public ModuleTest {
protected:
    bool plausible(const std::string& head, std::uintmax_t bytes, bool tga = false) const {
        data.write("a", head);
        std::filesystem::resize_file("a", bytes);
        return PictureHead("a", tga).plausible();
    }

    const DataFolder data;
};

// The fault: gigabytes for a file of some bytes, or a good picture that is refused.
TEST_F(PictureHeadTest, AHeadMayPromiseWhatAFileOfItsLengthCanHoldAndNoMore) {
    EXPECT_TRUE(plausible(png(8256, 100), 100));
    EXPECT_FALSE(plausible(png(8257, 100), 100));
    EXPECT_TRUE(plausible(bmp(128, 100), 100));
    EXPECT_FALSE(plausible(bmp(129, 100), 100));
    EXPECT_TRUE(plausible(oldBmp(128, 100), 100));
    EXPECT_FALSE(plausible(oldBmp(129, 100), 100));
    EXPECT_TRUE(plausible(jpeg(512, 100), 100));
    EXPECT_FALSE(plausible(jpeg(513, 100), 100));
    EXPECT_TRUE(plausible(gif(4096, 100), 100));
    EXPECT_FALSE(plausible(gif(4097, 100), 100));
}

TEST_F(PictureHeadTest, ATgaHoldsItsPixelsOrRunsOfThem) {
    const auto tga = [](std::uint8_t type, std::uint8_t bits, std::uint32_t width,
                        std::uint8_t identification = 0) {
        return TgaFile{.identificationLength = identification,
                       .imageType = type,
                       .width = width,
                       .height = 300,
                       .bitsPerPixel = bits}
            .bytes();
    };
    EXPECT_TRUE(plausible(tga(2, 24, 2), 18 + 1800, true));
    EXPECT_FALSE(plausible(tga(2, 24, 2), 18 + 1799, true));
    EXPECT_TRUE(plausible(tga(2, 15, 2), 18 + 1200, true));
    EXPECT_FALSE(plausible(tga(2, 15, 2), 18 + 1199, true));
    EXPECT_TRUE(plausible(tga(10, 24, 128), 18 + 300, true));
    EXPECT_FALSE(plausible(tga(10, 24, 129), 18 + 300, true));
    EXPECT_FALSE(plausible(tga(2, 24, 2, 7), 18 + 1800, true));
    EXPECT_TRUE(plausible(tga(2, 24, 2, 7), 25 + 1800, true));
    EXPECT_FALSE(plausible(tga(2, 24, 2), 18 + 1800, false)); // nothing but its name tells that it is one
}

TEST_F(PictureHeadTest, NoPictureIsLargerThanAllMemory) {
    constexpr std::uintmax_t long_ = 1 << 22;

    EXPECT_TRUE(plausible(png(16384, 16384), long_));
    EXPECT_FALSE(plausible(png(16384, 16385), long_));
    EXPECT_FALSE(plausible(png(0x80000000, 0x80000000), long_));
    EXPECT_FALSE(plausible(png(0, 5), long_));
    EXPECT_FALSE(plausible(png(5, 0), long_));
}

TEST_F(PictureHeadTest, ABmpWithItsTopRowFirstHasANegativeHeight) {
    EXPECT_TRUE(plausible(bmp(128, 0u - 100), 100));
    EXPECT_FALSE(plausible(bmp(128, 0u - 101), 100));
}

TEST_F(PictureHeadTest, EachFrameOfAJpegTellsItsSizeAndNothingElseDoes) {
    for (const char frame : {'\xC0', '\xC1', '\xC2', '\xC3', '\xC5', '\xCF'}) {
        EXPECT_TRUE(plausible(jpeg(4, 4, frame), 100)) << static_cast<int>(frame);
    }
    for (const char other : {'\xC4', '\xC8', '\xCC', '\xD0', '\xBF', '\xE0'}) {
        EXPECT_FALSE(plausible(jpeg(4, 4, other), 100)) << static_cast<int>(other);
    }
}

TEST_F(PictureHeadTest, AGifWithoutAPictureIsNone) {
    EXPECT_FALSE(plausible(std::string("GIF89a\1\0\1\0\0\0\0;", 14), 14));
    EXPECT_TRUE(plausible(std::string("GIF89a\1\0\1\0\0\0\0,\0\0\0\0\1\0\1\0", 22), 22));
}

TEST_F(PictureHeadTest, FoldersPipesAndMissingFilesAreNone) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    std::filesystem::create_directory("folder");

    EXPECT_FALSE(PictureHead("pipe", true).plausible());
    EXPECT_FALSE(PictureHead("folder", false).plausible());
    EXPECT_FALSE(PictureHead("missing", true).plausible());
}

} // namespace tarnwick
