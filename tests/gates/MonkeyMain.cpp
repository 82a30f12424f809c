// usage: tarnwick-monkey DATA SEED EVENTS
//
// Plays the game without a screen, as somebody who understands nothing of it: keys, mouse, words in the
// console, windows that change their size, lose the focus and are minimised, other levels; EVENTS of them,
// drawn from SEED. The game's own loop runs, in a folder of its own, on a clock that this program moves.
// Prints what memory it took after each tenth.

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/CommandRegistry.h"
#include "fuzz/FuzzTarget.h"
#include "game/BasicCommands.h"
#include "game/Game.h"
#include "game/HighScores.h"
#include "game/Modules.h"
#include "graphics/GLWindow.h"
#include "graphics/WindowFeed.h"

#include <SDL_events.h>
#include <SDL_keycode.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

constexpr std::uint32_t passMilliseconds = 14; ///< Of the clock, each pass of the loop.

/// Kilobytes that the program takes at present.
std::uint64_t residentKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            std::uint64_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes;
        }
    }
    return 0;
}

/// Draws events and hands them to the window, one a pass of whichever loop is running.
class Monkey {
public:
    Monkey(std::uint32_t seed, std::uint32_t eventCount)
        : random(seed)
        , events(eventCount) {
        for (const std::filesystem::directory_entry& entry : std::filesystem::directory_iterator("maps")) {
            levels.push_back("maps\\" + entry.path().filename().string());
        }
        std::ranges::sort(levels); // the same from the same seed, whatever the disk's order
    }

    bool done() const { return sent >= events; }
    std::uint32_t count() const { return sent; }

