#pragma once

namespace tarnwick {

/// All modules together. They begin one by one, where the program starts and where a level does; they end
/// here, for every program that has begun any of them.
class Modules {
public:
    Modules() = delete;

    /// Ends all that was begun, in the reverse order of the program's start: whoever holds pictures, sounds
    /// or commands before those who keep them, the window last. What was not begun is passed over.
    static void shutdown();
};

} // namespace tarnwick
