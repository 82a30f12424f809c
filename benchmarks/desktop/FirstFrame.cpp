// Loaded before the game's own libraries, this prints the seconds from the start of the process to the end of
// its first SDL_GL_SwapWindow, and ends the process there. scripts/measure-first-frame starts the game so.

#include <dlfcn.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <limits>
#include <string>

namespace {

/// Of /proc/self/stat: ticks of the clock from boot to the process's start.
constexpr int startTimeField = 22;

double secondsSinceBoot() {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double processStart() {
    std::ifstream stat("/proc/self/stat");
    stat.ignore(std::numeric_limits<std::streamsize>::max(), ')'); // the name may hold blanks
    std::string field;
    for (int number = 3; number <= startTimeField; ++number) {
        stat >> field;
    }
    return std::stod(field) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

} // namespace

struct SDL_Window;
extern "C" void SDL_GL_SwapWindow(SDL_Window* window); // in place of the library's

extern "C" void SDL_GL_SwapWindow(SDL_Window* window) {
    const auto swap = reinterpret_cast<void (*)(SDL_Window*)>(dlsym(RTLD_NEXT, "SDL_GL_SwapWindow"));
    swap(window);
    std::printf("%.2f\n", secondsSinceBoot() - processStart());
    std::fflush(stdout);
    _exit(0);
}
