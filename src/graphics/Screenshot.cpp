#include "graphics/Screenshot.h"

#include "core/LocationStack.h"
#include "core/Log.h"
#include "graphics/FramePicture.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

namespace tarnwick {

namespace {

constexpr int mostInASecond = 100;

std::filesystem::path folderOf(const char* variable) {
    TARNWICK_LOCATION("Screenshot::folderOf");
    const char* const value = std::getenv(variable);
    const std::filesystem::path path = value != nullptr ? value : "";
    return path.is_absolute() ? path : std::filesystem::path();
}

/// What the line `XDG_PICTURES_DIR="..."` of the desktop's list names; empty without one.
std::filesystem::path namedFolder(const std::filesystem::path& list, const std::filesystem::path& home) {
    TARNWICK_LOCATION("Screenshot::namedFolder");
    constexpr std::string_view start = "XDG_PICTURES_DIR=\"";
    constexpr std::string_view homeStart = "$HOME/";
    std::filesystem::path found;
    std::ifstream file(list);
    for (std::string line; std::getline(file, line);) {
        const std::size_t end = line.rfind('"');
        if (!line.starts_with(start) || end < start.size()) {
            continue;
        }
        const std::string value = line.substr(start.size(), end - start.size());
        found = value.starts_with(homeStart) ? home / value.substr(homeStart.size())
                                             : std::filesystem::path(value);
    }
    return found;
}

std::string timeOfDay() {
    TARNWICK_LOCATION("Screenshot::timeOfDay");
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d-%H%M%S", &parts);
    return text.data();
}

/// A name that no file has yet.
std::filesystem::path freeName(const std::filesystem::path& folder) {
    TARNWICK_LOCATION("Screenshot::freeName");
    const std::string name = "tarnwick-" + timeOfDay();
    std::filesystem::path file = folder / (name + ".png");
    std::error_code error;
    for (int i = 2; i < mostInASecond && std::filesystem::exists(file, error); ++i) {
        file = folder / (name + "-" + std::to_string(i) + ".png");
    }
    return file;
}

} // namespace

std::filesystem::path Screenshot::folder() {
    TARNWICK_LOCATION("Screenshot::folder");
    const std::filesystem::path home = folderOf("HOME");
    if (home.empty()) {
        return {};
    }
    const std::filesystem::path config = folderOf("XDG_CONFIG_HOME");
    const std::filesystem::path named =
        namedFolder((config.empty() ? home / ".config" : config) / "user-dirs.dirs", home);
    std::error_code error;
    return named.is_absolute() && std::filesystem::is_directory(named, error) ? named : home;
}

void Screenshot::save() {
    TARNWICK_LOCATION("Screenshot::save");
    const std::filesystem::path place = folder();
    if (place.empty()) {
        Log::print("\nNo folder to save a picture in");
        return;
    }
    const std::filesystem::path file = freeName(place);
    const bool saved = FramePicture::ofBackBuffer().savePng(file);
    Log::print((saved ? "\nSaved the picture " : "\nUnable to save the picture ") + file.string());
}

} // namespace tarnwick
