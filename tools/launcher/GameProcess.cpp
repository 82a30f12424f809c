#include "tools/launcher/GameProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>

namespace tarnwick {

namespace {

constexpr int signalled = 128; ///< What shells add to a signal's number.

/// The signals that `runGame` waits for. Blocked while the game runs, so that none is missed between two
/// waits.
sigset_t awaitedSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGCHLD, SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        sigaddset(&signals, number);
    }
    return signals;
}

pid_t start(const std::filesystem::path& program, const std::filesystem::path& folder, const sigset_t& mask) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    posix_spawnattr_setsigmask(&attributes, &mask);
    std::string name = program.filename().string();
    char* arguments[] = {name.data(), nullptr};
    pid_t game = 0;
    const int error = posix_spawn(&game, program.c_str(), &actions, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throw std::runtime_error(program.string() + ": " +
                                 std::strerror(error)); // NOLINT(concurrency-mt-unsafe)
    }
    return game;
}

} // namespace

int runGame(const std::filesystem::path& program, const std::filesystem::path& folder) {
    const sigset_t signals = awaitedSignals();
    sigset_t before;
    sigprocmask(SIG_BLOCK, &signals, &before);
    const pid_t game = start(program, folder, before);
    int status = 0;
    while (waitpid(game, &status, WNOHANG) == 0) {
        const int number = sigwaitinfo(&signals, nullptr);
        if (number > 0 && number != SIGCHLD && number != SIGINT) {
            kill(game, number);
        }
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return WIFSIGNALED(status) ? signalled + WTERMSIG(status) : WEXITSTATUS(status);
}

void writeToProgram(const std::filesystem::path& program, std::string argument, const std::string& text) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[0], STDIN_FILENO);
    std::string name = program.filename().string();
    char* arguments[] = {name.data(), argument.data(), nullptr};
    pid_t child = 0;
    const bool started = posix_spawn(&child, program.c_str(), &actions, nullptr, arguments, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[0]);
    if (started && write(ends[1], text.data(), text.size()) < 0) {
        std::perror("tarnwick");
    }
    close(ends[1]);
    if (started) {
        waitpid(child, nullptr, 0);
    }
}

} // namespace tarnwick
