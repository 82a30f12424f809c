#pragma once

#include "core/Box.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarnwick {

/// A row of things with a place in the plane, and the boxes of its blocks of 4, 16, 64 ... neighbours in the
/// row, so that a search through the row in its order steps over whole blocks that cannot hold what it looks
/// for.
///
/// It pays where neighbours in the row are neighbours in the plane, like the sides of an outline, or things
/// sorted by `orderInPlane`. In the field's words: an implicit bounding volume hierarchy of four children,
/// packed bottom up.
class BoxRow {
public:
    void clear() {
        levels.clear();
        count = 0;
    }

    std::size_t size() const { return count; }

    /// Adds a thing at the end of the row.
    void append(const Box& box) {
        ++count;
        while (levels.empty() || blockLength(levels.size() - 1) < count) {
            addLevel();
        }
        for (std::size_t level = 0; level < levels.size(); ++level) {
            if ((count - 1) % blockLength(level) == 0) {
                levels[level].emplace_back();
            }
        }
        grow(count - 1, box);
    }

    /// Makes the blocks around the thing at `index` large enough for `box` too. Nothing ever shrinks.
    void grow(std::size_t index, const Box& box) {
        for (std::size_t level = 0; level < levels.size(); ++level) {
            levels[level][index / blockLength(level)].add(box);
        }
    }

    /// The first thing at or behind `index` that is in no block refused by `mayHold(box, length)`; `size()`
    /// if there is none. A block is asked about where the walk enters it at its first thing, the largest
    /// block first.
    template <typename MayHold>
    std::size_t next(std::size_t index, const MayHold& mayHold) const {
        while (index < count) {
            const std::size_t refused = refusedBlock(index, mayHold);
            if (refused == 0) {
                return index;
            }
            index += refused;
        }
        return count;
    }

private:
    /// Blocks of one level in a block of the next, as a power of two.
    static constexpr unsigned fanOutBits = 2;

    std::vector<std::vector<Box>> levels; ///< Blocks of 4, of 16 and so on; the last level is a single block.
    std::size_t count = 0;

    static std::size_t blockLength(std::size_t level) {
        assert(level < 31); // a row that long does not exist
        return std::size_t{1} << (fanOutBits * (level + 1));
    }

    /// A level above the others; its one block holds all that is there.
    void addLevel() {
        std::vector<Box> level;
        if (!levels.empty()) {
            level.emplace_back();
            for (const Box& box : levels.back()) {
                level.back().add(box);
            }
        }
        levels.push_back(std::move(level));
    }

    /// Length of the largest refused block that starts at `index`; 0 if none is refused.
    template <typename MayHold>
    std::size_t refusedBlock(std::size_t index, const MayHold& mayHold) const {
        const auto zeros = static_cast<std::size_t>(index == 0 ? 64 : std::countr_zero(index));
        std::size_t level = std::min(levels.size(), zeros / fanOutBits);
        while (level-- > 0) {
            const std::size_t length = blockLength(level);
            if (!mayHold(levels[level][index / length], std::min(length, count - index))) {
                return length;
            }
        }
        return 0;
    }
};

/// The indices of `boxes` in an order in which neighbours in the plane are mostly neighbours: the Morton
/// order of their corners.
std::vector<std::uint32_t> orderInPlane(const std::vector<Box>& boxes);

} // namespace tarnwick
