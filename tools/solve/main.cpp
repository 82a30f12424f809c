#include "tools/solve/Solver.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    int exitStatus = 0;
    const auto options = tarnwick::SolveOptions::fromCommandLine(argc, argv, exitStatus);
    if (!options) {
        return exitStatus;
    }
    try {
        return tarnwick::solve(*options, std::cout, std::cerr);
    } catch (const std::exception& error) {
        std::cerr << "tarnwick-solve: " << error.what() << '\n';
        return 2;
    }
}
