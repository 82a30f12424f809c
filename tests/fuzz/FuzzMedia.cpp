// Targets that read a picture, a sound or a film.

#include "audio/WavFile.h"
#include "fuzz/FuzzTarget.h"
#include "graphics/AviStream.h"
#include "graphics/GLTga32Loader.h"
#include "graphics/PictureHead.h"

#include <cstdint>

namespace tarnwick {

namespace {

constexpr const char* inputName = "input";
constexpr std::uint32_t framesTried = 3;

} // namespace

void fuzzTga(std::string_view bytes) {
    writeFuzzInput(inputName, bytes);
    std::uint32_t width = 1;
    std::uint32_t height = 1;
    const bool loaded = GLTga32Loader::load(inputName, 1, width, height);
    fuzzExpect(loaded ? width >= 4 && height >= 4 : width == 0 && height == 0,
               "a refused picture has no size");
}

void fuzzPictureHead(std::string_view bytes) {
    writeFuzzInput(inputName, bytes);
    for (const bool tga : {false, true}) {
        PictureHead(inputName, tga).plausible();
    }
}

void fuzzWav(std::string_view bytes) {
    WavFile wav;
    if (WavFile::read(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), wav)) {
        fuzzExpect(!wav.samples.empty() && wav.samples.size() < bytes.size(),
                   "the samples are those of the file");
        fuzzExpect(wav.channels >= 1 && wav.channels <= 2 && wav.sampleRate > 0 && wav.byteRate > 0 &&
                       wav.blockAlign > 0 && wav.bitsPerSample > 0,
                   "what is read can be played");
    }
}

void fuzzAvi(std::string_view bytes) {
    writeFuzzInput(inputName, bytes);
    const std::unique_ptr<AviStream> film = AviStream::open(inputName);
    if (film == nullptr) {
        return;
    }
    film->frameCount();
    film->frameDuration();
    if (!film->openFrames()) {
        return;
    }
    const std::size_t size =
        static_cast<std::size_t>(film->width()) * static_cast<std::size_t>(film->height()) * 3;
    for (std::uint32_t frame = 0; frame < framesTried; ++frame) {
        const std::uint8_t* const pixels = film->frame(frame);
        if (pixels == nullptr) {
            break;
        }
        volatile std::uint8_t last = pixels[size - 1]; // as far as the header promises
        last = pixels[0];
        static_cast<void>(last);
    }
    film->frame(0); // and back
}

} // namespace tarnwick
