#include "tools/launcher/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace tarnwick {

FileLock::~FileLock() {
    if (file >= 0) {
        close(file);
    }
}

FileLock FileLock::take(const std::filesystem::path& path) {
    FileLock lock;
    const int file =
        open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW, 0600); // no O_CLOEXEC: the game inherits it
    if (file < 0) {
        throw std::filesystem::filesystem_error("cannot make the lock", path,
                                                std::error_code(errno, std::generic_category()));
    }
    if (flock(file, LOCK_EX | LOCK_NB) == 0) {
        lock.file = file;
    } else {
        close(file);
    }
    return lock;
}

} // namespace tarnwick
