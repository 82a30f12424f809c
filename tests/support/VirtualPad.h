#pragma once

#include "core/Comfort.h"
#include "graphics/GLWindow.h"
#include "graphics/GamePad.h"
#include "support/DataFolder.h"

#include <SDL.h>

namespace tarnwick {

/// A game pad that a test holds in its hands, plugged in from its making to its end. Each change is seen by
/// the window's next pass, which this makes.
class VirtualPad {
public:
    VirtualPad() {
        SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1"); // the window of a test has no focus
        SDL_VirtualJoystickDesc description{};
        description.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
        description.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
        description.naxes = SDL_CONTROLLER_AXIS_MAX;
        description.nbuttons = SDL_CONTROLLER_BUTTON_MAX;
        description.userdata = this;
        description.Rumble = [](void* pad, Uint16 low, Uint16 high) {
            static_cast<VirtualPad*>(pad)->rumbled = low > high ? low : high;
            return 0;
        };
        device = SDL_JoystickAttachVirtualEx(&description);
        joystick = SDL_JoystickOpen(device);
        GLWindow::run();
    }
    ~VirtualPad() { unplug(); }
    VirtualPad(const VirtualPad&) = delete;
    VirtualPad& operator=(const VirtualPad&) = delete;

    void hold(SDL_GameControllerButton button, bool down = true) {
        SDL_JoystickSetVirtualButton(joystick, button, down ? 1 : 0);
        GLWindow::run();
    }
    void press(SDL_GameControllerButton button) {
        hold(button);
        hold(button, false);
    }
    /// The left stick, -1 (left) to 1.
    void lean(float way) {
        SDL_JoystickSetVirtualAxis(joystick, SDL_CONTROLLER_AXIS_LEFTX, static_cast<Sint16>(way * 32767.0f));
        GLWindow::run();
    }
    void unplug() {
        if (joystick == nullptr) {
            return;
        }
        SDL_JoystickDetachVirtual(device);
        SDL_JoystickClose(joystick);
        joystick = nullptr;
        GLWindow::run();
    }
    /// How strongly its motor was told to turn, last.
    Uint16 lastRumble() const { return rumbled; }

    /// Switches the comforts of a pad on and starts to look for pads.
    static void look(const DataFolder& data) {
        data.write("cfg/comfort.cfg", "gamePad = TRUE rumble = TRUE");
        Comfort::initialise();
        GamePad::initialise();
    }

private:
    int device = -1;
    SDL_Joystick* joystick = nullptr;
    Uint16 rumbled = 0;
};

} // namespace tarnwick
