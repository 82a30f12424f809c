#include "level/LevelObjectsManager.h"

#include "console/GLConsole.h"
#include "game/Camera.h"
#include "support/ConsoleAnswer.h"
#include "support/LevelDrawingTest.h"
#include "support/SceneAccess.h"

#include <GL/gl.h>

#include <string>

namespace tarnwick {

class LevelObjectsManagerTest : public LevelDrawingTest {
protected:
    LevelObjectsManagerTest() = default;
    LevelObjectsManagerTest(std::int32_t width, std::int32_t height)
        : LevelDrawingTest(width, height) {}

    using Drawable = LevelObjectsManager::LevelObjectDrawable;

    static LevelObject object(float x, float y, const std::string& picture, std::uint32_t layer = 0) {
        LevelObject made;
        made.x = x;
        made.y = y;
        made.layer = layer;
        made.setTexture("gfx\\" + picture + ".tga");
        return made;
    }
    static LevelObject& add(float x, float y, const std::string& picture, std::uint32_t layer = 0) {
        LevelObjectsManager::addObject(object(x, y, picture, layer));
        return LevelObjectsManager::staticObjects.front();
    }
    /// An animation of two frames, red and green.
    LevelObject& addBlinker(float x, float y) const {
        writeFlatPicture("gfx/blink_frame0.tga", red);
        writeFlatPicture("gfx/blink_frame1.tga", green);
        LevelObjectsManager::addObject(object(x, y, "blink_frame0"));
        return LevelObjectsManager::animatedObjects.front();
    }

    static std::size_t queued(std::uint32_t layer) {
        return LevelObjectsManager::state.layerQueues[layer].size();
    }
    static std::size_t queued() {
        std::size_t count = 0;
        for (std::uint32_t layer = 0; layer < layerCount; ++layer) {
            count += queued(layer);
        }
        return count;
    }
    static void drawLayers() {
        for (std::uint32_t layer = 0; layer < layerCount; ++layer) {
            LevelObjectsManager::drawLayer(layer);
        }
    }
    static void draw() {
        beginPicture();
        LevelObjectsManager::prepareDraw(Camera::view());
        drawLayers();
    }
    static void showTexels(const GLTexture& picture) {
        glBindTexture(GL_TEXTURE_2D, picture.textureId);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    }
};

TEST_F(LevelObjectsManagerTest, StartAndStopAreTold) {
    LevelObjectsManager::initialise();

    EXPECT_TRUE(GLConsole::outputText().starts_with(
        "\nShutting down level objects manager..\nInitialising level objects manager.."))
        << GLConsole::outputText();
}

TEST_F(LevelObjectsManagerTest, NewObjectsStandInFrontOfTheirListAndStayWhereTheyAre) {
    const LevelObject* const first = &add(0.0f, 0.0f, "red");
    const LevelObject* const second = &add(1.0f, 0.0f, "red");
    const LevelObject* const moving = &addBlinker(2.0f, 0.0f);
    const LevelObject* const third = &add(3.0f, 0.0f, "green");

    ASSERT_EQ(LevelObjectsManager::staticObjects.size(), 3u);
    auto entry = LevelObjectsManager::staticObjects.begin();
    EXPECT_EQ(&*entry++, third);
    EXPECT_EQ(&*entry++, second);
    EXPECT_EQ(&*entry, first);
    ASSERT_EQ(LevelObjectsManager::animatedObjects.size(), 1u);
    EXPECT_EQ(&LevelObjectsManager::animatedObjects.front(), moving);
}

TEST_F(LevelObjectsManagerTest, AnObjectWithoutFramesIsDropped) {
    LevelObject empty;
    empty.frameCount = 0;

    LevelObjectsManager::addObject(empty);

    EXPECT_TRUE(LevelObjectsManager::staticObjects.empty());
    EXPECT_TRUE(LevelObjectsManager::animatedObjects.empty());
}

TEST_F(LevelObjectsManagerTest, AnObjectIsCentredOnItsPlaceAndAsLargeAsItsPicture) {
    add(30.0f, 20.0f, "red").offsetX = 10.0f;
    LevelObjectsManager::staticObjects.front().offsetY = -5.0f;

    draw();

    EXPECT_EQ(litPixels(), 16);
    EXPECT_EQ(pixel(38, 13), red);
    EXPECT_EQ(pixel(41, 16), red);
}

TEST_F(LevelObjectsManagerTest, AMirroredObjectHasLeftAndRightSwappedAndNoOtherChange) {
    writeSplitPicture("gfx/split.tga", red, green);
    showTexels(add(20.0f, 20.0f, "split").frames[0]);
    add(40.0f, 20.0f, "split").mirrored = true;

    draw();

    const FramePicture shown = picture();
    EXPECT_EQ(litPixels(), 32);
    for (std::int32_t y = 18; y < 22; ++y) {
        for (std::int32_t x = 0; x < 4; ++x) {
            EXPECT_EQ(shown.at(18 + x, y), x < 2 ? red : green);
            EXPECT_EQ(shown.at(38 + x, y), x < 2 ? green : red);
        }
    }
}

TEST_F(LevelObjectsManagerTest, ThePictureStandsUprightOnTheScreen) {
    writeSplitPicture("gfx/split.tga", red, green);
    const LevelObject& one = add(20.0f, 20.0f, "split");
    const std::uint8_t rows[16 * 3] = {255, 0,   0,   255, 0,   0,   255, 0,   0,   255, 0,   0,
                                       0,   255, 0,   0,   255, 0,   0,   255, 0,   0,   255, 0,
                                       0,   0,   255, 0,   0,   255, 0,   0,   255, 0,   0,   255,
                                       255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};
    showTexels(one.frames[0]);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 4, 4, GL_RGB, GL_UNSIGNED_BYTE, rows);

