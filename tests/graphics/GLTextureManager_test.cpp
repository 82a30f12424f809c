#include "graphics/GLTextureManager.h"

#include "core/GLTexture.h"
#include "support/GLTest.h"
#include "support/TgaFile.h"

#include <SDL_image.h>
#include <sys/stat.h>

#include <random>
#include <string>
#include <utility>

namespace tarnwick {

class GLTextureManagerTest : public GLTest {
protected:
    using Strings = std::list<std::string>;

    static Strings list() {
        Strings lines;
        GLTextureManager::getTextureList(lines);
        return lines;
    }

    /// A TGA file of one colour.
    static std::string picture(std::uint32_t width, std::uint32_t height) {
        TgaFile file{.width = width, .height = height};
        for (std::uint32_t i = 0; i < width * height; ++i) {
            file.data += TgaFile::pixel(10, 20, 30, 40);
        }
        return file.bytes();
    }

    /// A picture of 8 bits a pixel.
    static void writePalettePicture(const char* name, int width, int height) {
        SDL_Surface* const surface =
            SDL_CreateRGBSurfaceWithFormat(0, width, height, 8, SDL_PIXELFORMAT_INDEX8);
        SDL_SaveBMP(surface, name);
        SDL_FreeSurface(surface);
    }

    static GLint levelParameter(std::uint32_t textureId, GLenum parameter) {
        GLint value = 0;
        glBindTexture(GL_TEXTURE_2D, textureId);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, parameter, &value);
        return value;
    }

    /// A file that nothing can read shows as the checkerboard, and the list says so.
    void expectCheckerboard(const std::string& name, const std::string& bytes) const {
        data.write(name, bytes);
        const GLTexture texture(name);
        EXPECT_EQ(texture.width, 16u) << name;
        EXPECT_EQ(texture.height, 16u) << name;
        EXPECT_FALSE(texture.hasAlpha) << name;
        EXPECT_EQ(list(), Strings{texture.name + " (loading failed)  : 32 BIT"});
    }
};

TEST_F(GLTextureManagerTest, AMissingFileIsACheckerboardAndMarked) {
    const GLTexture texture("gfx\\none.tga");
    std::uint8_t pixels[16 * 16 * 4] = {};
    glBindTexture(GL_TEXTURE_2D, texture.textureId);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, pixels);

    EXPECT_EQ(texture.width, 16u);
    EXPECT_EQ(texture.height, 16u);
    EXPECT_FALSE(texture.hasAlpha);
    EXPECT_EQ(list(), Strings{"GFX\\NONE.TGA (loading failed)  : 32 BIT"});
    for (std::size_t i = 0; i < 256; ++i) {
        const std::uint8_t shade = (i % 16 + i / 16) % 2 == 0 ? 255 : 0;
        EXPECT_EQ(pixels[i * 4], shade) << i;
        EXPECT_EQ(pixels[i * 4 + 3], 255) << i;
    }
}

TEST_F(GLTextureManagerTest, BytesAreFourAPixelAtEveryDetailLevel) {
    data.write("a.tga", picture(8, 4));
    writePalettePicture("b.bmp", 6, 5);
    const GLTexture a("a.tga");
    const GLTexture b("b.bmp");
    const std::uint32_t bytes = (8 * 4 + 6 * 5) * 4;

    for (const std::uint32_t level : {0u, 1u, 2u}) {
        GLTextureManager::setTextureDetailLevel(level);
        EXPECT_EQ(GLTextureManager::getTextureBytesUsed(), bytes) << level;
    }
    EXPECT_EQ(list(), (Strings{"A.TGA : 32 BIT", "B.BMP : 8 BIT"}));
}

TEST_F(GLTextureManagerTest, DetailLevelsAboveTwoDoNothing) {
    GLTextureManager::setTextureDetailLevel(2);
    GLTextureManager::setTextureDetailLevel(3);

    EXPECT_EQ(GLTextureManager::getTextureDetailLevel(), 2u);
}

