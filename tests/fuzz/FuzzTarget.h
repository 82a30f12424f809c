#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tarnwick {

/// One thing that is fed with bytes from anywhere: a reader of files, the console, or the game on a level
/// made of them.
struct FuzzTarget {
    std::string_view name; ///< As in `tests/fuzz/corpus/NAME`.
    std::size_t longest;   ///< Bytes of the longest input that is tried.
    /// Takes whatever bytes there are. What must not happen ends the program: a report of a sanitizer, a
    /// failed `fuzzExpect`, an exception.
    void (*run)(std::string_view bytes);
};

/// All of them.
std::span<const FuzzTarget> fuzzTargets();
/// The one of this name; null if there is none.
const FuzzTarget* findFuzzTarget(std::string_view name);

/// Enters a folder of the program's own with the settings of the game, so that no target sees or touches
/// anything else. `data` is the game's data folder.
void enterFuzzFolder(const std::string& data);

/// Ends the program with `promise` when it is not kept.
void fuzzExpect(bool kept, const char* promise);

/// Puts the bytes into the file `name` of the working folder.
void writeFuzzInput(const char* name, std::string_view bytes);

// The targets, by the file that they stand in.

void fuzzLevelFile(std::string_view bytes); // FuzzFiles.cpp
void fuzzConfiguration(std::string_view bytes);
void fuzzKeys(std::string_view bytes);
void fuzzScores(std::string_view bytes);
void fuzzTiledMap(std::string_view bytes);
void fuzzTga(std::string_view bytes); // FuzzMedia.cpp
void fuzzPictureHead(std::string_view bytes);
void fuzzWav(std::string_view bytes);
void fuzzAvi(std::string_view bytes);
void fuzzStateLine(std::string_view bytes); // FuzzPlay.cpp
void fuzzConsole(std::string_view bytes);
void fuzzPlay(std::string_view bytes);

} // namespace tarnwick
