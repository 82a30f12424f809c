#include "console/GLConsole.h"
#include "game/Game.h"
#include "graphics/DynamicPolygonRenderer.h"
#include "graphics/KeyMap.h"
#include "graphics/LevelGeometryRenderer.h"
#include "level/Level.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/ComparePictures.h"
#include "support/GameSceneTest.h"
#include "support/SceneAccess.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace tarnwick {

/// Scenes in a window of 200 by 150 pixels, compared with the pictures that lie beside this file.
/// `scripts/renew-pictures` writes those anew.
class PicturesTest : public GameSceneTest {
protected:
    PicturesTest()
        : GameSceneTest(200, 150)
        , pictures(treeFolder() / "tests" / "pictures") {
        writePicture("gfx/drop.tga", 32, [](std::int32_t x, std::int32_t y) {
            const double distance = std::hypot(x - 15.5, y - 15.5) / 16.0;
            const double alpha = std::clamp((0.95 - distance) / 0.5, 0.0, 1.0);
            return Texel{white, static_cast<std::uint8_t>(std::lround(alpha * 255.0))};
        });
        writePicture("gfx/checks.tga", 64, [](std::int32_t x, std::int32_t y) {
            return Texel{(x / 32 + y / 32) % 2 == 0 ? FramePicture::Pixel{150, 110, 60}
                                                    : FramePicture::Pixel{110, 75, 40}};
        });
        writePicture("gfx/letters.tga", 128, [](std::int32_t x, std::int32_t y) {
            const bool ink = (x % 8) * 16 / 8 > (x / 8) % 4 && (y % 8) * 16 / 8 > (y / 8) % 8;
            return Texel{white, static_cast<std::uint8_t>(ink ? 255 : 0)};
        });
        data.write("cfg/water.cfg",
                   "waterTexture = gfx\\drop.tga steamTexture = gfx\\drop.tga iceTexture = gfx\\drop.tga "
                   "water_color_r = 0.2 water_color_g = 0.85 water_color_b = 1 water_color_a = 0.5 "
                   "water_outline_color_g = 0.2 water_outline_color_b = 0.3 water_outline_color_a = 0.9 "
                   "water_outline_size = 8 steam_color_r = 1 steam_color_g = 0.95 steam_color_b = 0.87 "
                   "steam_color_a = 0.3 steam_outline_color_r = 0.8 steam_outline_color_a = 0.1 "
                   "steam_outline_size = 8 steamExpansion = 12 ice_color_r = 0.8 ice_color_g = 1 "
                   "ice_color_b = 1 ice_color_a = 0.95 ice_outline_color_b = 0.5 ice_outline_color_a = 0.9 "
                   "ice_outline_size = 6 iceExpansion = 6 velocityExpansion = 0.02 maxVelocityExpansion = 6");
        data.write("cfg/game.cfg",
                   "font = gfx\\letters.tga background_r = 0.1 background_g = 0.25 background_b = 0.35");
        data.write("cfg/console.cfg",
                   "fontTextureName = gfx\\letters.tga fontSize = 8 output_background_b = 0.3 "
                   "output_background_a = 0.7 output_text_r = 1 output_text_g = 1 output_text_b = 0.8 "
                   "input_background_b = 0.2 input_border_r = 0.8 input_border_g = 0.5 input_text_g = 1");
        GLConsole::initialise();
    }

    static std::filesystem::path treeFolder() { return TARNWICK_SOURCE_FOLDER; }

