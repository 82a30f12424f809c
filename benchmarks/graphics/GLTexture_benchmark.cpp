#include "core/GLTexture.h"

#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "support/DataFolder.h"
#include "support/ModuleReset.h"
#include "support/TgaFile.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace tarnwick {
namespace {

constexpr int pictureCount = 100;
constexpr std::uint32_t pictureSide = 256; ///< Pixels, the size of a tile.

std::string pictureName(int number) {
    return "gfx\\picture_" + std::to_string(number) + ".tga";
}

/// Loads 100 pictures of 256 by 256 from a warm disk, mipmaps and upload included, and lets them go again.
void loadTextures100(benchmark::State& state) {
    ModuleReset::all();
    const DataFolder data;
    TgaFile tile{.width = pictureSide, .height = pictureSide};
    for (std::uint32_t pixel = 0; pixel < pictureSide * pictureSide; ++pixel) {
        tile.data += TgaFile::pixel(pixel & 255, (pixel >> 8) & 255, 128, 255);
    }
    for (int i = 0; i < pictureCount; ++i) {
        data.write("gfx/picture_" + std::to_string(i) + ".tga", tile.bytes());
    }
    GLWindow::createOffscreen(64, 64);
    GLTextureManager::initialise();
    for (auto _ : state) {
        std::vector<GLTexture> textures;
        for (int i = 0; i < pictureCount; ++i) {
            textures.emplace_back(pictureName(i));
        }
        benchmark::DoNotOptimize(textures.data());
    }
    state.SetItemsProcessed(state.iterations() * pictureCount);
    ModuleReset::all();
}
BENCHMARK(loadTextures100)->Name("load_textures_100")->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tarnwick
