// `GLConsole`: the basic commands that show and change what the window and the pictures are like.

#include "console/GLConsole.h"
#include "core/FrameTimer.h"
#include "core/LocationStack.h"
#include "game/Game.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/LevelGeometryRenderer.h"

#include <GL/gl.h>

#include <list>

namespace tarnwick {

namespace {

constexpr std::int32_t windowedWidth = 800; ///< Client pixels of a window that leaves full screen.
constexpr std::int32_t windowedHeight = 600;

} // namespace

void GLConsole::addGraphicsCommands() {
    TARNWICK_LOCATION("GLConsole::addGraphicsCommands");
    addCommand("Fullscreen", conCmdFullscreen);
    addCommand("Renderer", conCmdRenderer);
    addCommand("TextureList", conCmdTextureList);
    addCommand("TextureMemory", conCmdTextureMemory);
    addCommand("TextureReload", conCmdTextureReload);
    addCommand("Extensions", conCmdExtensions);
    addCommand("IsExtension", conCmdIsExtension);
    addCommand("AntiAliasingSamples", conCmdAntiAliasingSamples);
    addCommand("AnisotropicFilteringLevel", conCmdAnisotropicFilteringLevel);
    addCommand("VsyncEnable", conCmdVsyncEnable);
    addCommand("TextureQuality", conCmdTextureQuality);
}

bool GLConsole::conCmdFullscreen(bool value, bool set) {
    TARNWICK_LOCATION("GLConsole::conCmdFullscreen");
    if (set && value) {
        GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    } else if (set) {
        GLWindow::setFullscreen(false, windowedWidth, windowedHeight);
        GLWindow::setResizeable(false);
    }
    return GLWindow::isFullscreen();
}

void GLConsole::conCmdRenderer() {
    TARNWICK_LOCATION("GLConsole::conCmdRenderer");
    printTitle("Graphics renderer");
    if (GLWindow::contextCurrent()) {
        print(reinterpret_cast<const char*>(glGetString(GL_RENDERER)));
    }
}

void GLConsole::conCmdTextureList() {
    TARNWICK_LOCATION("GLConsole::conCmdTextureList");
    printTitle("Textures in use");
    std::list<std::string> textures;
    GLTextureManager::getTextureList(textures);
    for (const std::string& texture : textures) {
        print("\n");
        print(texture);
    }
}

void GLConsole::conCmdTextureMemory() {
    TARNWICK_LOCATION("GLConsole::conCmdTextureMemory");
    printTitle("Texture memory used");
    const std::uint32_t halvings = GLTextureManager::getTextureDetailLevel();
    const std::uint64_t bytes = GLTextureManager::getTextureBytesUsed() >> halvings;
    print(static_cast<std::uint32_t>(bytes * 4 / 3)); // the mipmaps add a third
    print(" bytes");
}

void GLConsole::conCmdTextureReload() {
    TARNWICK_LOCATION("GLConsole::conCmdTextureReload");
    FrameTimer timer;
    GLTextureManager::reloadAllTextures();
    timer.update();
    print("\nTexture refresh complete.");
    print("\nTime take to reload: ");
    print(timer.getSeconds());
}

void GLConsole::conCmdExtensions() {
    TARNWICK_LOCATION("GLConsole::conCmdExtensions");
    printTitle("Supported OpenGL Extensions");
    std::list<std::string> extensions;
    GLWindow::getExtensionList(extensions);
    for (const std::string& extension : extensions) {
        print(extension);
        print("\n");
    }
}

void GLConsole::conCmdIsExtension(const std::string& name) {
    TARNWICK_LOCATION("GLConsole::conCmdIsExtension");
    if (name.empty()) {
        print("\nUSAGE: IsExtension ");
        print(" < string >");
        return;
    }
    std::string wanted = name;
    print(GLWindow::extensionSupported(wanted) ? "\nExtension detected." : "\nExtension not found.");
}

std::int32_t GLConsole::conCmdAntiAliasingSamples(std::int32_t value, bool /*set*/) {
    TARNWICK_LOCATION("GLConsole::conCmdAntiAliasingSamples");
    if (value != 0) {
        GLWindow::setAntiAliasingMode(static_cast<std::uint32_t>(value));
        GLTextureManager::reloadAllTextures();
        if (Game::running()) {
            LevelGeometryRenderer::initialise(); // the display lists went with the old context
        }
    }
    return static_cast<std::int32_t>(GLWindow::getAntiAliasingMode());
}

std::int32_t GLConsole::conCmdAnisotropicFilteringLevel(std::int32_t value, bool set) {
    TARNWICK_LOCATION("GLConsole::conCmdAnisotropicFilteringLevel");
    if (set) {
        GLTextureManager::setAnisotropicFilteringLevel(static_cast<std::uint32_t>(value));
    }
    return static_cast<std::int32_t>(GLTextureManager::getAnisotropicFilteringLevel());
}

bool GLConsole::conCmdVsyncEnable(bool value, bool set) {
    TARNWICK_LOCATION("GLConsole::conCmdVsyncEnable");
    if (set) {
        GLWindow::enableVsync(value);
    }
    return GLWindow::vsyncEnabled();
}

std::int32_t GLConsole::conCmdTextureQuality(std::int32_t value, bool set) {
    TARNWICK_LOCATION("GLConsole::conCmdTextureQuality");
    if (set) {
        GLTextureManager::setTextureDetailLevel(static_cast<std::uint32_t>(value));
    }
    return static_cast<std::int32_t>(GLTextureManager::getTextureDetailLevel());
}

} // namespace tarnwick
