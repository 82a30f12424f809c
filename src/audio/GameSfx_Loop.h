#pragma once

#include "audio/Sound.h"

#include <memory>
#include <string>

namespace tarnwick {

/// A sound that loops as loudly as a level says, and only while a level is played: it is silent in menus, in
/// pauses and after the finish.
class GameSfx_Loop {
public:
    static constexpr float smallestLevel = 0.001f; ///< Below it there is silence.

    enum class Order { volumeFirst, startFirst }; ///< Of what happens when it starts to sound.

    /// Makes the sound from a file, unless it is made already.
    void makeSound(const std::string& fileName);
    void deleteSound() { sound.reset(); }

    /// Once a tick: starts the sound, sets its volume to `level`, or stops it. It is silent while the
    /// level is not `heard`.
    void follow(float level, bool heard, Order order = Order::volumeFirst);
    /// Stops it, until a tick starts it again.
    void silence();

private:
    friend class GameSfxSoundsTest;

    std::unique_ptr<Sound> sound; ///< Null until made.
};

} // namespace tarnwick
