#include "tools/sim/PlayerEvents.h"

#include <SDL_events.h>
#include <SDL_keyboard.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tarnwick {

namespace {

constexpr const char* forms = "expected TICK point X Y, TICK click or TICK key NAME";
constexpr std::size_t longestNumber = 9; ///< Digits of a tick or a place: it fits 32 bits.

bool isNumber(const std::string& word) {
    return !word.empty() && word.size() <= longestNumber &&
           word.find_first_not_of("0123456789") == std::string::npos;
}

} // namespace

PlayerEvents PlayerEvents::fromFile(const std::string& fileName) {
    std::ifstream file(fileName);
    if (!file) {
        throw std::runtime_error(fileName + ": cannot be opened");
    }
    PlayerEvents events;
    std::string line;
    for (int lineNumber = 1; std::getline(file, line); ++lineNumber) {
        const std::string refusal = events.read(line);
        if (!refusal.empty()) {
            std::ostringstream reason;
            reason << fileName << ": line " << lineNumber << ": " << refusal;
            throw std::runtime_error(reason.str());
        }
    }
    if (file.bad()) {
        throw std::runtime_error(fileName + ": cannot be read");
    }
    const auto byTick = [](const Stroke& a, const Stroke& b) { return a.tick < b.tick; };
    std::stable_sort(events.strokes.begin(), events.strokes.end(), byTick); // a release comes after its press
    return events;
}

/// Takes one line; what is wrong with it, or nothing.
std::string PlayerEvents::read(const std::string& line) {
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(std::move(word));
    }
    if (words.empty() || words[0].front() == '#') {
        return {};
    }
    if (words.size() < 2 || !isNumber(words[0])) {
        return forms;
    }
    const std::uint64_t tick = std::stoull(words[0]);
    if (words[1] == "point" && words.size() == 4) {
        return readPlace(tick, words[2], words[3]);
    }
    if (words[1] == "click" && words.size() == 2) {
        addStroke(tick, SDL_SCANCODE_UNKNOWN, SDLK_UNKNOWN);
        return {};
    }
    if (words[1] == "key" && words.size() == 3) {
        const SDL_Scancode scancode = SDL_GetScancodeFromName(words[2].c_str());
        const SDL_Keycode keycode = SDL_GetKeyFromName(words[2].c_str());
        if (scancode == SDL_SCANCODE_UNKNOWN || keycode == SDLK_UNKNOWN) {
            return "there is no key '" + words[2] + "'";
        }
        addStroke(tick, scancode, keycode);
        return {};
    }
    return forms;
}

std::string PlayerEvents::readPlace(std::uint64_t tick, const std::string& x, const std::string& y) {
    if (!isNumber(x) || !isNumber(y)) {
        return forms;
    }
    if (!places.empty() && tick < places.back().tick) {
        return "tick " + std::to_string(tick) + " comes after tick " + std::to_string(places.back().tick);
    }
    places.push_back({tick, std::stoi(x), std::stoi(y)});
    return {};
}

void PlayerEvents::addStroke(std::uint64_t tick, SDL_Scancode scancode, SDL_Keycode keycode) {
    strokes.push_back({tick, true, scancode, keycode});
    strokes.push_back({tick + clickTicks, false, scancode, keycode});
}

void PlayerEvents::catchUp(std::uint64_t ticksRun) {
    if (ticksRun == 0) {
        return;
    }
    movePointer(ticksRun - 1);
    for (const Stroke& stroke : strokes) {
        if (stroke.down && stroke.tick < ticksRun && stroke.tick + clickTicks >= ticksRun) {
            sendStroke(stroke);
        }
    }
}

void PlayerEvents::movePointer(std::uint64_t tick) {
    const Place place = pointerAt(tick);
    if (place.x != pointer.x || place.y != pointer.y) {
        pointer = place;
        SDL_Event event{};
        event.type = SDL_MOUSEMOTION;
        event.motion.x = place.x;
        event.motion.y = place.y;
        SDL_PushEvent(&event);
    }
}

void PlayerEvents::send(std::uint64_t ticksRun) {
    movePointer(ticksRun);
    for (const Stroke& stroke : strokes) {
        if (stroke.tick == ticksRun) {
            sendStroke(stroke);
        }
    }
}

PlayerEvents::Place PlayerEvents::pointerAt(std::uint64_t tick) const {
    const auto later =
        std::find_if(places.begin(), places.end(), [&](const Place& place) { return place.tick > tick; });
    if (later == places.begin()) {
        return pointer; // not told of yet
    }
    const Place& from = *(later - 1);
    if (later == places.end()) {
        return from;
    }
    const double share = static_cast<double>(tick - from.tick) / static_cast<double>(later->tick - from.tick);
    const double way = share * share * (3.0 - 2.0 * share);
    return {tick, from.x + static_cast<int>(std::lround(way * (later->x - from.x))),
            from.y + static_cast<int>(std::lround(way * (later->y - from.y)))};
}

void PlayerEvents::sendStroke(const Stroke& stroke) const {
    SDL_Event event{};
    if (stroke.scancode == SDL_SCANCODE_UNKNOWN) {
        event.type = stroke.down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.clicks = 1;
        event.button.x = pointer.x;
        event.button.y = pointer.y;
    } else {
        event.type = stroke.down ? SDL_KEYDOWN : SDL_KEYUP;
        event.key.state = stroke.down ? SDL_PRESSED : SDL_RELEASED;
        event.key.keysym.scancode = stroke.scancode;
        event.key.keysym.sym = stroke.keycode;
    }
    SDL_PushEvent(&event);
}

} // namespace tarnwick
