#include "graphics/GLFont.h"

#include "support/GLTest.h"
#include "support/TgaFile.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>

namespace tarnwick {

/// Counts how often a file has been opened.
class FileOpens {
public:
    explicit FileOpens(const std::filesystem::path& file)
        : watch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        inotify_add_watch(watch, file.c_str(), IN_OPEN);
    }
    ~FileOpens() { close(watch); }
    FileOpens(const FileOpens&) = delete;
    FileOpens& operator=(const FileOpens&) = delete;

    /// Since the last call.
    std::size_t count() const {
        alignas(inotify_event) char events[4096];
        const ssize_t bytes = read(watch, events, sizeof events);
        return bytes > 0 ? static_cast<std::size_t>(bytes) / sizeof(inotify_event) : 0;
    }

private:
    int watch;
};

class GLFontTest : public GLTest {
protected:
    static constexpr std::uint32_t cell = 8; ///< Pixels of the sheet a cell.
    static constexpr float size = 8.0f;      ///< So that a cell is drawn pixel by pixel.

    /// A sheet that is transparent but for the cell of `character`, which is white.
    void writeSheet(const std::string& name, std::uint8_t character) const {
        TgaFile file{.width = 16 * cell, .height = 16 * cell};
        for (std::uint32_t y = 0; y < file.height; ++y) {
            for (std::uint32_t x = 0; x < file.width; ++x) {
                const bool inside = x / cell == (character & 15u) && y / cell == (character >> 4u);
                file.data += inside ? TgaFile::pixel(255, 255, 255, 255) : TgaFile::pixel(0, 0, 0, 0);
            }
        }
        data.write(name, file.bytes());
    }

    /// Whether the middle of the cell at this column and row of the screen is drawn.
    static bool drawn(std::int32_t column, std::int32_t row) {
        return pixelAt(column * 8 + 4, row * 8 + 4) == white;
    }

    static void draw(const GLFont& font, const char* text, float x, float y) {
        font.drawString(text, x, y, size, 1.0f, 1.0f, 1.0f, 1.0f);
    }
};

TEST_F(GLFontTest, ACharacterIsDrawnFromItsCell) {
    writeSheet("font.tga", 'A');
    const GLFont font("font.tga");

    draw(font, "BAB", 8.0f, 16.0f);

    EXPECT_FALSE(drawn(1, 2));
    EXPECT_TRUE(drawn(2, 2));
    EXPECT_FALSE(drawn(3, 2));
    EXPECT_EQ(pixelAt(16, 16), white); // the corners of the quad
    EXPECT_EQ(pixelAt(23, 23), white);
    EXPECT_EQ(pixelAt(15, 16), black);
    EXPECT_EQ(pixelAt(16, 24), black);
}

TEST_F(GLFontTest, BytesAbove127LieInTheLowerHalf) {
    writeSheet("font.tga", 0xE9);
    const GLFont font("font.tga");

    draw(font, "i\xE9", 0.0f, 0.0f);

    EXPECT_FALSE(drawn(0, 0));
    EXPECT_TRUE(drawn(1, 0));
}

TEST_F(GLFontTest, ANewlineGoesBackAndDown) {
    writeSheet("font.tga", 'A');
    const GLFont font("font.tga");

    draw(font, " \nA\n\n A", 8.0f, 8.0f);

    EXPECT_TRUE(drawn(1, 2));
    EXPECT_TRUE(drawn(2, 4));
    EXPECT_FALSE(drawn(1, 1));
    EXPECT_FALSE(drawn(1, 3));
}

TEST_F(GLFontTest, TheColourAndItsAlphaTint) {
    writeSheet("font.tga", 'A');
    const GLFont font("font.tga");

    font.drawString("A", 0.0f, 0.0f, size, 1.0f, 0.0f, 1.0f, 1.0f);
    font.drawString("A", 8.0f, 0.0f, size, 1.0f, 0.0f, 0.0f, 0.0f);

    EXPECT_EQ(pixelAt(4, 4), (PixelColour{255, 0, 255}));
    EXPECT_EQ(pixelAt(12, 4), black);
}