TEST_F(GLTextureManagerTest, TheCoarsestLevelHalvesAndTheOthersKeepTheSize) {
    data.write("a.tga", picture(8, 4));
    const GLTexture texture("a.tga");
    const GLint format = levelParameter(texture.textureId, GL_TEXTURE_INTERNAL_FORMAT);

    GLTextureManager::setTextureDetailLevel(1);
    const GLint width = levelParameter(texture.textureId, GL_TEXTURE_WIDTH);
    const GLint coarseFormat = levelParameter(texture.textureId, GL_TEXTURE_INTERNAL_FORMAT);
    GLTextureManager::setTextureDetailLevel(2);

    EXPECT_EQ(width, 8);
    EXPECT_NE(format, coarseFormat);
    EXPECT_EQ(levelParameter(texture.textureId, GL_TEXTURE_WIDTH), 4);
    EXPECT_EQ(levelParameter(texture.textureId, GL_TEXTURE_HEIGHT), 2);
    EXPECT_EQ(texture.width, 8u);
}

TEST_F(GLTextureManagerTest, AnImageOfOnePixelStaysOnePixelAtTheCoarsestLevel) {
    GLTextureManager::setTextureDetailLevel(2);
    writePalettePicture("a.bmp", 1, 1);

    const GLTexture texture("a.bmp");

    EXPECT_EQ(texture.width, 1u);
    EXPECT_EQ(levelParameter(texture.textureId, GL_TEXTURE_WIDTH), 1);
    EXPECT_EQ(levelParameter(texture.textureId, GL_TEXTURE_HEIGHT), 1);
}

TEST_F(GLTextureManagerTest, ATgaTooSmallForTheOwnLoaderGoesToSdl) {
    data.write("a.tga", picture(3, 3));

    const GLTexture texture("a.tga");

    EXPECT_EQ(texture.width, 3u);
    EXPECT_EQ(list(), Strings{"A.TGA : 32 BIT"});
}

TEST_F(GLTextureManagerTest, TheFilteringLevelIsAtLeastOneAndHoldsForEveryTexture) {
    constexpr GLenum anisotropy = 0x84FE;
    const GLTexture texture("a.tga");
    GLTextureManager::setAnisotropicFilteringLevel(2);
    GLint level = 0;
    glBindTexture(GL_TEXTURE_2D, texture.textureId);
    glGetTexParameteriv(GL_TEXTURE_2D, anisotropy, &level);

    ASSERT_TRUE(GLTextureManager::anisotropicFilteringAvailable());
    EXPECT_EQ(level, 2);
    GLTextureManager::setAnisotropicFilteringLevel(0);
    EXPECT_EQ(GLTextureManager::getAnisotropicFilteringLevel(), 1u);
}

TEST_F(GLTextureManagerTest, ANewContextIsFilledAgainUnderTheOldNames) {
    data.write("a.tga", picture(8, 8));
    const GLTexture a("a.tga");
    const GLTexture b("b.tga");
    GLWindow::close();
    GLWindow::createOffscreen(side, side);
    const GLTexture early("early.tga"); // the new context would give the first name again

    GLTextureManager::reloadAllTextures();

    EXPECT_EQ(levelParameter(a.textureId, GL_TEXTURE_WIDTH), 8);
    EXPECT_EQ(levelParameter(b.textureId, GL_TEXTURE_WIDTH), 16);
    EXPECT_NE(early, a);
    EXPECT_NE(early, b);
}

TEST_F(GLTextureManagerTest, ReloadingReadsTheFilesAnew) {
    const GLTexture texture("a.tga");
    data.write("a.tga", picture(8, 8));

    GLTextureManager::reloadAllTextures();

    EXPECT_EQ(list(), Strings{"A.TGA : 32 BIT"});
    EXPECT_EQ(GLTextureManager::getTextureBytesUsed(), 8u * 8 * 4);
    EXPECT_EQ(levelParameter(texture.textureId, GL_TEXTURE_WIDTH), 8);
}

TEST_F(GLTextureManagerTest, ShuttingDownDropsEveryEntryAndHandlesMayOutliveIt) {
    const GLTexture texture("a.tga");
    GLTextureManager::setAnisotropicFilteringLevel(2);

    GLTextureManager::shutdown();

    EXPECT_TRUE(list().empty());
    EXPECT_EQ(GLTextureManager::getAnisotropicFilteringLevel(), 1u);
    EXPECT_EQ(glIsTexture(texture.textureId), GL_FALSE);
}

TEST_F(GLTextureManagerTest, InitialisingStartsOver) {
    const GLTexture texture("a.tga");
    GLTextureManager::setTextureDetailLevel(2);

    GLTextureManager::initialise();

    EXPECT_TRUE(list().empty());
    EXPECT_EQ(GLTextureManager::getTextureDetailLevel(), 0u);
    EXPECT_EQ(GLTextureManager::getAnisotropicFilteringLevel(), 1u);
}

