// The levels that come with the game, seen whole: as their pictures beside this file, and the same after each
// other.

#include "console/GLConsole.h"
#include "game/BasicCommands.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "level/SurfaceTypeManager.h"
#include "particles/ParticleManager.h"
#include "support/ComparePictures.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace tarnwick {

namespace {

/// A level, the middle of its rock, and how far away it is seen from.
struct Shown {
    const char* name = nullptr;
    Vector2 middle;
    float zoom = 1.0f;
};

constexpr std::array<Shown, 6> levels = {{
    {"testLevel", {460.0f, 520.0f}, 1.2f},
    {"frozenBridge", {876.0f, 500.0f}, 1.4f},
    {"kettle", {916.0f, 504.0f}, 1.4f},
    {"hoist", {745.0f, 504.0f}, 1.4f},
    {"gale", {886.0f, 466.0f}, 1.4f},
    {"sluices", {826.0f, 568.0f}, 1.4f},
}};

} // namespace

class LevelPicturesTest : public ModuleTest {
protected:
    LevelPicturesTest()
        : before(std::filesystem::current_path()) {
        std::filesystem::current_path(std::filesystem::path(TARNWICK_SOURCE_FOLDER) / "data");
        GLWindow::createOffscreen(400, 300);
        GLTextureManager::initialise();
        BasicCommands::handOver();
        GLConsole::initialise();
        SurfaceTypeManager::initialise();
    }
    ~LevelPicturesTest() override { std::filesystem::current_path(before); }

    static void load(const Shown& level) {
        ASSERT_TRUE(Game::initialise("maps\\" + std::string(level.name) + ".rivl"))
            << GLConsole::outputText();
        GameMenus::setCurrentMenu(menu::none);
    }

    static FramePicture draw(const Shown& level) {
        load(level);
        ParticleManager::particles.clear(); // they lie elsewhere each time
        Camera::setState(Camera::normal);
        SceneAccess::placeCamera(level.middle, {}, 0.0f, level.zoom);
        Game::drawPicture();
        return FramePicture::ofBackBuffer();
    }

    std::filesystem::path before;
};

/// Would catch a map or a picture that changes what a level looks like.
TEST_F(LevelPicturesTest, ALevelThatIsTheFirstLooksAsItsPicture) {
    for (const Shown& level : levels) {
        Level::clear(); // its pictures give up their numbers
        expectPictureAsFile(draw(level), std::filesystem::path(TARNWICK_SOURCE_FOLDER) / "tests" /
                                             "pictures" / (std::string(level.name) + ".png"));
    }
}

/// Would catch a level whose pictures lie on one another by the numbers that the level before left to them.
TEST_F(LevelPicturesTest, ALevelLooksTheSameAfterEachOther) {
    for (const Shown& level : levels) {
        Level::clear();
        const FramePicture fresh = draw(level);
        for (const Shown& other : levels) {
            Level::clear();
            load(other);

            const double difference = differenceOf(draw(level), fresh, 0);

            EXPECT_EQ(difference, 0.0) << level.name << " after " << other.name;
        }
    }
}

} // namespace tarnwick
