#pragma once

#include <filesystem>
#include <utility>

namespace tarnwick {

/// A lock that the system gives back when the last process that inherited it ends, however it ends: a started
/// game keeps it also when the launcher is gone.
class FileLock {
public:
    FileLock() = default;
    ~FileLock();
    FileLock(FileLock&& other) noexcept
        : file(std::exchange(other.file, -1)) {}
    FileLock& operator=(FileLock&& other) noexcept {
        std::swap(file, other.file);
        return *this;
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Takes the lock of the file `path`, which is made if it is not there. Not held if another process holds
    /// it. Throws `std::filesystem::filesystem_error` if the file cannot be made.
    static FileLock take(const std::filesystem::path& path);

    bool isHeld() const { return file >= 0; }

private:
    int file = -1; ///< Open while held; inherited by processes that are started.
};

} // namespace tarnwick
