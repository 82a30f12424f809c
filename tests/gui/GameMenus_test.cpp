#include "gui/GameMenus.h"

#include "audio/MusicSystem.h"
#include "audio/SoundSystem.h"
#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/Comfort.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "game/HighScores.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/GuiLabel.h"
#include "gui/GuiOptionChooser.h"
#include "gui/GuiScoreLabel.h"
#include "gui/GuiScreen.h"
#include "gui/GuiTextBox.h"
#include "particles/ParticleManager.h"
#include "support/DataFolder.h"
#include "support/Keyboard.h"
#include "support/LevelFileBuilder.h"
#include "support/ModuleTest.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>

namespace tarnwick {

/// The menus over a level, without any configuration: every widget lies at the origin, without a size. Time
/// stands unless a test moves it.
class GameMenusTest : public ModuleTest {
protected:
    GameMenusTest() {
        data.write("maps/first.rivl", LevelFileBuilder::write({}));
        data.write("maps/second.rivl", LevelFileBuilder::write({}));
        GLWindow::createHeadless(800, 600);
        Game::initialise("maps\\first.rivl");
    }
    ~GameMenusTest() override { Game::shutdown(); }

    static GuiScreen& screenOf(std::uint32_t number) { return *GameMenus::state.screens[number]; }
    static GuiScreen& screen() { return screenOf(GameMenus::getCurrentMenu()); }
    /// The widgets of the menu that is up which can be clicked, in their order.
    template <typename Widget>
    static std::vector<Widget*> all() {
        std::vector<Widget*> found;
        for (const auto& widget : screen().getWidgets()) {
            if (auto* const wanted = dynamic_cast<Widget*>(widget.get()); wanted != nullptr) {
                found.push_back(wanted);
            }
        }
        return found;
    }
    static std::vector<GuiAnimatedButton*> buttons() { return all<GuiAnimatedButton>(); }
    static std::vector<GuiOptionChooser*> choosers() { return all<GuiOptionChooser>(); }

    /// Clicks the button of that place in the menu that is up, and waits until it acts.
    static void click(std::size_t index) {
        screen().setFocusedWidget(buttons()[index]);
        Game::mousePressed(0, 0, 1);
        screen().runDelayedEvents(0.8f);
    }
    /// The same with a key.
    static void press(std::size_t index, std::uint32_t key) {
        screen().setFocusedWidget(buttons()[index]);
        Game::keyboardPressed(key);
        screen().runDelayedEvents(0.8f);
    }
    /// Where each button of menu `number` leads, by mouse and by key, coming from menu `from`.
    static std::vector<std::uint32_t> waysOf(std::uint32_t number, std::uint32_t from) {
        std::vector<std::uint32_t> ways;
        const std::size_t count = (GameMenus::setCurrentMenu(number), buttons().size());
        for (std::size_t i = 0; i < count; ++i) {
            GameMenus::setCurrentMenu(from);
            GameMenus::setCurrentMenu(number);
            click(i);
            const std::uint32_t byMouse = GameMenus::getCurrentMenu();
            for (const std::uint32_t key : {key::enter, key::space}) {
                GameMenus::setCurrentMenu(from);
                GameMenus::setCurrentMenu(number);
                press(i, key);
                EXPECT_EQ(GameMenus::getCurrentMenu(), byMouse) << "button " << i << ", key " << key;
            }
            ways.push_back(byMouse);
        }
        return ways;
    }
    /// The place of the widget, among those given, that has the focus after `key` was pressed on `from`.
    template <typename Widget>
    static int focusAfter(std::uint32_t key, GuiWidget& from, const std::vector<Widget*>& among) {
        screen().setFocusedWidget(&from);
        Game::keyboardPressed(key);
        for (std::size_t i = 0; i < among.size(); ++i) {
            if (screen().getFocusedWidget() == among[i]) {
                return static_cast<int>(i);
            }
        }
        return -1;
    }
    /// For a key, where it leads from each of the widgets.
    template <typename Widget>
    static std::vector<int> waysOfKey(std::uint32_t key, const std::vector<Widget*>& among) {
        std::vector<int> ways;
        for (Widget* const widget : among) {
            ways.push_back(focusAfter(key, *widget, among));
        }
        return ways;
    }
    /// The default focus of the menu that is up, as its place among `among`.
    template <typename Widget>
    static int defaultFocus(const std::vector<Widget*>& among) {
        screen().reset();
        Game::keyboardPressed('X');
        return focusAfter('X', *screen().getFocusedWidget(), among);
    }
    static void leaveTheGame() { GameMenus::setCurrentMenu(menu::none); }

