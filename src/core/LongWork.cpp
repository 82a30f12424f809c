#include "core/LongWork.h"

#include "core/CrashReport.h"
#include "core/LocationStack.h"

namespace tarnwick {

namespace {

constexpr std::uint32_t callsBetweenLooks = 256;

} // namespace

LongWork::State LongWork::state;

bool LongWork::goesOn() {
    TARNWICK_LOCATION("LongWork::goesOn");
    CrashReport::endIfAsked();
    if (state.watch != nullptr && ++state.calls % callsBetweenLooks == 0) {
        state.wanted = state.watch(Kind::load);
    }
    return state.wanted;
}

bool LongWork::goesOnWithinTick() {
    TARNWICK_LOCATION("LongWork::goesOnWithinTick");
    return state.watch == nullptr || state.watch(Kind::tick);
}

} // namespace tarnwick
