#include "tools/solve/Witness.h"

#include <sstream>

namespace tarnwick {

namespace {

const char* nameOf(Held held) {
    if (held.left) {
        return held.right ? "both" : "left";
    }
    return held.right ? "right" : "none";
}

} // namespace

void Witness::hold(std::uint64_t tick, Held held) {
    if (held != (changes.empty() ? Held{} : changes.back().held)) {
        changes.push_back({tick, held});
    }
}

std::string Witness::text(const std::string& head) const {
    std::ostringstream out;
    out << "# " << head << " What the run comes to, its time in milliseconds:\n"
        << "# ticks " << ticks << "\n# water " << water << "\n# time " << time << "\n# score " << score
        << '\n';
    for (const Change& change : changes) {
        out << change.tick << ' ' << nameOf(change.held) << '\n';
    }
    return out.str();
}

} // namespace tarnwick
