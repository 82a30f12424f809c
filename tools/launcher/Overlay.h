#pragma once

#include <filesystem>
#include <vector>

namespace tarnwick {

/// Makes `target` look like the folders of `layers` laid over one another: links to their files, those of an
/// earlier layer before those of a later one of the same name. Upper and lower case are the same, as they are
/// to the game. A folder that only one layer has becomes one link; one that several have becomes a folder in
/// which the rule holds again.
///
/// `target` is made if it is not there; what stands in it under a name goes before all layers. Layers that
/// are missing or cannot be read are empty. Hidden files, devices, pipes and links to nothing are left out.
/// Throws `std::filesystem::filesystem_error` if a link or folder cannot be made.
void layOver(const std::filesystem::path& target, const std::vector<std::filesystem::path>& layers);

/// Names of the entries of `folder` in byte order, less hidden ones; empty if it cannot be read.
std::vector<std::string> sortedEntries(const std::filesystem::path& folder);

/// The entry of `folder` that `name` means without regard to case, empty if there is none.
std::filesystem::path entryCalled(const std::filesystem::path& folder, const std::string& name);

} // namespace tarnwick