TEST_F(GLFontTest, ALongTextIsDrawnToItsEnd) {
    writeSheet("font.tga", 'A');
    const GLFont font("font.tga");
    const std::string text = std::string(200, '.') + "A";

    draw(font, text.c_str(), -200.0f * 8.0f, 0.0f);

    EXPECT_TRUE(drawn(0, 0));
    EXPECT_FALSE(drawn(1, 0));
}

TEST_F(GLFontTest, NothingToDrawDrawsNothing) {
    const GLFont font("missing.tga");
    const std::vector<std::uint8_t> before = allPixels();

    font.drawString(nullptr, 0.0f, 0.0f, size, 1.0f, 1.0f, 1.0f, 1.0f);
    font.drawString("A", 0.0f, 0.0f, 0.0f, 1.0f, 1.0f, 1.0f, 1.0f);
    font.drawString("A", 0.0f, 0.0f, -1.0f, 1.0f, 1.0f, 1.0f, 1.0f);
    font.drawString("", 0.0f, 0.0f, size, 1.0f, 1.0f, 1.0f, 1.0f);
    font.drawStringCentered(nullptr, 0.0f, 0.0f, 64.0f, 64.0f, size, 1.0f, 1.0f, 1.0f, 1.0f);

    EXPECT_EQ(allPixels(), before);
}

TEST_F(GLFontTest, AnEmptyTextChangesNoStateButTheBoundTexture) {
    const GLFont font("missing.tga");
    glColor4f(0.25f, 0.5f, 0.75f, 1.0f);
    glEnable(GL_LIGHTING);

    font.drawString("", 0.0f, 0.0f, size, 1.0f, 1.0f, 1.0f, 1.0f);

    GLfloat colour[4] = {};
    GLint bound = 0;
    glGetFloatv(GL_CURRENT_COLOR, colour);
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(colour[0], 0.25f);
    EXPECT_EQ(static_cast<std::uint32_t>(bound), font.textureId);
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
}

TEST_F(GLFontTest, DrawingLeavesTheVertexArraysAlone) {
    const GLFont font("missing.tga");
    const float somebodys[2] = {};
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(2, GL_FLOAT, 0, somebodys);

    draw(font, "A", 0.0f, 0.0f);

    void* pointer = nullptr;
    glGetPointerv(GL_VERTEX_ARRAY_POINTER, &pointer);
    EXPECT_EQ(pointer, somebodys);
    EXPECT_TRUE(glIsEnabled(GL_COLOR_ARRAY));
    EXPECT_FALSE(glIsEnabled(GL_VERTEX_ARRAY));
}

TEST_F(GLFontTest, AMissingSheetDrawsCellsOfTheCheckerboard) {
    const GLFont font("missing.tga");

    draw(font, "A", 0.0f, 0.0f); // cell (1, 4): an odd sum, a black one of the checkerboard
    draw(font, "B", 8.0f, 0.0f);

    EXPECT_NE(pixelAt(4, 4), pixelAt(12, 4));
}

TEST_F(GLFontTest, ACentredTextHasItsMiddleInTheRectangles) {
    writeSheet("font.tga", 'A');
    const GLFont font("font.tga");

    font.drawStringCentered("AAA", 4.0f, 8.0f, 40.0f, 24.0f, size, 1.0f, 1.0f, 1.0f, 1.0f);

    EXPECT_EQ(pixelAt(11, 20), black);
    EXPECT_EQ(pixelAt(12, 20), white);
    EXPECT_EQ(pixelAt(35, 20), white);
    EXPECT_EQ(pixelAt(36, 20), black);
    EXPECT_EQ(pixelAt(20, 15), black);
    EXPECT_EQ(pixelAt(20, 16), white);
}

TEST_F(GLFontTest, CentringRoundsHalvesAwayFromZero) {
    writeSheet("font.tga", 'A');
    const GLFont font("font.tga");

    font.drawStringCentered("A", 0.0f, 0.0f, 33.0f, 8.0f, size, 1.0f, 1.0f, 1.0f, 1.0f); // from 12.5

    EXPECT_EQ(pixelAt(12, 4), black);
    EXPECT_EQ(pixelAt(13, 4), white);
    EXPECT_EQ(pixelAt(20, 4), white);
}

