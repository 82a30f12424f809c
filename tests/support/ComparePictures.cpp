#include "support/ComparePictures.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tarnwick {

namespace {

bool differ(FramePicture::Pixel a, FramePicture::Pixel b, int tolerance) {
    return std::abs(a.red - b.red) > tolerance || std::abs(a.green - b.green) > tolerance ||
           std::abs(a.blue - b.blue) > tolerance;
}

} // namespace

double differenceOf(const FramePicture& a, const FramePicture& b, int tolerance) {
    if (a.width != b.width || a.height != b.height) {
        return 1.0;
    }
    double different = 0.0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i) {
        different += differ(a.pixels[i], b.pixels[i], tolerance) ? 1.0 : 0.0;
    }
    return different / static_cast<double>(a.pixels.size());
}

void expectPictureAsFile(const FramePicture& drawn, const std::filesystem::path& file) {
    if (std::getenv("TARNWICK_RENEW_PICTURES") != nullptr) {
        ASSERT_TRUE(drawn.savePng(file));
        return;
    }
    const double difference = differenceOf(drawn, FramePicture::load(file));
    if (difference > differentShare) {
        const std::filesystem::path saved =
            std::filesystem::temp_directory_path() / ("tarnwick-" + file.filename().string());
        drawn.savePng(saved);
        ADD_FAILURE() << difference * 100.0 << " % of the pixels differ from " << file << "; drawn was "
                      << saved;
    }
}

} // namespace tarnwick
