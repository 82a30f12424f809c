#pragma once

#include <string>
#include <vector>

namespace tarnwick {

/// The pictures of an animation, found by the name of one of them.
class FrameFiles {
public:
    FrameFiles() = delete;

    /// The names that `name` stands for, in upper case but for what the disk gives. If it holds "_FRAME" in
    /// any case, these are the files of its folder whose names agree with it up to the last "_FRAME" and in
    /// the ending: `gfx\fan_frame01.tga` stands for `gfx\fan_frame*.tga`, in the order of their names; none
    /// if there is no such file. Any other name stands for itself.
    static std::vector<std::string> find(std::string name);
};

} // namespace tarnwick