    draw();

    EXPECT_EQ(pixel(20, 18), red);
    EXPECT_EQ(pixel(20, 19), green);
    EXPECT_EQ(pixel(20, 20), blue);
    EXPECT_EQ(pixel(20, 21), white);
}

TEST_F(LevelObjectsManagerTest, TheLowestTextureNameIsDrawnFirst) {
    const LevelObject keepsItsName = object(0.0f, 0.0f, "blue");
    const LevelObject comesLater = object(0.0f, 0.0f, "green");
    ASSERT_LT(keepsItsName.frame()->textureId, comesLater.frame()->textureId);
    add(20.0f, 20.0f, "blue");
    add(20.0f, 20.0f, "green");
    add(40.0f, 20.0f, "green");
    add(40.0f, 20.0f, "blue");

    draw();

    EXPECT_EQ(pixel(20, 20), green);
    EXPECT_EQ(pixel(40, 20), green);
}

TEST_F(LevelObjectsManagerTest, ObjectsOfOneTextureAreDrawnInTheOrderInWhichTheyWereAdded) {
    writeSplitPicture("gfx/split.tga", red, green);
    showTexels(add(20.0f, 20.0f, "split").frames[0]);
    add(22.0f, 20.0f, "split");
    add(40.0f, 20.0f, "split").mirrored = true;
    add(40.0f, 20.0f, "split");

    draw();

    EXPECT_EQ(pixel(20, 20), red) << "the left half of the second lies on the right one of the first";
    EXPECT_EQ(pixel(38, 20), red);
}

TEST_F(LevelObjectsManagerTest, ObjectsOfOneTextureOnDifferentLayersAreDrawnWithTheirOwnLayer) {
    add(20.0f, 20.0f, "red", 1);
    add(40.0f, 20.0f, "red", 3);
    beginPicture();

    LevelObjectsManager::prepareDraw(Camera::view());
    LevelObjectsManager::drawLayer(1);
    const FramePicture::Pixel nearLater = pixel(40, 20);
    const std::size_t waiting = queued(3);
    drawLayers();

    EXPECT_EQ(pixel(20, 20), red);
    EXPECT_EQ(nearLater, black);
    EXPECT_EQ(waiting, 1u);
    EXPECT_EQ(pixel(40, 20), red);
    EXPECT_EQ(queued(), 0u);
}

TEST_F(LevelObjectsManagerTest, DrawablesCompareByTextureNameTheOtherWayRound) {
    const LevelObject low = object(0.0f, 0.0f, "red");
    const LevelObject high = object(0.0f, 0.0f, "green");
    const LevelObject none;
    ASSERT_LT(low.frame()->textureId, high.frame()->textureId);
    const Drawable a{&low};
    const Drawable b{&high};
    const Drawable c{&none};

    EXPECT_TRUE(b < a && a > b && b <= a && a >= b && a != b);
    EXPECT_FALSE(a < b || b > a || a <= b || b >= a || a == b);
    EXPECT_TRUE(a == a && a <= a && a >= a);
    EXPECT_FALSE(a < a || a > a || a != a);
    EXPECT_FALSE(a < c || a > c || a <= c || a >= c || a == c || a != c);
    EXPECT_FALSE(c < a || c > a || c <= a || c >= a || c == a || c != a);
    EXPECT_FALSE(c == c || c != c || c <= c);
}

