#include "graphics/WindowFeed.h"

#include "core/LocationStack.h"

namespace tarnwick {

WindowFeed::State WindowFeed::state;

void WindowFeed::run() {
    TARNWICK_LOCATION("WindowFeed::run");
    if (state.feed) {
        state.feed();
    }
}

} // namespace tarnwick
