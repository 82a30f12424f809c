#include "gui/GuiScreen.h"

#include "core/Clock.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "support/Keyboard.h"
#include "support/ModuleTest.h"

#include <string>
#include <vector>

namespace tarnwick {

namespace {

/// Writes down what it hears.
class Listener : public GuiWidget {
public:
    Listener(std::vector<std::string>& sharedJournal, std::string ownName)
        : journal(sharedJournal)
        , name(std::move(ownName)) {}
    ~Listener() override { journal.push_back(name + " destroyed"); }

    void gainedFocus() override { journal.push_back(name + " gained focus"); }
    void lostFocus() override { journal.push_back(name + " lost focus"); }
    void reset() override { journal.push_back(name + " reset"); }
    void mouseMoved(std::uint32_t mouseX, std::uint32_t mouseY) override {
        journal.push_back(name + " moved " + std::to_string(mouseX) + " " + std::to_string(mouseY));
    }
    void mousePressed(std::uint32_t mouseX, std::uint32_t mouseY, std::uint32_t button) override {
        journal.push_back(name + " pressed " + std::to_string(mouseX) + " " + std::to_string(mouseY) + " " +
                          std::to_string(button));
    }
    void mouseReleased(std::uint32_t mouseX, std::uint32_t mouseY, std::uint32_t button) override {
        journal.push_back(name + " released " + std::to_string(mouseX) + " " + std::to_string(mouseY) + " " +
                          std::to_string(button));
    }
    void keyboardPressed(std::uint32_t key) override {
        journal.push_back(name + " key " + std::to_string(key));
    }
    void keyboardReleased(std::uint32_t key) override {
        journal.push_back(name + " key up " + std::to_string(key));
    }
    void windowRedrawing() override { journal.push_back(name + " drawn"); }

    std::vector<std::string>& journal;
    const std::string name;
};

/// Somebody who listened before.
class Deaf final : public GLWindowEventListener {};

using Journal = std::vector<std::string>;

/// What callbacks do: they add a line to the journal of their widget and give false or true.
template <bool DropAll>
bool tellButton(GuiWidget& widget, std::uint32_t x, std::uint32_t y, std::uint32_t) {
    auto& listener = dynamic_cast<Listener&>(widget);
    listener.journal.push_back(listener.name + " called " + std::to_string(x) + " " + std::to_string(y));
    return DropAll;
}
template <bool DropAll>
bool tellMove(GuiWidget& widget, std::uint32_t x, std::uint32_t y) {
    return tellButton<DropAll>(widget, x, y, 0);
}
template <bool DropAll>
bool tellKey(GuiWidget& widget, std::uint32_t key) {
    return tellButton<DropAll>(widget, key, 0, 0);
}
bool resetScreen(GuiWidget& widget, std::uint32_t) {
    widget.parentScreen->reset();
    return false;
}
bool exitScreen(GuiWidget& widget, std::uint32_t) {
    widget.parentScreen->exit();
    return true;
}

} // namespace

/// A screen in a window of 800 by 600, so that client pixels are virtual units.
class GuiScreenTest : public ModuleTest {
protected:
    GuiScreenTest() { GLWindow::createHeadless(800, 600); }
    ~GuiScreenTest() override { GLWindow::setEventListener(nullptr); }

    Listener& add(const std::string& name, std::int32_t x = 0, std::int32_t y = 0) {
        auto* const widget = new Listener(journal, name);
        widget->setPosition(x, y);
        screen.addWidget(widget);
        return *widget;
    }
    Journal told() { return std::exchange(journal, {}); }

