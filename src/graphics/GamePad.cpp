#include "graphics/GamePad.h"

#include "core/Comfort.h"
#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace tarnwick {

namespace {

constexpr float stickRest = 0.18f; ///< Share of the way within which a stick counts as let go.
constexpr float widestStick = 32767.0f;
constexpr float strongestMotor = 65535.0f;
constexpr std::uint32_t rumbleTime = 160; ///< Milliseconds.

/// The community's table of pads: the player's own, and where distributions have it.
constexpr std::array mappingFiles = {"cfg\\gamecontrollerdb.txt",
                                     "/usr/share/SDL_GameControllerDB/gamecontrollerdb.txt"};

struct ButtonKey {
    std::uint8_t button;
    std::uint32_t key;
};
constexpr std::array<ButtonKey, 9> buttonKeys = {{
    {SDL_CONTROLLER_BUTTON_A, key::padA},
    {SDL_CONTROLLER_BUTTON_B, key::padB},
    {SDL_CONTROLLER_BUTTON_START, key::padMenu},
    {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, key::padLeftShoulder},
    {SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, key::padRightShoulder},
    {SDL_CONTROLLER_BUTTON_DPAD_UP, key::padUp},
    {SDL_CONTROLLER_BUTTON_DPAD_DOWN, key::padDown},
    {SDL_CONTROLLER_BUTTON_DPAD_LEFT, key::padLeft},
    {SDL_CONTROLLER_BUTTON_DPAD_RIGHT, key::padRight},
}};

} // namespace

GamePad::State GamePad::state;

void GamePad::initialise() {
    TARNWICK_LOCATION("GamePad::initialise");
    shutdown();
    if (!Comfort::values().gamePad || SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) != 0) {
        return;
    }
    state.looking = true;
    readMappings();
}

void GamePad::shutdown() {
    TARNWICK_LOCATION("GamePad::shutdown");
    while (!state.pads.empty()) {
        const Pad gone = state.pads.back();
        state.pads.pop_back();
        letGo(gone);
    }
    if (state.looking) {
        SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
        state.looking = false;
    }
}

/// A pad that SDL's own table does not know may be in one of the files.
void GamePad::readMappings() {
    TARNWICK_LOCATION("GamePad::readMappings");
    for (const char* const name : mappingFiles) {
        if (!DataFiles::open(name).is_open()) {
            continue;
        }
        const int count = SDL_GameControllerAddMappingsFromFile(DataFiles::find(name).c_str());
        Log::print("\n" + std::to_string(std::max(count, 0)) + " game pads are described in " + name);
    }
}

void GamePad::handle(const SDL_Event& event) {
    TARNWICK_LOCATION("GamePad::handle");
    if (!state.looking) {
        return;
    }
    switch (event.type) {
    case SDL_CONTROLLERDEVICEADDED:
        plugIn(event.cdevice.which);
        break;
    case SDL_CONTROLLERDEVICEREMOVED:
        unplug(event.cdevice.which);
        break;
    case SDL_CONTROLLERBUTTONDOWN:
    case SDL_CONTROLLERBUTTONUP:
        button(event);
        break;
    default:
        break;
    }
}

void GamePad::plugIn(std::int32_t device) {
    TARNWICK_LOCATION("GamePad::plugIn");
    SDL_GameController* const handle = SDL_GameControllerOpen(device);
    if (handle == nullptr) {
        return;
    }
    if (padOf(SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(handle))) != nullptr) {
        SDL_GameControllerClose(handle); // told twice: SDL counts who has it open
        return;
    }
    state.pads.push_back({handle, {}});
    const char* const name = SDL_GameControllerName(handle);
    Log::print("\nGame pad: " + std::string(name != nullptr ? name : "without a name"));
}

void GamePad::unplug(std::int32_t instance) {
    TARNWICK_LOCATION("GamePad::unplug");
    Pad* const pad = padOf(instance);
    if (pad == nullptr) {
        return;
    }
    const Pad gone = *pad;
    state.pads.erase(state.pads.begin() + (pad - state.pads.data()));
    letGo(gone);
}

/// What is still held is let go: nobody else will.
void GamePad::letGo(const Pad& pad) {
    TARNWICK_LOCATION("GamePad::letGo");
    SDL_GameControllerClose(pad.handle);
    for (const std::uint32_t key : pad.held) {
        GLWindow::padKeyReleased(key);
    }
}

void GamePad::button(const SDL_Event& event) {
    TARNWICK_LOCATION("GamePad::button");
    const auto* const found = std::ranges::find(buttonKeys, event.cbutton.button, &ButtonKey::button);
    Pad* const pad = padOf(event.cbutton.which);
    if (found == buttonKeys.end() || pad == nullptr) {
        return;
    }
    const auto held = std::ranges::find(pad->held, found->key);
    if (event.type == SDL_CONTROLLERBUTTONDOWN && held == pad->held.end()) {
        pad->held.push_back(found->key);
        GLWindow::padKeyPressed(found->key);
    } else if (event.type == SDL_CONTROLLERBUTTONUP && held != pad->held.end()) {
        pad->held.erase(held);
        GLWindow::padKeyReleased(found->key);
    }
}

GamePad::Pad* GamePad::padOf(std::int32_t instance) {
    TARNWICK_LOCATION("GamePad::padOf");
    const auto found = std::ranges::find_if(state.pads, [instance](const Pad& pad) {
        return SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(pad.handle)) == instance;
    });
    return found == state.pads.end() ? nullptr : &*found;
}

float GamePad::turn() {
    TARNWICK_LOCATION("GamePad::turn");
    if (state.pads.empty()) {
        return 0.0f;
    }
    float widest = 0.0f;
    for (const Pad& pad : state.pads) {
        const float way =
            static_cast<float>(SDL_GameControllerGetAxis(pad.handle, SDL_CONTROLLER_AXIS_LEFTX)) /
            widestStick;
        const float beyondRest = std::max(std::abs(way) - stickRest, 0.0f) / (1.0f - stickRest);
        if (beyondRest > std::abs(widest)) {
            widest = std::copysign(std::min(beyondRest, 1.0f), way);
        }
    }
    const auto held = [](std::uint32_t cross, std::uint32_t shoulder) {
        return GLWindow::keyboardKeyPressed(cross) || GLWindow::keyboardKeyPressed(shoulder) ? 1.0f : 0.0f;
    };
    widest -= held(key::padLeft, key::padLeftShoulder);
    widest += held(key::padRight, key::padRightShoulder);
    return std::clamp(widest, -1.0f, 1.0f);
}

void GamePad::rumble(float strength) {
    TARNWICK_LOCATION("GamePad::rumble");
    if (!Comfort::values().rumble) {
        return;
    }
    const auto motor = static_cast<std::uint16_t>(std::clamp(strength, 0.0f, 1.0f) * strongestMotor);
    for (const Pad& pad : state.pads) {
        SDL_GameControllerRumble(pad.handle, motor, motor, rumbleTime); // refused where there is no motor
    }
}

std::uint32_t GamePad::asMenuKey(std::uint32_t key) {
    TARNWICK_LOCATION("GamePad::asMenuKey");
    switch (key) {
    case key::padUp:
        return key::up;
    case key::padDown:
        return key::down;
    case key::padLeft:
        return key::left;
    case key::padRight:
        return key::right;
    case key::padA:
        return key::enter;
    case key::padB:
    case key::padMenu:
        return key::escape;
    default:
        return key;
    }
}

} // namespace tarnwick
