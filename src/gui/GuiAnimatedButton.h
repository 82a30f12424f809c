#pragma once

#include "core/FrameTimer.h"
#include "core/GLTexture.h"
#include "gui/GuiDropShadow.h"
#include "gui/GuiWidget.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarnwick {

class Sound;

/// A button of pictures: one animation for each of its three states. Out of focus the animation loops; in
/// focus it runs to its end and stays, and when the focus goes it runs back; clicked it runs to its end and
/// stays until the screen is reset.
///
/// A click puts every other button of the screen into the clicked state too, so that no second click can be
/// taken while the first waits for its action.
class GuiAnimatedButton : public GuiWidget, public GuiDropShadow {
public:
    enum class State : std::int32_t { outOfFocus = 0, inFocus = 1, clicked = 2 };
    using enum State;

    float framesPerSecond = 10.0f; ///< 0 and below: the animation stands.
    State state = outOfFocus;

    GuiAnimatedButton();
    ~GuiAnimatedButton() override;

    /// The pictures of a state: one file, or all files of a numbered run (`FrameFiles`); none if the run has
    /// none.
    void setFramesOutOfFocus(const std::string& name);
    void setFramesInFocus(const std::string& name);
    void setFramesClicked(const std::string& name);
    /// Appends the file names that `name` stands for, in the order of the animation.
    static void findFrames(const std::string& name, std::vector<std::string>& list);

    /// Heard on gaining the focus and on a click.
    void setOverSound(const std::string& name);
    void setClickedSound(const std::string& name);

    /// The picture that shows now; null if the state has none there.
    const GLTexture* getCurrentFrame() const;
    /// Back to the state's first picture.
    void resetAnimation();
    /// Lets `seconds` pass; one picture forward or backward at most.
    void runAnimation(float seconds, float speed);

    void reset() override;
    void gainedFocus() override;
    /// The animation notices by itself.
    void lostFocus() override {}
    /// A click, with any button.
    void mousePressed(std::uint32_t mouseX, std::uint32_t mouseY, std::uint32_t button) override;
    /// Space and Enter click.
    void keyboardPressed(std::uint32_t key) override;
    /// Draws the picture at its own size, centred on the middle of the widget.
    void windowRedrawing() override;

private:
    friend class GuiAnimatedButtonTest;

    std::vector<GLTexture> framesOutOfFocus;
    std::vector<GLTexture> framesInFocus;
    std::vector<GLTexture> framesClicked;
    std::unique_ptr<Sound> overSound; ///< Null for none, as the next.
    std::unique_ptr<Sound> clickedSound;
    std::uint32_t currentFrame = 0; ///< Index into the list of the state.
    float frameTime = 0.0f;         ///< Seconds since the picture changed.
    FrameTimer frameTimer;

    const std::vector<GLTexture>& framesOfState() const;
    void step(std::uint32_t frameCount);
    void stepBack();
    void click();
    void clickOthers();
};

} // namespace tarnwick
