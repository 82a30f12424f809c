#include "fuzz/FuzzTarget.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace tarnwick {

namespace {

constexpr FuzzTarget targets[] = {
    {"level-file", 4096, fuzzLevelFile},
    {"configuration", 1024, fuzzConfiguration},
    {"tga", 4096, fuzzTga},
    {"picture-head", 1024, fuzzPictureHead},
    {"wav", 1024, fuzzWav},
    {"avi", 16384, fuzzAvi},
    {"state-line", 16384, fuzzStateLine},
    {"tiled-map", 8192, fuzzTiledMap},
    {"keys", 512, fuzzKeys},
    {"scores", 300, fuzzScores},
    {"console", 256, fuzzConsole},
    {"play", 512, fuzzPlay},
};

} // namespace

std::span<const FuzzTarget> fuzzTargets() {
    return targets;
}

const FuzzTarget* findFuzzTarget(std::string_view name) {
    const auto* const found =
        std::ranges::find_if(targets, [&](const FuzzTarget& target) { return target.name == name; });
    return found != std::end(targets) ? found : nullptr;
}

void enterFuzzFolder(const std::string& data) {
    namespace fs = std::filesystem;
    std::string name = (fs::temp_directory_path() / "tarnwick-fuzz-XXXXXX").string();
    fuzzExpect(mkdtemp(name.data()) != nullptr, "there is a folder for temporary files");
    for (const char* const folder : {"cfg", "fx"}) {
        fs::copy(fs::path(data) / folder, fs::path(name) / folder);
    }
    fs::create_directory(fs::path(name) / "maps");
    fs::create_directory(fs::path(name) / "sav");
    fs::current_path(name);
}

void fuzzExpect(bool kept, const char* promise) {
    if (!kept) {
        std::fprintf(stderr, "not kept: %s\n", promise);
        std::abort();
    }
}

void writeFuzzInput(const char* name, std::string_view bytes) {
    std::FILE* const file = std::fopen(name, "wb");
    fuzzExpect(file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size(),
               "an input can be written");
    std::fclose(file);
}

} // namespace tarnwick