TEST_F(GLFontTest, ACentredTextWithANewlineIsCentredAsOneLine) {
    writeSheet("font.tga", 'A');
    const GLFont font("font.tga");

    font.drawStringCentered("A\nA", 0.0f, 0.0f, 64.0f, 8.0f, size, 1.0f, 1.0f, 1.0f, 1.0f); // 3 bytes

    EXPECT_EQ(pixelAt(20, 4), white); // from 32 - 12
    EXPECT_EQ(pixelAt(19, 4), black);
    EXPECT_EQ(pixelAt(20, 12), white);
    EXPECT_EQ(pixelAt(19, 12), black);
}

TEST_F(GLFontTest, AFontIsMadeOfATextureAFontOrAName) {
    const GLTexture texture("a.tga");
    const GLFont fromTexture(texture);
    const GLFont fromFont(fromTexture); // NOLINT(performance-unnecessary-copy-initialization): what is tested
    const GLFont fromName("a.tga");
    const GLFont fromNothing;

    EXPECT_EQ(fromTexture.name, "A.TGA");
    EXPECT_EQ(fromFont.name, "A.TGA");
    EXPECT_EQ(fromName.name, "A.TGA");
    EXPECT_EQ(fromNothing.name, "GFX\\DEFAULT.TGA");
}

TEST_F(GLFontTest, AFontOfAnotherPictureDoesNotReadTheDefaultOne) {
    data.write("gfx/default.tga", "");
    data.write("a.tga", "");
    const FileOpens opens(data.path() / "gfx/default.tga");
    const GLTexture texture("a.tga");

    const GLFont fromTexture(texture);
    const GLFont fromFont(fromTexture); // NOLINT(performance-unnecessary-copy-initialization): what is tested
    const GLFont fromName("a.tga");
    const std::size_t before = opens.count();
    const GLFont fromNothing;

    EXPECT_EQ(before, 0u);
    EXPECT_GT(opens.count(), 0u);
}

TEST_F(GLFontTest, ATextWithoutCharactersChangesNothingButTheBoundTexture) {
    const GLFont font("font.tga");
    for (const char* const text : {"", "\n", "\n\n"}) {
        glBindTexture(GL_TEXTURE_2D, 0);
        glBlendFunc(GL_ONE, GL_ZERO);
        glColor4f(0.25f, 0.5f, 0.75f, 1.0f);

        font.drawString(text, 0.0f, 0.0f, size, 1.0f, 1.0f, 1.0f, 1.0f);

        std::array<GLint, 3> values{};
        glGetIntegerv(GL_BLEND_SRC, &values[0]);
        glGetIntegerv(GL_BLEND_DST, &values[1]);
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &values[2]);
        std::array<GLfloat, 4> colour{};
        glGetFloatv(GL_CURRENT_COLOR, colour.data());
        EXPECT_EQ(values, (std::array<GLint, 3>{GL_ONE, GL_ZERO, static_cast<GLint>(font.textureId)}));
        EXPECT_EQ(colour, (std::array<GLfloat, 4>{0.25f, 0.5f, 0.75f, 1.0f}));
    }
}

TEST_F(GLFontTest, AssigningTheSameTextureDoesNothing) {
    GLFont font("a.tga");
    GLFont other("b.tga");
    other.textureId = font.textureId;

    font = other;
    const std::string kept = font.name;
    font = GLTexture("c.tga");

    EXPECT_EQ(kept, "A.TGA"); // the GL name decides
    EXPECT_EQ(font.name, "C.TGA");
    font = std::string("d.tga");
    EXPECT_EQ(font.name, "D.TGA");
}

TEST_F(GLFontTest, AZeroByteEndsAViewAsItEndsACString) {
    writeSheet("font.tga", 'A');
    const GLFont font("font.tga");

    font.drawString(std::string_view("A\0A", 3), {0.0f, 0.0f}, size, opaqueWhite);

    EXPECT_TRUE(drawn(0, 0));
    EXPECT_FALSE(drawn(1, 0));
    EXPECT_FALSE(drawn(2, 0));
}

} // namespace tarnwick
