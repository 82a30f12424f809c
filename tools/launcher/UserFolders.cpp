#include "tools/launcher/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace tarnwick {

namespace fs = std::filesystem;

namespace {

constexpr const char* ownFolder = "tarnwick";

/// The folder that an environment variable names, empty where it names none.
fs::path folderOf(const char* variable) {
    const char* value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): one thread
    fs::path folder = value == nullptr ? fs::path() : fs::path(value);
    return folder.is_absolute() ? folder : fs::path();
}

fs::path home() {
    const fs::path told = folderOf("HOME");
    if (!told.empty()) {
        return told;
    }
    const passwd* user = getpwuid(getuid()); // NOLINT(concurrency-mt-unsafe): one thread
    return user == nullptr ? fs::path() : fs::path(user->pw_dir);
}

/// Our folder in the one that `variable` names, or else at `place` in the player's home.
fs::path userFolder(const char* variable, const char* place) {
    const fs::path told = folderOf(variable);
    if (!told.empty()) {
        return told / ownFolder;
    }
    const fs::path house = home();
    return house.empty() ? fs::path() : house / place / ownFolder;
}

} // namespace

UserFolders UserFolders::fromEnvironment() {
    UserFolders folders;
    folders.data = userFolder("XDG_DATA_HOME", ".local/share");
    folders.state = userFolder("XDG_STATE_HOME", ".local/state");
    folders.config = userFolder("XDG_CONFIG_HOME", ".config");
    const fs::path runtime = folderOf("XDG_RUNTIME_DIR");
    folders.runtime = runtime.empty() ? fs::path() : runtime / ownFolder;
    const fs::path temporary = folderOf("TMPDIR");
    folders.temporary = temporary.empty() ? fs::path("/tmp") : temporary;
    return folders;
}

} // namespace tarnwick
