#pragma once

#include "core/GLTexture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

/// A picture that stands in the level for decoration: centred on a point, as large as its texture, on one of
/// the layers. It never collides. The picture may be an animation, a run of files found by name.
///
/// Movers write the offset, triggers `enabled`, `paused` and `loopCount`. Copies are deep: each has handles
/// of its own.
class LevelObject {
public:
    bool enabled = true;            ///< Drawn at all; triggers switch it.
    std::uint32_t id = 0;           ///< Of the level file; not unique.
    std::uint32_t layer = 0;        ///< 0 to 4.
    std::vector<GLTexture> frames;  ///< All pictures of the object; empty until `setTexture`.
    std::uint32_t frameCount = 1;   ///< As many as `frames` once `setTexture` ran.
    std::uint32_t currentFrame = 0; ///< Index into `frames`.
    float frameTime = 0.0f;         ///< Seconds spent in the current frame.
    float x = 0.0f;                 ///< Centre, world units.
    float y = 0.0f;
    float offsetX = 0.0f; ///< World units; added when it is drawn.
    float offsetY = 0.0f;
    bool mirrored = false;      ///< The picture is flipped left to right.
    bool paused = true;         ///< The animation stands still.
    std::int32_t loopCount = 0; ///< Runs through the frames until it pauses; 0 repeats without end.
    std::int32_t loopsDone = 0; ///< Runs finished.

    /// The picture that shows now; null for an object that has none.
    const GLTexture* frame() const { return currentFrame < frames.size() ? &frames[currentFrame] : nullptr; }

    /// Takes the picture `name`. If it holds "_FRAME" in any case, it stands for every file of its folder
    /// whose name agrees with it up to the last "_FRAME" and in the ending: `gfx\fan_frame01.tga` for
    /// `gfx\fan_frame*.tga`, in the order of their names. With no such file it is one picture of that name.
    /// `currentFrame` stays as it is.
    void setTexture(std::string name);

    /// Lets `seconds` pass at `speed` frames a second. One call advances one frame at most: what is left over
    /// of the time is dropped. Nothing happens while `paused` or at a speed that is not above 0.
    void runAnimation(float seconds, float speed);
    /// Back to the first frame and the first run. `paused` stays as it is.
    void resetAnimation();

private:
    void endRun();
};

} // namespace tarnwick
