#include "tools/sim/FrameWriter.h"

#include "game/Game.h"
#include "graphics/FramePicture.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "tools/sim/SimulationOptions.h"

#include <cstdio>
#include <stdexcept>
#include <system_error>

namespace tarnwick {

namespace {

namespace fs = std::filesystem;

/// Paths of the command line are meant from where the command was given, not from the data folder.
fs::path absolutePath(const std::string& path) {
    return path.empty() ? fs::path() : fs::absolute(path);
}

void savePicture(const fs::path& file) {
    if (!GLWindow::exists()) {
        throw std::runtime_error(file.string() + ": the window was closed, there is nothing to draw");
    }
    Game::drawPicture();
    if (!FramePicture::ofBackBuffer().savePng(file)) {
        throw std::runtime_error(file.string() + ": cannot be written");
    }
}

} // namespace

FrameWriter::FrameWriter(const SimulationOptions& options)
    : screenshot(absolutePath(options.screenshotFile))
    , folder(absolutePath(options.framesFolder)) {
    if (!folder.empty()) {
        std::error_code error;
        fs::create_directories(folder, error);
        if (!fs::is_directory(folder)) {
            throw std::runtime_error(folder.string() + ": is no folder that frames could go to");
        }
    }
}

void FrameWriter::openWindow(std::int32_t width, std::int32_t height) const {
    if (screenshot.empty() && folder.empty()) {
        GLWindow::createHeadless(width, height);
        return;
    }
    GLWindow::createOffscreen(width, height);
    GLTextureManager::initialise();
}

void FrameWriter::writeFrame() {
    if (folder.empty()) {
        return;
    }
    char name[32];
    std::snprintf(name, sizeof name, "%06llu.png", static_cast<unsigned long long>(framesWritten));
    savePicture(folder / name);
    ++framesWritten;
}

void FrameWriter::writeScreenshot() const {
    if (!screenshot.empty()) {
        savePicture(screenshot);
    }
}

} // namespace tarnwick