    DataFolder data;
};

using Menus = std::vector<std::uint32_t>;
using Places = std::vector<int>;

TEST_F(GameMenusTest, AGameStartsWithTheMainMenuOverTheStillLevel) {
    Camera::setState(Camera::normal);
    Game::tick(0.02f);

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::main);
    EXPECT_EQ(GameMenus::getLastMenu(), menu::none);
    EXPECT_EQ(ParticleManager::particles.front().velocity.y, 0.0f);
}

TEST_F(GameMenusTest, EveryMenuShowsTheLevelBehindItAndLeavesThePresentingToTheGame) {
    for (std::uint32_t number = menu::main; number <= menu::last; ++number) {
        GameMenus::setCurrentMenu(number);

        EXPECT_EQ(GameMenus::getCurrentMenu(), number);
        EXPECT_FALSE(screen().clearBackground) << number;
        EXPECT_FALSE(screen().swapBuffers) << number;
    }
}

TEST_F(GameMenusTest, TheLastMenuIsOneStepBackSoGoingBackTwiceAlternates) {
    GameMenus::setCurrentMenu(menu::options);
    const std::uint32_t first = GameMenus::getLastMenu();
    GameMenus::setCurrentMenu(GameMenus::getLastMenu());
    const std::uint32_t second = GameMenus::getLastMenu();
    GameMenus::setCurrentMenu(GameMenus::getLastMenu());

    EXPECT_EQ(first, menu::main);
    EXPECT_EQ(second, menu::options);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::options);
}

TEST_F(GameMenusTest, ANumberWithoutAMenuOpensTheSameAgain) {
    GameMenus::setCurrentMenu(menu::credits);
    screen().setFocusedWidget(buttons()[0]);

    GameMenus::setCurrentMenu(11);

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::credits);
    EXPECT_EQ(GameMenus::getLastMenu(), menu::credits);
    EXPECT_EQ(screen().getFocusedWidget(), nullptr) << "it was reset";
}

TEST_F(GameMenusTest, TheMenusAreBuiltOnceAndKeptThroughALevelChange) {
    const GuiScreen* const before = &screen();

    Game::initialise("maps\\second.rivl");

    EXPECT_EQ(&screen(), before);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::main);
    EXPECT_EQ(GameMenus::getLastMenu(), menu::none);
}

TEST_F(GameMenusTest, WithoutMenusEventsGoNowhere) {
    GameMenus::shutdown();

    GameMenus::setCurrentMenu(menu::main);
    GameMenus::sendMenuEvent_keyboardPressed(key::enter);
    GameMenus::sendMenuEvent_keyboardReleased(key::enter);
    GameMenus::sendMenuEvent_mouseMoved(1, 1);
    GameMenus::sendMenuEvent_mousePressed(1, 1, 1);
    GameMenus::sendMenuEvent_mouseReleased(1, 1, 1);
    GameMenus::sendMenuEvent_windowRedrawing();

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
}

TEST_F(GameMenusTest, TimeInAMenuIsNotPlayed) {
    leaveTheGame();
    Camera::setState(Camera::normal);
    Clock::drive(1000);
    Game::tick(0.02f);
    GameMenus::setCurrentMenu(menu::inGame);
    Clock::drive(5000);
    Game::tick(0.02f);
    Clock::drive(6000);
    leaveTheGame();
    Clock::drive(6500);
    Game::tick(0.02f);

    EXPECT_EQ(GameRules::getLevelTime(), 1500);
}

TEST_F(GameMenusTest, TheButtonsOfTheMainMenuLeadWhereTheySay) {
    EXPECT_EQ(waysOf(menu::main, menu::none),
              (Menus{menu::none, menu::loadMap, menu::options, menu::instructions, menu::highScores,
                     menu::credits, menu::quitGame}));
}

