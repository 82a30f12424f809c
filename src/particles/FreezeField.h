#pragma once

#include "core/Vector2.h"
#include "particles/Particle.h"
#include "particles/ParticleGroup.h"
#include "particles/ParticleList.h"

#include <cstdint>
#include <vector>

namespace tarnwick {

/// Everybody whom a freeze may still reach, found by place.
///
/// The rule of `ParticleGroupMover::particleGroupRecursive` looks through all of the frozen and then all of
/// the free particles for each member that it reaches. This takes from a hash of square cells the few that
/// can be near, and puts them in the order of that search. In the field's words: a spatial hash with chained
/// buckets, for a flood fill over neighbours (clustering by single linkage).
class FreezeField {
public:
    /// Takes in all particles of both lists, in this order. The lists must not change but through this.
    FreezeField(ParticleList& frozenParticles, ParticleList& freeParticles);

    /// Moves the first particle of the frozen list, which must not be empty, to `group` and draws its place
    /// there.
    void takeFirstFrozen(ParticleGroup& group);
    /// Moves everybody who is within reach of `from`, and in turn of those who come, to the front of
    /// `group`'s members and out of the grid, depth first, and draws a place for each.
    void gather(const Particle& from, ParticleGroup& group);

private:
    static constexpr std::uint32_t none = ~0u;

    struct Entry {
        Vector2 position;
        ParticleList::iterator node;
        std::uint32_t next = none; ///< In the same bucket.
    };

    std::uint32_t bucketOf(std::int32_t column, std::int32_t row) const;
    void findNear(Vector2 position);
    Particle& join(std::uint32_t index, ParticleGroup& group);

    ParticleList& frozen;
    ParticleList& free;
    std::vector<Entry> entries;         ///< Frozen ones first; both in list order.
    std::uint32_t frozenCount = 0;      ///< Of the entries.
    std::uint32_t firstFrozen = 0;      ///< No frozen entry before this one is left.
    std::vector<bool> gone;             ///< By entry.
    std::vector<std::uint32_t> buckets; ///< First entry of each, or `none`. A power of two of them.
    std::vector<std::uint32_t> found;   ///< Entries within reach of the member that is looked at.
    std::vector<const Particle*>
        open; ///< Members whose neighbourhood is still to be searched, the next one last.
};

} // namespace tarnwick
