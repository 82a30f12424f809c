#include "core/BoxRow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

namespace tarnwick {

namespace {

Box boxAt(float x, float y) {
    return Box::around({x, y}, {x + 1.0f, y + 1.0f});
}

/// The things of a row that a search for `query` does not step over.
std::vector<std::size_t> found(const BoxRow& row, const Box& query) {
    std::vector<std::size_t> result;
    const auto mayHold = [&query](const Box& box, std::size_t) { return box.touches(query); };
    for (std::size_t i = row.next(0, mayHold); i < row.size(); i = row.next(i + 1, mayHold)) {
        result.push_back(i);
    }
    return result;
}

} // namespace

TEST(BoxRowTest, BoxesThatShareABorderTouch) {
    const Box box = Box::around({2.0f, 3.0f}, {0.0f, 1.0f});

    EXPECT_TRUE(box.touches(Box::around({2.0f, 3.0f}, {5.0f, 5.0f})));
    EXPECT_FALSE(box.touches(Box::around({2.1f, 0.0f}, {5.0f, 5.0f})));
    EXPECT_FALSE(box.touches(Box()));
}

TEST(BoxRowTest, AnEmptyRowHoldsNothing) {
    const BoxRow row;

    EXPECT_EQ(row.next(0, [](const Box&, std::size_t) { return true; }), 0u);
}

TEST(BoxRowTest, NothingThatTouchesIsSteppedOver) {
    std::mt19937 random(1);
    for (std::size_t count = 1; count < 300; count += 7) {
        BoxRow row;
        std::vector<Box> boxes;
        for (std::size_t i = 0; i < count; ++i) {
            boxes.push_back(boxAt(static_cast<float>(random() % 100), static_cast<float>(random() % 100)));
            row.append(boxes.back());
        }
        const Box query = Box::around({20.0f, 30.0f}, {40.0f, 35.0f});

        const std::vector<std::size_t> kept = found(row, query);

        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_TRUE(!boxes[i].touches(query) || std::ranges::count(kept, i) == 1) << i << " of " << count;
        }
        EXPECT_TRUE(std::ranges::is_sorted(kept));
    }
}

TEST(BoxRowTest, WholeBlocksAreRefusedAtOnce) {
    BoxRow row;
    for (int i = 0; i < 1000; ++i) {
        row.append(boxAt(static_cast<float>(i), 0.0f));
    }
    std::size_t asked = 0;
    std::size_t counted = 0;

    const std::size_t end = row.next(0, [&](const Box&, std::size_t length) {
        ++asked;
        counted += length;
        return false;
    });

    EXPECT_EQ(end, 1000u);
    EXPECT_EQ(asked, 1u);
    EXPECT_EQ(counted, 1000u);
}

TEST(BoxRowTest, ABlockThatGrewIsFoundWhereItGrewTo) {
    BoxRow row;
    for (int i = 0; i < 100; ++i) {
        row.append(boxAt(0.0f, 0.0f));
    }
    const std::size_t before = found(row, boxAt(50.0f, 50.0f)).size();

    row.grow(42, boxAt(50.0f, 50.0f));

    const std::vector<std::size_t> after = found(row, boxAt(50.0f, 50.0f));
    EXPECT_EQ(before, 0u);
    EXPECT_EQ(std::ranges::count(after, 42u), 1);
}

TEST(BoxRowTest, NeighboursInTheOrderAreNeighboursInThePlane) {
    std::vector<Box> boxes;
    for (int i = 0; i < 16; ++i) {
        boxes.push_back(boxAt(i % 2 == 0 ? 0.0f : 1000.0f, static_cast<float>(i)));
    }

    const std::vector<std::uint32_t> order = orderInPlane(boxes);

    ASSERT_EQ(order.size(), 16u);
    for (std::size_t i = 1; i < order.size(); ++i) {
        EXPECT_EQ(order[i] % 2, i < 8 ? 0u : order[8] % 2) << i;
    }
    EXPECT_TRUE(orderInPlane({}).empty());
    EXPECT_EQ(orderInPlane({boxAt(3.0f, 3.0f), boxAt(3.0f, 3.0f)}), (std::vector<std::uint32_t>{0, 1}));
}

} // namespace tarnwick