    /// A pass of a loop of the game's.
    void pass() {
        clock += passMilliseconds;
        Clock::drive(clock);
        if (done()) {
            SDL_Event close{};
            close.type = SDL_WINDOWEVENT;
            close.window.event = SDL_WINDOWEVENT_CLOSE;
            SDL_PushEvent(&close);
            return;
        }
        send();
        ++sent;
        if (sent * 10 / events != (sent - 1) * 10 / events) {
            std::cout << sent << " events, " << residentKilobytes() << " KiB" << std::endl;
        }
    }

private:
    std::mt19937 random;
    std::uint32_t events;
    std::uint32_t sent = 0;
    std::uint32_t clock = 0;
    std::vector<std::string> levels;

    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random() % limit); }

    void send() {
        const std::uint32_t kind = below(100);
        if (kind < 40) {
            sendKey();
        } else if (kind < 80) {
            sendMouse();
        } else if (kind < 90) {
            sendWindow();
        } else if (kind < 97) {
            GLConsole::runLine(drawLine());
        } else if (kind < 99) {
            Game::restart();
        } else {
            Game::map(levels[below(static_cast<std::uint32_t>(levels.size()))]);
        }
    }

    void sendKey() {
        static constexpr std::array<std::pair<SDL_Scancode, SDL_Keycode>, 16> keys{{
            {SDL_SCANCODE_LEFT, SDLK_LEFT},
            {SDL_SCANCODE_RIGHT, SDLK_RIGHT},
            {SDL_SCANCODE_UP, SDLK_UP},
            {SDL_SCANCODE_DOWN, SDLK_DOWN},
            {SDL_SCANCODE_ESCAPE, SDLK_ESCAPE},
            {SDL_SCANCODE_RETURN, SDLK_RETURN},
            {SDL_SCANCODE_GRAVE, SDLK_BACKQUOTE},
            {SDL_SCANCODE_TAB, SDLK_TAB},
            {SDL_SCANCODE_SPACE, SDLK_SPACE},
            {SDL_SCANCODE_BACKSPACE, SDLK_BACKSPACE},
            {SDL_SCANCODE_P, SDLK_p},
            {SDL_SCANCODE_R, SDLK_r},
            {SDL_SCANCODE_F1, SDLK_F1},
            {SDL_SCANCODE_PAGEUP, SDLK_PAGEUP},
            {SDL_SCANCODE_HOME, SDLK_HOME},
            {SDL_SCANCODE_LSHIFT, SDLK_LSHIFT},
        }};
        const auto& [scancode, keycode] = keys[below(keys.size())];
        SDL_Event event{};
        event.type = below(3) != 0 ? SDL_KEYDOWN : SDL_KEYUP;
        event.key.state = event.type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
        event.key.keysym.scancode = scancode;
        event.key.keysym.sym = keycode;
        SDL_PushEvent(&event);
        if (below(4) == 0) {
            SDL_Event text{};
            text.type = SDL_TEXTINPUT;
            text.text.text[0] = static_cast<char>(' ' + below(95));
            SDL_PushEvent(&text);
        }
    }

    void sendMouse() {
        const auto x = static_cast<std::int32_t>(below(820)) - 10;
        const auto y = static_cast<std::int32_t>(below(620)) - 10;
        SDL_Event event{};
        if (below(2) == 0) {
            event.type = SDL_MOUSEMOTION;
            event.motion.x = x;
            event.motion.y = y;
        } else {
            event.type = below(2) == 0 ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
            event.button.button = static_cast<std::uint8_t>(1 + below(5));
            event.button.clicks = static_cast<std::uint8_t>(1 + below(3));
            event.button.x = x;
            event.button.y = y;
        }
        SDL_PushEvent(&event);
    }

    void sendWindow() {
        static constexpr SDL_WindowEventID kinds[] = {
            SDL_WINDOWEVENT_SIZE_CHANGED, SDL_WINDOWEVENT_FOCUS_LOST, SDL_WINDOWEVENT_FOCUS_GAINED,
            SDL_WINDOWEVENT_MINIMIZED,    SDL_WINDOWEVENT_RESTORED,   SDL_WINDOWEVENT_EXPOSED};
        SDL_Event event{};
        event.type = SDL_WINDOWEVENT;
        event.window.event = static_cast<std::uint8_t>(below(20) == 0 ? SDL_WINDOWEVENT_CLOSE
                                                                      : kinds[below(std::size(kinds))]);
        event.window.data1 = static_cast<std::int32_t>(1 + below(2000));
        event.window.data2 = static_cast<std::int32_t>(1 + below(2000));
        SDL_PushEvent(&event);
    }

    /// A command, now and then a word that is none, with whatever behind it.
    std::string drawLine() {
        const auto& commands = CommandRegistry::commands();
        std::string line = "nothing";
        if (!commands.empty()) {
            line = std::next(commands.begin(),
                             static_cast<std::ptrdiff_t>(below(static_cast<std::uint32_t>(commands.size()))))
                       ->first;
        }
        static const char* const words[] = {"0",     "1",    "-3",   "2.5",    "true",
                                            "false", "x",    "1000", "99999",  "fx\\drip.cfg",
                                            "\"",    "ROOT", "LEFT", "-0.0001"};
        for (std::uint32_t count = below(7); count > 0; --count) {
            line += std::string(" ") + words[below(std::size(words))];
        }
        return line;
    }
};

/// The program's life, from its window to its end, until the monkey is done or has closed the window.
void live(Monkey& monkey) {
    GLWindow::createHeadless(800, 600);
    BasicCommands::handOver();
    GLConsole::initialise();
    CommandRegistry::removeCommand("BspCast"); // half a million rays: it would take all the time
    HighScores::loadScores();
    WindowFeed::set([&] { monkey.pass(); });
    Game::run("maps\\testLevel.rivl");
    WindowFeed::set(nullptr);
    HighScores::saveScores();
    Modules::shutdown();
}

} // namespace

} // namespace tarnwick

int main(int argumentCount, char** arguments) {
    namespace fs = std::filesystem;
    if (argumentCount != 4) {
        std::cerr << "usage: tarnwick-monkey DATA SEED EVENTS\n";
        return 2;
    }
    const fs::path before = fs::current_path();
    const fs::path data = fs::absolute(arguments[1]);
    tarnwick::enterFuzzFolder(data.string());
    const fs::path folder = fs::current_path();
    fs::copy(data / "maps", folder / "maps");
    tarnwick::Monkey monkey(static_cast<std::uint32_t>(std::stoul(arguments[2])),
                            static_cast<std::uint32_t>(std::stoul(arguments[3])));
    std::uint32_t lives = 0;
    for (; !monkey.done(); ++lives) {
        tarnwick::live(monkey);
    }
    fs::current_path(before);
    fs::remove_all(folder);
    std::cout << "0 findings in " << monkey.count() << " events and " << lives << " lives\n";
    return 0;
}
