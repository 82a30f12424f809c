#pragma once

#include <functional>
#include <utility>

namespace tarnwick {

/// What is called at the start of each `GLWindow::run`, before the events are read. Nobody, in play; where a
/// recorded player plays, it sends events and moves the clock there, whichever loop it is that pumps.
class WindowFeed {
public:
    WindowFeed() = delete;

    /// Null: nobody is called.
    static void set(std::function<void()> feed) { state.feed = std::move(feed); }
    static void run();

private:
    friend class ModuleReset;

    struct State {
        std::function<void()> feed;
    };
    static State state;
};

} // namespace tarnwick
