#include "game/Modules.h"

#include "audio/MusicSystem.h"
#include "audio/SoundManager.h"
#include "audio/SoundSystem.h"
#include "console/GLConsole.h"
#include "game/Game.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "level/SurfaceTypeManager.h"
#include "mechanisms/FxParticleManager.h"
#include "support/DrawingTest.h"
#include "support/PlayTest.h"
#include "support/ToneFile.h"

namespace tarnwick {

/// A game of a level with an emitter, in which everything that holds a picture or a sound has one.
class ModulesTest : public DrawingTest {
protected:
    ModulesTest() {
        writeFlatPicture("gfx/drop.tga", white);
        data.write("snd/tone.wav", toneFile(4410));
        data.write("fx/drip.cfg", "frequency = 0.01 texture1 = gfx\\drop.tga");
        data.write("cfg/game.cfg", "cursor = gfx\\drop.tga font = gfx\\drop.tga finishSound = snd\\tone.wav "
                                   "deadSound = snd\\tone.wav finishAnimationFrames = gfx\\drop.tga");
        data.write("cfg/game_sfx.cfg", "iceSound_freeze = snd\\tone.wav steamAmbient = snd\\tone.wav");
        GLConsole::initialise();
        MusicSystem::initialise();
        SoundSystem::initialiseLoopback();
        SoundManager::initialise();
        SurfaceTypeManager::initialise();
        LevelFile level;
        level.emitters.push_back({1, {0, 0}, {1.0f, 0.0f}, "fx\\drip.cfg"});
        playLevel(data, level, {});
    }

    static std::size_t soundFiles() {
        std::list<std::string> files;
        SoundManager::getSoundList(files);
        return files.size();
    }
};

TEST_F(ModulesTest, NothingOfAGameIsLeft) {
    Game::tick(Game::longestStep); // particles of the emitter
    ASSERT_FALSE(FxParticleManager::particles.empty());
    ASSERT_GT(soundFiles(), 0u);

    Modules::shutdown();

    EXPECT_FALSE(Game::running());
    EXPECT_TRUE(FxParticleManager::particles.empty());
    EXPECT_TRUE(FxParticleManager::emitters.empty()) << "they hold pictures";
    EXPECT_EQ(soundFiles(), 0u);
    EXPECT_TRUE(GLConsole::commands().empty());
    EXPECT_FALSE(GLWindow::exists());
}

TEST_F(ModulesTest, AGameThatWasToldToStopIsEndedToo) {
    Game::stop();
    Game::serveRequests();
    ASSERT_FALSE(Game::running());

    Modules::shutdown();

    EXPECT_FALSE(Game::begun());
    EXPECT_EQ(soundFiles(), 0u);
}

TEST_F(ModulesTest, AGameThatHasEndedIsNotEndedAgain) {
    Game::shutdown();
    GLConsole::clear();

    Modules::shutdown();

    EXPECT_EQ(GLConsole::outputText().find("Game shutdown"), std::string::npos);
}

TEST_F(ModulesTest, WithNothingBegunThereIsNothingToEnd) {
    Modules::shutdown();

    Modules::shutdown();

    EXPECT_FALSE(GLWindow::exists());
}

} // namespace tarnwick
