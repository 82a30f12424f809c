#pragma once

#include "core/Vector2.h"

namespace tarnwick {

/// A second view that flies over the level by the keys, for whoever looks at a level and does not play it. It
/// changes the picture alone: the camera of play goes on with the water, and down stays where it is.
class FreeCamera {
public:
    bool enabled = false; ///< The picture is seen from here.
    Vector2 position;     ///< World units: the middle of the picture.
    float zoom = 1.0f;    ///< Larger shows less, unlike the camera of play.

    /// Moves by the keys that are held: the arrows 500 units a second at zoom 1, Page Up and Page Down the
    /// zoom. `seconds` is the time of a frame.
    void steer(float seconds);

    /// Sets the GL's modelview to the world as it is seen from here, in client pixels.
    void viewFrom() const;
    /// A cross where it stands, its coordinates, and the frame of what the camera of play sees; in the world.
    void draw() const;
};

} // namespace tarnwick
