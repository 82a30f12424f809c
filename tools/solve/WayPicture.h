#pragma once

#include "tools/solve/FlowField.h"

#include <cstddef>
#include <filesystem>
#include <set>

namespace tarnwick {

/// A plain map of a level: walls dark, what leads to the finish the lighter the nearer it is, what does not
/// lead there red; blue where water has been. False if the file cannot be written.
bool saveWayPicture(const FlowField& field,
                    const std::set<std::size_t>& visited,
                    const std::filesystem::path& file);

} // namespace tarnwick
