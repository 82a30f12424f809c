#include "graphics/GLTga32Loader.h"

#include "support/GLTest.h"
#include "support/TgaFile.h"

#include <numeric>
#include <string>
#include <utility>

namespace tarnwick {

class GLTga32LoaderTest : public GLTest {
protected:
    /// Loads a file of these bytes into a texture and gives its top level, top row first.
    std::string load(const std::string& bytes) {
        data.write("a.tga", bytes);
        accepted = GLTga32Loader::load("a.tga", textureId, width, height);
        if (!accepted) {
            return {};
        }
        std::string pixels(std::size_t{width} * height * 4, '\0');
        glBindTexture(GL_TEXTURE_2D, textureId);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, pixels.data());
        return pixels;
    }

    /// 4 by 4 pixels, each of them different.
    static std::string differentPixels() {
        std::string pixels(64, '\0');
        std::iota(pixels.begin(), pixels.end(), '\x20');
        return pixels;
    }

    static std::string rowsReversed(const std::string& pixels) {
        return pixels.substr(48, 16) + pixels.substr(32, 16) + pixels.substr(16, 16) + pixels.substr(0, 16);
    }

    static std::string repeated(const std::string& text, std::size_t times) {
        std::string result;
        for (std::size_t i = 0; i < times; ++i) {
            result += text;
        }
        return result;
    }

    static std::pair<GLint, GLint> sizeInTheGl() {
        std::pair<GLint, GLint> size;
        glBindTexture(GL_TEXTURE_2D, textureId);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &size.first);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &size.second);
        return size;
    }
    static std::string texels(GLint wide, GLint high) {
        std::string pixels(static_cast<std::size_t>(wide) * static_cast<std::size_t>(high) * 4, '\0');
        glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, pixels.data());
        return pixels;
    }

    static constexpr std::uint32_t textureId = 77;
    static constexpr std::uint8_t bottomFirst = 8;
    bool accepted = false;
    std::uint32_t width = 1000;
    std::uint32_t height = 1000;
};

TEST_F(GLTga32LoaderTest, APlainTopFirstPictureIsTakenAsItStands) {
    const std::string pixels = load(TgaFile{.data = differentPixels()}.bytes());

    EXPECT_EQ(pixels, differentPixels());
    EXPECT_EQ(width, 4u);
    EXPECT_EQ(height, 4u);
}

TEST_F(GLTga32LoaderTest, ABottomFirstPictureLooksLikeItsTopFirstTwin) {
    const std::string flipped = rowsReversed(differentPixels());

    EXPECT_EQ(load(TgaFile{.descriptor = bottomFirst, .data = flipped}.bytes()), differentPixels());
}

TEST_F(GLTga32LoaderTest, AnIdentificationFieldIsSkipped) {
    EXPECT_EQ(load(TgaFile{.identificationLength = 5, .data = "hello" + differentPixels()}.bytes()),
              differentPixels());
}

TEST_F(GLTga32LoaderTest, RunsAndLiteralPacketsAreDecodedInBothRowOrders) {
    const std::string first = TgaFile::pixel(10, 20, 30, 40);
    const std::string second = TgaFile::pixel(50, 60, 70, 80);
    const std::string runRow = "\x83" + first; // four times
    const std::string mixedRow =
        "\x81" + second + std::string(1, '\1') + first + second; // twice, then two literal
    const std::string encoded = repeated(runRow, 2) + repeated(mixedRow, 2);
    const std::string decoded = repeated(first, 8) + repeated(second + second + first + second, 2);

    EXPECT_EQ(load(TgaFile{.imageType = 10, .data = encoded}.bytes()), decoded);
    EXPECT_EQ(load(TgaFile{.imageType = 10, .descriptor = bottomFirst, .data = encoded}.bytes()),
              rowsReversed(decoded));
}

TEST_F(GLTga32LoaderTest, ARunBeyondItsRowIsCutThere) {
    const std::string first = TgaFile::pixel(1, 2, 3, 4);
    const std::string second = TgaFile::pixel(5, 6, 7, 8);
    const std::string encoded = "\xFF" + first + repeated("\x83" + second, 3); // 128 pixels in a row of 4

    EXPECT_EQ(load(TgaFile{.imageType = 10, .data = encoded}.bytes()),
              repeated(first, 4) + repeated(second, 12));
}

TEST_F(GLTga32LoaderTest, ALiteralPacketBeyondItsRowIsCutAndAControlByteFollows) {
    const std::string row = differentPixels().substr(0, 16);
    const std::string second = TgaFile::pixel(5, 6, 7, 8);
    const std::string encoded = "\x7F" + row + repeated("\x83" + second, 3);

    EXPECT_EQ(load(TgaFile{.imageType = 10, .data = encoded}.bytes()), row + repeated(second, 12));
}

TEST_F(GLTga32LoaderTest, OfARunLengthPictureThatEndsTooEarlyWhatWasDecodedShows) {
    const std::string first = TgaFile::pixel(1, 2, 3, 4);
    const std::string encoded = repeated("\x83" + first, 2) + "\x83";

    const std::string pixels = load(TgaFile{.imageType = 10, .data = encoded}.bytes());

    EXPECT_TRUE(accepted);
    EXPECT_EQ(pixels.substr(0, 32), repeated(first, 8));
    EXPECT_EQ(pixels.substr(32), repeated(first, 8)); // past the end the values stay as they were
}

