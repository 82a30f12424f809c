#include "particles/ClusterSweep.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Random.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr float reachSquared = 1600.0f; ///< 40 world units.
/// World units. Its diagonal is 39.6: within reach, with room for rounding.
constexpr float cellSize = 28.0f;
constexpr float cellsPerUnit = 1.0f / cellSize;
constexpr std::uint32_t border = 2; ///< Cells to either side that hold anything within reach.
static_assert(2.0f * cellSize * cellSize < reachSquared);
static_assert(static_cast<float>(border) * cellSize > 40.0f);
constexpr float mostCells = 512.0f; ///< On a side: no view holds particles further apart.
constexpr std::uint32_t none = ~0u; ///< No member.

// no location: one comparison, for every pair of members
bool withinReach(Vector2 a, Vector2 b) {
    const Vector2 apart = a - b;
    return dotProduct(apart, apart) <= reachSquared;
}

} // namespace

void ClusterSweep::start(ParticleList& particles) {
    TARNWICK_LOCATION("ClusterSweep::start");
    const std::size_t count = particles.size();
    shuffled.resize(2 * count); // from the middle, there is room for all at either end
    first = count;
    end = count;
    for (Particle& particle : particles) {
        // Without a branch, which nobody could foretell.
        const std::size_t odd = randomInt() & 1u;
        first -= 1 - odd;
        shuffled[odd == 1 ? end : first] = {particle.position, &particle};
        end += odd;
    }
    nextMember.resize(count);
    layCells();
}

void ClusterSweep::layCells() {
    TARNWICK_LOCATION("ClusterSweep::layCells");
    columns = 0;
    if (first == end) {
        return;
    }
    Vector2 low = shuffled[first].position;
    Vector2 high = low;
    float finite = 0.0f; // stays 0, or becomes NaN
    for (std::size_t i = first; i < end; ++i) {
        const Vector2 position = shuffled[i].position;
        low = {std::min(low.x, position.x), std::min(low.y, position.y)};
        high = {std::max(high.x, position.x), std::max(high.y, position.y)};
        finite += position.x * 0.0f + position.y * 0.0f;
    }
    const Vector2 extent = (high - low) * cellsPerUnit;
    if (!(finite == 0.0f && extent.x < mostCells && extent.y < mostCells)) {
        return;
    }
    origin = low;
    columns = static_cast<std::uint32_t>(extent.x) + 1 + 2 * border;
    const std::uint32_t rows = static_cast<std::uint32_t>(extent.y) + 1 + 2 * border;
    if (cells.size() < std::size_t{columns} * rows) {
        cells.resize(std::size_t{columns} * rows); // old marks may stay: their numbers never come again
    }
}

// no location: two products, for every candidate of a sweep
std::uint32_t ClusterSweep::cellOf(const Vector2& position) const {
    if (columns == 0) {
        return 0;
    }
    const auto column = static_cast<std::uint32_t>((position.x - origin.x) * cellsPerUnit);
    const auto row = static_cast<std::uint32_t>((position.y - origin.y) * cellsPerUnit);
    return (row + border) * columns + column + border;
}

std::span<const ClusterSweep::Entry> ClusterSweep::nextCluster() {
    TARNWICK_LOCATION("ClusterSweep::nextCluster");
    cluster.clear();
    if (first == end) {
        return cluster;
    }
    ++clusterNumber;
    addMember(shuffled[first], cellOf(shuffled[first].position));
    std::size_t left = first; // those who stay close up behind the ones that are through
    for (std::size_t i = first + 1; i < end; ++i) {
        const std::uint32_t cell = cellOf(shuffled[i].position);
        if (joins(shuffled[i].position, cell)) {
            addMember(shuffled[i], cell);
        } else {
            shuffled[left++] = shuffled[i];
        }
    }
    end = left;
    return cluster;
}

// no location: a look-up, for every candidate of a sweep
bool ClusterSweep::joins(const Vector2& position, std::uint32_t cell) const {
    if (columns == 0) {
        return std::ranges::any_of(
            cluster, [&](const Entry& member) { return withinReach(position, member.position); });
    }
    if (cells[cell].memberMark == clusterNumber) {
        return true;
    }
    return cells[cell].nearMark == clusterNumber && memberWithinReach(position, cell);
}

bool ClusterSweep::memberWithinReach(const Vector2& position, std::uint32_t cell) const {
    TARNWICK_LOCATION("ClusterSweep::memberWithinReach");
    for (std::uint32_t row = 0; row <= 2 * border; ++row) {
        const std::uint32_t leftmost = cell + row * columns - border * columns - border;
        for (std::uint32_t near = leftmost; near <= leftmost + 2 * border; ++near) {
            if (cells[near].memberMark != clusterNumber) {
                continue;
            }
            for (std::uint32_t member = cells[near].newestMember; member != none;
                 member = nextMember[member]) {
                if (withinReach(position, cluster[member].position)) {
                    return true;
                }
            }
        }
    }
    return false;
}

// no location: a few stores, for every member of a sweep
void ClusterSweep::addMember(const Entry& entry, std::uint32_t cell) {
    const auto number = static_cast<std::uint32_t>(cluster.size());
    cluster.push_back(entry);
    if (columns == 0) {
        return;
    }
    const bool firstHere = cells[cell].memberMark != clusterNumber;
    nextMember[number] = firstHere ? none : cells[cell].newestMember;
    cells[cell].newestMember = number;
    if (firstHere) {
        cells[cell].memberMark = clusterNumber;
        for (std::uint32_t row = 0; row <= 2 * border; ++row) {
            const std::uint32_t leftmost = cell + row * columns - border * columns - border;
            for (std::uint32_t near = leftmost; near <= leftmost + 2 * border; ++near) {
                cells[near].nearMark = clusterNumber;
            }
        }
    }
}

} // namespace tarnwick