    /// Two walls behind the water, one in front of it, a floor and a lift.
    void addRoom() {
        addSquare(0, 150, 300, "checks", 0);
        addSquare(0, 450, 800, "checks", 1);
        addSquare(500, 250, 200, "red", 1);
        addSquare(330, 330, 90, "yellow", 3);
        addSquare(180, 60, 120, "green", 2);
    }
    /// A pool on the floor and a stream into it.
    static void addPool() {
        for (int i = 0; i < 40; ++i) {
            addWater(120.0f + 9.0f * static_cast<float>(i % 20), 440.0f - 9.0f * static_cast<float>(i / 20));
        }
        for (int i = 0; i < 16; ++i) {
            const float y = 100.0f + 20.0f * static_cast<float>(i);
            addWater(150.0f + static_cast<float>(i), y);
            Particle& particle = ParticleManager::particles.back();
            particle.speed = 20.0f * static_cast<float>(i);
            for (int age = 0; age < 3; ++age) {
                particle.trail[age] = {150.0f + static_cast<float>(i),
                                       y - 8.0f * static_cast<float>(age + 1)};
            }
        }
    }
    static void addSteamAndIce() {
        for (int i = 0; i < 12; ++i) {
            addWater(600.0f + 12.0f * static_cast<float>(i % 4), 120.0f + 25.0f * static_cast<float>(i / 4));
            ParticleManager::particles.back().temperature = 120.0f;
        }
        ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
        for (int i = 0; i < 19; ++i) {
            const double angle = 2.4 * i;
            const double distance = 9.0 * std::sqrt(static_cast<double>(i));
            Particle& member = group.members.emplace_back();
            member.position = {static_cast<float>(440.0 + distance * std::cos(angle)),
                               static_cast<float>(400.0 + distance * std::sin(angle))};
        }
    }

    /// Compares the picture of this moment with the one in the file, or writes that when asked to.
    void expectPicture(const std::string& name) const {
        Game::drawPicture();
        expectPictureAsFile(picture(), pictures / (name + ".png"));
    }

    std::filesystem::path pictures;
};

TEST_F(PicturesTest, LayersBehindAndInFrontOfTheWater) {
    addRoom();
    play();
    addPool();

    expectPicture("layers");
}

TEST_F(PicturesTest, WaterSteamAndIce) {
    addRoom();
    play();
    addPool();
    addSteamAndIce();

    expectPicture("matter");
}

TEST_F(PicturesTest, AViewThatIsTurnedZoomedOutAndShaken) {
    addRoom();
    play();
    addPool();
    SceneAccess::placeCamera({400.0f, 300.0f}, {15.0f, -10.0f}, 35.0f, 1.5f);

    expectPicture("turned");
}

TEST_F(PicturesTest, ALiftThatHasTravelled) {
    addRoom();
    play();
    Level::polygons.back().moveable = true;
    Level::polygons.back().offsetX = 90.0f;
    Level::polygons.back().offsetY = 110.0f;
    LevelGeometryRenderer::initialise();
    DynamicPolygonRenderer::initialise();
    addPool();

    expectPicture("lift");
}

TEST_F(PicturesTest, PausedOverTheLevel) {
    addRoom();
    play();
    addPool();
    GLConsole::runLine("Pause true");

    expectPicture("paused");
}

TEST_F(PicturesTest, TheConsoleOverTheLevel) {
    addRoom();
    play();
    addPool();
    GLConsole::clear();
    GLConsole::print("\nabcdefgh\n\tIJKLMNOP\n0123456789");
    Game::keyboardPressed(key::console);
    for (const char letter : {'A', 'B', 'C'}) {
        Game::keyboardPressed(static_cast<std::uint32_t>(letter));
    }

    expectPicture("console");
}

TEST_F(PicturesTest, TheFreeCameraAndTheDebugDrawings) {
    addRoom();
    play();
    addPool();
    addSteamAndIce();
    ParticleGroupMover::groups.back().centre = {250.0f, 150.0f};
    ParticleGroupMover::groups.back().radius = 70.0f;
    for (const char* command : {"FreeCamera true", "DrawTriangles true", "ParticleGroupDraw true"}) {
        GLConsole::runLine(command);
    }

    expectPicture("debug");
}

TEST_F(PicturesTest, AMissingLayerIsFarBeyondTheTolerance) {
    addRoom();
    play();
    addPool();
    Game::drawPicture();
    const FramePicture whole = picture();
    for (std::size_t missing = 0; missing < level.polygons.size(); ++missing) {
        const LevelFile all = level;
        level.polygons.erase(level.polygons.begin() + static_cast<std::ptrdiff_t>(missing));
        play();
        addPool();

        Game::drawPicture();

        EXPECT_GT(differenceOf(picture(), whole), differentShare) << missing;
        level = all;
    }
    GLConsole::runLine("ParticleDraw false");
    Game::drawPicture();
    EXPECT_GT(differenceOf(picture(), whole), differentShare) << "the water";
}

} // namespace tarnwick