TEST_F(LevelObjectsManagerTest, AnObjectWithoutAPictureIsPassedOver) {
    LevelObjectsManager::initialise();
    answerTo("ObjectsCull false");
    add(20.0f, 20.0f, "red");
    LevelObjectsManager::addObject(LevelObject());
    add(40.0f, 20.0f, "green");
    LevelObjectsManager::addObject(LevelObject());

    beginPicture();
    LevelObjectsManager::prepareDraw(Camera::view());
    const std::size_t waiting = queued(0);
    drawLayers();

    EXPECT_EQ(waiting, 4u);
    EXPECT_EQ(queued(), 0u);
    EXPECT_EQ(litPixels(), 32);
}

/// The view of this window is 800 by 600 units, so the square about the camera reaches 520 units each way.
TEST_F(LevelObjectsManagerTest, AnObjectThatOnlyTouchesTheSquareIsDrawn) {
    add(522.0f, 0.0f, "red");
    add(-522.0f, 0.0f, "red");
    add(0.0f, 522.0f, "red");
    add(0.0f, -522.0f, "red");

    LevelObjectsManager::prepareDraw(Camera::view());

    EXPECT_EQ(queued(), 4u);
}

TEST_F(LevelObjectsManagerTest, AnObjectOutsideTheSquareIsLeftOut) {
    add(522.5f, 0.0f, "red");
    add(-522.5f, 0.0f, "red");
    add(0.0f, 522.5f, "red");
    add(0.0f, -522.5f, "red");

    LevelObjectsManager::prepareDraw(Camera::view());

    EXPECT_EQ(queued(), 0u);
}

TEST_F(LevelObjectsManagerTest, TheSquareFollowsTheCameraAndTheOffsetTheObject) {
    LevelObject& one = add(2000.0f, 0.0f, "red");

    LevelObjectsManager::prepareDraw(Camera::view());
    const std::size_t seenFromTheOrigin = queued();
    Camera::setPosition({2000.0f, 0.0f});
    LevelObjectsManager::prepareDraw(Camera::view());
    const std::size_t seenFromNearby = queued();
    draw();
    one.offsetX = -2000.0f;
    LevelObjectsManager::prepareDraw(Camera::view());

    EXPECT_EQ(seenFromTheOrigin, 0u);
    EXPECT_EQ(seenFromNearby, 1u);
    EXPECT_EQ(queued(), 0u);
}

TEST_F(LevelObjectsManagerTest, TheSquareGrowsWithTheZoomAndFollowsTheShake) {
    add(652.0f, 0.0f, "red"); // its left side at 650
    const auto seenAt = [](Vector2 shake, float zoom) {
        draw();
        SceneAccess::placeCamera({}, shake, 0.0f, zoom);
        LevelObjectsManager::prepareDraw(Camera::view());
        return queued() == 1;
    };

    EXPECT_FALSE(seenAt({}, 1.0f));
    EXPECT_TRUE(seenAt({}, 1.25f)); // 520 units by 1.25
    EXPECT_FALSE(seenAt({}, 1.24f));
    EXPECT_TRUE(seenAt({130.0f, 0.0f}, 1.0f));
    EXPECT_FALSE(seenAt({129.0f, 0.0f}, 1.0f));
}

/// A window of 60 by 80: its view is 800 units wide and 1067 high.
class UprightWindowTest : public LevelObjectsManagerTest {
protected:
    UprightWindowTest()
        : LevelObjectsManagerTest(60, 80) {
        writeFlatPicture("gfx/red.tga", red);
    }
};

TEST_F(UprightWindowTest, TheWidthOfTheViewAloneTellsWhatIsDrawn) {
    add(0.0f, 522.0f, "red");
    add(0.0f, 522.5f, "red");

    LevelObjectsManager::prepareDraw(Camera::view());

    EXPECT_EQ(queued(), 1u);
}

TEST_F(LevelObjectsManagerTest, ADisabledObjectIsNotDrawnUnlessCullingIsOff) {
    LevelObjectsManager::initialise();
    add(20.0f, 20.0f, "red").enabled = false;
    add(5000.0f, 20.0f, "red");

    LevelObjectsManager::prepareDraw(Camera::view());
    const std::size_t culled = queued();
    answerTo("ObjectsCull false");
    draw();

    EXPECT_EQ(culled, 0u);
    EXPECT_EQ(pixel(20, 20), red);
}

