#pragma once

#include "core/Vector2.h"
#include "particles/Particle.h"
#include "particles/ParticleList.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tarnwick {

/// Divides all free particles into the clusters of the attraction pass.
///
/// The rule is that of `ParticleMover::groupParticles`, over and over until nobody is left, and this gives
/// the same clusters in the same order. It differs in how it answers the one question, whether any member of
/// the cluster lies within reach of a candidate: by square cells so small that two particles of one cell
/// always are. A candidate in a cell with a member joins at once; one whose cell is near no member's cell
/// stays at once; only between the two are distances taken. In the field's words: one sweep of clustering by
/// single linkage, over a uniform grid with time stamps in place of clearing.
class ClusterSweep {
public:
    /// A particle, and where it stands as the pass begins.
    struct Entry {
        Vector2 position;
        Particle* particle = nullptr;
    };

    /// Takes all of `particles`, shuffled: draws `randomInt` once for each, in list order, and puts those
    /// with an odd number at the end and those with an even one at the front.
    void start(ParticleList& particles);
    /// Takes the first particle that is left and everyone whom one sweep over the others brings to it, in the
    /// order in which they join. Empty when nobody is left. Valid until the next call.
    std::span<const Entry> nextCluster();

private:
    /// A square of the world. Marks are numbers of clusters; an old one means nothing.
    struct Cell {
        std::uint32_t memberMark = 0;   ///< The cluster that has a member here.
        std::uint32_t nearMark = 0;     ///< The cluster that has a member in a cell within reach of this one.
        std::uint32_t newestMember = 0; ///< Index in `cluster` of the member here that joined last.
    };

    void layCells();
    std::uint32_t cellOf(const Vector2& position) const;
    bool joins(const Vector2& position, std::uint32_t cell) const;
    bool memberWithinReach(const Vector2& position, std::uint32_t cell) const;
    void addMember(const Entry& entry, std::uint32_t cell);

    std::vector<Entry> shuffled; ///< Those that are left lie at `first` to `end`.
    std::size_t first = 0;
    std::size_t end = 0;
    std::vector<Entry> cluster;
    std::vector<std::uint32_t>
        nextMember;                  ///< By index in `cluster`: the next one in the same cell, or `none`.
    std::uint32_t clusterNumber = 0; ///< Of all passes.

    std::vector<Cell> cells;   ///< Row by row, with a border of unused ones as wide as the reach.
    Vector2 origin;            ///< World units: the corner of the first cell inside the border.
    std::uint32_t columns = 0; ///< The border included; 0 when the particles lie too far apart for cells.
};

} // namespace tarnwick
