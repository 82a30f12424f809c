#pragma once

namespace tarnwick {

class DataFolder;

/// Starts every module of the program, as a game on a small level does. The level is written to `folder`;
/// where that holds no configuration, the modules ask for their keys all the same. A module that starts in
/// another place of the program is added here.
///
/// The level has 1 emitter, 2 forces, 3 triggers, 4 movers and 5 sounds.
void startEveryModule(const DataFolder& folder);

} // namespace tarnwick
