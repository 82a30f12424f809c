#include "graphics/AviStream.h"

#include "core/DataFiles.h"
#include "core/LocationStack.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <limits>

namespace tarnwick {

namespace {

constexpr std::int64_t bytesPerPixel = 3;
constexpr std::int64_t millisecondsPerSecond = 1000;

AVStream& streamOf(AVFormatContext& container, std::int32_t index) {
    TARNWICK_LOCATION("AviStream::streamOf");
    return *container.streams[index];
}

} // namespace

void AviStream::Close::operator()(AVFormatContext* handle) const {
    TARNWICK_LOCATION("AviStream::Close::operator()");
    avformat_close_input(&handle);
}

void AviStream::Close::operator()(AVCodecContext* handle) const {
    TARNWICK_LOCATION("AviStream::Close::operator()");
    avcodec_free_context(&handle);
}

void AviStream::Close::operator()(AVFrame* handle) const {
    TARNWICK_LOCATION("AviStream::Close::operator()");
    av_frame_free(&handle);
}

void AviStream::Close::operator()(AVPacket* handle) const {
    TARNWICK_LOCATION("AviStream::Close::operator()");
    av_packet_free(&handle);
}

void AviStream::Close::operator()(SwsContext* handle) const {
    TARNWICK_LOCATION("AviStream::Close::operator()");
    sws_freeContext(handle);
}

AviStream::~AviStream() {
    TARNWICK_LOCATION("AviStream::~AviStream");
}

std::unique_ptr<AviStream> AviStream::open(const std::string& fileName) {
    TARNWICK_LOCATION("AviStream::open");
    av_log_set_level(AV_LOG_QUIET); // damaged files are our user's to report; standard error is the program's
    if (!DataFiles::open(fileName).is_open()) {
        return nullptr; // a pipe, say, whose end nobody would see
    }
    const std::string location =
        "file:" + DataFiles::find(fileName); // never anything but a file of this machine
    AVFormatContext* opened = nullptr;
    if (avformat_open_input(&opened, location.c_str(), av_find_input_format("avi"), nullptr) != 0) {
        return nullptr;
    }
    std::unique_ptr<AviStream> stream(new AviStream);
    stream->container.reset(opened);
    for (unsigned int i = 0; i < opened->nb_streams; ++i) {
        const AVCodecParameters& parameters = *opened->streams[i]->codecpar;
        if (parameters.codec_type == AVMEDIA_TYPE_VIDEO) {
            stream->streamIndex = static_cast<std::int32_t>(i);
            stream->frameWidth = parameters.width;
            stream->frameHeight = parameters.height;
            return stream;
        }
    }
    return nullptr;
}

std::uint32_t AviStream::frameCount() const {
    TARNWICK_LOCATION("AviStream::frameCount");
    const std::int64_t count = streamOf(*container, streamIndex).nb_frames;
    return count >= 0 && count <= std::numeric_limits<std::uint32_t>::max()
               ? static_cast<std::uint32_t>(count)
               : 0;
}

std::uint32_t AviStream::frameDuration() const {
    TARNWICK_LOCATION("AviStream::frameDuration");
    const AVRational seconds = streamOf(*container, streamIndex).time_base; // the stream counts pictures
    if (seconds.num <= 0 || seconds.den <= 0) {
        return 0;
    }
    const std::int64_t duration = millisecondsPerSecond * seconds.num / seconds.den;
    return duration <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::uint32_t>(duration) : 0;
}

bool AviStream::openFrames() {
    TARNWICK_LOCATION("AviStream::openFrames");
    if (std::min(frameWidth, frameHeight) < 1 || std::max(frameWidth, frameHeight) > largestSide) {
        return false;
    }
    const AVCodecParameters* const parameters = streamOf(*container, streamIndex).codecpar;
    const AVCodec* const codec = avcodec_find_decoder(parameters->codec_id);
    Owned<AVCodecContext> opened(codec != nullptr ? avcodec_alloc_context3(codec) : nullptr);
    if (opened == nullptr || avcodec_parameters_to_context(opened.get(), parameters) < 0) {
        return false;
    }
    opened->thread_count = 1; // a picture comes as soon as it is sent
    opened->max_pixels =
        std::int64_t{largestSide} * largestSide; // also where a picture differs from the header
    picture.reset(av_frame_alloc());
    packet.reset(av_packet_alloc());
    if (picture == nullptr || packet == nullptr || avcodec_open2(opened.get(), codec, nullptr) != 0) {
        return false;
    }
    pixels.resize(static_cast<std::size_t>(frameWidth * bytesPerPixel * frameHeight));
    decoder = std::move(opened);
    return true;
}

const std::uint8_t* AviStream::frame(std::uint32_t index) {
    TARNWICK_LOCATION("AviStream::frame");
    if (decoder == nullptr || (index + 1 < framesRead && !toStart())) {
        return nullptr;
    }
    while (framesRead <= index) {
        if (!readFrame()) {
            return nullptr;
        }
        ++framesRead;
    }
    return pixels.data();
}

/// Back in front of the first picture.
bool AviStream::toStart() {
    TARNWICK_LOCATION("AviStream::toStart");
    avcodec_flush_buffers(decoder.get());
    framesRead = 0;
    allSent = false;
    return av_seek_frame(container.get(), streamIndex, 0, AVSEEK_FLAG_BACKWARD) >= 0;
}

/// The next picture into `pixels`.
bool AviStream::readFrame() {
    TARNWICK_LOCATION("AviStream::readFrame");
    for (;;) {
        const int got = avcodec_receive_frame(decoder.get(), picture.get());
        if (got == 0) {
            return convert();
        }
        if (got != AVERROR(EAGAIN) || allSent || !sendPacket()) {
            return false;
        }
    }
}

/// Hands the next piece of the stream to the decoder, or the news that there is none left. False if it
/// refuses.
bool AviStream::sendPacket() {
    TARNWICK_LOCATION("AviStream::sendPacket");
    while (av_read_frame(container.get(), packet.get()) >= 0) {
        const bool ours = packet->stream_index == streamIndex;
        const bool taken = ours && avcodec_send_packet(decoder.get(), packet.get()) == 0;
        av_packet_unref(packet.get());
        if (ours) {
            return taken;
        }
    }
    allSent = true;
    return avcodec_send_packet(decoder.get(), nullptr) == 0;
}

bool AviStream::convert() {
    TARNWICK_LOCATION("AviStream::convert");
    const auto format = static_cast<AVPixelFormat>(picture->format);
    constexpr int flags = SWS_BILINEAR | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT;
    converter.reset(sws_getCachedContext(converter.release(), picture->width, picture->height, format,
                                         frameWidth, frameHeight, AV_PIX_FMT_BGR24, flags, nullptr, nullptr,
                                         nullptr));
    if (converter == nullptr) {
        return false;
    }
    const auto stride = static_cast<int>(frameWidth * bytesPerPixel);
    std::uint8_t* const lastRow = pixels.data() + pixels.size() - static_cast<std::size_t>(stride);
    std::uint8_t* const rows[] = {lastRow};
    const int strides[] = {-stride}; // upwards
    return sws_scale(converter.get(), picture->data, picture->linesize, 0, picture->height, rows, strides) ==
           frameHeight;
}

} // namespace tarnwick
