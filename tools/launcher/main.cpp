#include "tools/launcher/Launch.h"

#include <iostream>

int main(int argc, char** argv) {
    int exitStatus = 0;
    const auto options = tarnwick::LaunchOptions::fromCommandLine(argc, argv, exitStatus);
    if (!options) {
        return exitStatus;
    }
    return tarnwick::launch(*options, std::cerr);
}
