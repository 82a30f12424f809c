#include "level/SurfaceTypeManager.h"

#include "support/DataFolder.h"
#include "support/ModuleTest.h"

namespace tarnwick {

class SurfaceTypeManagerTest : public ModuleTest {
protected:
    DataFolder data;
};

TEST_F(SurfaceTypeManagerTest, BeforeInitialiseEveryTypeGivesOne) {
    for (int type = -1; type <= 7; ++type) {
        EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(type), 1.0f) << type;
    }
}

TEST_F(SurfaceTypeManagerTest, EachMaterialHasAKeyOfItsOwn) {
    data.write("cfg/surfaces.cfg",
               "surfaceFriction_metal = 0.1\nsurfaceFriction_wood = 0.2\nsurfaceFriction_stone = 0.3\n"
               "surfaceFriction_cloth = 0.4\nsurfaceFriction_sand = 0.5\n");

    SurfaceTypeManager::initialise();

    EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(1), 0.1f);
    EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(2), 0.2f);
    EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(3), 0.3f);
    EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(4), 0.4f);
    EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(5), 0.5f);
}

TEST_F(SurfaceTypeManagerTest, ValuesAreClampedIntoZeroToOne) {
    data.write("cfg/surfaces.cfg", "surfaceFriction_metal = 1.5\nsurfaceFriction_wood = -1\n");

    SurfaceTypeManager::initialise();

    EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(1), 1.0f);
    EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(2), 0.0f);
}

TEST_F(SurfaceTypeManagerTest, AMissingKeyOrFileGivesZeroAndNotOne) {
    SurfaceTypeManager::initialise();

    for (int type = 1; type <= 5; ++type) {
        EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(type), 0.0f) << type;
    }
}

TEST_F(SurfaceTypeManagerTest, OnlyOneToFiveAreMaterialsAndOthersGiveOne) {
    SurfaceTypeManager::initialise();

    for (int type = 1; type <= 5; ++type) {
        EXPECT_TRUE(SurfaceTypeManager::validSurfaceType(type)) << type;
    }
    EXPECT_FALSE(SurfaceTypeManager::validSurfaceType(0));
    EXPECT_FALSE(SurfaceTypeManager::validSurfaceType(6));
    EXPECT_FALSE(SurfaceTypeManager::validSurfaceType(-2147483647));
    EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(0), 1.0f);
    EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(6), 1.0f);
}

} // namespace tarnwick
