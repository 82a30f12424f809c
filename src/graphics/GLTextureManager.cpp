#include "graphics/GLTextureManager.h"

#include "core/GLTexture.h"
#include "core/LocationStack.h"
#include "core/Strings.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <thread>

namespace tarnwick {

namespace {

std::string upperCased(const std::string& fileName) {
    TARNWICK_LOCATION("GLTextureManager::upperCased");
    std::string result = fileName;
    slStringUpper(result);
    return result;
}

bool extensionPresent(const char* name) {
    TARNWICK_LOCATION("GLTextureManager::extensionPresent");
    std::string text = name;
    return GLWindow::extensionSupported(text);
}

/// What a handle takes over from its entry.
void takeEntry(GLTexture& handle) {
    TARNWICK_LOCATION("GLTextureManager::takeEntry");
    const GLTextureInternal& entry = GLTextureManager::loadTexture(handle.name);
    handle.width = entry.width;
    handle.height = entry.height;
    handle.textureId = entry.textureId;
    handle.hasAlpha = entry.hasAlpha;
    handle.name = entry.name;
}

/// Set before `main`: handles come to this cache in every program that has it.
[[maybe_unused]] const bool cacheSet = [] {
    GLTexture::setCache({takeEntry, GLTextureManager::freeTexture});
    return true;
}();

} // namespace

GLTextureManager::State& GLTextureManager::state = *new State;

void GLTextureManager::initialise() {
    TARNWICK_LOCATION("GLTextureManager::initialise");
    deleteAllTextures();
    state.anisotropy = 1;
    state.maxAnisotropy = 1;
    state.textureDetailLevel = 0;
    state.compressionAvailable = extensionPresent("GL_ARB_texture_compression");
    state.anisotropyAvailable = extensionPresent("GL_EXT_texture_filter_anisotropic");
    applyCompressionHint();
    if (state.anisotropyAvailable) {
        GLint largest = 1;
        glGetIntegerv(GL_MAX_TEXTURE_MAX_ANISOTROPY_EXT, &largest);
        state.maxAnisotropy = static_cast<std::uint32_t>(std::max(largest, 1));
    }
}

void GLTextureManager::shutdown() {
    TARNWICK_LOCATION("GLTextureManager::shutdown");
    deleteAllTextures();
    state.anisotropy = 1;
}

const GLTextureInternal& GLTextureManager::loadTexture(const std::string& fileName) {
    TARNWICK_LOCATION("GLTextureManager::loadTexture");
    const std::string key = upperCased(fileName);
    const auto found = state.textures.find(key);
    if (found != state.textures.end()) {
        GLTextureInternal& entry = found->second;
        if (entry.ownerThread == std::this_thread::get_id()) {
            ++entry.referenceCount;
        }
        return entry;
    }
    GLTextureInternal& entry = state.textures.try_emplace(key, key, newGlName()).first->second;
    entry.load();
    entry.referenceCount = 1;
    return entry;
}

void GLTextureManager::freeTexture(const std::string& fileName) {
    TARNWICK_LOCATION("GLTextureManager::freeTexture");
    const auto found = state.textures.find(upperCased(fileName));
    if (found == state.textures.end()) {
        return;
    }
    GLTextureInternal& entry = found->second;
    if (entry.ownerThread != std::this_thread::get_id()) {
        return;
    }
    --entry.referenceCount;
    if (entry.referenceCount == 0) {
        glDeleteTextures(1, &entry.textureId);
        state.textures.erase(found);
    }
}

void GLTextureManager::reloadAllTextures() {
    TARNWICK_LOCATION("GLTextureManager::reloadAllTextures");
    for (auto& [name, entry] : state.textures) {
        entry.reload();
    }
}

void GLTextureManager::setTextureDetailLevel(std::uint32_t level) {
    TARNWICK_LOCATION("GLTextureManager::setTextureDetailLevel");
    if (level == state.textureDetailLevel || level > coarsestDetailLevel) {
        return;
    }
    state.textureDetailLevel = level;
    applyCompressionHint();
    reloadAllTextures();
}

void GLTextureManager::setAnisotropicFilteringLevel(std::uint32_t level) {
    TARNWICK_LOCATION("GLTextureManager::setAnisotropicFilteringLevel");
    if (!state.anisotropyAvailable) {
        return;
    }
    state.anisotropy = std::max(std::min(level, state.maxAnisotropy), std::uint32_t{1});
    for (const auto& [name, entry] : state.textures) {
        glBindTexture(GL_TEXTURE_2D, entry.textureId);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_ANISOTROPY_EXT, static_cast<GLint>(state.anisotropy));
    }
}

std::uint32_t GLTextureManager::getTextureBytesUsed() {
    TARNWICK_LOCATION("GLTextureManager::getTextureBytesUsed");
    std::uint32_t bytes = 0;
    for (const auto& [name, entry] : state.textures) {
        bytes += entry.width * entry.height * 4;
    }
    return bytes;
}

void GLTextureManager::getTextureList(std::list<std::string>& list) {
    TARNWICK_LOCATION("GLTextureManager::getTextureList");
    for (const auto& [name, entry] : state.textures) {
        const char* const mark = entry.loaded ? "" : " (loading failed) ";
        list.push_back(name + mark + " : " + std::to_string(entry.bytesPerPixel * 8) + " BIT");
    }
}

bool GLTextureManager::nameInUse(std::uint32_t glName) {
    TARNWICK_LOCATION("GLTextureManager::nameInUse");
    return std::any_of(state.textures.begin(), state.textures.end(),
                       [&](const auto& pair) { return pair.second.textureId == glName; });
}

/// A GL name that no entry has. A new GL context counts from 1 again while entries keep the names that they
/// had in the old one, and without a context the GL gives none at all.
std::uint32_t GLTextureManager::newGlName() {
    TARNWICK_LOCATION("GLTextureManager::newGlName");
    const bool contextCurrent = GLWindow::contextCurrent();
    GLuint glName = 0;
    do {
        if (contextCurrent) {
            glGenTextures(1, &glName);
        } else {
            ++glName;
        }
    } while (nameInUse(glName));
    return glName;
}

void GLTextureManager::deleteAllTextures() {
    TARNWICK_LOCATION("GLTextureManager::deleteAllTextures");
    for (const auto& [name, entry] : state.textures) {
        glDeleteTextures(1, &entry.textureId);
    }
    state.textures.clear();
}

void GLTextureManager::applyCompressionHint() {
    TARNWICK_LOCATION("GLTextureManager::applyCompressionHint");
    if (state.compressionAvailable) {
        glHint(GL_TEXTURE_COMPRESSION_HINT_ARB,
               state.textureDetailLevel == coarsestDetailLevel ? GL_FASTEST : GL_NICEST);
    }
}

} // namespace tarnwick
