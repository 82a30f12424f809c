#include "graphics/PolygonQueue.h"

#include "level/Polygon2D.h"
#include "support/ModuleTest.h"

#include <vector>

namespace tarnwick {

class PolygonQueueTest : public ModuleTest {
protected:
    /// A polygon that only has the GL name of a texture, which is all that the queue looks at.
    static Polygon2D withTexture(std::uint32_t name) {
        Polygon2D polygon;
        polygon.texture.textureId = name;
        return polygon;
    }
    static std::vector<const Polygon2D*> drain(PolygonQueue& queue) {
        std::vector<const Polygon2D*> order;
        while (!queue.empty()) {
            order.push_back(&queue.top());
            queue.pop();
        }
        return order;
    }
};

TEST_F(PolygonQueueTest, TheLowestTextureNameComesOutFirst) {
    const Polygon2D seven = withTexture(7);
    const Polygon2D two = withTexture(2);
    const Polygon2D highest = withTexture(0xFFFFFFFF);
    PolygonQueue queue;
    queue.push(seven);
    queue.push(highest);
    queue.push(two);

    const std::vector<const Polygon2D*> order = drain(queue);

    EXPECT_EQ(order, (std::vector<const Polygon2D*>{&two, &seven, &highest}));
}

TEST_F(PolygonQueueTest, PolygonsOfOneTextureComeOutInTheOrderOfPushing) {
    std::vector<Polygon2D> polygons(50, withTexture(3));
    PolygonQueue queue;
    for (const Polygon2D& polygon : polygons) {
        queue.push(polygon);
    }

    const std::vector<const Polygon2D*> order = drain(queue);

    ASSERT_EQ(order.size(), polygons.size());
    for (std::size_t i = 0; i < polygons.size(); ++i) {
        EXPECT_EQ(order[i], &polygons[i]);
    }
}

TEST_F(PolygonQueueTest, AnEmptiedQueueStartsAnew) {
    const Polygon2D first = withTexture(3);
    const Polygon2D second = withTexture(3);
    PolygonQueue queue;
    queue.push(second);
    drain(queue);
    queue.push(first);
    queue.push(second);

    const std::vector<const Polygon2D*> order = drain(queue);

    EXPECT_EQ(order, (std::vector<const Polygon2D*>{&first, &second}));
    EXPECT_TRUE(queue.empty());
}

} // namespace tarnwick
