#pragma once

namespace tarnwick {

/// Puts modules back to what they are at program start. The only place that assigns a whole module's state.
class ModuleReset {
public:
    /// Every module of the program, and the shared lists.
    static void all();
};

} // namespace tarnwick
