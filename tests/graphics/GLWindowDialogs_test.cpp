#include "graphics/GLWindow.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace tarnwick {

/// A desktop whose file box is a script: it writes down how it was called, and answers with what a test says.
class GLWindowDialogsTest : public ModuleTest {
protected:
    GLWindowDialogsTest()
        : pathBefore(std::getenv("PATH")) {
        setenv("PATH", (data.path().string() + ":" + pathBefore).c_str(), 1);
    }
    ~GLWindowDialogsTest() override { setenv("PATH", pathBefore.c_str(), 1); }

    void installFileBox(const std::string& answer, int status) const {
        data.write("zenity", "#!/bin/sh\nprintf '%s\\n' \"$@\" > called\n" + answer + "\nexit " +
                                 std::to_string(status) + "\n");
        std::filesystem::permissions("zenity", std::filesystem::perms::owner_all);
    }

    static std::string called() {
        std::ostringstream text;
        text << std::ifstream("called").rdbuf();
        return text.str();
    }

    const std::list<GLWindow::FileFilter> filters = {{"Levels", "*.rivl"}, {"Pictures", "*.tga;*.png"}};
    DataFolder data;
    std::string pathBefore;
};

TEST_F(GLWindowDialogsTest, AnExistingFileIsOpened) {
    data.write("a level.rivl", "x");
    installFileBox("echo 'a level.rivl'", 0);

    const std::string path = GLWindow::showOpenFileBox("Open a level", "maps", filters);

    EXPECT_EQ(path, "a level.rivl");
    EXPECT_EQ(called(), "--file-selection\n--title=Open a level\n--filename=maps/\n"
                        "--file-filter=Levels | *.rivl\n--file-filter=Pictures | *.tga *.png\n");
}

TEST_F(GLWindowDialogsTest, AMissingFileIsNotOpened) {
    installFileBox("echo missing.rivl", 0);

    EXPECT_EQ(GLWindow::showOpenFileBox("Open", "", filters), "");
}

TEST_F(GLWindowDialogsTest, ACancelledBoxGivesNothing) {
    installFileBox("echo a.rivl", 1);

    EXPECT_EQ(GLWindow::showOpenFileBox("Open", "", {}), "");
    EXPECT_EQ(GLWindow::showSaveFileBox("Save", "", filters), "");
}

TEST_F(GLWindowDialogsTest, ADesktopWithoutFileBoxesGivesNothing) {
    setenv("PATH", data.path().c_str(), 1);

    EXPECT_EQ(GLWindow::showOpenFileBox("Open", "", {}), "");
    EXPECT_EQ(GLWindow::showSaveFileBox("Save", "", {}), "");
}

TEST_F(GLWindowDialogsTest, APathWithoutAnyPointGetsTheFiltersExtension) {
    installFileBox("echo new", 0);

    EXPECT_EQ(GLWindow::showSaveFileBox("Save", "maps/", filters), "new.rivl");
    EXPECT_EQ(called(), "--file-selection\n--save\n--confirm-overwrite\n--title=Save\n--filename=maps/\n"
                        "--file-filter=Levels | *.rivl\n--file-filter=Pictures | *.tga *.png\n");
    EXPECT_EQ(GLWindow::showSaveFileBox("Save", "", {}), "new");
    EXPECT_EQ(GLWindow::showSaveFileBox("Save", "", {{"All", ""}}), "new");
}

TEST_F(GLWindowDialogsTest, APathWithAPointStaysAsItIs) {
    installFileBox("echo some.thing/new", 0);

    EXPECT_EQ(GLWindow::showSaveFileBox("Save", "", filters), "some.thing/new");
}

TEST_F(GLWindowDialogsTest, APathThatIsTooLongIsNone) {
    installFileBox("head -c 1024 /dev/zero | tr '\\0' x", 0);

    EXPECT_EQ(GLWindow::showSaveFileBox("Save", "", {}), "");
}

TEST_F(GLWindowDialogsTest, WithoutADesktopBoxesGoToStandardErrorAndTheAnswerIsNo) {
    GLWindow::createHeadless(800, 600);

    testing::internal::CaptureStderr();
    GLWindow::showMessageBox("The text", "Caption");
    const bool answer = GLWindow::showQuestionBox("Really?", "Question");
    const std::string said = testing::internal::GetCapturedStderr();

    EXPECT_EQ(said, "Caption: The text\nQuestion: Really?\n");
    EXPECT_FALSE(answer);
}

} // namespace tarnwick
