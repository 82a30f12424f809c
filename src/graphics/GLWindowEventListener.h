#pragma once

#include <cstdint>

namespace tarnwick {

/// The ten operations through which all input reaches whatever runs at the moment. A listener overrides what
/// it wants; whoever installs one stores the old listener and puts it back. Never deleted through this class.
class GLWindowEventListener {
public:
    virtual void mouseMoved(std::uint32_t /*x*/, std::uint32_t /*y*/) {}
    /// `button` is a bit value: 1 left, 2 right, 4 middle.
    virtual void mousePressed(std::uint32_t /*x*/, std::uint32_t /*y*/, std::uint32_t /*button*/) {}
    virtual void mouseReleased(std::uint32_t /*x*/, std::uint32_t /*y*/, std::uint32_t /*button*/) {}
    /// `key` is a virtual key number; auto-repeat included.
    virtual void keyboardPressed(std::uint32_t /*key*/) {}
    virtual void keyboardReleased(std::uint32_t /*key*/) {}
    /// The client area changed size; called before the viewport is reset.
    virtual void windowResized() {}
    /// The user asked the window to close.
    virtual void windowClosing() {}
    /// The window is being destroyed; called before the context goes.
    virtual void windowClosed() {}
    /// The window needs painting.
    virtual void windowRedrawing() {}
    /// The window just minimised itself because it lost the foreground.
    virtual void windowFocusLost() {}

protected:
    ~GLWindowEventListener() = default;
};

} // namespace tarnwick
