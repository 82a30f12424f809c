#include "graphics/GraphicsCommands.h"

#include "console/GLConsole.h"
#include "core/GLTexture.h"
#include "game/BasicCommands.h"
#include "support/ConsoleAnswer.h"
#include "support/GLTest.h"

#include <string>

namespace tarnwick {

class GraphicsCommandsTest : public GLTest {
protected:
    GraphicsCommandsTest() {
        data.write("cfg/console.cfg", "fontTextureName = gfx\\a.tga");
        BasicCommands::handOver();
        GLConsole::initialise();
    }

    static std::string title(const std::string& text) {
        const std::string bar = "\n\n****************************************************************\n\n";
        return bar + text + bar;
    }
};

TEST_F(GraphicsCommandsTest, FullscreenGoesThereAndBackToAFixedWindow) {
    EXPECT_EQ(answerTo("Fullscreen"), "\nFullscreen is false");
    EXPECT_EQ(answerTo("fullscreen true"), "\nFullscreen is now true");
    const std::int32_t fullWidth = GLWindow::getClientWidth();
    EXPECT_EQ(answerTo("Fullscreen false"), "\nFullscreen is now false");

    EXPECT_EQ(fullWidth, GLWindow::getScreenWidth());
    EXPECT_EQ(GLWindow::getClientWidth(), 800);
    EXPECT_EQ(GLWindow::getClientHeight(), 600);
    EXPECT_FALSE(GLWindow::isResizeable());
}

TEST_F(GraphicsCommandsTest, TheRendererIsNamed) {
    const std::string name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));

    EXPECT_EQ(answerTo("Renderer"), title("Graphics renderer") + name);
    EXPECT_EQ(answerTo("Renderer 1"), "\nUSAGE: Renderer < nothing >");
}

TEST_F(GraphicsCommandsTest, TexturesAreListedAndWeighed) {
    const GLTexture a("gfx\\a.tga");
    const GLTexture b("gfx\\b.png");

    EXPECT_EQ(answerTo("TextureList"), title("Textures in use") + "\nGFX\\A.TGA (loading failed)  : 32 BIT" +
                                           "\nGFX\\B.PNG (loading failed)  : 32 BIT");
    EXPECT_EQ(answerTo("TextureMemory"),
              title("Texture memory used") + "2730 bytes"); // 2 * 16 * 16 * 4 * 4 / 3
    EXPECT_EQ(answerTo("TextureQuality 1"), "\nTextureQuality is now 1");
    EXPECT_EQ(answerTo("TextureMemory"), title("Texture memory used") + "1365 bytes");
    EXPECT_EQ(answerTo("TextureQuality 2"), "\nTextureQuality is now 2");
    EXPECT_EQ(answerTo("TextureMemory"), title("Texture memory used") + "682 bytes");
}

TEST_F(GraphicsCommandsTest, BadTextureQualitiesChangeNothing) {
    EXPECT_EQ(answerTo("TextureQuality abc"), "\nUSAGE: TextureQuality < integer number OR nothing >");
    EXPECT_EQ(answerTo("TextureQuality 3"), "\nTextureQuality is now 0");
    EXPECT_EQ(answerTo("TextureQuality -1"), "\nTextureQuality is now 0");
    EXPECT_EQ(answerTo("TextureQuality"), "\nTextureQuality is 0");
}

TEST_F(GraphicsCommandsTest, ReloadingTellsTheTimeItTook) {
    EXPECT_EQ(answerTo("TextureReload"), "\nTexture refresh complete.\nTime take to reload: 0.000000");
}

TEST_F(GraphicsCommandsTest, ExtensionsAreListedOneALine) {
    std::list<std::string> extensions;
    GLWindow::getExtensionList(extensions);
    std::string lines;
    for (const std::string& extension : extensions) {
        lines += extension + "\n";
    }

    EXPECT_GT(extensions.size(), 10u);
    EXPECT_EQ(answerTo("Extensions"), title("Supported OpenGL Extensions") + lines);
}

TEST_F(GraphicsCommandsTest, AnExtensionIsFoundInAnyCaseAndAsAWholeWord) {
    EXPECT_EQ(answerTo("IsExtension"), "\nUSAGE: IsExtension  < string >");
    EXPECT_EQ(answerTo("IsExtension gl_arb_Multisample"), "\nExtension detected.");
    EXPECT_EQ(answerTo("IsExtension GL_ARB_multisampl"), "\nExtension not found.");
    EXPECT_EQ(answerTo("IsExtension " + std::string(240, 'x')), "\nExtension not found.");
}

TEST_F(GraphicsCommandsTest, SamplesAreReadWithoutAnArgumentAndBadOnesRefused) {
    EXPECT_EQ(answerTo("AntiAliasingSamples"), "\nAntiAliasingSamples is 1");
    EXPECT_EQ(answerTo("AntiAliasingSamples 0"), "\nAntiAliasingSamples is now 1");
    EXPECT_EQ(answerTo("AntiAliasingSamples -4"), "\nAntiAliasingSamples is now 1");
    EXPECT_EQ(answerTo("AntiAliasingSamples 100000"), "\nAntiAliasingSamples is now 1");
    EXPECT_EQ(answerTo("AntiAliasingSamples four"),
              "\nUSAGE: AntiAliasingSamples < integer number OR nothing >");
}

TEST_F(GraphicsCommandsTest, TheFilteringLevelIsLimitedToWhatTheGlHas) {
    EXPECT_EQ(answerTo("AnisotropicFilteringLevel"), "\nAnisotropicFilteringLevel is 1");
    GLTextureManager::setAnisotropicFilteringLevel(1'000'000);
    const std::string most = std::to_string(GLTextureManager::getAnisotropicFilteringLevel());

    EXPECT_EQ(answerTo("AnisotropicFilteringLevel -1"), "\nAnisotropicFilteringLevel is now " + most);
    EXPECT_EQ(answerTo("AnisotropicFilteringLevel 0"), "\nAnisotropicFilteringLevel is now 1");
    EXPECT_EQ(answerTo("AnisotropicFilteringLevel 2 2"),
              "\nUSAGE: AnisotropicFilteringLevel < integer number OR nothing >");
}

TEST_F(GraphicsCommandsTest, VsyncTakesTrueOrFalse) {
    const std::string present = GLWindow::vsyncEnabled() ? "true" : "false";

    EXPECT_EQ(answerTo("VsyncEnable"), "\nVsyncEnable is " + present);
    EXPECT_EQ(answerTo("VsyncEnable 1"), "\nUSAGE: VsyncEnable < true OR false OR nothing >");
}

TEST_F(GraphicsCommandsTest, WithoutAWindowTheCommandsTellNothing) {
    GLWindow::close();

    EXPECT_EQ(answerTo("Renderer"), title("Graphics renderer"));
    EXPECT_EQ(answerTo("Extensions"), title("Supported OpenGL Extensions"));
    EXPECT_EQ(answerTo("IsExtension GL_ARB_multisample"), "\nExtension not found.");
    EXPECT_EQ(answerTo("Fullscreen true"), "\nFullscreen is now false");
    EXPECT_EQ(answerTo("AntiAliasingSamples 4"), "\nAntiAliasingSamples is now 1");
}

} // namespace tarnwick
