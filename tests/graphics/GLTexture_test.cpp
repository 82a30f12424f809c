#include "core/GLTexture.h"

#include "support/GLTest.h"
#include "support/TgaFile.h"

#include <string>
#include <thread>

namespace tarnwick {

class GLTextureTest : public GLTest {
protected:
    /// A picture of one colour, 8 by 8 pixels.
    void
    writePicture(const std::string& name, std::uint32_t blue, std::uint32_t green, std::uint32_t red) const {
        TgaFile file{.width = 8, .height = 8};
        for (int i = 0; i < 64; ++i) {
            file.data += TgaFile::pixel(blue, green, red, 255);
        }
        data.write(name, file.bytes());
    }

    static std::size_t entries() {
        std::list<std::string> list;
        GLTextureManager::getTextureList(list);
        return list.size();
    }

    static bool isTexture(std::uint32_t name) { return glIsTexture(name) == GL_TRUE; }
};

TEST_F(GLTextureTest, AHandleWithoutANameIsTheDefaultPicture) {
    writePicture("gfx/default.tga", 1, 2, 3);

    const GLTexture texture;

    EXPECT_EQ(texture.name, "GFX\\DEFAULT.TGA");
    EXPECT_EQ(texture.width, 8u);
    EXPECT_TRUE(texture.hasAlpha);
}

TEST_F(GLTextureTest, AHandleTellsAboutItsPicture) {
    writePicture("gfx/Stone.tga", 1, 2, 3);

    const GLTexture texture("gfx\\sTone.tGA");

    EXPECT_EQ(texture.name, "GFX\\STONE.TGA");
    EXPECT_EQ(texture.width, 8u);
    EXPECT_EQ(texture.height, 8u);
    EXPECT_TRUE(texture.hasAlpha);
    EXPECT_TRUE(isTexture(texture.textureId));
}

TEST_F(GLTextureTest, HandlesOfOneFileShareItAndTheLastOneFreesIt) {
    writePicture("gfx/a.tga", 1, 2, 3);
    std::uint32_t name = 0;
    {
        const GLTexture first("gfx\\a.tga");
        name = first.textureId;
        {
            const GLTexture second(std::string("GFX\\A.TGA"));
            const GLTexture third(
                second); // NOLINT(performance-unnecessary-copy-initialization): what is tested
            EXPECT_EQ(second.textureId, name);
            EXPECT_EQ(third.textureId, name);
            EXPECT_EQ(third.width, 8u);
        }
        EXPECT_TRUE(isTexture(name));
        EXPECT_EQ(entries(), 1u);
    }

    EXPECT_FALSE(isTexture(name));
    EXPECT_EQ(entries(), 0u);
}

TEST_F(GLTextureTest, AFreedFileIsReadAgain) {
    { const GLTexture missing("gfx\\a.tga"); }
    writePicture("gfx/a.tga", 1, 2, 3);

    const GLTexture texture("gfx\\a.tga");

    EXPECT_EQ(texture.width, 8u);
}

TEST_F(GLTextureTest, AnotherSpellingOfThePathIsAnotherTexture) {
    const GLTexture backSlash("gfx\\a.tga");
    const GLTexture slash("gfx/a.tga");

    EXPECT_NE(backSlash, slash);
    EXPECT_EQ(entries(), 2u);
}

TEST_F(GLTextureTest, AssigningTheNameThatItHasLoadsAndFreesNothing) {
    GLTexture texture("gfx\\a.tga");
    const std::uint32_t name = texture.textureId;
    writePicture("gfx/a.tga", 1, 2, 3);
    std::string fileName = "gfx\\A.tga";

    texture = fileName;

    EXPECT_EQ(fileName, "GFX\\A.TGA"); // in place
    EXPECT_EQ(texture.textureId, name);
    EXPECT_EQ(texture.width, 16u); // still the checkerboard
}

TEST_F(GLTextureTest, AssigningAnotherNameGivesTheOldOneBack) {
    GLTexture texture("gfx\\a.tga");
    const std::uint32_t name = texture.textureId;

    texture = "gfx\\b.tga";

    EXPECT_EQ(texture.name, "GFX\\B.TGA");
    EXPECT_EQ(entries(), 1u);
    EXPECT_FALSE(isTexture(name) && texture.textureId != name);
}

TEST_F(GLTextureTest, AssigningAHandleTakesAReference) {
    GLTexture texture("gfx\\a.tga");
    {
        const GLTexture other("gfx\\b.tga");
        texture = other;
    }
    GLTexture& itself = texture;
    texture = itself;

    EXPECT_EQ(texture.name, "GFX\\B.TGA");
    EXPECT_EQ(entries(), 1u);
    EXPECT_TRUE(isTexture(texture.textureId));
}

TEST_F(GLTextureTest, ANullNameIsAMissingFile) {
    GLTexture texture(nullptr);
    texture = static_cast<const char*>(nullptr);

    EXPECT_EQ(texture.name, "");
    EXPECT_EQ(texture.width, 16u);
}

TEST_F(GLTextureTest, TexturesCompareByTheirGlNamesAsUnsignedNumbers) {
    GLTexture low("gfx\\a.tga");
    GLTexture high("gfx\\b.tga");
    low.textureId = 1;
    high.textureId = 0xFFFFFFFF;

    EXPECT_TRUE(low < high && low <= high && high > low && high >= low && low != high);
    EXPECT_FALSE(low == high);
    low.textureId = high.textureId;
    EXPECT_TRUE(low == high && low <= high && low >= high);
}

TEST_F(GLTextureTest, AnotherThreadNeitherCountsNorFrees) {
    const GLTexture texture("gfx\\a.tga");
    std::thread([] { const GLTexture visitor("gfx\\a.tga"); }).join();
    std::thread([] {
        GLTextureManager::freeTexture("gfx\\a.tga");
        GLTextureManager::freeTexture("gfx\\a.tga");
    }).join();

    EXPECT_EQ(entries(), 1u);
    EXPECT_TRUE(isTexture(texture.textureId));
}

TEST_F(GLTextureTest, TheFirstRowOfThePictureIsAtTextureCoordinateZero) {
    TgaFile file{.width = 8, .height = 8};
    for (int i = 0; i < 64; ++i) {
        file.data += i < 32 ? TgaFile::pixel(0, 0, 255, 255) : TgaFile::pixel(255, 0, 0, 255);
    }
    data.write("gfx/a.tga", file.bytes());
    const GLTexture texture("gfx\\a.tga");
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture.textureId);

    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2f(0.0f, 0.0f);
    glTexCoord2f(1.0f, 0.0f);
    glVertex2f(8.0f, 0.0f);
    glTexCoord2f(1.0f, 1.0f);
    glVertex2f(8.0f, 8.0f);
    glTexCoord2f(0.0f, 1.0f);
    glVertex2f(0.0f, 8.0f);
    glEnd();

    EXPECT_EQ(pixelAt(4, 1), (PixelColour{255, 0, 0}));
    EXPECT_EQ(pixelAt(4, 6), (PixelColour{0, 0, 255}));
}

} // namespace tarnwick
