#!/usr/bin/env python3
"""The menus as a player meets them, on a desktop of its own (run by `with-desktop`).

Usage: menus_test.py PROGRAM DATA_FOLDER OUTPUT_FOLDER. Keeps a picture of every menu in OUTPUT_FOLDER.

The level behind a menu stands still, so a menu that opens again, with the pointer in the corner, shows the same picture to
the pixel: that is how the test knows which one is up.
"""

import pathlib
import shutil
import struct
import sys
import time

from desktop_game import Game, PATIENCE, wait_for, xdotool

STILL = 3.0  # seconds without a change after which a click has had its effect; an action comes 0.8 after its click
MAGIC = 0x1231230F


def finish_level():
    """The bytes of a level whose water starts in the middle of a trough, and whose end is at the trough's left."""
    def name(text):
        return struct.pack("<I", len(text)) + text.encode("ascii")

    corners = [(-300, -140), (-300, 120), (300, 120), (300, -140), (260, -140), (260, 60), (-260, 60), (-260, -140)]
    trough = struct.pack("<i", 0) + name("gfx\\wood.tga") + struct.pack("<iiII", 2, 0, 1, len(corners))
    trough += b"".join(struct.pack("<ii", *corner) for corner in corners)
    end = struct.pack("<iif8i", 0, 801, 0.0, -280, -140, -280, 80, -100, 80, -100, -140)
    no_records = struct.pack("<I", 0)
    one_record = struct.pack("<I", 1)
    return (struct.pack("<II", 0x008F1397, 12) + one_record + trough + 3 * no_records + one_record + end
            + 2 * no_records + struct.pack("<4i", 0, 0, 0, -40))


class Menus:
    """Clicks through the menus and knows them by their pictures."""

    def __init__(self, game):
        self.game = game
        self.seen = {}
        self.current = b""

    def park(self):
        """Moves the pointer into the corner, where no button is."""
        xdotool("mousemove", "4", "1015")
        xdotool("mousemove", "3", "1016")

    def settle(self):
        """Waits for a picture that stays, with the pointer in the corner, and returns it."""
        self.park()
        last = self.game.picture()
        since = time.monotonic()
        end = since + 3 * PATIENCE
        while time.monotonic() - since < STILL:
            assert time.monotonic() < end, "the picture never stands still"
            picture = self.game.picture()
            if picture != last:
                last, since = picture, time.monotonic()
        return last

    def settled_screenshot(self, file_name):
        """Keeps a picture that stays, also for as long as it takes to write it, and returns it."""
        def shown_twice():
            picture = self.settle()
            self.game.screenshot(file_name)
            return picture if (self.game.output / f"{file_name}.png").read_bytes() == picture else b""

        return wait_for(f"{file_name} stands still", shown_twice, 3 * PATIENCE)

    def expect(self, name):
        """The menu called `name` opens: one that was seen before, or none of those that were."""
        self.park()
        if name in self.seen:
            wait_for(f"the menu {name} opens", lambda: self.game.picture() == self.seen[name], 2 * PATIENCE)
        else:
            wait_for(f"the menu before {name} goes", lambda: self.game.picture() != self.current)
            picture = self.settled_screenshot(f"menu_{name}".replace(" ", "_"))
            known = [other for other, shown in self.seen.items() if shown == picture]
            assert not known, f"the menu {name} did not open: {known} is up"
            self.seen[name] = picture
        self.current = self.seen[name]

    def forget(self):
        """What lies behind the menus has changed."""
        self.seen = {}
        self.current = b""

    def keys(self, *names):
        """The first key in a menu only gives the focus to its default button."""
        for name in names:
            self.game.key(name)


