#pragma once

#include "core/FrameTimer.h"

namespace tarnwick {

/// The way of a number from zero to its value over some seconds: what the displays of the finish share. A
/// part of widgets; never deleted through this class.
class GuiRampUp {
public:
    float rampUpTime = 4.0f;      ///< Seconds, above 0.
    float rampUpRemaining = 0.0f; ///< Seconds left, 0 and below at the end. 0 until the first reset.

    /// Whether the value has been reached, or nothing was asked for yet.
    bool rampUpDone() const { return rampUpRemaining <= 0.0f; }

protected:
    static constexpr float shortestRampUp = 0.01f; ///< Seconds.

    ~GuiRampUp() = default;

    FrameTimer frameTimer;

    /// To the start, with time counted from now on.
    void restartRampUp();
    /// Whether not a moment of it has passed.
    bool rampUpAtStart() const;
    /// Lets the seconds of `frameTimer` pass, and tells how far it is then, 0 to 1.
    float runRampUp();
};

} // namespace tarnwick
