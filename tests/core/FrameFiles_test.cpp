#include "core/FrameFiles.h"

#include "support/DataFolder.h"
#include "support/ModuleTest.h"

namespace tarnwick {

class FrameFilesTest : public ModuleTest {
protected:
    const DataFolder data;
};

using Names = std::vector<std::string>;

TEST_F(FrameFilesTest, ANameWithoutTheMarkStandsForItself) {
    EXPECT_EQ(FrameFiles::find("gfx\\Sign.tga"), Names{"GFX\\SIGN.TGA"});
    EXPECT_EQ(FrameFiles::find(""), Names{""});
}

TEST_F(FrameFilesTest, ANameWithTheMarkStandsForItsRunInTheOrderOfTheNames) {
    data.write("gfx/fan_frame2.tga", "");
    data.write("gfx/Fan_Frame10.tga", "");
    data.write("gfx/fan_frame1.tga", "");
    data.write("gfx/fan_frame1.png", "");
    data.write("gfx/fans.tga", "");

    EXPECT_EQ(FrameFiles::find("gfx\\fan_frame07.tga"),
              (Names{"GFX\\fan_frame1.tga", "GFX\\Fan_Frame10.tga", "GFX\\fan_frame2.tga"}));
}

TEST_F(FrameFilesTest, TheLastMarkCountsAndANameWithoutFolderIsFoundInTheWorkingOne) {
    data.write("a_frame_frame1", "");
    data.write("a_frame2", "");

    EXPECT_EQ(FrameFiles::find("A_FRAME_FRAME9"), Names{"a_frame_frame1"});
}

TEST_F(FrameFilesTest, ARunWithoutFilesIsEmpty) {
    EXPECT_EQ(FrameFiles::find("gfx\\fan_frame1.tga"), Names{});
}

} // namespace tarnwick
