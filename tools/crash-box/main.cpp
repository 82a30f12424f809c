// Shows the crash report given on standard input in a message box, and ends when the box is closed. A program
// of its own, because the one that crashed cannot be trusted to show anything. The launcher, which draws
// nothing itself, has its messages shown here, too, and gives the title as argument.

#include <SDL.h>

#include <iostream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
    const std::string report{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};

    SDL_MessageBoxButtonData button{};
    button.flags = SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT | SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT;
    button.text = "OK";
    SDL_MessageBoxData box{};
    box.title = argc > 1 ? argv[1] : "A fatal program error has occured.";
    box.message = report.c_str();
    box.numbuttons = 1;
    box.buttons = &button;
    int pressed = 0;
    return SDL_ShowMessageBox(&box, &pressed) == 0 ? 0 : 1;
}