    Journal journal; // before the screen, whose widgets write to their end
    GuiScreen screen;
};

TEST_F(GuiScreenTest, ANewScreenHasNobodyFocusedAndNothingOnIt) {
    EXPECT_EQ(screen.getFocusedWidget(), nullptr);
    EXPECT_TRUE(screen.getWidgets().empty());
    EXPECT_TRUE(screen.clearBackground);
    EXPECT_TRUE(screen.swapBuffers);
}

TEST_F(GuiScreenTest, AWidgetIsAddedOnceAndToOneScreenOnly) {
    Listener& widget = add("a");
    GuiScreen other;

    screen.addWidget(&widget);
    screen.addWidget(nullptr);
    other.addWidget(&widget);

    EXPECT_EQ(screen.getWidgets().size(), 1u);
    EXPECT_TRUE(other.getWidgets().empty());
    EXPECT_EQ(widget.parentScreen, &screen);
}

TEST_F(GuiScreenTest, AScreenDestroysItsWidgetsInTheirOrder) {
    {
        GuiScreen other;
        other.addWidget(new Listener(journal, "a"));
        other.addWidget(new Listener(journal, "b"));
    }

    EXPECT_EQ(told(), (Journal{"a destroyed", "b destroyed"}));
}

TEST_F(GuiScreenTest, AMoveGivesTheFocusAndIsHeardTwice) {
    add("a", 100, 50);

    screen.mouseMoved(100, 50);
    screen.mouseMoved(199, 69);

    EXPECT_EQ(told(), (Journal{"a gained focus", "a moved 100 50", "a moved 100 50", "a moved 199 69",
                               "a moved 199 69"}));
}

TEST_F(GuiScreenTest, TheRightAndLowerEdgeAreOutside) {
    add("a", 100, 50);

    screen.mouseMoved(200, 50);
    screen.mouseMoved(100, 70);
    screen.mouseMoved(99, 50);
    screen.mouseMoved(100, 49);

    EXPECT_EQ(told(), Journal{});
    EXPECT_EQ(screen.getFocusedWidget(), nullptr);
}

TEST_F(GuiScreenTest, AWidgetAtNegativePlacesIsHitInItsVisiblePart) {
    Listener& widget = add("a", -50, -10);

    screen.mouseMoved(49, 9);

    EXPECT_EQ(screen.getFocusedWidget(), &widget);
}

TEST_F(GuiScreenTest, ADisabledWidgetIsNotHitAndLosesTheFocus) {
    Listener& widget = add("a");
    screen.mouseMoved(5, 5);
    told();
    widget.enabled = false;

    screen.mouseMoved(6, 5);

    EXPECT_EQ(told(), Journal{"a lost focus"});
    EXPECT_EQ(screen.getFocusedWidget(), nullptr);
}

TEST_F(GuiScreenTest, OfTwoOverlappingWidgetsTheOneAddedFirstTakesTheMouse) {
    Listener& first = add("a");
    add("b", 50, 0);

    screen.mouseMoved(60, 5);

    EXPECT_EQ(screen.getFocusedWidget(), &first);
    EXPECT_EQ(told(), (Journal{"a gained focus", "a moved 60 5", "a moved 60 5"}));
}

TEST_F(GuiScreenTest, TheMouseTakesTheFocusFromTheKeyboard) {
    Listener& first = add("a");
    Listener& second = add("b", 200, 0);
    screen.setFocusedWidget(&second);
    told();

    screen.mouseMoved(5, 5);

    EXPECT_EQ(told(), (Journal{"a gained focus", "a moved 5 5", "b lost focus", "a moved 5 5"}));
    EXPECT_TRUE(first.hasFocus);
    EXPECT_FALSE(second.hasFocus);
}

TEST_F(GuiScreenTest, MovingOffAllWidgetsLeavesNobodyFocusedAndTheNextKeyOnlyGivesTheDefaultItsFocus) {
    Listener& widget = add("a");
    add("b", 200, 0);
    widget.addFocusTraversal(key::tab, screen.getWidgets().back().get());
    screen.setDefaultFocusWidget(&widget);
    screen.mouseMoved(5, 5);
    told();

    screen.mouseMoved(700, 500);
    screen.keyboardPressed(key::tab);
    const Journal first = told();
    screen.keyboardPressed(key::tab);

    EXPECT_EQ(first, (Journal{"a lost focus", "a gained focus"}));
    EXPECT_EQ(told(), (Journal{"a key 9", "a lost focus", "b gained focus"}));
}

TEST_F(GuiScreenTest, WithoutADefaultWidgetAKeyDoesNothing) {
    add("a");

    screen.keyboardPressed(key::tab);
    screen.keyboardReleased(key::tab);
    screen.mousePressed(5, 5, 1);
    screen.mouseReleased(5, 5, 1);

    EXPECT_EQ(told(), Journal{});
}

TEST_F(GuiScreenTest, ADefaultWidgetOfAnotherScreenIsIgnored) {
    GuiScreen other;
    Listener& widget = add("a");

    other.setDefaultFocusWidget(&widget);
    other.setFocusedWidget(&widget);
    other.keyboardPressed(key::tab);
    screen.setFocusedWidget(nullptr);

    EXPECT_EQ(other.getFocusedWidget(), nullptr);
    EXPECT_EQ(screen.getFocusedWidget(), nullptr);
    EXPECT_EQ(told(), Journal{});
}

TEST_F(GuiScreenTest, TheFocusGoesFromOneToTheOtherAndNotTwiceToOne) {
    Listener& first = add("a");
    Listener& second = add("b");

    screen.setFocusedWidget(&first);
    screen.setFocusedWidget(&first);
    screen.setFocusedWidget(&second);

    EXPECT_EQ(told(), (Journal{"a gained focus", "a lost focus", "b gained focus"}));
    EXPECT_FALSE(first.hasFocus);
    EXPECT_TRUE(second.hasFocus);
}

TEST_F(GuiScreenTest, APressGoesToTheFocusedWidgetWhereverThePointerIs) {
    Listener& widget = add("a");
    widget.onMousePressed = tellButton<false>;
    widget.onMouseReleased = tellButton<false>;
    screen.setFocusedWidget(&widget);
    told();

    screen.mousePressed(700, 500, 2);
    screen.mouseReleased(701, 500, 4);

    EXPECT_EQ(told(), (Journal{"a pressed 700 500 2", "a called 700 500", "a released 701 500 4",
                               "a called 701 500"}));
}

TEST_F(GuiScreenTest, KeysGoToTheFocusedWidgetAndReleasesDoNotMoveTheFocus) {
    Listener& first = add("a");
    Listener& second = add("b");
    first.onKeyboardPressed = tellKey<false>;
    first.onKeyboardReleased = tellKey<false>;
    first.addFocusTraversal(key::down, &second);
    screen.setFocusedWidget(&first);
    told();

    screen.keyboardReleased(key::down);
    screen.keyboardPressed(key::down);

    EXPECT_EQ(told(), (Journal{"a key up 40", "a called 40 0", "a key 40", "a called 40 0", "a lost focus",
                               "b gained focus"}));
}

TEST_F(GuiScreenTest, ALaterWayOfAKeyReplacesTheEarlierOne) {
    Listener& first = add("a");
    Listener& second = add("b");
    Listener& third = add("c");
    first.addFocusTraversal(key::down, &second);
    first.addFocusTraversal(key::down, &third);
    screen.setFocusedWidget(&first);

    first.doFocusTraversal(key::up);
    GuiWidget* const afterUp = screen.getFocusedWidget();
    first.doFocusTraversal(key::down);

    EXPECT_EQ(afterUp, &first);
    EXPECT_EQ(screen.getFocusedWidget(), &third);
}

TEST_F(GuiScreenTest, TheCallbackOfAMoveComesOnceAMove) {
    add("a").onMouseMoved = tellMove<false>;

    screen.mouseMoved(5, 6);

    EXPECT_EQ(told(), (Journal{"a gained focus", "a moved 5 6", "a moved 5 6", "a called 5 6"}));
}

TEST_F(GuiScreenTest, APointInALargeWindowIsScaledToTheVirtualSpace) {
    GLWindow::close();
    GLWindow::createHeadless(1600, 1200);
    Listener& widget = add("a", 790, 590);
    widget.setSize(20, 20);
    screen.setFocusedWidget(&widget);
    told();

    screen.mousePressed(1600, 1200, 1);
    screen.mousePressed(3, 1, 1); // halves go away from zero: 1.5 and 0.5

    EXPECT_EQ(told(), (Journal{"a pressed 800 600 1", "a pressed 2 1 1"}));
}

TEST_F(GuiScreenTest, APointFarOutsideHitsNothing) {
    add("a").setSize(800, 600);

    screen.mouseMoved(65535, 65535);
    screen.mouseMoved(0xFFFFFFFF, 0xFFFFFFFF);

    EXPECT_EQ(told(), Journal{});
}

TEST_F(GuiScreenTest, AnEventWithADelayWaitsAndComesOnce) {
    Listener& widget = add("a");
    widget.onMousePressed = tellButton<false>;
    widget.mousePressedDelay = 0.5f;
    screen.setFocusedWidget(&widget);
    screen.mousePressed(7, 8, 1);
    told();

    screen.runDelayedEvents(0.25f);
    const bool pendingBefore = screen.delayedEventPending(&widget);
    const Journal before = told();
    screen.runDelayedEvents(0.25f);
    screen.runDelayedEvents(10.0f);

    EXPECT_TRUE(pendingBefore);
    EXPECT_EQ(before, Journal{});
    EXPECT_EQ(told(), Journal{"a called 7 8"});
    EXPECT_FALSE(screen.delayedEventPending(&widget));
}

TEST_F(GuiScreenTest, TwoClicksOnADelayedWidgetQueueTwoEvents) {
    Listener& widget = add("a");
    Listener& other = add("b");
    widget.onMousePressed = tellButton<false>;
    widget.mousePressedDelay = 0.5f;
    screen.setFocusedWidget(&widget);

    screen.mousePressed(1, 1, 1);
    screen.mousePressed(2, 2, 1);
    const bool pending = screen.delayedEventPending(&widget);
    told();
    screen.runDelayedEvents(0.5f);

    EXPECT_TRUE(pending);
    EXPECT_FALSE(screen.delayedEventPending(&other));
    EXPECT_EQ(told(), (Journal{"a called 1 1", "a called 2 2"}));
}

TEST_F(GuiScreenTest, TheQueuesRunInTheirOrder) {
    Listener& widget = add("a");
    widget.onMousePressed = tellButton<false>;
    widget.onMouseReleased = tellButton<false>;
    widget.onMouseMoved = tellMove<false>;
    widget.onKeyboardPressed = tellKey<false>;
    widget.onKeyboardReleased = tellKey<false>;
    for (float* const delay : {&widget.mousePressedDelay, &widget.mouseReleasedDelay, &widget.mouseMovedDelay,
                               &widget.keyboardPressedDelay, &widget.keyboardReleasedDelay}) {
        *delay = 0.1f;
    }
    screen.setFocusedWidget(&widget);
    screen.keyboardReleased(5);
    screen.keyboardPressed(4);
    screen.mouseMoved(3, 3);
    screen.mouseReleased(2, 2, 1);
    screen.mousePressed(1, 1, 1);
    told();

    screen.runDelayedEvents(0.2f);

    EXPECT_EQ(told(),
              (Journal{"a called 1 1", "a called 2 2", "a called 3 3", "a called 4 0", "a called 5 0"}));
}

TEST_F(GuiScreenTest, ACallbackThatGivesTrueDropsEverythingThatWaitsAlsoOfOtherWidgets) {
    Listener& first = add("a");
    Listener& second = add("b");
    first.onMousePressed = tellButton<true>;
    first.mousePressedDelay = 0.1f;
    second.onMousePressed = tellButton<false>;
    second.mousePressedDelay = 0.1f;
    second.onKeyboardReleased = tellKey<false>;
    second.keyboardReleasedDelay = 5.0f;
    screen.setFocusedWidget(&first);
    screen.mousePressed(1, 1, 1);
    screen.setFocusedWidget(&second);
    screen.mousePressed(2, 2, 1);
    screen.keyboardReleased(5);
    told();

    screen.runDelayedEvents(0.2f);
    screen.runDelayedEvents(10.0f);

    EXPECT_EQ(told(), Journal{"a called 1 1"});
    EXPECT_FALSE(screen.delayedEventPending(&second));
}

TEST_F(GuiScreenTest, TheResultOfACallbackWithoutDelayIsIgnored) {
    Listener& widget = add("a");
    widget.onMousePressed = tellButton<true>;
    widget.onKeyboardPressed = tellKey<false>;
    widget.keyboardPressedDelay = 0.1f;
    screen.setFocusedWidget(&widget);
    screen.keyboardPressed(4);

    screen.mousePressed(1, 1, 1);

    EXPECT_TRUE(screen.delayedEventPending(&widget));
}

TEST_F(GuiScreenTest, ACallbackMayResetItsScreen) {
    Listener& widget = add("a");
    widget.onKeyboardPressed = resetScreen;
    widget.keyboardPressedDelay = 0.1f;
    screen.setFocusedWidget(&widget);
    screen.keyboardPressed(4);
    screen.keyboardPressed(5);
    told();

    screen.runDelayedEvents(0.2f);

    EXPECT_EQ(told(), Journal{"a reset"});
    EXPECT_FALSE(screen.delayedEventPending(&widget));
}

TEST_F(GuiScreenTest, AResetForgetsTheFocusedWidgetAndWhatWaits) {
    Listener& widget = add("a");
    add("b");
    widget.onKeyboardPressed = tellKey<false>;
    widget.keyboardPressedDelay = 0.1f;
    screen.setFocusedWidget(&widget);
    screen.keyboardPressed(4);
    told();

    screen.reset();
    screen.runDelayedEvents(1.0f);

    EXPECT_EQ(told(), (Journal{"a reset", "b reset"}));
    EXPECT_EQ(screen.getFocusedWidget(), nullptr);
}

TEST_F(GuiScreenTest, WhoHadTheFocusBeforeAResetGainsItOnlyOnceTheMouseHasBeenElsewhere) {
    Listener& widget = add("a");
    screen.setFocusedWidget(&widget);
    screen.reset();
    told();

    screen.mouseMoved(5, 5);
    const Journal stillThere = told();
    screen.mouseMoved(700, 500);
    told();
    screen.mouseMoved(5, 5);

    EXPECT_EQ(stillThere, (Journal{"a moved 5 5", "a moved 5 5"}));
    EXPECT_EQ(told(), (Journal{"a gained focus", "a moved 5 5", "a moved 5 5"}));
}

TEST_F(GuiScreenTest, VisibleWidgetsAreDrawnInTheirOrderAndTimePassesForWhatWaits) {
    Listener& widget = add("a");
    add("b").visible = false;
    add("c");
    widget.onKeyboardPressed = tellKey<false>;
    widget.keyboardPressedDelay = 0.1f;
    screen.setFocusedWidget(&widget);
    screen.keyboardPressed(4);
    told();

    Clock::drive(99);
    screen.windowRedrawing();
    const Journal first = told();
    Clock::drive(101);
    screen.windowRedrawing();

    EXPECT_EQ(first, (Journal{"a drawn", "c drawn"}));
    EXPECT_EQ(told(), (Journal{"a drawn", "c drawn", "a called 4 0"}));
}

TEST_F(GuiScreenTest, AWindowThatClosesTakesTheWidgets) {
    Listener& widget = add("a");
    add("b");
    screen.setFocusedWidget(&widget);
    screen.setDefaultFocusWidget(&widget);
    GLWindow::setEventListener(&screen);
    told();

    screen.windowClosing();

    EXPECT_EQ(told(), (Journal{"a destroyed", "b destroyed"}));
    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(screen.getFocusedWidget(), nullptr);
    screen.keyboardPressed(key::tab); // and nobody is touched
}

TEST_F(GuiScreenTest, ARunningScreenListensUntilItExitsAndGivesTheListenerBack) {
    Deaf before;
    GLWindow::setEventListener(&before);
    Listener& widget = add("a");
    widget.onKeyboardPressed = exitScreen;
    screen.swapBuffers = false;
    screen.setFocusedWidget(&widget);
    told();
    pressKey(SDL_SCANCODE_TAB, SDLK_TAB);

    screen.run();

    EXPECT_EQ(GLWindow::getEventListener(), &before);
    EXPECT_EQ(told(), (Journal{"a key 9", "a drawn"}));
}

TEST_F(GuiScreenTest, ARunningScreenEndsWithTheWindow) {
    add("a");
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE);

    screen.run();

    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(told(), Journal{"a destroyed"});
}

} // namespace tarnwick