TEST_F(GLTextureManagerTest, BrokenPicturesAreCheckerboards) {
    const std::string tga = picture(8, 8);
    const std::string png = "\x89PNG\r\n\x1A\n";
    const std::string zeroPng = png + std::string("\0\0\0\x0DIHDR\0\0\0\0\0\0\0\0\x08\6\0\0\0", 21);
    expectCheckerboard("empty.tga", "");
    expectCheckerboard("empty.png", "");
    expectCheckerboard("cut.tga", tga.substr(0, tga.size() - 1));
    expectCheckerboard("header.tga", tga.substr(0, 18));
    expectCheckerboard("short.tga", tga.substr(0, 17));
    expectCheckerboard("zero.tga", TgaFile{.width = 0, .height = 0}.bytes());
    expectCheckerboard("narrow.tga", TgaFile{.width = 0, .height = 8}.bytes());
    expectCheckerboard("zero.png", zeroPng);
    expectCheckerboard("head.png", png);
    expectCheckerboard("text.bmp", "BM this is no picture at all");
    expectCheckerboard("text.jpg", "\xFF\xD8\xFF\xE0 this is no picture at all");
    expectCheckerboard("noExtension", "this is no picture at all");
}

TEST_F(GLTextureManagerTest, AbsurdSizesAreCheckerboardsAndTakeNoMemory) {
    const std::string png = "\x89PNG\r\n\x1A\n";
    std::string bmp =
        "BM" + std::string(16, '\0') + "\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x7F" + std::string(64, '\1');
    const std::string hugePng =
        png + std::string("\0\0\0\x0DIHDR\x7F\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x08\6\0\0\0", 21);
    for (const std::uint8_t type : {std::uint8_t{2}, std::uint8_t{10}}) {
        expectCheckerboard("huge.tga",
                           TgaFile{.imageType = type, .width = 65535, .height = 65535, .data = "x"}.bytes());
        expectCheckerboard("large.tga",
                           TgaFile{.imageType = type, .width = 8192, .height = 8192, .data = "x"}.bytes());
        expectCheckerboard(
            "huge24.tga",
            TgaFile{.imageType = type, .width = 65535, .height = 9, .bitsPerPixel = 24, .data = "x"}.bytes());
    }
    expectCheckerboard("huge.png", hugePng);
    expectCheckerboard("huge.bmp", bmp);
    bmp[25] = '\xFF'; // a negative height: top row first
    expectCheckerboard("huge2.bmp", bmp);
    const std::string gifPicture(",\0\0\0\0\xFF\xFF\xFF\xFF\0", 10);
    expectCheckerboard("huge.gif", std::string("GIF89a\x04\0\x04\0\0\0\0", 13) + gifPicture);
    const std::string gifExtension("!\xF9\4\0\0\0\0\0", 8);
    expectCheckerboard("huge2.gif",
                       std::string("GIF89a\x04\0\x04\0\x80\0\0\1\1\1\2\2\2", 19) + gifExtension + gifPicture);
    expectCheckerboard("huge.jpg",
                       std::string("\xFF\xD8\xFF\xE0\0\4ab\xFF\xC2\0\x0B\x08\xFF\xFF\xFF\xFF\1\1\x11\0", 21));
}

// The fault: a kind of picture whose head nobody looks at takes gigabytes for a file of some bytes.
TEST_F(GLTextureManagerTest, KindsThatTheGameDoesNotTakeAreRefusedBeforeTheyAreDecoded) {
    const std::pair<const char*, std::string> files[] = {
        {"a.ppm", "P6\n2 2\n255\n" + std::string(12, '\x7F')},
        {"a.pgm", "P5\n2 2\n255\n" + std::string(4, '\x7F')},
        {"a.xpm", "/* XPM */\nstatic char* x[] = {\n\"1 1 1 1\",\n\"a c #FF0000\",\n\"a\"};\n"},
        {"a.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"4\" height=\"4\"><rect width=\"4\" "
                  "height=\"4\"/></svg>"},
        {"a.ico", std::string("\0\0\1\0\1\0\1\1\0\0\1\0\x20\0", 14)},
    };
    for (const auto& [name, bytes] : files) {
        expectCheckerboard(name, bytes);
    }
}