TEST_F(GLTga32LoaderTest, APlainPictureThatEndsTooEarlyIsRefused) {
    load(TgaFile{.data = differentPixels().substr(1)}.bytes());
    const bool topFirst = accepted;
    load(TgaFile{.descriptor = bottomFirst, .data = differentPixels().substr(1)}.bytes());

    EXPECT_FALSE(topFirst);
    EXPECT_FALSE(accepted);
    EXPECT_EQ(width, 0u);
    EXPECT_EQ(height, 0u);
}

TEST_F(GLTga32LoaderTest, OtherKindsOfPicturesAreRefused) {
    const std::string pixels = repeated(differentPixels(), 4);
    const TgaFile refused[] = {
        {.colourMapType = 1, .data = pixels}, {.imageType = 1, .data = pixels},
        {.imageType = 3, .data = pixels},     {.width = 3, .data = pixels},
        {.height = 3, .data = pixels},        {.width = 0, .height = 0, .data = pixels},
        {.bitsPerPixel = 24, .data = pixels}, {.descriptor = 0x29, .data = pixels},
    };

    for (const TgaFile& file : refused) {
        load(file.bytes());
        EXPECT_FALSE(accepted);
        EXPECT_EQ(width, 0u);
    }
}

TEST_F(GLTga32LoaderTest, ShortHeadersAndMissingFilesAreRefused) {
    const std::string header = TgaFile{}.bytes();
    for (std::size_t length = 0; length < header.size(); ++length) {
        load(header.substr(0, length));
        EXPECT_FALSE(accepted) << length;
    }

    EXPECT_FALSE(GLTga32Loader::load("none.tga", textureId, width, height));
}

TEST_F(GLTga32LoaderTest, ASizeBeyondAllMemoryOrBeyondTheFileIsRefused) {
    const std::string run = "\xFF" + TgaFile::pixel(1, 2, 3, 4);
    load(TgaFile{.imageType = 10, .width = 32768, .height = 8193, .data = repeated(run, 524'400)}.bytes());
    const bool beyondMemory = accepted; // 2^28 pixels are the most, and the file has them
    load(TgaFile{.imageType = 10, .width = 4096, .height = 4096, .data = differentPixels()}.bytes());

    EXPECT_FALSE(beyondMemory);
    EXPECT_FALSE(accepted);
}

// The fault: a checkerboard in place of a picture that only this GPU finds too large.
TEST_F(GLTga32LoaderTest, APictureWiderThanTheGlTakesIsScaled) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    const std::string left = TgaFile::pixel(10, 20, 30, 255);
    const std::string right = TgaFile::pixel(200, 100, 50, 128);
    const std::string row = repeated("\xFF" + left, 256) + repeated("\xFF" + right, 255) + "\xFE" + right;
    data.write("wide.tga",
               TgaFile{.imageType = 10, .width = 65535, .height = 4, .data = repeated(row, 4)}.bytes());

    accepted = GLTga32Loader::load("wide.tga", textureId, width, height);

    const auto [wide, high] = sizeInTheGl();
    const std::string pixels = texels(wide, high);
    EXPECT_TRUE(accepted);
    EXPECT_EQ(width, 65535u); // of the picture: what is drawn with it keeps its place
    EXPECT_GT(wide, largest / 2);
    EXPECT_LE(wide, largest);
    EXPECT_EQ(high, 4);
    for (const std::size_t y : {0u, 3u}) {
        const std::string told =
            pixels.substr(y * static_cast<std::size_t>(wide) * 4, static_cast<std::size_t>(wide) * 4);
        EXPECT_EQ(told.substr(0, 4), left) << y;
        EXPECT_EQ(told.substr(told.size() / 2 - 8, 4), left) << y;
        EXPECT_EQ(told.substr(told.size() / 2 + 8, 4), right) << y;
        EXPECT_EQ(told.substr(told.size() - 4), right) << y;
    }
}

TEST_F(GLTga32LoaderTest, APictureHigherThanTheGlTakesIsTheMeanOfItsRows) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    const auto rows = static_cast<std::uint32_t>(largest) * 2;
    ASSERT_LE(rows, 65535u);
    const std::string two =
        "\x83" + TgaFile::pixel(0, 100, 10, 255) + "\x83" + TgaFile::pixel(255, 100, 20, 255);
    data.write("high.tga",
               TgaFile{.imageType = 10, .width = 4, .height = rows, .data = repeated(two, rows / 2)}.bytes());

    accepted = GLTga32Loader::load("high.tga", textureId, width, height);

    const auto [wide, high] = sizeInTheGl();
    const std::string pixels = texels(wide, high);
    EXPECT_TRUE(accepted);
    EXPECT_EQ(height, rows);
    EXPECT_EQ(wide, 4);
    EXPECT_EQ(high, largest);
    EXPECT_EQ(pixels.substr(0, 4), TgaFile::pixel(128, 100, 15, 255));
    EXPECT_EQ(pixels.substr(pixels.size() - 4), TgaFile::pixel(128, 100, 15, 255));
}

} // namespace tarnwick
