// `GLWindow`: message boxes and file boxes.

#include "core/LocationStack.h"
#include "graphics/GLWindow.h"

#include <SDL.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <vector>

namespace tarnwick {

namespace {

constexpr std::size_t longestPath = 1023;        ///< Bytes of a path that a file box gives.
constexpr std::uint32_t focusMilliseconds = 500; ///< In which a desktop gives the focus back after a box.
constexpr std::uint32_t focusPause = 5;          ///< Milliseconds between two looks.

constexpr int noAnswer = 0;
constexpr int yesAnswer = 1;

constexpr SDL_MessageBoxButtonData okButtons[] = {
    {SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT | SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT, yesAnswer, "OK"}};
constexpr SDL_MessageBoxButtonData yesNoButtons[] = {
    {SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, yesAnswer, "Yes"},
    {SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT, noAnswer, "No"}};

/// "*.a;*.b" as the file box wants it: "Text | *.a *.b".
std::string filterArgument(const GLWindow::FileFilter& filter) {
    TARNWICK_LOCATION("GLWindow::filterArgument");
    std::string patterns = filter.second;
    std::replace(patterns.begin(), patterns.end(), ';', ' ');
    return "--file-filter=" + filter.first + " | " + patterns;
}

/// Everything that the file descriptor still gives.
std::string readAll(int descriptor) {
    TARNWICK_LOCATION("GLWindow::readAll");
    std::string text;
    std::array<char, 256> piece{};
    for (;;) {
        const ssize_t count = read(descriptor, piece.data(), piece.size());
        if (count > 0) {
            text.append(piece.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return text;
        }
    }
}

/// What a program writes to its standard output; empty if it is not there or ends with a status other than 0.
std::string outputOf(std::vector<std::string> arguments) {
    TARNWICK_LOCATION("GLWindow::outputOf");
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0) {
        return {};
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    posix_spawn_file_actions_addclose(&actions, ends[1]);
    std::vector<char*> argumentPointers;
    argumentPointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) {
        argumentPointers.push_back(argument.data());
    }
    argumentPointers.push_back(nullptr);
    pid_t child = -1;
    const bool started =
        posix_spawnp(&child, argumentPointers[0], &actions, nullptr, argumentPointers.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    std::string output = started ? readAll(ends[0]) : std::string();
    ::close(ends[0]);
    int status = 1;
    while (started && waitpid(child, &status, 0) == -1 && errno == EINTR) {
    }
    return started && WIFEXITED(status) && WEXITSTATUS(status) == 0 ? output : std::string();
}

/// The desktop's file box; `mode` is what makes it one for saving.
std::string fileBox(const std::string& title,
                    const std::string& initialDirectory,
                    const std::list<GLWindow::FileFilter>& filters,
                    const std::vector<std::string>& mode) {
    TARNWICK_LOCATION("GLWindow::fileBox");
    std::vector<std::string> arguments = {"zenity", "--file-selection"};
    arguments.insert(arguments.end(), mode.begin(), mode.end());
    arguments.push_back("--title=" + title);
    if (!initialDirectory.empty()) {
        arguments.push_back("--filename=" + initialDirectory + (initialDirectory.ends_with('/') ? "" : "/"));
    }
    for (const GLWindow::FileFilter& filter : filters) {
        arguments.push_back(filterArgument(filter));
    }
    std::string path = outputOf(std::move(arguments));
    if (path.ends_with('\n')) {
        path.pop_back();
    }
    return path.size() <= longestPath ? path : std::string();
}

/// What stands behind the last "*" of a pattern; empty without one.
std::string extensionOf(const std::string& pattern) {
    TARNWICK_LOCATION("GLWindow::extensionOf");
    const std::size_t star = pattern.rfind('*');
    return star == std::string::npos ? std::string() : pattern.substr(star + 1);
}

} // namespace

void GLWindow::showMessageBox(const std::string& text, const std::string& caption) {
    TARNWICK_LOCATION("GLWindow::showMessageBox");
    std::fprintf(stderr, "%s: %s\n", caption.c_str(), text.c_str());
    if (!onScreen()) {
        return;
    }
    giveFocous();
    const SDL_MessageBoxData box{SDL_MESSAGEBOX_INFORMATION,
                                 state.windowHandle,
                                 caption.c_str(),
                                 text.c_str(),
                                 static_cast<int>(std::size(okButtons)),
                                 okButtons,
                                 nullptr};
    SDL_ShowMessageBox(&box, nullptr);
    waitForFocus();
}

bool GLWindow::showQuestionBox(const std::string& text, const std::string& caption) {
    TARNWICK_LOCATION("GLWindow::showQuestionBox");
    if (!onScreen()) {
        std::fprintf(stderr, "%s: %s\n", caption.c_str(), text.c_str());
        return false;
    }
    giveFocous();
    const SDL_MessageBoxData box{SDL_MESSAGEBOX_INFORMATION,
                                 state.windowHandle,
                                 caption.c_str(),
                                 text.c_str(),
                                 static_cast<int>(std::size(yesNoButtons)),
                                 yesNoButtons,
                                 nullptr};
    int answer = noAnswer;
    const bool shown = SDL_ShowMessageBox(&box, &answer) == 0;
    waitForFocus();
    return shown && answer == yesAnswer;
}

/// A box takes the focus, and the desktop gives it back some time after the box has gone. Until then the next
/// `run` would take it for lost.
void GLWindow::waitForFocus() {
    TARNWICK_LOCATION("GLWindow::waitForFocus");
    if (state.windowHandle == nullptr || !state.focusSeen) {
        return;
    }
    for (std::uint32_t waited = 0; waited < focusMilliseconds; waited += focusPause) {
        SDL_PumpEvents();
        if (hasFocus() && waited > focusPause) {
            return;
        }
        SDL_Delay(focusPause);
    }
}

std::string GLWindow::showOpenFileBox(const std::string& title,
                                      const std::string& initialDirectory,
                                      const std::list<FileFilter>& filters) {
    TARNWICK_LOCATION("GLWindow::showOpenFileBox");
    std::string path = fileBox(title, initialDirectory, filters, {});
    waitForFocus();
    return access(path.c_str(), F_OK) == 0 ? path : std::string();
}

std::string GLWindow::showSaveFileBox(const std::string& title,
                                      const std::string& initialDirectory,
                                      const std::list<FileFilter>& filters) {
    TARNWICK_LOCATION("GLWindow::showSaveFileBox");
    std::string path = fileBox(title, initialDirectory, filters, {"--save", "--confirm-overwrite"});
    waitForFocus();
    const std::string extension = filters.empty() ? std::string() : extensionOf(filters.front().second);
    if (!path.empty() && path.find('.') == std::string::npos) {
        path += extension;
    }
    return path;
}

} // namespace tarnwick
