#include "tools/level/Commands.h"

#include <iostream>

int main(int argumentCount, char** arguments) {
    return tarnwick::runLevelTool(argumentCount, arguments, std::cout, std::cerr);
}