TEST_F(GameMenusTest, TheButtonsInPlayLeadWhereTheySay) {
    EXPECT_EQ(waysOf(menu::inGame, menu::none),
              (Menus{menu::none, menu::restart, menu::loadMap, menu::options, menu::instructions,
                     menu::highScores, menu::credits, menu::quitGame}));
}

TEST_F(GameMenusTest, BackLeadsToTheMenuBefore) {
    for (const std::uint32_t number : {menu::options, menu::instructions, menu::highScores, menu::credits}) {
        EXPECT_EQ(waysOf(number, menu::inGame), Menus{menu::inGame}) << number;
    }
    EXPECT_EQ(waysOf(menu::loadMap, menu::main), (Menus{menu::loadMap, menu::main}));
    EXPECT_EQ(waysOf(menu::quitGame, menu::main), (Menus{menu::quitGame, menu::main}));
    EXPECT_EQ(waysOf(menu::restart, menu::inGame), (Menus{menu::none, menu::inGame}));
}

TEST_F(GameMenusTest, AnActionComesEightTenthsOfASecondAfterTheClick) {
    screen().setFocusedWidget(buttons()[2]);
    Game::mousePressed(0, 0, 4);

    screen().runDelayedEvents(0.79f);
    const std::uint32_t before = GameMenus::getCurrentMenu();
    screen().runDelayedEvents(0.02f);

    EXPECT_EQ(before, menu::main);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::options);
}

TEST_F(GameMenusTest, OtherKeysDoNotAct) {
    press(2, 'X');
    press(2, key::right);

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::main);
}

TEST_F(GameMenusTest, TwoQuickClicksStartOneAction) {
    screen().setFocusedWidget(buttons()[2]);
    Game::mousePressed(0, 0, 1);
    Game::mousePressed(0, 0, 1);
    screen().setFocusedWidget(buttons()[5]);
    Game::mousePressed(0, 0, 1);
    const GuiAnimatedButton::State others = buttons()[4]->state;

    screen().runDelayedEvents(1.0f);
    GuiScreen& mainMenu = screenOf(menu::main);
    const bool more = mainMenu.delayedEventPending(mainMenu.getFocusedWidget());
    mainMenu.runDelayedEvents(10.0f);

    EXPECT_EQ(others, GuiAnimatedButton::clicked);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::options);
    EXPECT_EQ(GameMenus::getLastMenu(), menu::main) << "opened once";
    EXPECT_FALSE(more);
}

TEST_F(GameMenusTest, AMenuThatOpensAgainHasItsButtonsBack) {
    click(2);
    GameMenus::setCurrentMenu(menu::main);

    for (const GuiAnimatedButton* const button : buttons()) {
        EXPECT_EQ(button->state, GuiAnimatedButton::outOfFocus);
    }
    EXPECT_EQ(screen().getFocusedWidget(), nullptr);
}

TEST_F(GameMenusTest, TheColumnOfTheMainMenuWithItsSlipAtTheEnd) {
    EXPECT_EQ(defaultFocus(buttons()), 0);
    EXPECT_EQ(waysOfKey(key::down, buttons()), (Places{1, 2, 3, 4, 5, 6, 6}));
    EXPECT_EQ(waysOfKey(key::tab, buttons()), (Places{1, 2, 3, 4, 5, 6, 0}));
    EXPECT_EQ(waysOfKey(key::up, buttons()), (Places{0, 0, 1, 2, 3, 4, 4}));
}

TEST_F(GameMenusTest, TheColumnInPlayWithItsSlipAtTheEnd) {
    GameMenus::setCurrentMenu(menu::inGame);

    EXPECT_EQ(defaultFocus(buttons()), 0);
    EXPECT_EQ(waysOfKey(key::down, buttons()), (Places{1, 2, 3, 4, 5, 6, 7, 7}));
    EXPECT_EQ(waysOfKey(key::tab, buttons()), (Places{1, 2, 3, 4, 5, 6, 7, 0}));
    EXPECT_EQ(waysOfKey(key::up, buttons()), (Places{0, 0, 1, 2, 3, 4, 5, 5}));
}

