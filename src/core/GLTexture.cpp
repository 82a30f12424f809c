#include "core/GLTexture.h"

#include "core/LocationStack.h"
#include "core/Strings.h"

namespace tarnwick {

namespace {

constexpr std::uint32_t sideWithoutPicture = 16; ///< Pixels, as of the checkerboard.

} // namespace

constinit GLTexture::Cache GLTexture::cache;

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
    giveBack(name);
}

GLTexture& GLTexture::operator=(const GLTexture& other) {
    TARNWICK_LOCATION("GLTexture::operator=");
    if (this == &other) {
        return *this;
    }
    giveBack(name);
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
    giveBack(name);
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
    if (cache.take != nullptr) {
        cache.take(*this);
        return;
    }
    slStringUpper(name);
    width = height = sideWithoutPicture;
    textureId = 0;
    hasAlpha = false;
}

void GLTexture::giveBack(const std::string& fileName) {
    TARNWICK_LOCATION("GLTexture::giveBack");
    if (cache.giveBack != nullptr) {
        cache.giveBack(fileName);
    }
}

} // namespace tarnwick
