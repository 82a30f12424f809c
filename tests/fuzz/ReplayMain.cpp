// usage: tarnwick-fuzz-replay DATA CORPUS [TARGET ...]
//
// Feeds each target, or those named, with every input of its folder CORPUS/TARGET: what was found once is not
// found again. Prints how many inputs each got; a finding ends the program, and the last line says which
// input it was.

#include "fuzz/FuzzTarget.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

/// Exactly the bytes, in memory of their own: a read behind them is seen.
void feed(const tarnwick::FuzzTarget& target, const fs::path& file) {
    const std::string bytes = bytesOf(file);
    const std::vector<char> alone(bytes.begin(), bytes.end());
    target.run({alone.data(), alone.size()});
}

/// The inputs of a target, in the order of their names; empty if there is no folder.
std::vector<fs::path> inputsOf(const fs::path& folder) {
    std::error_code none;
    std::vector<fs::path> files{fs::directory_iterator(folder, none), fs::directory_iterator()};
    std::ranges::sort(files);
    return files;
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 3) {
        std::cerr << "usage: tarnwick-fuzz-replay DATA CORPUS [TARGET ...]\n";
        return 2;
    }
    const fs::path corpus = fs::absolute(arguments[2]);
    const std::vector<std::string> asked(arguments + 3, arguments + argumentCount);
    const fs::path before = fs::current_path();
    tarnwick::enterFuzzFolder(fs::absolute(arguments[1]));
    const fs::path folder = fs::current_path();
    int status = 0;
    for (const tarnwick::FuzzTarget& target : tarnwick::fuzzTargets()) {
        if (!asked.empty() && std::ranges::find(asked, target.name) == asked.end()) {
            continue;
        }
        const std::vector<fs::path> inputs = inputsOf(corpus / target.name);
        for (const fs::path& input : inputs) {
            std::cout << target.name << ": " << input.filename().string()
                      << std::endl; // seen also if it ends here
            feed(target, input);
        }
        std::cout << target.name << ": " << inputs.size() << " inputs\n";
        status = inputs.empty() ? 1 : status;
    }
    fs::current_path(before);
    fs::remove_all(folder);
    return status;
}