TEST_F(GameMenusTest, QuestionsHaveNoInFocusAndGoLeftAndRight) {
    for (const std::uint32_t number : {menu::quitGame, menu::restart}) {
        GameMenus::setCurrentMenu(number);

        EXPECT_EQ(defaultFocus(buttons()), 1);
        EXPECT_EQ(waysOfKey(key::left, buttons()), (Places{0, 0}));
        EXPECT_EQ(waysOfKey(key::right, buttons()), (Places{1, 1}));
        EXPECT_EQ(waysOfKey(key::tab, buttons()), (Places{1, 0}));
    }
}

TEST_F(GameMenusTest, TheChoiceOfALevelStandsOutsideTheWaysOfTheKeys) {
    GameMenus::setCurrentMenu(menu::loadMap);

    EXPECT_EQ(defaultFocus(buttons()), 1);
    EXPECT_EQ(waysOfKey(key::up, buttons()), (Places{0, 0}));
    EXPECT_EQ(waysOfKey(key::down, buttons()), (Places{1, 1}));
    EXPECT_EQ(waysOfKey(key::tab, buttons()), (Places{1, 0}));
    EXPECT_EQ(focusAfter(key::tab, *choosers()[0], choosers()), 0) << "no way out of it";
}

TEST_F(GameMenusTest, TheColumnOfTheOptionsWithItsTwoSlips) {
    GameMenus::setCurrentMenu(menu::options);
    std::vector<GuiWidget*> column;
    std::ranges::copy(choosers(), std::back_inserter(column));
    column.push_back(buttons()[0]);

    EXPECT_EQ(defaultFocus(column), 4);
    EXPECT_EQ(waysOfKey(key::down, column), (Places{1, 2, 3, 4, 4}));
    EXPECT_EQ(waysOfKey(key::up, column), (Places{0, 0, 1, 2, 3}));
    EXPECT_EQ(waysOfKey(key::tab, column), (Places{1, 2, 3, 0, 0}));
}

TEST_F(GameMenusTest, MenusWithALoneButtonHaveItInFocusAndNoWays) {
    for (const std::uint32_t number :
         {menu::credits, menu::instructions, menu::highScores, menu::levelFinished}) {
        GameMenus::setCurrentMenu(number);

        EXPECT_EQ(defaultFocus(buttons()), 0) << number;
        EXPECT_EQ(waysOfKey(key::tab, buttons()), Places{0}) << number;
    }
}

TEST_F(GameMenusTest, EscapeGoesBackAndFromTheMainMenuAsksToQuitAndFromTheScoresNowhere) {
    Game::keyboardPressed(key::escape);
    const std::uint32_t fromMain = GameMenus::getCurrentMenu();
    Game::keyboardPressed(key::escape);
    const std::uint32_t fromQuestion = GameMenus::getCurrentMenu();
    GameMenus::setCurrentMenu(menu::levelFinished);
    Game::keyboardPressed(key::escape);
    const std::uint32_t fromScores = GameMenus::getCurrentMenu();
    leaveTheGame();
    Game::keyboardPressed(key::escape);
    const std::uint32_t fromPlay = GameMenus::getCurrentMenu();
    Game::keyboardPressed(key::escape);

    EXPECT_EQ(fromMain, menu::quitGame);
    EXPECT_EQ(fromQuestion, menu::main);
    EXPECT_EQ(fromScores, menu::levelFinished);
    EXPECT_EQ(fromPlay, menu::inGame);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
}

TEST_F(GameMenusTest, TheRightButtonOpensTheMenuInPlayAndTheOthersDoNot) {
    leaveTheGame();
    Game::mousePressed(5, 5, 1);
    Game::mousePressed(5, 5, 4);
    const std::uint32_t before = GameMenus::getCurrentMenu();

    Game::mousePressed(5, 5, 2);

    EXPECT_EQ(before, menu::none);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::inGame);
}

TEST_F(GameMenusTest, TheConsoleComesBeforeTheMenus) {
    Game::keyboardPressed(key::console);
    Game::keyboardPressed(key::escape);
    Game::keyboardPressed(key::tab);

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::main);
    EXPECT_EQ(screen().getFocusedWidget(), nullptr);
}

