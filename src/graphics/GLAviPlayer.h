#pragma once

#include "core/FrameTimer.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tarnwick {

class AviStream;

/// Plays the video of an AVI file into one GL texture, a picture at a time, by the clock. It has no sound.
///
/// `play` and then `draw`, once a pass of the event loop, until `finished`. A player that could not open its
/// file, or whose file breaks off, is closed: it counts as finished and draws nothing, so that its user
/// simply ends.
class GLAviPlayer {
public:
    static constexpr std::uint32_t mostFrames = 65535; ///< Of a file; with more it is refused.

    GLAviPlayer();
    explicit GLAviPlayer(const std::string& fileName);
    ~GLAviPlayer();
    GLAviPlayer(const GLAviPlayer&) = delete;
    GLAviPlayer& operator=(const GLAviPlayer&) = delete;

    /// Closes what was open, and shows the first picture of the file. A file that cannot be played is told on
    /// the console; one whose pictures have no size is not.
    void open(const std::string& fileName);
    void close();
    bool loaded() const;
    /// Whether the last picture has had its time; true for a closed player.
    bool finished() const;
    /// Back to the first picture.
    void rewind();

    /// Goes on to the next picture when the present one has had its time. No picture is ever skipped: where
    /// the passes come late the video is slow.
    void play();
    /// Shows the picture in the window, and presents it: as high as the client area, centred, black beside
    /// it.
    void draw();

    std::uint32_t currentFrame() const { return shownFrame; }
    std::uint32_t frameCount() const { return frames; }
    /// Milliseconds.
    std::uint32_t frameDuration() const { return millisecondsPerFrame; }
    /// GL texture name with the picture in its top left part, bottom row first; 0 when closed.
    std::uint32_t textureId() const { return texture; }
    /// Pixels: those of the picture rounded up to powers of two.
    std::uint32_t textureWidth() const { return widthOfTexture; }
    std::uint32_t textureHeight() const { return heightOfTexture; }

private:
    std::uint32_t shownFrame = 0;
    std::uint32_t frameElapsed = 0; ///< Milliseconds gathered towards the next picture.
    std::uint32_t frames = 0;
    std::uint32_t millisecondsPerFrame = 0;
    std::uint32_t texture = 0;
    std::uint32_t widthOfTexture = 0;
    std::uint32_t heightOfTexture = 0;
    FrameTimer frameTimer;
    std::unique_ptr<AviStream> stream; ///< Null when closed.

    bool prepare();
    void createTexture();
    void getAviFrame(std::uint32_t index);
};

} // namespace tarnwick
