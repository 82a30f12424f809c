#include "tools/solve/Solver.h"

#include "game/GameRules.h"
#include "level/Level.h"
#include "tools/sim/HeadlessLevel.h"
#include "tools/solve/Difficulty.h"
#include "tools/solve/Search.h"
#include "tools/solve/WayPicture.h"

#include <poll.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <new>
#include <ostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

namespace fs = std::filesystem;
using SteadyTime = std::chrono::steady_clock::time_point;

constexpr std::uint64_t unbounded = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t seedStep = 0x9E3779B97F4A7C15u; ///< Between the seeds of two jobs.
constexpr auto progressEvery = std::chrono::seconds(1);

/// What the processes share. Lives in memory that `fork` hands on.
struct Shared {
    std::atomic<bool> stop = false;                   ///< The time is up.
    std::atomic<std::uint64_t> mostTicks = unbounded; ///< Whoever has simulated more has lost.
};

Shared* makeShared() {
    void* const memory =
        mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::runtime_error("no memory for the processes to share");
    }
    return new (memory) Shared;
}

void lower(std::atomic<std::uint64_t>& bound, std::uint64_t value) {
    std::uint64_t now = bound.load();
    while (value < now && !bound.compare_exchange_weak(now, value)) {
    }
}

/// One job: the process, and what it has told.
struct Job {
    pid_t process = 0;
    int pipe = -1;
    std::string unread;
    Search::Progress progress;
    bool connected = true;           ///< Free space leads from the water to the finish.
    std::uint64_t found = unbounded; ///< Ticks simulated when it was.
    Witness witness;
    std::set<std::size_t> visited;
    std::string error;
};

// --- in a job's process: lines of a letter and numbers go into the pipe ---

class Teller {
public:
    explicit Teller(int pipe)
        : file(fdopen(pipe, "w")) {}

    void progress(const Search::Progress& now) {
        std::fprintf(file, "p %llu %.9g %.9g %llu %llu\n", static_cast<unsigned long long>(now.ticks),
                     static_cast<double>(now.start), static_cast<double>(now.best),
                     static_cast<unsigned long long>(now.statesKept),
                     static_cast<unsigned long long>(now.statesKnown));
        std::fflush(file);
    }
    void found(std::uint64_t ticks, const Witness& witness) {
        for (const Witness::Change& change : witness.changes) {
            std::fprintf(file, "k %llu %d %d\n", static_cast<unsigned long long>(change.tick),
                         change.held.left ? 1 : 0, change.held.right ? 1 : 0);
        }
        std::fprintf(file, "f %llu %llu %u %d %u\n", static_cast<unsigned long long>(ticks),
                     static_cast<unsigned long long>(witness.ticks), witness.water, witness.time,
                     witness.score);
        std::fflush(file);
    }
    void visited(const std::set<std::size_t>& cells) {
        for (const std::size_t cell : cells) {
            std::fprintf(file, "v %zu\n", cell);
        }
        std::fflush(file);
    }
    void cutOff() { std::fprintf(file, "c\n"); }
    void error(const std::string& reason) {
        std::fprintf(file, "e %s\n", reason.c_str());
        std::fflush(file);
    }

private:
    std::FILE* file;
};

void searchInJob(const SolveOptions& options, std::uint64_t number, Shared& shared, Teller& teller) {
    HeadlessLevel level({.level = options.level, .dataFolder = options.dataFolder});
    Search search(level, options.seed + number * seedStep);
    teller.progress(search.progress());
    if (!search.flow().reaches(Level::waterStart())) {
        teller.cutOff();
        teller.visited(search.visited());
        return;
    }
    SteadyTime told = std::chrono::steady_clock::now();
    while (!shared.stop && search.progress().ticks <= shared.mostTicks && search.step()) {
        if (const SteadyTime now = std::chrono::steady_clock::now(); now - told >= progressEvery) {
            teller.progress(search.progress());
            told = now;
        }
    }
    teller.progress(search.progress());
    if (search.found()) {
        lower(shared.mostTicks, search.progress().ticks);
        teller.found(search.progress().ticks, search.witness());
    } else {
        teller.visited(search.visited());
    }
}

void runJob(const SolveOptions& options, std::uint64_t number, Shared& shared, int pipe) {
    Teller teller(pipe);
    try {
        searchInJob(options, number, shared, teller);
    } catch (const std::exception& error) {
        teller.error(error.what());
    }
}

// --- in the process that was asked ---