TEST_F(GameMenusTest, InAMenuTheGameDoesNotPause) {
    Game::keyboardPressed('P');
    Game::keyboardPressed(key::pause);
    Game::windowFocusLost();

    EXPECT_FALSE(Game::paused());
}

TEST_F(GameMenusTest, QuitEndsTheLoop) {
    GameMenus::setCurrentMenu(menu::quitGame);
    screen().setFocusedWidget(buttons()[0]);
    click(0);
    const GuiAnimatedButton::State state = buttons()[0]->state;

    Game::serveRequests();

    EXPECT_EQ(state, GuiAnimatedButton::inFocus) << "put back before it acted";
    EXPECT_FALSE(Game::running());
}

TEST_F(GameMenusTest, RestartPutsTheLevelToItsStart) {
    ParticleManager::particles.resize(3);
    GameMenus::setCurrentMenu(menu::restart);

    click(0);
    Game::serveRequests();

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
    EXPECT_EQ(ParticleManager::particles.size(), 128u);
}

TEST_F(GameMenusTest, TheChosenLevelIsLoadedAtTheEndOfTheFrameUnderTheMainMenu) {
    GameMenus::setCurrentMenu(menu::loadMap);
    const std::vector<std::string> names = choosers()[0]->getOptions();
    choosers()[0]->setCurrentOption(1);

    click(0);
    Game::serveRequests();

    EXPECT_EQ(names, (std::vector<std::string>{"first.rivl", "second.rivl"}));
    EXPECT_EQ(Game::currentMap(), "maps\\second.rivl");
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::main);
}

TEST_F(GameMenusTest, LevelsAreThoseThatWereThereWhenTheMenuWasBuilt) {
    data.write("maps/third.rivl", LevelFileBuilder::write({}));

    Game::initialise("maps\\first.rivl");
    GameMenus::setCurrentMenu(menu::loadMap);

    EXPECT_EQ(choosers()[0]->getOptions().size(), 2u);
}

TEST_F(GameMenusTest, WithoutLevelsTheButtonAsksForNone) {
    Game::shutdown();
    std::filesystem::remove_all(data.path() / "maps");
    Game::initialise("maps\\first.rivl");
    GameMenus::setCurrentMenu(menu::loadMap);

    click(0);
    Game::serveRequests();

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::main);
    EXPECT_EQ(Game::currentMap(), "maps\\first.rivl") << "the one that was";
}

TEST_F(GameMenusTest, OptionsHoldFromTheWayBackOnAndNotByEscape) {
    GameMenus::setCurrentMenu(menu::options);
    choosers()[2]->setCurrentOption(0);
    Game::keyboardPressed(key::escape);
    const float afterEscape = SoundSystem::getVolume();
    GameMenus::setCurrentMenu(menu::options);
    const std::uint32_t shownAgain = choosers()[2]->getCurrentOption();
    choosers()[2]->setCurrentOption(0);
    click(0);

    EXPECT_EQ(afterEscape, 1.0f);
    EXPECT_EQ(shownAgain, 1u);
    EXPECT_EQ(SoundSystem::getVolume(), 0.0f);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::main);
    GameMenus::setCurrentMenu(menu::options);
    EXPECT_EQ(choosers()[2]->getCurrentOption(), 0u);
}

TEST_F(GameMenusTest, MusicGoesOffAndOn) {
    SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
    MusicSystem::initialise();
    MusicSystem::setVolume(100);
    GameMenus::setCurrentMenu(menu::options);
    const std::uint32_t shown = choosers()[1]->getCurrentOption();
    const std::uint8_t committed = MusicSystem::getVolume();
    choosers()[1]->setCurrentOption(0);
    click(0);
    const std::uint8_t offVolume = MusicSystem::getVolume();
    GameMenus::setCurrentMenu(menu::options);
    choosers()[1]->setCurrentOption(1);
    click(0);
    const std::uint8_t onVolume = MusicSystem::getVolume();
    MusicSystem::shutdown();
    SDL_ResetHint(SDL_HINT_AUDIODRIVER);

    EXPECT_EQ(shown, 1u);
    EXPECT_EQ(committed, 255) << "what lies between goes to one of the two";
    EXPECT_EQ(offVolume, 0);
    EXPECT_EQ(onVolume, 255);
}

