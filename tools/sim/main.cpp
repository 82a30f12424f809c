#include "tools/sim/SimulationRun.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    int exitStatus = 0;
    const auto options = tarnwick::SimulationOptions::fromCommandLine(argc, argv, exitStatus);
    if (!options) {
        return exitStatus;
    }
    try {
        tarnwick::runSimulation(*options, std::cout, std::cerr);
    } catch (const std::exception& error) {
        std::cerr << "tarnwick-sim: " << error.what() << '\n';
        return 2;
    }
    return 0;
}
