#include "core/GLTexture.h"
#include "mechanisms/FxParticleManager.h"
#include "support/DrawingTest.h"

#include <GL/gl.h>

#include <list>

namespace tarnwick {

/// Pictures of one colour each, and particles of 20 by 20 pixels.
class FxParticleManagerDrawingTest : public DrawingTest {
protected:
    FxParticleManagerDrawingTest() {
        writeFlatPicture("gfx/white.tga", white);
        writeFlatPicture("gfx/green.tga", green);
        writeSplitPicture("gfx/split.tga", red, green);
    }
    ~FxParticleManagerDrawingTest() override {
        FxParticleManager::particles.clear(); // before the pictures go
    }

    FxParticle& add(const GLTexture& texture, float x, float y, Colour colour) {
        FxParticle particle;
        particle.position = {x, y};
        particle.size = 20.0f;
        particle.color = colour;
        particle.texture = &texture;
        FxParticleManager::addParticle(particle);
        return FxParticleManager::particles.back();
    }
    const GLTexture& picture(const char* name) { return textures.emplace_back(name); }

    static void draw() {
        beginPicture();
        FxParticleManager::draw();
    }

    static constexpr Colour opaque{1.0f, 1.0f, 1.0f, 1.0f};
    static constexpr Colour pureRed{1.0f, 0.0f, 0.0f, 1.0f};
    static constexpr Colour pureBlue{0.0f, 0.0f, 1.0f, 1.0f};
    std::list<GLTexture> textures;
};

TEST_F(FxParticleManagerDrawingTest, WithoutParticlesNothingIsDrawn) {
    draw();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(FxParticleManagerDrawingTest, AParticleIsASquareAboutItsPlaceInItsColour) {
    add(picture("gfx\\white.tga"), 40.0f, 30.0f, pureRed);

    draw();

    EXPECT_EQ(litPixels(), 400);
    EXPECT_EQ(pixel(30, 20), red);
    EXPECT_EQ(pixel(49, 39), red);
    EXPECT_EQ(pixel(29, 20), black);
    EXPECT_EQ(pixel(50, 39), black);
}

TEST_F(FxParticleManagerDrawingTest, ThePictureStandsUpright) {
    add(picture("gfx\\split.tga"), 40.0f, 30.0f, opaque);

    draw();

    EXPECT_EQ(pixel(34, 30), red);
    EXPECT_EQ(pixel(46, 30), green);
}

TEST_F(FxParticleManagerDrawingTest, ASizeBelowZeroTurnsTheSquareRound) {
    add(picture("gfx\\split.tga"), 40.0f, 30.0f, opaque).size = -20.0f;

    draw();

    EXPECT_EQ(litPixels(), 400);
    EXPECT_EQ(pixel(34, 30), green);
    EXPECT_EQ(pixel(46, 30), red);
}

TEST_F(FxParticleManagerDrawingTest, AlphaFadesWithTheLifeThatIsLeft) {
    FxParticle& particle = add(picture("gfx\\white.tga"), 40.0f, 30.0f, {1.0f, 1.0f, 1.0f, 0.8f});
    particle.lifeTime = 4.0f;
    particle.timeLeft = 1.0f;

    draw();

    EXPECT_PRED2(alike, pixel(40, 30), (FramePicture::Pixel{51, 51, 51})); // 0.8 / 4 of white
}

TEST_F(FxParticleManagerDrawingTest, AnAdditiveParticleAddsItsColourToWhatIsThere) {
    const GLTexture& flat = picture("gfx\\white.tga");
    const GLTexture& later = picture("gfx\\white.tga");
    // The greater pointer is drawn first.
    add(&flat > &later ? flat : later, 40.0f, 30.0f, pureRed);
    add(&flat > &later ? later : flat, 40.0f, 30.0f, pureBlue).useAlphaBlending = false;

    draw();

    EXPECT_EQ(pixel(40, 30), (FramePicture::Pixel{255, 0, 255}));
}

TEST_F(FxParticleManagerDrawingTest, BothBlendingsWorkWithinOneTexture) {
    const GLTexture& flat = picture("gfx\\white.tga");
    const Colour halfGrey{0.5f, 0.5f, 0.5f, 0.5f};
    for (int i = 0; i < 6; ++i) {
        add(flat, 10.0f, 10.0f + 0.0f * static_cast<float>(i), {0.0f, 0.0f, 0.0f, 0.0f}).useAlphaBlending =
            i % 2 == 0; // invisible, but they switch the blending to and fro
    }
    add(flat, 30.0f, 30.0f, pureBlue);
    add(flat, 60.0f, 30.0f, halfGrey).useAlphaBlending = false;

    draw();

    EXPECT_EQ(pixel(30, 30), blue);
    EXPECT_PRED2(alike, pixel(60, 30), (FramePicture::Pixel{64, 64, 64}));
    EXPECT_EQ(litPixels(), 800);
}

TEST_F(FxParticleManagerDrawingTest, EveryParticleHasItsOwnTexture) {
    const GLTexture& flat = picture("gfx\\white.tga");
    const GLTexture& leaf = picture("gfx\\green.tga");
    add(flat, 10.0f, 10.0f, opaque);
    add(leaf, 40.0f, 10.0f, opaque);
    add(flat, 70.0f, 10.0f, opaque);
    add(leaf, 10.0f, 40.0f, opaque);

    draw();

    EXPECT_EQ(pixel(10, 10), white);
    EXPECT_EQ(pixel(40, 10), green);
    EXPECT_EQ(pixel(70, 10), white);
    EXPECT_EQ(pixel(10, 40), green);
}

TEST_F(FxParticleManagerDrawingTest, AMissingPictureIsTheCheckerboard) {
    add(picture("gfx\\none.tga"), 40.0f, 30.0f, opaque).size = 16.0f;

    draw();

    const std::int32_t lit = litPixels();
    EXPECT_GT(lit, 0);
    EXPECT_LE(lit, 256);
}

TEST_F(FxParticleManagerDrawingTest, AParticleWithoutTextureIsPlain) {
    add(picture("gfx\\green.tga"), 40.0f, 30.0f, pureRed).texture = nullptr;

    draw();

    EXPECT_EQ(pixel(40, 30), red);
}

TEST_F(FxParticleManagerDrawingTest, TheGLIsLeftAsItWas) {
    add(picture("gfx\\white.tga"), 40.0f, 30.0f, pureRed).useAlphaBlending = false;
    beginPicture();
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glDisable(GL_BLEND);

    FxParticleManager::draw();

    GLint destination = 0;
    GLfloat colour[4] = {};
    glGetIntegerv(GL_BLEND_DST, &destination);
    glGetFloatv(GL_CURRENT_COLOR, colour);
    EXPECT_EQ(destination, GL_ONE_MINUS_SRC_ALPHA);
    EXPECT_EQ(colour[2], 1.0f);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

} // namespace tarnwick
