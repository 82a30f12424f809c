#pragma once

#include <filesystem>
#include <string>

namespace tarnwick {

/// Puts `bytes` in the place of the file, which is made if it is missing: they are written beside it and
/// brought to the disk, then they take its name, so that at no moment less than a whole file stands there.
/// False, with the old file as it was and nothing left beside it, if that fails at any step.
bool replaceFile(const std::filesystem::path& file, const std::string& bytes);

/// Keeps other programs that ask for it, too, out of a folder for as long as it lives. It waits at most half
/// a second for who has the folder, who may have been stopped; without the lock the folder is open to both.
class FolderLock {
public:
    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    int descriptor; ///< Of the folder; below 0 if it could not be opened.
};

} // namespace tarnwick