TEST_F(GLTextureManagerTest, EachKindThatTheGameTakesIsRead) {
    SDL_Surface* const surface = SDL_CreateRGBSurfaceWithFormat(0, 20, 12, 24, SDL_PIXELFORMAT_RGB24);
    IMG_SavePNG(surface, "a.png");
    IMG_SaveJPG(surface, "a.jpg", 90);
    SDL_SaveBMP(surface, "a.bmp");
    SDL_FreeSurface(surface);
    const std::string clear = "\x80"; // before the codes would need nine bits
    const std::string hundred(100, '\0');
    data.write("a.gif", std::string("GIF89a\x14\0\x0C\0\x80\0\0\0\0\0\xFF\xFF\xFF!\xF9\4\0\0\0\0\0", 27) +
                            std::string(",\0\0\0\0\x14\0\x0C\0\0\7\xF4", 12) + clear + hundred + clear +
                            hundred + clear + hundred.substr(60) + std::string("\x81\0;", 3));

    for (const char* name : {"a.png", "a.jpg", "a.bmp", "a.gif"}) {
        const GLTexture texture(name);
        EXPECT_EQ(texture.width, 20u) << name;
        EXPECT_EQ(texture.height, 12u) << name;
    }
}

// The fault: a start that waits for ever for somebody to write into it.
TEST_F(GLTextureManagerTest, APipeInAPicturesPlaceIsACheckerboard) {
    for (const char* name : {"pipe.tga", "pipe.png"}) {
        ASSERT_EQ(mkfifo(name, 0600), 0);
        EXPECT_EQ(GLTexture(name).width, 16u) << name;
    }
}

TEST_F(GLTextureManagerTest, RandomBytesNeverDoHarm) {
    constexpr int files = 300;
    std::mt19937 random(1);
    const std::string heads[] = {TgaFile{.width = 16, .height = 16}.bytes(),
                                 TgaFile{.imageType = 10, .width = 16, .height = 16}.bytes(),
                                 TgaFile{.imageType = 10, .bitsPerPixel = 24}.bytes(),
                                 TgaFile{.colourMapType = 1, .imageType = 9, .bitsPerPixel = 8}.bytes(),
                                 "BM",
                                 "\x89PNG\r\n\x1A\n",
                                 "GIF89a",
                                 "P6 9 9 255\n",
                                 ""};
    for (int i = 0; i < files; ++i) {
        std::string bytes = heads[static_cast<std::size_t>(i) % std::size(heads)];
        const std::size_t length = random() % 400;
        for (std::size_t j = 0; j < length; ++j) {
            bytes += static_cast<char>(random());
        }
        data.write("random.tga", bytes);
        const GLTexture texture("random.tga");
        EXPECT_GE(texture.width, 1u);
        EXPECT_LE(texture.width, 65535u);
    }
}

/// Without a window.
class GLTextureManagerHeadlessTest : public ModuleTest {
protected:
    DataFolder data;
};

TEST_F(GLTextureManagerHeadlessTest, NoFileIsReadWithoutAGlContext) {
    data.write("a.tga", TgaFile{.data = std::string(64, 'x')}.bytes());
    GLTextureManager::initialise();
    const GLTexture a("a.tga");
    const GLTexture b("b.tga");
    const GLTexture again("a.tga");

    EXPECT_EQ(a.width, 16u);
    EXPECT_NE(a, b);
    EXPECT_EQ(a, again);
    EXPECT_EQ(GLTextureManager::getTextureBytesUsed(), 2u * 16 * 16 * 4);
}

TEST_F(GLTextureManagerHeadlessTest, PicturesAreReadOnceThereIsAContext) {
    data.write("a.tga", TgaFile{.data = std::string(64, 'x')}.bytes());
    const GLTexture texture("a.tga");
    GLWindow::createOffscreen(32, 32);

    GLTextureManager::reloadAllTextures();

    std::list<std::string> list;
    GLTextureManager::getTextureList(list);
    EXPECT_EQ(list, std::list<std::string>{"A.TGA : 32 BIT"});
    EXPECT_EQ(glIsTexture(texture.textureId), GL_TRUE);
    GLTextureManager::shutdown();
}

TEST_F(GLTextureManagerHeadlessTest, OperationsWithoutAContextAreHarmless) {
    const GLTexture texture("a.tga");
    GLTextureManager::setTextureDetailLevel(2);
    GLTextureManager::setAnisotropicFilteringLevel(4);
    GLTextureManager::reloadAllTextures();
    GLTextureManager::shutdown();

    EXPECT_EQ(GLTextureManager::getAnisotropicFilteringLevel(), 1u);
    EXPECT_EQ(GLTextureManager::getTextureBytesUsed(), 0u);
}

} // namespace tarnwick