def visit_by_mouse(game, menus):
    """Each sign of the main menu opens its menu, and Escape leads back."""
    for button, name in (("load", "loadMap"), ("options", "options"), ("instructions", "instructions"),
                         ("highScores", "highScores"), ("credits", "credits"), ("quit", "quitGame")):
        game.click("main", f"{button}Button")
        menus.expect(name)
        menus.keys("Escape")
        menus.expect("main")
    for button, name in (("instructions", "instructions"), ("highScores", "highScores"), ("credits", "credits")):
        game.click("main", f"{button}Button")
        menus.expect(name)
        game.click(name, "backButton")
        menus.expect("main")
    game.point_at("main", "optionsButton")
    wait_for("the sign under the pointer changes", lambda: game.picture() != menus.current)
    time.sleep(1)
    game.screenshot("menu_main_focus")


def visit_by_keys(menus):
    """Down to the last sign; Up from there leads two signs up."""
    menus.keys("Shift_L", *["Down"] * 8, "Up", "Return")
    menus.expect("highScores")
    menus.keys("Shift_L", "space")
    menus.expect("main")
    menus.keys("Shift_L", *["Tab"] * 7, "Up", "Down", "Down", "Return")  # once round; Start leads up nowhere
    menus.expect("options")
    menus.keys("Escape", "Escape")
    menus.expect("quitGame")
    menus.keys("Shift_L", "Left", "Tab", "Left", "Right", "Return")  # ends at No
    menus.expect("main")


def change_options(game, menus):
    """Escape leaves everything as it was; the way back by the button commits. Tab never reaches the button."""
    game.click("main", "optionsButton")
    menus.expect("options")
    game.click("options", "fullscreenChooser", 0.25)
    menus.expect("options with the screen off")
    menus.keys("Escape")
    menus.expect("main")
    assert game.size() == (1280, 1024), "Escape has committed"

    game.click("main", "optionsButton")
    menus.expect("options")
    menus.keys("Shift_L", *["Tab"] * 5, "Left", "Down", *["Left"] * 4, "Up", *["Down"] * 4,
               "Return")  # the music has four steps
    wait_for("full screen is off", lambda: game.size() == (800, 600))
    game.key("grave")
    game.command("Fullscreen", "\nFullscreen is false")
    game.command("MusicVolume", "\nMusicVolume is 0")
    game.key("grave")
    menus.forget()
    menus.expect("main")

    game.click("main", "optionsButton")
    menus.expect("options in a window")
    game.click("options", "fullscreenChooser", 0.75)
    game.point_at("options", "musicChooser")
    menus.keys(*["Right"] * 4)
    game.point_at("options", "graphicQualityChooser")
    menus.keys(*["Left"] * 5, "Right")  # keys, for of two quick clicks the second one does not count
    game.click("options", "backButton")
    wait_for("full screen is on", lambda: game.size() == (1280, 1024))
    wait_for("the new window has the focus", game.has_focus)
    menus.settle()
    game.key("grave")
    game.command("TextureQuality", "\nTextureQuality is 1")
    game.command("AntiAliasingSamples", "\nAntiAliasingSamples is 1")
    game.command("MusicVolume", "\nMusicVolume is 255")
    game.key("grave")
    menus.forget()
    menus.expect("main")


def play_with_menus(game, menus):
    """The menu in play holds the level; the right button opens it, too; a restart starts the level again."""
    game.start_playing()
    menus.forget()
    menus.keys("Escape")
    menus.expect("inGame")
    for button, name in (("restart", "restart"), ("load", "loadMap"), ("options", "options")):
        game.click("inGame", f"{button}Button")
        menus.expect(name)
        menus.keys("Escape")
        menus.expect("inGame")
    before = len(game.log())
    game.click("inGame", "continueButton")
    wait_for("the play goes on", lambda: "Simulation - clock tics" in game.log()[before:], 3 * PATIENCE)
    menus.forget()
    xdotool("click", "3")
    menus.expect("inGame")
    game.click("inGame", "restartButton")
    menus.expect("restart")
    game.key("grave")
    game.command("ShowSimSpeeds", "\nShowSimSpeeds is true")
    game.key("grave")
    menus.keys("Shift_L", "Left", "Return")
    time.sleep(STILL)
    game.key("grave")
    game.command("ShowSimSpeeds", "\nShowSimSpeeds is false")
    game.key("grave")


