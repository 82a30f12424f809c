#include "core/FileReplacement.h"

#include "core/LocationStack.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <thread>

namespace tarnwick {

namespace {

constexpr int lockTries = 50;
constexpr std::chrono::milliseconds lockPause(10); ///< Between two of them.
constexpr mode_t newFileMode = 0666;               ///< Less what the user's mask takes away.

/// Writes all of it, down to the disk.
bool writeWhole(int descriptor, const std::string& bytes) {
    TARNWICK_LOCATION("FileReplacement::writeWhole");
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = write(descriptor, bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return fsync(descriptor) == 0;
}

/// A new file of that name; what stands there was left by a program that ended in the middle.
int createAnew(const std::string& name) {
    TARNWICK_LOCATION("FileReplacement::createAnew");
    unlink(name.c_str());
    return open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode);
}

} // namespace

bool replaceFile(const std::filesystem::path& file, const std::string& bytes) {
    TARNWICK_LOCATION("replaceFile");
    const std::string beside = file.string() + ".new";
    const int descriptor = createAnew(beside);
    if (descriptor < 0) {
        return false;
    }
    struct stat old {};
    if (stat(file.c_str(), &old) == 0) {
        static_cast<void>(fchmod(descriptor, old.st_mode & 07777)); // as far as the file system has rights
    }
    const bool whole = writeWhole(descriptor, bytes);
    const bool closed = close(descriptor) == 0;
    if (whole && closed && std::rename(beside.c_str(), file.c_str()) == 0) {
        return true;
    }
    unlink(beside.c_str());
    return false;
}

FolderLock::FolderLock(const std::filesystem::path& folder)
    : descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    TARNWICK_LOCATION("FolderLock::FolderLock");
    for (int tries = 0; descriptor >= 0 && tries < lockTries; ++tries) {
        if (flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) {
            return; // a file system without locks has to do without
        }
        std::this_thread::sleep_for(lockPause);
    }
}

FolderLock::~FolderLock() {
    TARNWICK_LOCATION("FolderLock::~FolderLock");
    if (descriptor >= 0) {
        close(descriptor); // the lock goes with it
    }
}

} // namespace tarnwick
