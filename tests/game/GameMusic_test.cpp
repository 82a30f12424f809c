#include "audio/MusicSystem.h"
#include "console/GLConsole.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "gui/GameMenus.h"
#include "support/PlayTest.h"

#include <SDL.h>
#include <SDL_mixer.h>

namespace tarnwick {

/// A running game with its music on a device that nobody hears.
class GameMusicTest : public PlayTest {
protected:
    GameMusicTest() {
        SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
        data.write("cfg/game.cfg", "music = music\\play.ogg");
        MusicSystem::initialise();
        start();
        MusicSystem::play(TARNWICK_SOURCE_DIR "/data/music/play.ogg", true);
    }
    ~GameMusicTest() override { SDL_ResetHint(SDL_HINT_AUDIODRIVER); }

    static bool sounds() { return Mix_PlayingMusic() != 0; }
};

TEST_F(GameMusicTest, TheConfigurationNamesTheMusicOfPlay) {
    EXPECT_EQ(Game::musicFileName(), "music\\play.ogg");
}

TEST_F(GameMusicTest, ThePauseKeyHoldsTheMusicAndLetsItGoOn) {
    Game::keyboardPressed(key::pause);
    const bool whilePaused = sounds();
    Game::keyboardPressed(key::pause);

    EXPECT_FALSE(whilePaused);
    EXPECT_TRUE(sounds());
}

TEST_F(GameMusicTest, TheCommandHoldsTheMusicOnceAndResumesItOnce) {
    GLConsole::runLine("Pause true");
    const bool whilePaused = sounds();
    GLConsole::runLine("Pause true"); // changes nothing
    const bool stillPaused = sounds();
    GLConsole::runLine("Pause false");
    const bool afterwards = sounds();
    MusicSystem::pause();
    GLConsole::runLine("Pause false"); // changes nothing: the game is not paused

    EXPECT_FALSE(whilePaused);
    EXPECT_FALSE(stillPaused);
    EXPECT_TRUE(afterwards);
    EXPECT_FALSE(sounds());
}

TEST_F(GameMusicTest, TheFinishEndsTheMusic) {
    GameRules::incrementEndOfLevelTriggerParticleCount(128);
    GameRules::update(0.01f);
    const bool whileFinishing = sounds();

    GameRules::update(1000.0f);

    EXPECT_TRUE(whileFinishing);
    EXPECT_FALSE(sounds());
    EXPECT_FALSE(MusicSystem::resume()); // closed, and not only paused
}

TEST_F(GameMusicTest, LosingTheFocusHoldsTheMusic) {
    Game::windowFocusLost();

    EXPECT_FALSE(sounds());
}

} // namespace tarnwick
