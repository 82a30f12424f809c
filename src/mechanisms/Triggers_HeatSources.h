#pragma once

#include <cstdint>

namespace tarnwick {

/// Settings of the triggers that freeze, thaw and boil: how fast they change temperatures, and how far. They
/// outlive the level; each start of a level reads them anew.
class Triggers_HeatSources {
public:
    Triggers_HeatSources() = delete;

    /// Degrees per second, not negative.
    static float temperatureChangeSpeed() { return state.triggerTemperatureChangeSpeed; }
    /// Degrees below zero at which `trigFuncToIce` stops, not negative.
    static float temperatureChangeAmountIce() { return state.triggerTemperatureChangeAmountIce; }
    /// Degrees at which `trigFuncToSteam` stops, not negative.
    static float temperatureChangeAmountSteam() { return state.triggerTemperatureChangeAmountSteam; }

private:
    friend class ModuleReset;
    friend void Triggers_HeatSources_LoadSettings();

    struct State {
        float triggerTemperatureChangeSpeed = 1000.0f;
        float triggerTemperatureChangeAmountIce = 100.0f;
        float triggerTemperatureChangeAmountSteam = 200.0f;
    };
    static State state;
};

/// Reads the three settings from `cfg\water.cfg`; their signs do not count. A missing key gives 0, not the
/// value at program start.
void Triggers_HeatSources_LoadSettings();

} // namespace tarnwick