TEST_F(GameMenusTest, SoundGoesOffAndOn) {
    GameMenus::setCurrentMenu(menu::options);
    choosers()[2]->setCurrentOption(0);
    click(0);
    const float offVolume = SoundSystem::getVolume();
    GameMenus::setCurrentMenu(menu::options);
    choosers()[2]->setCurrentOption(1);
    click(0);

    EXPECT_EQ(offVolume, 0.0f);
    EXPECT_EQ(SoundSystem::getVolume(), 1.0f);
}

/// With a device that nobody hears, and music of play.
class MenuMusicTest : public GameMenusTest {
protected:
    MenuMusicTest() {
        SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
        std::filesystem::create_directory(data.path() / "music");
        std::filesystem::copy_file(TARNWICK_SOURCE_DIR "/data/music/play.ogg",
                                   data.path() / "music/play.ogg");
        data.write("cfg/game.cfg", "music = music\\play.ogg");
        GLConsole::initialise();
        MusicSystem::initialise();
        Game::initialise("maps\\first.rivl");
    }
    ~MenuMusicTest() override { SDL_ResetHint(SDL_HINT_AUDIODRIVER); }

    static bool sounds() { return Mix_PlayingMusic() != 0; }
};

TEST_F(MenuMusicTest, StartPlaysTheMusicOfPlayForEver) {
    const bool before = sounds();

    click(0);

    EXPECT_FALSE(before);
    EXPECT_TRUE(sounds());
    EXPECT_TRUE(MusicSystem::stop());
    GameMenus::setCurrentMenu(menu::inGame);
    click(0);
    EXPECT_FALSE(sounds()) << "to continue starts none";
}

TEST_F(MenuMusicTest, RestartPlaysTheMusicOfPlay) {
    GameMenus::setCurrentMenu(menu::restart);
    click(1);
    const bool afterNo = sounds();
    GameMenus::setCurrentMenu(menu::restart);

    click(0);

    EXPECT_FALSE(afterNo);
    EXPECT_TRUE(sounds());
}

TEST_F(MenuMusicTest, RestartEndsAPause) {
    leaveTheGame();
    Game::keyboardPressed(key::pause);
    GameMenus::setCurrentMenu(menu::restart);

    click(0);
    Game::serveRequests();

    EXPECT_FALSE(Game::paused());
    EXPECT_TRUE(sounds());
    Game::keyboardPressed(key::pause);
    EXPECT_TRUE(Game::paused()) << "the next one is a pause again";
    EXPECT_FALSE(sounds());
}

TEST_F(MenuMusicTest, StartEndsAPauseOfTheLevelBefore) {
    leaveTheGame();
    Game::keyboardPressed(key::pause);
    Game::initialise("maps\\second.rivl"); // chosen in the menus

    click(0);

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
    EXPECT_FALSE(Game::paused());
    EXPECT_TRUE(sounds());
}

TEST_F(MenuMusicTest, ContinueLeavesAPauseAsItIs) {
    leaveTheGame();
    Game::keyboardPressed(key::pause);
    GameMenus::setCurrentMenu(menu::inGame);

    click(0);

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
    EXPECT_TRUE(Game::paused());
    EXPECT_FALSE(sounds());
}

TEST_F(GameMenusTest, TheLabelsOfAllMenus) {
    using Texts = std::vector<std::string>;
    std::map<std::uint32_t, Texts> labels;
    for (std::uint32_t number = menu::main; number <= menu::last; ++number) {
        GameMenus::setCurrentMenu(number);
        for (const GuiLabel* const label : all<GuiLabel>()) {
            labels[number].push_back(label->text);
        }
    }

    EXPECT_EQ(labels, (std::map<std::uint32_t, Texts>{
                          {menu::options, {"Fullscreen", "Music", "Sound", "Graphic quality"}},
                          {menu::loadMap, {"Choose Map to load"}},
                          {menu::quitGame, {"Quit game: are you sure?"}},
                          {menu::restart, {"Restart game: are you sure?"}},
                          {menu::levelFinished, {"Water score:", "Time  score:", "Total score:"}}}));
}

