#include "game/SpeedMeters.h"

#include "core/LocationStack.h"
#include "core/Log.h"

namespace tarnwick {

namespace {

constexpr std::int32_t framesInBatch = 16;
constexpr float frameBatchShare = 0.0625f; ///< 1 / 16.
constexpr std::int32_t runsInBatch = 32;
constexpr double runBatchShare = 0.03125; ///< 1 / 32.

} // namespace

void FrameMeter::update() {
    TARNWICK_LOCATION("FrameMeter::update");
    timer.update();
    frameTimeSum += timer.getSeconds();
    ++frameTimeCount;
    if (frameTimeCount >= framesInBatch) {
        averageFrameTime = frameTimeSum * frameBatchShare;
        frameTimeSum = 0.0f;
        frameTimeCount = 0;
    }
    if (shown && averageFrameTime > 0.0f) {
        Log::print("\nGame - fps: ");
        Log::print(1.0f / averageFrameTime);
    }
}

void CostMeter::add(std::uint64_t ticks) {
    TARNWICK_LOCATION("CostMeter::add");
    sum += static_cast<double>(static_cast<std::uint32_t>(ticks));
    ++count;
    if (count < runsInBatch) {
        return;
    }
    const double average = sum * runBatchShare;
    sum = 0.0;
    count = 0;
    if (shown) {
        Log::print("\n");
        Log::print(work);
        Log::print(" - clock tics: ");
        Log::print(static_cast<std::int32_t>(average));
    }
}

} // namespace tarnwick
