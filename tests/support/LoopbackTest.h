#pragma once

#include "audio/SoundManager.h"
#include "audio/SoundSystem.h"
#include "console/GLConsole.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "support/WavText.h"

#include <cstddef>
#include <list>
#include <string>
#include <vector>

namespace tarnwick {

/// A test that hears: a sound device whose time moves only by `heard`, 44,100 frames a second, and a data
/// folder of the test's own.
class LoopbackTest : public ModuleTest {
protected:
    LoopbackTest() {
        GLConsole::initialise();
        SoundSystem::initialiseLoopback();
        SoundManager::initialise();
    }

    /// The left side of the next `frames` frames.
    static std::vector<float> heard(std::size_t frames) {
        const std::vector<float> both = SoundSystem::renderLoopback(frames);
        std::vector<float> left(frames);
        for (std::size_t i = 0; i < frames; ++i) {
            left[i] = both[2 * i];
        }
        return left;
    }
    /// References to a file; 0 for one that is not in the cache.
    static std::int32_t references(const std::string& name) {
        const std::int32_t count = SoundManager::loadSound(name).refCount;
        SoundManager::freeSound(name);
        return count - 1;
    }
    static std::list<std::string> soundList() {
        std::list<std::string> list;
        SoundManager::getSoundList(list);
        return list;
    }

    DataFolder data;
};

} // namespace tarnwick