TEST_F(GameMenusTest, TheOptionsOfTheChoosers) {
    GameMenus::setCurrentMenu(menu::options);
    const std::vector<std::string> offOn = {"off", "on"};

    EXPECT_EQ(choosers()[0]->getOptions(), offOn);
    EXPECT_EQ(choosers()[1]->getOptions(), offOn);
    EXPECT_EQ(choosers()[2]->getOptions(), offOn);
    EXPECT_EQ(choosers()[3]->getOptions(),
              (std::vector<std::string>{"very low", "low", "normal", "high", "very high", "best"}));
}

TEST_F(GameMenusTest, TheLongTextsAreThoseOfTheConfiguration) {
    Game::shutdown();
    data.write("cfg/menu_credits.cfg", "creditsText_text = us creditsText_w = 400");
    data.write("cfg/menu_instructions.cfg", "instructionsText_text = turn instructionsText_w = 400");
    Game::initialise("maps\\first.rivl");

    GameMenus::setCurrentMenu(menu::credits);
    const std::string credits = all<GuiTextBox>()[0]->text;
    GameMenus::setCurrentMenu(menu::instructions);

    EXPECT_EQ(credits, "us");
    EXPECT_EQ(all<GuiTextBox>()[0]->text, "turn");
    EXPECT_TRUE(all<GuiTextBox>()[0]->centered);
}

TEST_F(GameMenusTest, QualityIsReadFromDetailLevelAndSamples) {
    std::vector<std::string> shown;

    for (const std::uint32_t level : {2u, 1u, 0u}) {
        GLTextureManager::setTextureDetailLevel(level);
        GameMenus::setCurrentMenu(menu::options);
        shown.push_back(choosers()[3]->getCurrentText());
    }

    EXPECT_EQ(shown, (std::vector<std::string>{"very low", "low", "normal"}));
}

TEST_F(GameMenusTest, QualitySetsTheDetailLevel) {
    GameMenus::setCurrentMenu(menu::options);
    choosers()[3]->setCurrentOption(0);
    click(0);
    const std::uint32_t veryLow = GLTextureManager::getTextureDetailLevel();
    GameMenus::setCurrentMenu(menu::options);
    choosers()[3]->setCurrentOption(1);
    click(0);

    EXPECT_EQ(veryLow, 2u);
    EXPECT_EQ(GLTextureManager::getTextureDetailLevel(), 1u);
}

TEST_F(GameMenusTest, WithoutWaterTheCountOfAFinishedLevelEndsAtOnce) {
    ParticleManager::particles.clear();

    GameMenus::setCurrentMenu(menu::levelFinished);
    GuiScoreLabel& count = *all<GuiScoreLabel>()[0];
    const float time = count.rampUpTime;
    Clock::drive(11);
    GameMenus::sendMenuEvent_windowRedrawing();

    EXPECT_EQ(time, 0.01f);
    EXPECT_TRUE(count.rampUpDone());
}

TEST_F(GameMenusTest, TheWaterIsCountedInProportionToItsAmount) {
    Game::shutdown();
    data.write("cfg/menu_levelFinished.cfg", "waterRampUpTime = 4 timeRampUpTime = 2 totalRampUpTime = 1");
    Game::initialise("maps\\first.rivl");
    ParticleManager::particles.resize(64);

    GameMenus::setCurrentMenu(menu::levelFinished);
    const auto counts = all<GuiScoreLabel>();

    EXPECT_EQ(counts[0]->rampUpTime, 2.0f);
    EXPECT_EQ(counts[1]->rampUpTime, 2.0f);
    EXPECT_EQ(counts[2]->rampUpTime, 1.0f);
    EXPECT_EQ(counts[1]->previousScoreLabel, counts[0]);
    EXPECT_EQ(counts[2]->previousScoreLabel, counts[1]);
}

