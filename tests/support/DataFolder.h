#pragma once

#include <filesystem>
#include <string>

namespace tarnwick {

/// A data folder of a test's own: a fresh, empty folder that is the working directory until the end of its
/// life.
class DataFolder {
public:
    DataFolder();
    ~DataFolder();
    DataFolder(const DataFolder&) = delete;
    DataFolder& operator=(const DataFolder&) = delete;

    /// Writes a file, with the folders above it. `name` is relative, with slashes.
    void write(const std::string& name, const std::string& content) const;
    const std::filesystem::path& path() const { return folder; }

private:
    std::filesystem::path before;
    std::filesystem::path folder;
};

} // namespace tarnwick