def finish(game, menus):
    """Another level is chosen and finished with the keys; a name is typed, and the table shows it."""
    menus.forget()
    menus.keys("Escape")
    menus.expect("inGame")
    before = len(game.log())
    game.click("inGame", "loadButton")
    menus.expect("loadMap")
    game.click("loadMap", "loadButton")
    wait_for("the other level is loaded", lambda: "Game initialisation" in game.log()[before:])
    menus.forget()
    menus.expect("main")
    game.key("grave")
    game.command("Map", "\nMap is maps\\finish.rivl")
    game.key("grave")
    game.click("main", "startButton")
    wait_for("the play begins", lambda: game.picture() != menus.current)
    time.sleep(4)  # the flight to the water
    xdotool("keydown", "Left")
    time.sleep(8)  # on a slow machine, too, the world is turned far enough for the water to run
    xdotool("keyup", "Left")
    time.sleep(8)  # the finish and the count; while these run no picture stays
    menus.expect("levelFinished")
    menus.keys("Escape")
    menus.expect("levelFinished")
    game.click("levelFinished", "continueButton")
    menus.expect("name")
    xdotool("type", "--delay", "60", "Anne-7 x")
    menus.keys("BackSpace", "BackSpace")
    menus.expect("name typed")
    menus.keys("Return")
    menus.expect("highScores with a name")
    menus.keys("Escape")
    menus.expect("main after a restart")  # new water


def quit_by_menu(game, menus):
    """Yes ends the program, and the scores are saved."""
    game.click("main", "quitButton")
    menus.expect("quitGame")
    game.click("quitGame", "yesButton")
    status = game.process.wait(timeout=PATIENCE)
    assert status == 0, f"the game ended with status {status}"
    scores = (game.folder / "sav" / "scores.sav").read_bytes()
    assert len(scores) == 284, f"{len(scores)} bytes of scores"
    magic, name, score = struct.unpack_from("<I24sI", scores)
    assert magic == MAGIC
    assert name == b"Anne7".ljust(24, b"\0"), name
    assert 1000 < score <= 436000 + 64000, score
    assert struct.unpack_from("<24sI", scores, 4 + 28) == (b"NO NAME".ljust(24, b"\0"), 0)
    return scores


def scores_after(program, data, output, scores):
    """The scores file that a game leaves which found `scores`."""
    game = Game(program, data, output)
    try:
        (game.folder / "sav").mkdir(exist_ok=True)
        (game.folder / "sav" / "scores.sav").write_bytes(scores)
        wait_for("a key skips the intro and the level is there", game.past_the_intro)
        game.end()
        return (game.folder / "sav" / "scores.sav").read_bytes()
    finally:
        if game.process.poll() is None:
            game.process.kill()
        shutil.rmtree(game.folder)


def main():
    program, data, output = sys.argv[1:]
    game = Game(program, data, output)
    menus = Menus(game)
    try:
        (game.folder / "maps" / "finish.rivl").write_bytes(finish_level())
        wait_for("a key skips the intro and the level is there", game.past_the_intro)
        menus.expect("main")
        visit_by_mouse(game, menus)
        visit_by_keys(menus)
        change_options(game, menus)
        play_with_menus(game, menus)
        finish(game, menus)
        scores = quit_by_menu(game, menus)
    except BaseException:
        game.screenshot("menus_failed")
        print(game.log()[-2000:])
        raise
    finally:
        if game.process.poll() is None:
            game.process.kill()
        shutil.rmtree(game.folder)
    assert scores_after(program, data, output, scores) == scores, "the scores are not there at the next start"
    default_entry = b"NO NAME".ljust(24, b"\0") + bytes(4)
    default = struct.pack("<I", MAGIC) + 10 * default_entry
    assert scores_after(program, data, output, b"\xFF" + scores[1:]) == default, "another magic number counts"
    pathlib.Path(output, "now.png").unlink()
    print("passed")


if __name__ == "__main__":
    main()
