#include "tools/sim/HeldKeys.h"

#include <SDL_events.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tarnwick {

namespace {

void sendKey(SDL_Scancode scancode, SDL_Keycode keycode, bool down) {
    SDL_Event event{};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.key.keysym.scancode = scancode;
    event.key.keysym.sym = keycode;
    SDL_PushEvent(&event);
}

} // namespace

HeldKeys HeldKeys::fromFile(const std::string& fileName) {
    std::ifstream file(fileName);
    if (!file) {
        throw std::runtime_error(fileName + ": cannot be opened");
    }
    HeldKeys keys;
    std::string line;
    for (int lineNumber = 1; std::getline(file, line); ++lineNumber) {
        const auto refuse = [&](const std::string& reason) {
            throw std::runtime_error(fileName + ": line " + std::to_string(lineNumber) + ": " + reason);
        };
        std::istringstream words(line);
        std::string tickWord;
        if (!(words >> tickWord) || tickWord.front() == '#') {
            continue;
        }
        std::string held;
        std::string rest;
        constexpr std::size_t longestTick = 18; // digits: below 2^63
        if (tickWord.find_first_not_of("0123456789") != std::string::npos || tickWord.size() > longestTick ||
            !(words >> held) || words >> rest) {
            refuse("expected TICK left|right|none|both");
        }
        if (held != "left" && held != "right" && held != "none" && held != "both") {
            refuse("'" + held + "' is none of left, right, none, both");
        }
        const Change change{
            .tick = std::stoull(tickWord),
            .held = {.left = held == "left" || held == "both", .right = held == "right" || held == "both"}};
        if (!keys.changes.empty() && change.tick < keys.changes.back().tick) {
            refuse("tick " + tickWord + " comes after tick " + std::to_string(keys.changes.back().tick));
        }
        keys.changes.push_back(change);
    }
    if (file.bad()) {
        throw std::runtime_error(fileName + ": cannot be read");
    }
    return keys;
}

void HeldKeys::catchUp(std::uint64_t ticksRun) {
    if (ticksRun > 0) {
        send(ticksRun - 1);
    }
}

void HeldKeys::send(std::uint64_t ticksRun) {
    Held now = told;
    for (; nextChange < changes.size() && changes[nextChange].tick <= ticksRun; ++nextChange) {
        now = changes[nextChange].held;
    }
    send(told, now);
    told = now;
}

void HeldKeys::send(Held from, Held to) {
    if (to.left != from.left) {
        sendKey(SDL_SCANCODE_LEFT, SDLK_LEFT, to.left);
    }
    if (to.right != from.right) {
        sendKey(SDL_SCANCODE_RIGHT, SDLK_RIGHT, to.right);
    }
}

Held HeldKeys::at(std::uint64_t ticksRun) const {
    Held held;
    for (const Change& change : changes) {
        if (change.tick <= ticksRun) {
            held = change.held;
        }
    }
    return held;
}

} // namespace tarnwick
