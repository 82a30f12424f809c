#pragma once

#include "graphics/GLWindowEventListener.h"

#include <cstdint>
#include <memory>

namespace tarnwick {

class GLAviPlayer;

/// The opening video, shown once at program start with its sound track; any key and any mouse button skips
/// it.
class IntroScreen : public GLWindowEventListener {
public:
    /// Opens the video. Without one `run` ends at once.
    IntroScreen();
    virtual ~IntroScreen();
    IntroScreen(const IntroScreen&) = delete;
    IntroScreen& operator=(const IntroScreen&) = delete;

    /// Shows the video from its first picture, until it ends, is skipped, or the window goes away.
    void run();

    void mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t button) override;
    void keyboardPressed(std::uint32_t key) override;
    void windowClosing() override;

private:
    std::unique_ptr<GLAviPlayer> player;
    bool running = false;
};

} // namespace tarnwick
