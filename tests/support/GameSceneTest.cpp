#include "support/GameSceneTest.h"

#include "console/GLConsole.h"
#include "game/BasicCommands.h"
#include "level/SurfaceTypeManager.h"
#include "particles/ParticleManager.h"
#include "support/PlayTest.h"

namespace tarnwick {

GameSceneTest::GameSceneTest(std::int32_t width, std::int32_t height)
    : DrawingTest(width, height) {
    writeFlatPicture("gfx/red.tga", red);
    writeFlatPicture("gfx/green.tga", green);
    writeFlatPicture("gfx/blue.tga", blue);
    writeFlatPicture("gfx/white.tga", white);
    writeFlatPicture("gfx/yellow.tga", yellow);
    data.write("cfg/water.cfg",
               "waterTexture = gfx\\white.tga steamTexture = gfx\\white.tga iceTexture = gfx\\white.tga "
               "water_color_b = 1 water_color_a = 1 steam_color_g = 1 steam_color_a = 1 "
               "ice_color_r = 1 ice_color_g = 1 ice_color_b = 1 ice_color_a = 1");
    data.write("cfg/game.cfg", "font = gfx\\white.tga");
    data.write(
        "cfg/console.cfg",
        "fontTextureName = gfx\\white.tga fontSize = 8 output_background_r = 1 output_background_a = 1 "
        "input_background_g = 1 output_text_g = 1 input_text_b = 1");
    BasicCommands::handOver();
    GLConsole::initialise();
    SurfaceTypeManager::initialise();
}

void GameSceneTest::addSquare(
    std::int32_t x, std::int32_t y, std::int32_t side, const std::string& picture, std::uint32_t layer) {
    LevelFile::PolygonRecord square;
    square.textureName = "gfx\\" + picture + ".tga";
    square.polygonMode = 1;
    square.layer = layer;
    square.points = {{x, y}, {x, y + side}, {x + side, y + side}, {x + side, y}};
    level.polygons.push_back(square);
}

void GameSceneTest::play() {
    playLevel(data, level, {400.0f, 300.0f});
    ParticleManager::particles.clear();
}

void GameSceneTest::addWater(float x, float y) {
    Particle& particle = ParticleManager::particles.emplace_back();
    particle.position = {x, y};
    for (Vector2& place : particle.trail) {
        place = particle.position;
    }
    particle.temperature = 20.0f;
}

} // namespace tarnwick
