#include "graphics/GLTextureManager.h"

#include "graphics/GLTexture.h"
#include "support/GLTest.h"

namespace tarnwick {

class GLTextureManagerTest : public GLTest {};

TEST_F(GLTextureManagerTest, AMissingFileIsACheckerboardAndMarked) {
    const GLTexture texture("gfx\\none.tga");
    std::list<std::string> list;
    GLTextureManager::getTextureList(list);

    EXPECT_EQ(texture.width, 16u);
    EXPECT_EQ(texture.height, 16u);
    EXPECT_FALSE(texture.hasAlpha);
    EXPECT_EQ(list, std::list<std::string>{"GFX\\NONE.TGA (loading failed)  : 32 BIT"});
}

} // namespace tarnwick
