#include "level/LevelObject.h"

#include "core/FrameFiles.h"
#include "core/LocationStack.h"
#include "core/Strings.h"

#include <utility>

namespace tarnwick {

void LevelObject::setTexture(std::string name) {
    TARNWICK_LOCATION("LevelObject::setTexture");
    frames.clear();
    slStringUpper(name);
    std::vector<std::string> names = FrameFiles::find(name);
    if (names.empty()) {
        names.push_back(std::move(name));
    }
    frames.reserve(names.size()); // a handle that moved would be counted anew
    for (const std::string& file : names) {
        frames.emplace_back(file);
    }
    frameCount = static_cast<std::uint32_t>(frames.size());
}

void LevelObject::runAnimation(float seconds, float speed) {
    TARNWICK_LOCATION("LevelObject::runAnimation");
    if (!(speed > 0.0f) || paused) {
        return;
    }
    const float t = frameTime + seconds;
    if (t < 1.0f / speed) {
        frameTime = t;
        return;
    }
    frameTime = 0.0f;
    if (currentFrame + 1 < frameCount) {
        ++currentFrame;
    } else {
        endRun();
    }
}

/// The last frame has had its time: on to the first, or to a stop.
void LevelObject::endRun() {
    TARNWICK_LOCATION("LevelObject::endRun");
    if (loopCount != 0) {
        ++loopsDone;
        if (loopCount <= loopsDone) {
            loopsDone = 0;
            paused = true;
            return; // the last frame stays
        }
    }
    currentFrame = 0;
}

void LevelObject::resetAnimation() {
    TARNWICK_LOCATION("LevelObject::resetAnimation");
    frameTime = 0.0f;
    currentFrame = 0;
    loopsDone = 0;
}

} // namespace tarnwick
