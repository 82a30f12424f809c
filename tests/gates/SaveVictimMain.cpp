// usage: tarnwick-save-victim FOLDER FIRST COUNT
//
// Saves the table of scores in FOLDER COUNT times, each time with one entry more that is better than all
// before: FIRST, FIRST + 1 and so on. Prints "saved N" once N is safe. For who kills it meanwhile, or makes
// its calls fail.

#include "game/HighScores.h"

#include <unistd.h>

#include <cstdint>
#include <exception>
#include <iostream>
#include <string>

int main(int argumentCount, char** arguments) {
    using tarnwick::HighScores;
    if (argumentCount != 4 || chdir(arguments[1]) != 0) {
        std::cerr << "usage: tarnwick-save-victim FOLDER FIRST COUNT\n";
        return 2;
    }
    try {
        const auto first = static_cast<std::uint32_t>(std::stoul(arguments[2]));
        const auto count = static_cast<std::uint32_t>(std::stoul(arguments[3]));
        for (std::uint32_t score = first; score < first + count; ++score) {
            HighScores::loadScores();
            tarnwick::HighScoreEntry entry;
            entry.name[0] = 'A';
            entry.score = score;
            HighScores::addHighScore(entry);
            HighScores::saveScores();
            HighScores::loadScores();
            if (HighScores::table()[0].score == score) {
                std::cout << "saved " << score << std::endl; // whoever reads it knows at once
            }
        }
    } catch (const std::exception& error) {
        std::cerr << "tarnwick-save-victim: " << error.what() << '\n';
        return 2;
    }
    return 0;
}
