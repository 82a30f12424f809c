#pragma once

#include "core/Vector2.h"
#include "level/LevelFile.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <string>

namespace tarnwick {

/// Writes `level` into the data folder as `maps\NAME.rivl`, and gives the name by which the game knows it.
std::string writeLevel(const DataFolder& data, const LevelFile& level, const std::string& name = "scene");
/// Starts the game on it, with no menu up and the camera on its way to the water. The test fails if the level
/// is refused.
void startLevel(const DataFolder& data, const LevelFile& level);
/// The same with the camera at rest at `camera`, so that the simulation runs in every tick.
void playLevel(const DataFolder& data, const LevelFile& level, Vector2 camera);

/// A test that plays a level of its own in a headless window of 800 by 600: it fills `level` and the data
/// folder, then calls one of the three.
class PlayTest : public ModuleTest {
protected:
    PlayTest();
    ~PlayTest() override;

    /// The level without the game.
    bool load(const std::string& name = "scene");
    void start() const { startLevel(data, level); }
    void play(Vector2 camera = {}) const { playLevel(data, level, camera); }

    LevelFile level;
    DataFolder data;
};

} // namespace tarnwick
