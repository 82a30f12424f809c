#include "audio/GameSfx_Loop.h"

#include "core/LocationStack.h"

namespace tarnwick {

void GameSfx_Loop::makeSound(const std::string& fileName) {
    TARNWICK_LOCATION("GameSfx_Loop::makeSound");
    if (sound == nullptr) {
        sound = std::make_unique<Sound>(fileName);
    }
}

void GameSfx_Loop::follow(float level, bool heard, Order order) {
    TARNWICK_LOCATION("GameSfx_Loop::follow");
    if (sound == nullptr) {
        return;
    }
    if (level < smallestLevel || !heard) {
        if (sound->isPlaying()) {
            sound->stop();
        }
        return;
    }
    if (order == Order::startFirst && !sound->isPlaying()) {
        sound->loop();
    }
    sound->setVolume(level);
    if (order == Order::volumeFirst && !sound->isPlaying()) {
        sound->loop();
    }
}

void GameSfx_Loop::silence() {
    TARNWICK_LOCATION("GameSfx_Loop::silence");
    if (sound != nullptr) {
        sound->stop();
    }
}

} // namespace tarnwick
