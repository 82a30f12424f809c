#include "graphics/GLTexture.h"

#include "core/LocationStack.h"
#include "core/Strings.h"
#include "graphics/GLTextureManager.h"

namespace tarnwick {

GLTexture::GLTexture()
    : GLTexture("gfx\\default.tga") {
    TARNWICK_LOCATION("GLTexture::GLTexture");
}

GLTexture::GLTexture(const std::string& fileName)
    : name(fileName) {
    TARNWICK_LOCATION("GLTexture::GLTexture");
    takeReference();
}

GLTexture::GLTexture(const char* fileName)
    : name(fileName != nullptr ? fileName : "") {
    TARNWICK_LOCATION("GLTexture::GLTexture");
    takeReference();
}

GLTexture::GLTexture(const GLTexture& other)
    : name(other.name) {
    TARNWICK_LOCATION("GLTexture::GLTexture");
    takeReference();
}

GLTexture::~GLTexture() {
    TARNWICK_LOCATION("GLTexture::~GLTexture");
    GLTextureManager::freeTexture(name);
}

GLTexture& GLTexture::operator=(const GLTexture& other) {
    TARNWICK_LOCATION("GLTexture::operator=");
    if (this == &other) {
        return *this;
    }
    GLTextureManager::freeTexture(name);
    name = other.name;
    takeReference();
    return *this;
}

GLTexture& GLTexture::operator=(std::string& fileName) {
    TARNWICK_LOCATION("GLTexture::operator=");
    slStringUpper(fileName);
    if (fileName == name) {
        return *this;
    }
    GLTextureManager::freeTexture(name);
    name = fileName;
    takeReference();
    return *this;
}

GLTexture& GLTexture::operator=(const std::string& fileName) {
    TARNWICK_LOCATION("GLTexture::operator=");
    std::string upperCase = fileName;
    return *this = upperCase;
}

GLTexture& GLTexture::operator=(const char* fileName) {
    TARNWICK_LOCATION("GLTexture::operator=");
    std::string upperCase = fileName != nullptr ? fileName : "";
    return *this = upperCase;
}

void GLTexture::takeReference() {
    TARNWICK_LOCATION("GLTexture::takeReference");
    const GLTextureInternal& entry = GLTextureManager::loadTexture(name);
    width = entry.width;
    height = entry.height;
    textureId = entry.textureId;
    hasAlpha = entry.hasAlpha;
    name = entry.name;
}

} // namespace tarnwick