TEST_F(LevelObjectsManagerTest, ObjectsDrawSwitchesTheObjectsOff) {
    LevelObjectsManager::initialise();
    add(20.0f, 20.0f, "red");

    const std::string answer = answerTo("ObjectsDraw false");
    draw();

    EXPECT_EQ(answer, "\nObjectsDraw is now false");
    EXPECT_EQ(litPixels(), 0);
}

TEST_F(LevelObjectsManagerTest, ObjectsCountCountsBothLists) {
    LevelObjectsManager::initialise();
    add(20.0f, 20.0f, "red");
    addBlinker(0.0f, 0.0f);

    EXPECT_EQ(answerTo("ObjectsCount"), "\nObjectsCount is 2");
}

TEST_F(LevelObjectsManagerTest, ObjectCreateAddsAnObjectOnTheBackmostLayer) {
    LevelObjectsManager::initialise();

    const std::string answer = answerTo("ObjectCreate 20.5 -3 -7 gfx\\red.tga");

    EXPECT_EQ(answer, "");
    ASSERT_EQ(LevelObjectsManager::staticObjects.size(), 1u);
    const LevelObject& made = LevelObjectsManager::staticObjects.front();
    EXPECT_EQ(made.x, 20.5f);
    EXPECT_EQ(made.y, -3.0f);
    EXPECT_EQ(made.id, 4294967289u);
    EXPECT_EQ(made.layer, 0u);
    EXPECT_EQ(made.frames[0].name, "GFX\\RED.TGA");
}

TEST_F(LevelObjectsManagerTest, ObjectCreateOfAnAnimationMakesOneThatStandsStill) {
    LevelObjectsManager::initialise();
    writeFlatPicture("gfx/blink_frame0.tga", red);
    writeFlatPicture("gfx/blink_frame1.tga", green);

    answerTo("ObjectCreate 20 20 1 gfx\\blink_frame1.tga");

    ASSERT_EQ(LevelObjectsManager::animatedObjects.size(), 1u);
    EXPECT_TRUE(LevelObjectsManager::animatedObjects.front().paused);
}

TEST_F(LevelObjectsManagerTest, ObjectCreateWithAnythingElsePrintsItsUse) {
    LevelObjectsManager::initialise();
    const std::string use = "\nUSAGE: ObjectCreate < x : number > < y : number > < object id : integer > "
                            "< textureName : string >";

    EXPECT_EQ(answerTo("ObjectCreate 1 2 3"), use);
    EXPECT_EQ(answerTo("ObjectCreate 1 2 3 red.tga more"), use);
    EXPECT_EQ(answerTo("ObjectCreate x 2 3 red.tga"), use);
    EXPECT_EQ(answerTo("ObjectCreate 1 y 3 red.tga"), use);
    EXPECT_EQ(answerTo("ObjectCreate 1 2 3.5 red.tga"), use);
    EXPECT_TRUE(LevelObjectsManager::staticObjects.empty());
}

TEST_F(LevelObjectsManagerTest, AnimationsRunAtTheSpeedOfTheFileAndStaticObjectsAreLeftAlone) {
    data.write("cfg/animation.cfg", "animationSpeeds = -4");
    LevelObjectsManager::initialise();
    LevelObject& blinker = addBlinker(20.0f, 20.0f);
    blinker.paused = false;
    add(40.0f, 20.0f, "blue").paused = false;

    LevelObjectsManager::runAnimations(0.125f);
    const std::uint32_t halfway = blinker.currentFrame;
    LevelObjectsManager::runAnimations(0.125f);
    draw();

    EXPECT_EQ(halfway, 0u);
    EXPECT_EQ(blinker.currentFrame, 1u);
    EXPECT_EQ(pixel(20, 20), green);
    EXPECT_EQ(LevelObjectsManager::staticObjects.front().frameTime, 0.0f);
}

TEST_F(LevelObjectsManagerTest, WithoutASpeedInTheFileAnimationsStandStill) {
    LevelObjectsManager::initialise();
    LevelObject& blinker = addBlinker(20.0f, 20.0f);
    blinker.paused = false;

    LevelObjectsManager::runAnimations(1000.0f);

    EXPECT_EQ(blinker.currentFrame, 0u);
}

