#include "core/Geometry.h"
#include "core/QuadArray.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "support/DrawingTest.h"

#include <GL/gl.h>

namespace tarnwick {

/// Looks through the camera at a small white square. The window shows 800 by 600 units in 80 by 60 pixels.
class CameraViewTest : public DrawingTest {
protected:
    CameraViewTest() { Camera::initialise(); }

    static void turn(float degrees) { Camera::state.cameraAngle = degrees; }
    static void zoom(float factor) { Camera::state.cameraZoom = factor; }
    static void shakeBy(float x, float y) {
        Camera::state.shakeOffsetX = x;
        Camera::state.shakeOffsetY = y;
    }
    static void drawSquareAt(float x, float y) {
        beginPicture();
        Camera::viewFrom();
        glDisable(GL_TEXTURE_2D);
        QuadArray quads;
        quads.begin(1);
        quads.addSquare({x, y}, 10.0f, {1.0f, 1.0f, 1.0f, 1.0f});
        quads.draw();
    }
};

TEST_F(CameraViewTest, TheCamerasPlaceIsTheMiddleOfTheWindow) {
    Camera::setPosition({5000.0f, -300.0f});

    drawSquareAt(5000.0f, -300.0f);

    EXPECT_EQ(pixel(40, 30), white);
    EXPECT_EQ(litPixels(), 4);
}

TEST_F(CameraViewTest, TheViewIsEightHundredBySixHundredUnits) {
    Camera::setPosition({400.0f, 300.0f});

    drawSquareAt(10.0f, 10.0f);
    const FramePicture::Pixel topLeft = pixel(0, 0);
    drawSquareAt(790.0f, 590.0f);

    EXPECT_EQ(topLeft, white);
    EXPECT_EQ(pixel(79, 59), white);
}

TEST_F(CameraViewTest, TheWorldsDownIsTheWindowsDownAtEveryAngle) {
    Camera::setPosition({0.0f, 0.0f});
    for (const float angle : {0.0f, 30.0f, 90.0f, -90.0f, 180.0f}) {
        turn(angle);
        Vector2 down{0.0f, 200.0f};
        rotateVector(down, angle * 0.017453292f);

        drawSquareAt(down.x, down.y);

        EXPECT_EQ(pixel(40, 50), white) << angle;
    }
}

TEST_F(CameraViewTest, ALargerZoomShowsMore) {
    Camera::setPosition({0.0f, 0.0f});
    zoom(2.0f);

    drawSquareAt(405.0f, 5.0f);

    EXPECT_EQ(pixel(60, 30), white);
    EXPECT_EQ(litPixels(), 1);
}

TEST_F(CameraViewTest, TheShakeMovesTheView) {
    Camera::setPosition({0.0f, 0.0f});
    shakeBy(100.0f, -50.0f);

    drawSquareAt(100.0f, -50.0f);

    EXPECT_EQ(pixel(40, 30), white);
}

TEST_F(CameraViewTest, DepthIsFlattenedSoThatNothingIsClippedByIt) {
    Camera::setPosition({0.0f, 0.0f});
    beginPicture();
    Camera::viewFrom();
    glDisable(GL_TEXTURE_2D);

    glBegin(GL_QUADS);
    glVertex3f(-10.0f, -10.0f, 65535.0f);
    glVertex3f(10.0f, -10.0f, 65535.0f);
    glVertex3f(10.0f, 10.0f, 65535.0f);
    glVertex3f(-10.0f, 10.0f, 65535.0f);
    glEnd();

    EXPECT_EQ(litPixels(), 4);
}

} // namespace tarnwick
