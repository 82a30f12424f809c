#pragma once

#include "core/Colour.h"

#include <string>

namespace tarnwick {

class ConfigFile;

/// The colour that stands in `config` under `name` with "_r", "_g", "_b" and "_a" behind it, as it stands
/// there; a missing share is 0.
Colour readColour(const ConfigFile& config, const std::string& name);

} // namespace tarnwick