TEST_F(LevelObjectsManagerTest, BeforeTheFileIsReadAnimationsRunAtFifteenFramesASecond) {
    LevelObject& blinker = addBlinker(20.0f, 20.0f);
    blinker.paused = false;

    LevelObjectsManager::runAnimations(0.066f);
    const std::uint32_t before = blinker.currentFrame;
    LevelObjectsManager::runAnimations(0.001f);

    EXPECT_EQ(before, 0u);
    EXPECT_EQ(blinker.currentFrame, 1u);
}

TEST_F(LevelObjectsManagerTest, AResetPutsObjectsAndSwitchesBackToTheStart) {
    LevelObjectsManager::initialise();
    LevelObject& one = add(20.0f, 20.0f, "red");
    one.enabled = false;
    one.paused = false;
    one.offsetX = 3.0f;
    one.offsetY = 4.0f;
    LevelObject& blinker = addBlinker(20.0f, 20.0f);
    blinker.paused = false;
    blinker.loopCount = 4;
    blinker.loopsDone = 2;
    blinker.currentFrame = 1;
    blinker.frameTime = 0.5f;
    answerTo("ObjectsDraw false");
    answerTo("ObjectsCull false");
    answerTo("ObjectsDrawIds true");

    LevelObjectsManager::resetObjects();

    EXPECT_TRUE(one.enabled && one.paused);
    EXPECT_EQ(one.offsetX, 0.0f);
    EXPECT_EQ(one.offsetY, 0.0f);
    EXPECT_TRUE(blinker.paused);
    EXPECT_EQ(blinker.currentFrame, 0u);
    EXPECT_EQ(blinker.frameTime, 0.0f);
    EXPECT_EQ(blinker.loopsDone, 0);
    EXPECT_EQ(blinker.loopCount, 4);
    EXPECT_EQ(answerTo("ObjectsDraw"), "\nObjectsDraw is true");
    EXPECT_EQ(answerTo("ObjectsCull"), "\nObjectsCull is true");
    EXPECT_EQ(answerTo("ObjectsDrawIds"), "\nObjectsDrawIds is false");
}

TEST_F(LevelObjectsManagerTest, IdsStandAboveThePlaceWithoutItsOffset) {
    LevelObjectsManager::initialise();
    writeFlatPicture("gfx/font.tga", white);
    GLConsole::setFontTexture(GLTexture("gfx\\font.tga"));
    add(20.0f, 40.0f, "red").offsetY = 15.0f;
    LevelObjectsManager::addObject(LevelObject()); // without a picture: no id
    beginPicture();

    LevelObjectsManager::debugDraw();
    const std::int32_t litWhileOff = litPixels();
    answerTo("ObjectsDrawIds true");
    LevelObjectsManager::debugDraw();

    EXPECT_EQ(litWhileOff, 0);
    EXPECT_EQ(pixel(18, 26), white) << "20 - 2, and 40 - 2 - 12 units";
    EXPECT_EQ(pixel(17, 26), black);
    EXPECT_EQ(pixel(18, 25), black);
    EXPECT_EQ(pixel(18, 33), white);
    EXPECT_EQ(pixel(18, 34), black);
    EXPECT_EQ(litInRow(26), 62) << "nine characters of 8 pixels, as far as the window reaches";
}

TEST_F(LevelObjectsManagerTest, ShutdownDropsObjectsQueuesAndCommandsAndKeepsTheSpeed) {
    data.write("cfg/animation.cfg", "animationSpeeds = 4");
    LevelObjectsManager::initialise();
    add(20.0f, 20.0f, "red");
    addBlinker(20.0f, 20.0f);
    LevelObjectsManager::prepareDraw(Camera::view());

    LevelObjectsManager::shutdown();
    LevelObject& blinker = addBlinker(20.0f, 20.0f);
    blinker.paused = false;
    LevelObjectsManager::runAnimations(0.25f);

    EXPECT_EQ(queued(), 0u);
    EXPECT_TRUE(LevelObjectsManager::staticObjects.empty());
    EXPECT_EQ(blinker.currentFrame, 1u);
    for (const char* command :
         {"OBJECTSDRAW", "OBJECTSCULL", "OBJECTSCOUNT", "OBJECTSDRAWIDS", "OBJECTCREATE"}) {
        EXPECT_FALSE(GLConsole::commands().contains(command)) << command;
    }
}

} // namespace tarnwick
