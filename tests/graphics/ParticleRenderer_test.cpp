#include "graphics/ParticleRenderer.h"

#include "console/GLConsole.h"
#include "core/Comfort.h"
#include "game/Camera.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/DrawingTest.h"

#include <GL/gl.h>

#include <string>

namespace tarnwick {

/// White opaque sprites; water blue, steam green, ice red, and no outlines, unless a test says otherwise.
class ParticleRendererTest : public DrawingTest {
protected:
    ParticleRendererTest() {
        writeFlatPicture("gfx/sprite.tga", white);
        settings =
            "waterTexture = gfx\\sprite.tga steamTexture = gfx\\sprite.tga iceTexture = gfx\\sprite.tga "
            "water_color_b = 1 water_color_a = 1 steam_color_g = 1 steam_color_a = 1 "
            "ice_color_r = 1 ice_color_a = 1 particleKillTime = 2 ";
    }

    /// Reads the settings, with `more` behind them: the last value of a key counts.
    void start(const std::string& more = "") const {
        data.write("cfg/water.cfg", settings + more);
        ParticleManager::initialise();
        ParticleRenderer::initialise();
    }

    /// A particle at rest at (x, y), its trail far outside the picture.
    static Particle particleAt(float x, float y, float temperature = 20.0f) {
        Particle particle;
        particle.position = {x, y};
        for (Vector2& place : particle.trail) {
            place = {-1000.0f, -1000.0f};
        }
        particle.temperature = temperature;
        return particle;
    }
    static Particle& addWater(float x, float y) {
        return ParticleManager::particles.emplace_back(particleAt(x, y));
    }
    static Particle& addSteam(float x, float y) {
        return ParticleManager::particles.emplace_back(particleAt(x, y, steamTemperature));
    }
    static Particle& addIce(float x, float y) {
        return ParticleGroupMover::groups.emplace_back().members.emplace_back(particleAt(x, y, -5.0f));
    }

    static void dropTheSpriteOfWater() { ParticleRenderer::state.water.texture.reset(); }
    static const ParticleRenderer::Particles& waterDrawn() { return ParticleRenderer::state.waterParticles; }

    static void draw() {
        beginPicture();
        ParticleRenderer::draw();
    }