TEST_F(GameMenusTest, TheCountsShowWaterThenTimeThenTheirSum) {
    Camera::setState(Camera::normal);
    GameRules::update(0.01f);
    Clock::drive(320'000); // half way from the best time to the worst
    GameRules::update(0.01f);
    ParticleManager::particles.resize(64);

    GameMenus::setCurrentMenu(menu::levelFinished);
    const auto counts = all<GuiScoreLabel>();

    ASSERT_EQ(counts.size(), 3u);
    EXPECT_EQ(counts[0]->valueFunction(), 32'000u);
    EXPECT_EQ(counts[1]->valueFunction(), 218'500u);
    EXPECT_EQ(counts[2]->valueFunction(), 250'500u);
}

TEST_F(GameMenusTest, AfterTheScoresTheTableIsShownAndTheLevelStartsAgain) {
    HighScoreEntry unbeaten;
    unbeaten.score = 0xFFFFFFFF;
    for (int i = 0; i < 10; ++i) {
        HighScores::addHighScore(unbeaten);
    }
    GameMenus::setCurrentMenu(menu::levelFinished);
    ParticleManager::particles.resize(3);

    click(0);
    Game::serveRequests();

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::highScores);
    EXPECT_EQ(GameMenus::getLastMenu(), menu::main);
    EXPECT_EQ(ParticleManager::particles.size(), 128u);
    EXPECT_EQ(HighScores::table().front().score, 0xFFFFFFFF);
}

TEST_F(GameMenusTest, AGoodScoreAsksForANameFirst) {
    HighScores::setDefaultScores();
    GameMenus::setCurrentMenu(menu::levelFinished);
    const std::uint32_t score = GameRules::getTotalScore();
    screen().setFocusedWidget(buttons()[0]);
    Game::mousePressed(0, 0, 1);
    Game::mousePressed(0, 0, 1);
    pressKey(SDL_SCANCODE_A, SDLK_a, "a");
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE); // ends the entry in the middle

    screen().runDelayedEvents(0.8f);

    EXPECT_EQ(HighScores::nameOf(HighScores::table().front()), "a");
    EXPECT_EQ(HighScores::table().front().score, score);
    EXPECT_EQ(HighScores::nameOf(HighScores::table()[1]), "NO NAME") << "asked once";
}

TEST_F(GameMenusTest, ASecondContinueDoesNothingUntilTheMenuOpensAgain) {
    HighScores::setDefaultScores();
    GameMenus::setCurrentMenu(menu::levelFinished);
    GuiAnimatedButton& button = *buttons()[0];
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE); // ends the entry at once
    const auto asked = [] {
        return std::ranges::count_if(HighScores::table(), [](const auto& entry) { return entry.score != 0; });
    };

    button.onMousePressed(button, 0, 0, 1);
    button.onMousePressed(button, 0, 0, 1);
    button.onKeyboardPressed(button, key::enter);
    const auto once = asked();
    screenOf(menu::levelFinished).reset();
    button.onMousePressed(button, 0, 0, 1);

    EXPECT_EQ(once, 1);
    EXPECT_EQ(asked(), 2);
}

/// Finds steps that are not heard, or ends that are not off and on.
TEST_F(GameMenusTest, VolumesHaveStepsWhereThePlayerWantsThem) {
    Game::shutdown();
    data.write("cfg/comfort.cfg", "volumeSteps = 4");
    Comfort::initialise();
    SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
    MusicSystem::initialise();
    MusicSystem::setVolume(60);
    Game::initialise("maps\\first.rivl");
    GameMenus::setCurrentMenu(menu::options);

    const std::vector<std::string> steps = {"off", "25 %", "50 %", "75 %", "on"};
    EXPECT_EQ(choosers()[0]->getOptions(), (std::vector<std::string>{"off", "on"}));
    EXPECT_EQ(choosers()[1]->getOptions(), steps);
    EXPECT_EQ(choosers()[2]->getOptions(), steps);
    EXPECT_EQ(choosers()[1]->getCurrentText(), "25 %") << "60 of 255 lies nearest to it";
    EXPECT_EQ(MusicSystem::getVolume(), 63);
    choosers()[2]->setCurrentOption(2);
    click(0);
    EXPECT_EQ(SoundSystem::getVolume(), 0.5f);
    GameMenus::setCurrentMenu(menu::options);
    choosers()[2]->setCurrentOption(4);
    choosers()[1]->setCurrentOption(0);
    click(0);
    EXPECT_EQ(SoundSystem::getVolume(), 1.0f);
    EXPECT_EQ(MusicSystem::getVolume(), 0);
}

} // namespace tarnwick
