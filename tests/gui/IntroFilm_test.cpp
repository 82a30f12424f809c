#include "audio/MusicSystem.h"
#include "graphics/AviStream.h"
#include "graphics/GLAviPlayer.h"
#include "support/AviFile.h"
#include "support/DrawingTest.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>
#include <filesystem>

namespace tarnwick {

/// The film of the game against its sound: the player shows a picture for whole passes of the screen.
class IntroFilmTest : public DrawingTest, public testing::WithParamInterface<double> {
protected:
    /// Seconds, of the sound of the game's film.
    static double soundSeconds() {
        SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
        MusicSystem::initialise();
        Mix_Music* const sound = Mix_LoadMUS(TARNWICK_SOURCE_DIR "/data/vid/intro.ogg");
        const double seconds = Mix_MusicDuration(sound);
        Mix_FreeMusic(sound);
        MusicSystem::shutdown();
        SDL_ResetHint(SDL_HINT_AUDIODRIVER);
        return seconds;
    }
    /// Puts a film of tiny pictures into the data folder that has the numbers of the game's.
    void writeFilmOfTheSameTimes() const {
        std::filesystem::copy_file(TARNWICK_SOURCE_DIR "/data/vid/intro.avi", data.path() / "real.avi");
        const auto real = AviStream::open("real.avi");
        ASSERT_NE(real, nullptr);
        AviFile file{.scale = real->frameDuration(), .rate = 1000};
        for (std::uint32_t i = 0; i < real->frameCount(); ++i) {
            file.addFrame(200);
        }
        data.write("vid/film.avi", file.bytes());
    }
    /// Seconds until the film has ended on a screen of so many passes a second, the first `phase` of a
    /// millisecond away from a tick of the clock.
    static double filmSeconds(double hertz, double phase) {
        Clock::drive(0);
        GLAviPlayer player("vid\\film.avi");
        EXPECT_GT(player.frameCount(), 0u);
        player.rewind();
        std::uint32_t passes = 0;
        while (!player.finished()) {
            ++passes;
            Clock::drive(static_cast<std::uint32_t>(phase + passes * 1000.0 / hertz));
            player.play();
        }
        return passes / hertz;
    }
};

TEST_P(IntroFilmTest, ItStaysWithItsSound) {
    writeFilmOfTheSameTimes();
    const double sound = soundSeconds();
    ASSERT_GT(sound, 1.0);

    for (const double phase : {0.0, 0.3, 0.6, 0.9}) {
        EXPECT_NEAR(filmSeconds(GetParam(), phase) / sound, 1.0, 0.04) << phase;
    }
}

INSTANTIATE_TEST_SUITE_P(Screens,
                         IntroFilmTest,
                         testing::Values(50.0, 59.94, 60.0, 75.0, 100.0, 120.0, 144.0, 240.0));

} // namespace tarnwick