Job startJob(const SolveOptions& options, std::uint64_t number, Shared& shared) {
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe to a process");
    }
    const pid_t process = fork();
    if (process < 0) {
        throw std::runtime_error("no process can be started");
    }
    if (process == 0) {
        close(ends[0]);
        runJob(options, number, shared, ends[1]);
        std::_Exit(0);
    }
    close(ends[1]);
    Job job;
    job.process = process;
    job.pipe = ends[0];
    return job;
}

void hear(Job& job, const std::string& line) {
    std::istringstream words(line);
    char kind = 0;
    words >> kind;
    if (kind == 'p') {
        words >> job.progress.ticks >> job.progress.start >> job.progress.best >> job.progress.statesKept >>
            job.progress.statesKnown;
    } else if (kind == 'k') {
        Witness::Change& change = job.witness.changes.emplace_back();
        words >> change.tick >> change.held.left >> change.held.right;
    } else if (kind == 'f') {
        words >> job.found >> job.witness.ticks >> job.witness.water >> job.witness.time >> job.witness.score;
    } else if (kind == 'v') {
        std::size_t cell = 0;
        words >> cell;
        job.visited.insert(cell);
    } else if (kind == 'c') {
        job.connected = false;
    } else if (kind == 'e') {
        std::getline(words >> std::ws, job.error);
    }
}

/// Reads what the job has told; false at its end.
bool readFrom(Job& job) {
    char buffer[4096];
    const ssize_t count = read(job.pipe, buffer, sizeof buffer);
    if (count <= 0) {
        close(job.pipe);
        job.pipe = -1;
        waitpid(job.process, nullptr, 0);
        return false;
    }
    job.unread.append(buffer, static_cast<std::size_t>(count));
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = job.unread.find('\n', begin)) != std::string::npos; begin = end + 1) {
        hear(job, job.unread.substr(begin, end - begin));
    }
    job.unread.erase(0, begin);
    return true;
}

/// The progress of all jobs, in one line that stands in its place on a terminal.
class ProgressLine {
public:
    explicit ProgressLine(std::ostream& stream)
        : log(stream)
        , terminal(isatty(STDERR_FILENO) != 0) {}

    double seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    }
    void tell(const std::vector<Job>& jobs, bool last) {
        const double now = seconds();
        constexpr double quietSeconds = 10.0; // between two lines that stay
        if (!last && now - told < (terminal ? 1.0 : quietSeconds)) {
            return;
        }
        told = now;
        Search::Progress sum{.best = std::numeric_limits<float>::max()};
        for (const Job& job : jobs) {
            sum.ticks += job.progress.ticks;
            sum.start = std::max(sum.start, job.progress.start);
            sum.best = std::min(sum.best, job.progress.best);
            sum.statesKept += job.progress.statesKept;
            sum.statesKnown += job.progress.statesKnown;
        }
        if (sum.ticks == 0) {
            return; // nothing has begun, or nothing could
        }
        char text[160];
        std::snprintf(
            text, sizeof text,
            "%5.0f s: best distance %.0f of %.0f, %.0f ticks a second, %llu states kept, %llu known", now,
            static_cast<double>(sum.best), static_cast<double>(sum.start),
            static_cast<double>(sum.ticks) / std::max(now, 0.001),
            static_cast<unsigned long long>(sum.statesKept),
            static_cast<unsigned long long>(sum.statesKnown));
        log << (terminal ? "\r" : "") << text << (terminal && !last ? "" : "\n") << std::flush;
    }

private:
    std::ostream& log;
    bool terminal;
    SteadyTime begin = std::chrono::steady_clock::now();
    double told = 0.0;
};

void listen(std::vector<Job>& jobs, const SolveOptions& options, Shared& shared, std::ostream& log) {
    ProgressLine line(log);
    for (;;) {
        std::vector<pollfd> ends;
        for (const Job& job : jobs) {
            if (job.pipe >= 0) {
                ends.push_back({.fd = job.pipe, .events = POLLIN, .revents = 0});
            }
        }
        if (ends.empty()) {
            break;
        }
        constexpr int patience = 250; // milliseconds
        poll(ends.data(), ends.size(), patience);
        for (const pollfd& end : ends) {
            if (end.revents != 0) {
                readFrom(*std::ranges::find(jobs, end.fd, &Job::pipe));
            }
        }
        if (line.seconds() >= options.seconds) {
            shared.stop = true;
        }
        line.tell(jobs, false);
    }
    line.tell(jobs, true);
}

