#pragma once

#include "core/GLTexture.h"
#include "level/LevelObject.h"

#include <cstdint>

namespace tarnwick {

class ConfigFile;

/// What the splash shows: a picture that fills the window, and an animation on it. It belongs to the GL
/// context and the thread that made it.
class SplashPicture {
public:
    /// Reads `cfg\splashScreen.cfg` and the pictures. Missing ones show as checkerboards.
    SplashPicture();

    /// Lets `seconds` pass. One call advances the animation by one frame at most, and it runs round.
    void advance(float seconds);
    /// Draws into a client area of this size in pixels, which is taken as 1 to 65535 each way. Sets the whole
    /// GL state that it needs and leaves it so: the context draws nothing else.
    void draw(std::int32_t clientWidth, std::int32_t clientHeight) const;

private:
    GLTexture background;
    float left = 0.0f; ///< The part of the background that shows, in shares of the texture.
    float top = 0.0f;
    float right = 0.0f;
    float bottom = 0.0f;
    LevelObject animation; ///< Its `x` and `y` are the centre, in a picture of 800 by 600.
    float speed = 0.0f;    ///< Frames per second.

    explicit SplashPicture(const ConfigFile& config);
    void drawBeside(std::int32_t width, std::int32_t height) const;
    void drawBackground(float light) const;
    void drawAnimation() const;
};

} // namespace tarnwick
