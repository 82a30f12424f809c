#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;
struct SwsContext;

namespace tarnwick {

/// The first video stream of an AVI file, whose pictures are read by number. What the file's header claims
/// (size, length, rate) is told as it stands; whether the pictures are there shows only when they are asked
/// for.
///
/// It has two stages, as its user reports them apart: `open` reads the header, `openFrames` starts the
/// decoder.
class AviStream {
public:
    /// Pixels a side of the largest pictures that are read. A damaged header may claim any size, and a
    /// texture is filled with it before the first picture is seen.
    static constexpr std::int32_t largestSide = 4096;

    /// Null if the file cannot be read, is no AVI file or has no video stream.
    static std::unique_ptr<AviStream> open(const std::string& fileName);
    ~AviStream();
    AviStream(const AviStream&) = delete;
    AviStream& operator=(const AviStream&) = delete;

    /// Size of a picture, pixels; any value that a file can hold, also 0 and below.
    std::int32_t width() const { return frameWidth; }
    std::int32_t height() const { return frameHeight; }
    /// Pictures in the stream; 0 if the file does not tell, or a number that no counter of 32 bits holds.
    std::uint32_t frameCount() const;
    /// Milliseconds from one picture to the next, cut to a whole number; 0 also where it is beyond 31 bits.
    std::uint32_t frameDuration() const;

    /// Starts the decoder. False if there is none for this file, or the pictures are larger than
    /// `largestSide`.
    bool openFrames();
    bool framesOpen() const { return decoder != nullptr; }

    /// Picture `index`, bottom row first, 3 bytes a pixel (blue, green, red), rows without padding; valid
    /// until the next call. Null if the decoder gives none, and from then on. The next picture costs one
    /// decoding; one that lies back, all from the first. A picture of another size than the header's is
    /// stretched to it.
    const std::uint8_t* frame(std::uint32_t index);

private:
    struct Close {
        void operator()(AVFormatContext* handle) const;
        void operator()(AVCodecContext* handle) const;
        void operator()(AVFrame* handle) const;
        void operator()(AVPacket* handle) const;
        void operator()(SwsContext* handle) const;
    };
    template <class Handle>
    using Owned = std::unique_ptr<Handle, Close>;

    Owned<AVFormatContext> container;
    std::int32_t streamIndex = 0; ///< Of the video among the streams of `container`.
    std::int32_t frameWidth = 0; ///< Kept, since `pixels` has room for it: reading on could renew the header.
    std::int32_t frameHeight = 0;
    Owned<AVCodecContext> decoder;
    Owned<AVFrame> picture; ///< As the decoder gave it.
    Owned<AVPacket> packet;
    Owned<SwsContext> converter;
    std::vector<std::uint8_t> pixels; ///< The picture read last, as `frame` gives it.
    std::uint32_t framesRead = 0;     ///< Pictures taken from the decoder since the first.
    bool allSent = false;             ///< The decoder has the end of the file.

    AviStream() = default;
    bool toStart();
    bool readFrame();
    bool sendPacket();
    bool convert();
};

} // namespace tarnwick
