#include "particles/FreezeField.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Random.h"
#include "particles/ParticleMover.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr float reachSquared = 144.0f; ///< 12 world units: how far cold jumps from a frozen particle.
/// World units: a little more than the reach, so that rounding does not matter.
constexpr float cellSize = 12.5f;
constexpr float lastCell = 1e9f; ///< Particles further off, which no view can hold, share the last cells.

std::int32_t cellUnder(float coordinate) {
    TARNWICK_LOCATION("FreezeField::cellUnder");
    const float cell = std::floor(coordinate / cellSize);
    if (!(cell > -lastCell)) { // no number at all is near nobody, wherever it lies
        return static_cast<std::int32_t>(-lastCell);
    }
    return static_cast<std::int32_t>(std::min(cell, lastCell));
}

/// Draws a member's place in its group, which it keeps for as long as it is frozen.
void givePlace(Particle& member) {
    TARNWICK_LOCATION("FreezeField::givePlace");
    member.groupDirection.x = randomFloat() - 0.5f;
    member.groupDirection.y = randomFloat() - 0.5f;
    normaliseVector(member.groupDirection);
    member.groupFraction = randomFloat();
}

} // namespace

FreezeField::FreezeField(ParticleList& frozenParticles, ParticleList& freeParticles)
    : frozen(frozenParticles)
    , free(freeParticles) {
    TARNWICK_LOCATION("FreezeField::FreezeField");
    frozenCount = static_cast<std::uint32_t>(frozen.size());
    const std::size_t count = frozen.size() + free.size();
    entries.reserve(count);
    for (ParticleList* const list : {&frozen, &free}) {
        for (auto node = list->begin(); node != list->end(); ++node) {
            entries.push_back({node->position, node});
        }
    }
    gone.assign(count, false);
    buckets.assign(nextPowerOfTwo(static_cast<std::uint32_t>(count) + 1), none);
    for (std::uint32_t index = 0; index < count; ++index) {
        const Vector2 position = entries[index].position;
        std::uint32_t& head = buckets[bucketOf(cellUnder(position.x), cellUnder(position.y))];
        entries[index].next = head;
        head = index;
    }
}

std::uint32_t FreezeField::bucketOf(std::int32_t column, std::int32_t row) const {
    TARNWICK_LOCATION("FreezeField::bucketOf");
    // Two large odd numbers spread neighbouring cells over the buckets; the sum of the bits' halves fills the
    // low ones.
    const std::uint32_t hash =
        static_cast<std::uint32_t>(column) * 0x9E3779B1u ^ static_cast<std::uint32_t>(row) * 0x85EBCA77u;
    return (hash ^ hash >> 15u) & static_cast<std::uint32_t>(buckets.size() - 1);
}

void FreezeField::takeFirstFrozen(ParticleGroup& group) {
    TARNWICK_LOCATION("FreezeField::takeFirstFrozen");
    while (gone[firstFrozen]) {
        ++firstFrozen;
    }
    const Vector2 position = entries[firstFrozen].position;
    std::uint32_t* link = &buckets[bucketOf(cellUnder(position.x), cellUnder(position.y))];
    while (*link != firstFrozen) {
        link = &entries[*link].next;
    }
    *link = entries[firstFrozen].next;
    join(firstFrozen, group);
}

void FreezeField::gather(const Particle& from, ParticleGroup& group) {
    TARNWICK_LOCATION("FreezeField::gather");
    // Depth first as by recursion, but a lake of water would be too deep for the stack: what one member finds
    // is searched, with all that follows from it, before what an earlier one has still open.
    open.assign(1, &from);
    while (!open.empty()) {
        const Vector2 position = open.back()->position;
        open.pop_back();
        findNear(position);
        const std::size_t firstNew = open.size();
        for (const std::uint32_t index : found) {
            open.push_back(&join(index, group));
        }
        std::reverse(open.begin() + static_cast<std::ptrdiff_t>(firstNew), open.end());
    }
}

void FreezeField::findNear(Vector2 position) {
    TARNWICK_LOCATION("FreezeField::findNear");
    found.clear();
    const std::int32_t column = cellUnder(position.x);
    const std::int32_t row = cellUnder(position.y);
    for (std::int32_t dx = -1; dx <= 1; ++dx) {
        for (std::int32_t dy = -1; dy <= 1; ++dy) {
            std::uint32_t* link = &buckets[bucketOf(column + dx, row + dy)];
            while (*link != none) {
                const std::uint32_t index = *link;
                const Vector2 apart = entries[index].position - position;
                if (dotProduct(apart, apart) <= reachSquared) {
                    found.push_back(index);
                    *link = entries[index].next;
                } else {
                    link = &entries[index].next;
                }
            }
        }
    }
    std::ranges::sort(found);
}

Particle& FreezeField::join(std::uint32_t index, ParticleGroup& group) {
    TARNWICK_LOCATION("FreezeField::join");
    const ParticleList::iterator node = entries[index].node;
    gone[index] = true;
    ParticleMover::removeGridParticle(*node);
    group.members.splice(group.members.begin(), index < frozenCount ? frozen : free, node);
    givePlace(*node);
    return *node;
}

} // namespace tarnwick
