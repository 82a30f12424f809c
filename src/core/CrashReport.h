#pragma once

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <string>

namespace tarnwick {

/// From here on a fatal signal ends in the crash report. Empties the location stack but for its last entry,
/// and prepares all that a report needs. The very first act of the entry function; a scope opened before it
/// is lost.
void installCrashHandlers();

/// Appends the list of locations: the newest first, numbered from 1, at most sixteen, each on a line of its
/// own after a heading. A null entry is an unknown location and takes a line as well.
void appendBacktrace(std::string& report);

/// What happens on SIGABRT, SIGFPE, SIGILL, SIGINT, SIGSEGV and SIGTERM: the window, if there is one, is
/// closed; the report, made of a fixed text, the kind of error and the locations at the moment of the fault,
/// goes to standard error and, where there is a display, into a message box; the program ends with status 1.
///
/// The box is shown by a small program of its own, `tarnwick-crash-box` beside this one, which is handed the
/// report: after damage to the heap this process could not show one, for a lock of the heap may be held. For
/// the same reason the report takes no memory. A handler runs on a stack of its own, so that a stack overflow
/// is reported too. A fault or a standstill while the window closes cuts the closing short: the window is
/// dropped, and the report follows. A fault is reported by its own thread.
///
/// SIGINT and SIGTERM are no faults but requests: they may come while the GL driver draws, and a window
/// cannot be closed then. So the handler only notes the first one, whichever thread receives it, and the main
/// thread reports it where `endIfAsked` is called: at the start of every pass of the window's loop, and
/// between the steps of all work that takes longer than a frame. A second request, and nearly a second of
/// time without a pass, are reported by the handler, wherever the main thread is: it drops the window then.
class CrashReport {
public:
    CrashReport() = delete;

    /// Characters of each line of the fixed text, blanks at its end included.
    static constexpr std::size_t lineLength = 103;
    /// Locations that a report lists at most.
    static constexpr int mostLocations = 16;
    /// Milliseconds that the window may take to close after a fault.
    static constexpr unsigned longestClose = 2000;
    /// Milliseconds from a request to end to the pass of the loop that hears it and to the end of what the
    /// window has to do for its closing: it is gone within a second.
    static constexpr unsigned longestPass = 900;

    /// Hands over how a report closes the window, for a full screen would hide the message box. Called before
    /// the window is made; null, as at the start: there is nothing to close. `drop` takes from the desktop
    /// what the closing left there, a window half made or one whose closing was cut short, and tells whether
    /// it could; it runs in a signal handler and may take no lock. Null: nothing is left.
    static void setWindowClosing(void (*close)(), bool (*drop)() = nullptr);

    /// Called first by the one worker thread: an overflow of its stack is reported, too.
    static void prepareWorker();

    /// Called last by it: whoever gave the thread a stack for signals before takes that one back at its end.
    static void releaseWorker();

    /// A place at which the program can end: reports a request that came since, and does not return then.
    /// Does nothing on any thread but the main one.
    static void endIfAsked();

private:
    friend class ModuleReset;
    friend void installCrashHandlers();

    struct State {
        std::string report;                 ///< Starts as the fixed text; with room for the rest.
        std::string boxProgram;             ///< Path of the program that shows the message box.
        void (*windowClosing)() = nullptr;  ///< Null without a window.
        bool (*windowDropping)() = nullptr; ///< Null if nothing is to be dropped.
        int request = 0;                    ///< Signal that waits for `endIfAsked`; 0: none. Atomic.
        pid_t reporter = 0;                 ///< Thread that makes the report; 0: none does. Atomic.
        pid_t deliverer = 0; ///< Thread that hands the finished report out; 0: none does. Atomic.
    };
    static State state;

    /// Bytes: closing a window calls the GL driver.
    static constexpr std::size_t signalStackSize = 1'048'576;
    using SignalStack = std::array<std::byte, signalStackSize>;
    alignas(64) static SignalStack signalStack;
    alignas(64) static SignalStack workerSignalStack;

    static void useSignalStack(SignalStack& memory);
    static void prepareReport();
    static void onSignal(int signalNumber);
    static void onStandstill(int signalNumber);
    static void onUnheardRequest(int signalNumber);
    static bool noteRequest(int signalNumber);
    static void report(int signalNumber, unsigned closingTime);
    static bool dropWindow();
    static void closeWindow(unsigned milliseconds);
    static void holdExit();
    [[noreturn]] static void deliver();
    static void showBox();
};

} // namespace tarnwick