    std::string settings;
};

TEST_F(ParticleRendererTest, WithoutTheSpriteOfWaterNothingIsDrawn) {
    start();
    dropTheSpriteOfWater();
    addWater(20.0f, 20.0f);
    addSteam(40.0f, 20.0f);
    addIce(60.0f, 20.0f);

    draw();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(ParticleRendererTest, AfterShutdownNothingIsDrawn) {
    start();
    addWater(20.0f, 20.0f);

    ParticleRenderer::shutdown();
    draw();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(ParticleRendererTest, TheCommandHidesAllParticlesAndShowsThemAgain) {
    start();
    addWater(20.0f, 20.0f);
    addSteam(40.0f, 20.0f);
    addIce(60.0f, 20.0f);

    GLConsole::runLine("ParticleDraw false");
    draw();
    const std::int32_t litWhileHidden = litPixels();
    GLConsole::runLine("ParticleDraw true");
    draw();

    EXPECT_EQ(litWhileHidden, 0);
    EXPECT_EQ(pixel(20, 20), blue);
    EXPECT_EQ(pixel(40, 20), green);
    EXPECT_EQ(pixel(60, 20), red);
    EXPECT_EQ(ParticleManager::particles.size(), 2u);
}

TEST_F(ParticleRendererTest, TheCommandAnswersWithItsValue) {
    start();
    GLConsole::clear();

    GLConsole::runLine("ParticleDraw");
    GLConsole::runLine("ParticleDraw false");

    EXPECT_EQ(GLConsole::outputText(),
              "\nParticleDraw\nParticleDraw is true\nParticleDraw false\nParticleDraw is now false");
}

TEST_F(ParticleRendererTest, InitialiseDrawsAgainAfterTheCommandHidThem) {
    start();
    GLConsole::runLine("ParticleDraw false");
    addWater(20.0f, 20.0f);

    ParticleRenderer::initialise();
    draw();

    EXPECT_EQ(pixel(20, 20), blue);
}

TEST_F(ParticleRendererTest, StartAndStopAreTold) {
    data.write("cfg/water.cfg", settings);

    ParticleRenderer::initialise();

    EXPECT_EQ(GLConsole::outputText(),
              "\nShutting down particle renderer..\nInitialising particle renderer..");
    EXPECT_TRUE(GLConsole::commands().contains("PARTICLEDRAW"));

    GLConsole::clear();
    ParticleRenderer::shutdown();

    EXPECT_EQ(GLConsole::outputText(), "\nShutting down particle renderer..");
    EXPECT_FALSE(GLConsole::commands().contains("PARTICLEDRAW"));
}

TEST_F(ParticleRendererTest, AtRestASpriteHasHalfSizeTwoAndItsTrailCopiesThree) {
    start();
    Particle& particle = addWater(20.0f, 20.0f);
    particle.trail[0] = {50.0f, 40.0f};

    draw();

    EXPECT_EQ(litInRow(18), 4);
    EXPECT_EQ(litInRow(21), 4);
    EXPECT_EQ(pixel(17, 20), black);
    EXPECT_EQ(pixel(18, 20), blue);
    EXPECT_EQ(pixel(21, 20), blue);
    EXPECT_EQ(pixel(22, 20), black);
    EXPECT_EQ(litInRow(17), 0);
    EXPECT_EQ(litInRow(22), 0);
    EXPECT_EQ(litInRow(37), 6);
    EXPECT_EQ(litInRow(42), 6);
    EXPECT_EQ(litInRow(43), 0);
}

TEST_F(ParticleRendererTest, TrailCopiesOfWaterFadeByHalves) {
    start();
    Particle& particle = addWater(10.0f, 20.0f);
    particle.trail[0] = {20.0f, 20.0f};
    particle.trail[1] = {30.0f, 20.0f};
    particle.trail[2] = {40.0f, 20.0f};

    draw();

    EXPECT_EQ(pixel(10, 20), blue);
    EXPECT_PRED2(alike, pixel(20, 20), (FramePicture::Pixel{0, 0, 128}));
    EXPECT_PRED2(alike, pixel(30, 20), (FramePicture::Pixel{0, 0, 64}));
    EXPECT_PRED2(alike, pixel(40, 20), (FramePicture::Pixel{0, 0, 32}));
}

TEST_F(ParticleRendererTest, TheThirdTrailCopyOfSteamIsATenthOfTheWaters) {
    start();
    Particle& particle = addSteam(10.0f, 20.0f);
    particle.trail[0] = {20.0f, 20.0f};
    particle.trail[1] = {30.0f, 20.0f};
    particle.trail[2] = {40.0f, 20.0f};

    draw();

    EXPECT_PRED2(alike, pixel(20, 20), (FramePicture::Pixel{0, 128, 0}));
    EXPECT_PRED2(alike, pixel(30, 20), (FramePicture::Pixel{0, 64, 0}));
    EXPECT_PRED2(alike, pixel(40, 20), (FramePicture::Pixel{0, 3, 0}));
}

TEST_F(ParticleRendererTest, SpeedSwellsASpriteUpToTheLimit) {
    start("velocityExpansion = 0.1 maxVelocityExpansion = 3 ");
    addWater(20.0f, 10.0f).speed = 20.0f;
    addWater(20.0f, 30.0f).speed = 1000.0f;

    draw();

    EXPECT_EQ(litInRow(10), 8);
    EXPECT_EQ(litInRow(30), 10);
}

TEST_F(ParticleRendererTest, TheExpansionsAreTakenWithoutTheirSign) {
    start("velocityExpansion = -0.1 maxVelocityExpansion = -3 ");
    addWater(20.0f, 10.0f).speed = 20.0f;
    addWater(20.0f, 30.0f).speed = 1000.0f;

    draw();

    EXPECT_EQ(litInRow(10), 8);
    EXPECT_EQ(litInRow(30), 10);
}

TEST_F(ParticleRendererTest, SteamAndIceHaveExpansionsOfTheirOwn) {
    start("steamExpansion = 3 iceExpansion = 5 ");
    addWater(10.0f, 10.0f);
    addSteam(30.0f, 25.0f);
    addIce(50.0f, 45.0f);

    draw();

    EXPECT_EQ(litInRow(10), 4);
    EXPECT_EQ(litInRow(25), 10);
    EXPECT_EQ(litInRow(45), 14);
}

TEST_F(ParticleRendererTest, OutlinesAddTheirSizeToTheSprites) {
    start("water_color_a = 0 steam_color_a = 0 ice_color_a = 0 "
          "water_outline_color_r = 1 water_outline_color_a = 1 water_outline_size = 1 "
          "steam_outline_color_r = 1 steam_outline_color_a = 1 steam_outline_size = 2 steamExpansion = 3 "
          "ice_outline_color_r = 1 ice_outline_color_a = 1 ice_outline_size = 3 iceExpansion = 5 ");
    addWater(10.0f, 10.0f);
    addSteam(30.0f, 25.0f);
    addIce(50.0f, 45.0f);

    draw();

    EXPECT_EQ(litInRow(10), 6);
    EXPECT_EQ(litInRow(25), 14);
    EXPECT_EQ(litInRow(45), 20);
}

TEST_F(ParticleRendererTest, AnOutlineIsDrawnAtThePositionAlone) {
    start("water_color_a = 0 water_outline_color_r = 1 water_outline_color_a = 1 ");
    addWater(10.0f, 10.0f).trail[0] = {30.0f, 30.0f};

    draw();

    EXPECT_EQ(litInRow(10), 4);
    EXPECT_EQ(litInRow(30), 0);
}

TEST_F(ParticleRendererTest, AllOutlinesLieUnderAllSprites) {
    start("ice_outline_color_r = 1 ice_outline_color_g = 1 ice_outline_color_a = 1 ice_outline_size = 10 ");
    addWater(20.0f, 20.0f);
    addIce(28.0f, 20.0f);

    draw();

    EXPECT_EQ(pixel(20, 20), blue);
    EXPECT_EQ(pixel(24, 20), yellow);
    EXPECT_EQ(pixel(28, 20), red);
}

TEST_F(ParticleRendererTest, OutlinesOfSteamLieOverThoseOfWaterAndThoseOfIceOverSteam) {
    start("water_color_a = 0 steam_color_a = 0 ice_color_a = 0 "
          "water_outline_color_b = 1 water_outline_color_a = 1 "
          "steam_outline_color_g = 1 steam_outline_color_a = 1 "
          "ice_outline_color_r = 1 ice_outline_color_a = 1 ");
    addIce(24.0f, 20.0f);
    addSteam(22.0f, 20.0f);
    addWater(20.0f, 20.0f);

    draw();

    EXPECT_EQ(pixel(19, 20), blue);
    EXPECT_EQ(pixel(21, 20), green);
    EXPECT_EQ(pixel(23, 20), red);
}

TEST_F(ParticleRendererTest, TheOutlineOfADyingParticleFadesWithItsTimer) {
    start("water_color_a = 0 water_outline_color_r = 1 water_outline_color_a = 1 water_outline_size = 2 ");
    Particle& dying = addWater(20.0f, 20.0f);
    dying.dying = true;
    dying.killTimer = 0.5f;
    addWater(40.0f, 20.0f);

    draw();

    EXPECT_PRED2(alike, pixel(20, 20), (FramePicture::Pixel{64, 0, 0}));
    EXPECT_EQ(pixel(40, 20), red);
}

TEST_F(ParticleRendererTest, SpritesOfSteamLieOverWaterAndThoseOfIceOverSteam) {
    start();
    addWater(20.0f, 20.0f);
    addSteam(22.0f, 20.0f);
    addIce(24.0f, 20.0f);

    draw();

    EXPECT_EQ(pixel(19, 20), blue);
    EXPECT_EQ(pixel(21, 20), green);
    EXPECT_EQ(pixel(23, 20), red);
}

TEST_F(ParticleRendererTest, OfTwoParticlesTheOneThatIsFirstInTheListIsDrawnLast) {
    writeSplitPicture("gfx/split.tga", red, green);
    start("waterTexture = gfx\\split.tga water_color_r = 1 water_color_g = 1 ");
    addWater(20.0f, 20.0f);
    addWater(22.0f, 20.0f);

    draw();

    EXPECT_EQ(pixel(21, 20), green) << "the right half of the left particle lies on top";
}

TEST_F(ParticleRendererTest, ADyingParticleFadesWithItsTimer) {
    start();
    Particle& water = addWater(20.0f, 20.0f);
    Particle& ice = addIce(40.0f, 20.0f);
    water.dying = true;
    water.killTimer = 1.0f;
    ice.dying = true;
    ice.killTimer = 0.5f;

    draw();

    EXPECT_PRED2(alike, pixel(20, 20), (FramePicture::Pixel{0, 0, 128}));
    EXPECT_PRED2(alike, pixel(40, 20), (FramePicture::Pixel{64, 0, 0}));
}

TEST_F(ParticleRendererTest, AParticleWhoseTimerRanBelowZeroIsNotSeen) {
    start();
    Particle& particle = addWater(20.0f, 20.0f);
    particle.dying = true;
    particle.killTimer = -1.0f;

    draw();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(ParticleRendererTest, TheTimerOfAParticleThatIsNotDyingCountsForNothing) {
    start();
    addWater(20.0f, 20.0f).killTimer = 0.5f;

    draw();

    EXPECT_EQ(pixel(20, 20), blue);
}

TEST_F(ParticleRendererTest, AfterAGroupMeltedTheFourQuadsCoincide) {
    start("heatTransferRate = 0.5 roomTemperature = 20 ");
    ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
    group.centre = {20.0f, 20.0f};
    group.temperature = 5.0f;
    group.members.push_back(particleAt(20.0f, 20.0f));
    ParticleGroupMover::runSimulation(0.0f, Camera::view(), ParticleManager::particles);
    ASSERT_EQ(ParticleManager::particles.size(), 1u);
    const Vector2 place = ParticleManager::particles.front().position;

    draw();

    const Particle& melted = ParticleManager::particles.front();
    EXPECT_EQ(melted.trail[0], place);
    EXPECT_EQ(melted.trail[1], place);
    EXPECT_EQ(melted.trail[2], place);
    EXPECT_EQ(litPixels(), 36) << "the copies are 6 units wide and cover the sprite";
}

TEST_F(ParticleRendererTest, AMemberOfAGroupIsIceWhateverItsTemperature) {
    start();
    addIce(20.0f, 20.0f).temperature = 150.0f;

    draw();

    EXPECT_EQ(pixel(20, 20), red);
}

TEST_F(ParticleRendererTest, AFreeParticleBelowZeroIsDrawnAsWater) {
    start();
    addWater(20.0f, 20.0f).temperature = -10.0f;

    draw();

    EXPECT_EQ(pixel(20, 20), blue);
}

TEST_F(ParticleRendererTest, IceSwellsByTheSpeedThatItsMembersHadWhenTheyFroze) {
    start("velocityExpansion = 0.1 maxVelocityExpansion = 3 ");
    Particle& member = addIce(20.0f, 20.0f);
    member.speed = 20.0f;
    ParticleGroupMover::groups.front().velocity = {500.0f, 0.0f};

    draw();

    EXPECT_EQ(litInRow(20), 8);
}

TEST_F(ParticleRendererTest, TexturingAndBlendingStayOn) {
    start();
    beginPicture();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);

    ParticleRenderer::draw();

    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
}

TEST_F(ParticleRendererTest, ASecondPictureTakesNoMemory) {
    start();
    for (int i = 0; i < 500; ++i) {
        addWater(20.0f, 20.0f);
    }
    draw();
    const Particle* const* const before = waterDrawn().data();

    draw();

    EXPECT_EQ(waterDrawn().data(), before);
    EXPECT_EQ(waterDrawn().size(), 500u);
}

/// Finds colours that stay, or water that vanishes where their file is missing.
TEST_F(ParticleRendererTest, TheClearColoursComeFromTheirOwnFile) {
    data.write("cfg/comfort.cfg", "clearWater = TRUE");
    Comfort::initialise();
    start();
    addWater(40.0f, 30.0f);
    draw();
    EXPECT_EQ(pixel(40, 30), blue) << "without the file";

    data.write("cfg/water_clear.cfg", "water_color_r = 1 water_color_g = 1 water_color_a = 1");
    ParticleRenderer::initialise();
    draw();
    EXPECT_EQ(pixel(40, 30), yellow);
}

} // namespace tarnwick
