#include "graphics/GraphicsCommands.h"

#include "core/FrameTimer.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>

#include <list>

namespace tarnwick {

namespace {

constexpr std::int32_t windowedWidth = 800; ///< Client pixels of a window that leaves full screen.
constexpr std::int32_t windowedHeight = 600;

} // namespace

constexpr CommandRow GraphicsCommands::commands[] = {
    {"Fullscreen", conCmdFullscreen},       {"Renderer", conCmdRenderer},
    {"TextureList", conCmdTextureList},     {"TextureMemory", conCmdTextureMemory},
    {"TextureReload", conCmdTextureReload}, {"Extensions", conCmdExtensions},
    {"IsExtension", conCmdIsExtension},     {"AnisotropicFilteringLevel", conCmdAnisotropicFilteringLevel},
    {"VsyncEnable", conCmdVsyncEnable},     {"TextureQuality", conCmdTextureQuality},
};

CommandTable GraphicsCommands::table() {
    TARNWICK_LOCATION("GraphicsCommands::table");
    return commands;
}

bool GraphicsCommands::conCmdFullscreen(bool value, bool set) {
    TARNWICK_LOCATION("GraphicsCommands::conCmdFullscreen");
    if (set && value) {
        GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    } else if (set) {
        GLWindow::setFullscreen(false, windowedWidth, windowedHeight);
        GLWindow::setResizeable(false);
    }
    return GLWindow::isFullscreen();
}

void GraphicsCommands::conCmdRenderer() {
    TARNWICK_LOCATION("GraphicsCommands::conCmdRenderer");
    Log::printTitle("Graphics renderer");
    if (GLWindow::contextCurrent()) {
        Log::print(reinterpret_cast<const char*>(glGetString(GL_RENDERER)));
    }
}

void GraphicsCommands::conCmdTextureList() {
    TARNWICK_LOCATION("GraphicsCommands::conCmdTextureList");
    Log::printTitle("Textures in use");
    std::list<std::string> textures;
    GLTextureManager::getTextureList(textures);
    for (const std::string& texture : textures) {
        Log::print("\n");
        Log::print(texture);
    }
}

void GraphicsCommands::conCmdTextureMemory() {
    TARNWICK_LOCATION("GraphicsCommands::conCmdTextureMemory");
    Log::printTitle("Texture memory used");
    const std::uint32_t halvings = GLTextureManager::getTextureDetailLevel();
    const std::uint64_t bytes = GLTextureManager::getTextureBytesUsed() >> halvings;
    Log::print(static_cast<std::uint32_t>(bytes * 4 / 3)); // the mipmaps add a third
    Log::print(" bytes");
}

void GraphicsCommands::conCmdTextureReload() {
    TARNWICK_LOCATION("GraphicsCommands::conCmdTextureReload");
    FrameTimer timer;
    GLTextureManager::reloadAllTextures();
    timer.update();
    Log::print("\nTexture refresh complete.");
    Log::print("\nTime take to reload: ");
    Log::print(timer.getSeconds());
}

void GraphicsCommands::conCmdExtensions() {
    TARNWICK_LOCATION("GraphicsCommands::conCmdExtensions");
    Log::printTitle("Supported OpenGL Extensions");
    std::list<std::string> extensions;
    GLWindow::getExtensionList(extensions);
    for (const std::string& extension : extensions) {
        Log::print(extension);
        Log::print("\n");
    }
}

void GraphicsCommands::conCmdIsExtension(const std::string& name) {
    TARNWICK_LOCATION("GraphicsCommands::conCmdIsExtension");
    if (name.empty()) {
        Log::print("\nUSAGE: IsExtension ");
        Log::print(" < string >");
        return;
    }
    std::string wanted = name;
    Log::print(GLWindow::extensionSupported(wanted) ? "\nExtension detected." : "\nExtension not found.");
}

std::int32_t GraphicsCommands::conCmdAnisotropicFilteringLevel(std::int32_t value, bool set) {
    TARNWICK_LOCATION("GraphicsCommands::conCmdAnisotropicFilteringLevel");
    if (set) {
        GLTextureManager::setAnisotropicFilteringLevel(static_cast<std::uint32_t>(value));
    }
    return static_cast<std::int32_t>(GLTextureManager::getAnisotropicFilteringLevel());
}

bool GraphicsCommands::conCmdVsyncEnable(bool value, bool set) {
    TARNWICK_LOCATION("GraphicsCommands::conCmdVsyncEnable");
    if (set) {
        GLWindow::enableVsync(value);
    }
    return GLWindow::vsyncEnabled();
}

std::int32_t GraphicsCommands::conCmdTextureQuality(std::int32_t value, bool set) {
    TARNWICK_LOCATION("GraphicsCommands::conCmdTextureQuality");
    if (set) {
        GLTextureManager::setTextureDetailLevel(static_cast<std::uint32_t>(value));
    }
    return static_cast<std::int32_t>(GLTextureManager::getTextureDetailLevel());
}

} // namespace tarnwick