/// Whether the keys finish the level from its start, as they promise.
bool keepsItsPromise(HeadlessLevel& level, const Witness& witness) {
    auto next = witness.changes.begin();
    while (level.position().tick < witness.ticks) {
        for (; next != witness.changes.end() && next->tick <= level.position().tick; ++next) {
            level.hold(next->held);
        }
        level.tick();
    }
    return GameRules::gameIsFinished() && GameRules::getParticleCount() == witness.water &&
           GameRules::getLevelTime() == witness.time && GameRules::getTotalScore() == witness.score;
}

std::string stemOf(const std::string& level) {
    const std::size_t slash = level.find_last_of("/\\");
    return fs::path(slash == std::string::npos ? level : level.substr(slash + 1)).stem().string();
}

void writeKeys(const fs::path& file, const std::string& keys, std::ostream& out) {
    if (file.empty()) {
        out << keys;
        return;
    }
    std::ofstream to(file, std::ios::binary | std::ios::trunc);
    if (!(to << keys) || !to.flush()) {
        throw std::runtime_error(file.string() + ": cannot be written");
    }
}

fs::path absolutePath(const std::string& path) {
    return path.empty() ? fs::path() : fs::absolute(path);
}

} // namespace

namespace {

/// Searches in processes of their own; the jobs as they ended.
std::vector<Job> search(const SolveOptions& options, std::ostream& out, std::ostream& log) {
    Shared& shared = *makeShared();
    out.flush();
    log.flush();
    std::vector<Job> jobs;
    for (std::uint64_t number = 0; number < options.jobs; ++number) {
        jobs.push_back(startJob(options, number, shared));
    }
    listen(jobs, options, shared, log);
    munmap(&shared, sizeof shared);
    if (const auto failed = std::ranges::find_if(jobs, [](const Job& job) { return !job.error.empty(); });
        failed != jobs.end()) {
        throw std::runtime_error(failed->error);
    }
    return jobs;
}

void tellDifficulty(const SolveOptions& options, const Witness& keys, std::ostream& out) {
    HeadlessLevel level({.level = options.level, .dataFolder = options.dataFolder});
    try {
        out << DifficultyMeter(level).measure(keys, options.players).text();
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(options.level + ": " + error.what());
    }
}

/// Draws how far the jobs came; 1.
int tellOfNone(const SolveOptions& options,
               const std::vector<Job>& jobs,
               const fs::path& pictureFile,
               std::ostream& log) {
    HeadlessLevel level({.level = options.level, .dataFolder = options.dataFolder});
    std::set<std::size_t> visited;
    for (const Job& job : jobs) {
        visited.insert(job.visited.begin(), job.visited.end());
    }
    if (!saveWayPicture(FlowField(), visited, pictureFile)) {
        throw std::runtime_error(pictureFile.string() + ": cannot be written");
    }
    log << "tarnwick-solve: " << options.level
        << (jobs.front().connected ? ": no way was found"
                                   : ": free space does not lead from the water to the finish")
        << "; " << pictureFile.string() << " shows how far it came\n";
    return 1;
}

} // namespace

int solve(const SolveOptions& options, std::ostream& out, std::ostream& log) {
    const fs::path outFile = absolutePath(options.outFile);
    const fs::path pictureFile = absolutePath(
        options.pictureFile.empty() ? stemOf(options.level) + "-unsolved.png" : options.pictureFile);
    const fs::path startFolder = fs::current_path();
    if (!options.keysFile.empty()) {
        Witness given;
        given.changes = HeldKeys::fromFile(options.keysFile).all();
        tellDifficulty(options, given, out);
        return 0;
    }
    const std::vector<Job> jobs = search(options, out, log);
    const Job& best = *std::ranges::min_element(jobs, {}, &Job::found);
    if (best.found == unbounded) {
        return tellOfNone(options, jobs, pictureFile, log);
    }
    if (HeadlessLevel level({.level = options.level, .dataFolder = options.dataFolder});
        !keepsItsPromise(level, best.witness)) {
        throw std::runtime_error(options.level + ": the keys that were found do not finish it again");
    }
    writeKeys(outFile, best.witness.text("Finishes " + stemOf(options.level) + "."), out);
    if (options.difficulty) {
        fs::current_path(startFolder);
        tellDifficulty(options, best.witness, out);
    }
    return 0;
}

} // namespace tarnwick
