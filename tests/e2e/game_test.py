#!/usr/bin/env python3
"""The game as a player meets it, on a desktop of its own (run by `with-desktop`).

Usage: game_test.py PROGRAM DATA_FOLDER OUTPUT_FOLDER. Keeps a screenshot of each step in OUTPUT_FOLDER.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

TITLE = "Tarnwick: Version 1.00"
PATIENCE = 30.0  # seconds in which the game must have done what it was told


def xdotool(*arguments):
    """The output of an xdotool command, stripped; empty if it fails."""
    done = subprocess.run(["xdotool", *arguments], capture_output=True, text=True, check=False)
    return done.stdout.strip()


def wait_for(what, condition):
    """Waits until `condition` gives something true and returns it; ends the test if it never does."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        result = condition()
        if result:
            return result
        time.sleep(0.05)
    raise AssertionError("timed out: " + what)


class Game:
    """A running game in a data folder that is its own, with its console log switched on."""

    def __init__(self, program, data, output):
        self.output = pathlib.Path(output)
        self.output.mkdir(parents=True, exist_ok=True)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tarnwick-game-"))
        for part in pathlib.Path(data).iterdir():
            target = shutil.copytree if part.is_dir() else shutil.copy
            target(part, self.folder / part.name)
        self.switch_log_on()
        self.process = subprocess.Popen([os.path.abspath(program)], cwd=self.folder)
        self.window = wait_for("the window opens", self.find_window)
        wait_for("the game has the focus", self.has_focus)

    def switch_log_on(self):
        """The console's log is how the test hears what the console says."""
        config = self.folder / "cfg" / "console.cfg"
        lines = [line for line in config.read_text().splitlines() if "enableLogging" not in line]
        config.write_text("\n".join(lines + ["enableLogging = true", ""]))

    def find_window(self):
        assert self.process.poll() is None, f"the game ended with status {self.process.returncode}"
        return xdotool("search", "--name", f"^{TITLE}$").split("\n")[-1]

    def has_focus(self):
        self.window = self.find_window() or self.window  # another number of samples takes another window
        return xdotool("getactivewindow") == self.window

    def log(self):
        """What the console printed so far."""
        path = self.folder / "ConsoleLog.txt"
        return path.read_text(encoding="latin-1") if path.exists() else ""

    def key(self, name):
        xdotool("key", name)

    def past_the_intro(self):
        """Presses a key that the game itself does not listen to, until it runs."""
        self.key("Shift_L")
        return "Game initialisation" in self.log()

    def command(self, line, answer):
        """Types a line at the open console and waits for its answer."""
        before = len(self.log())
        xdotool("type", "--delay", "15", line)
        self.key("Return")
        wait_for(f"'{line}' answers '{answer}'", lambda: answer in self.log()[before:])

    def screenshot(self, name):
        subprocess.run(["scrot", "--overwrite", str(self.output / f"{name}.png")], check=True)

    def picture(self):
        """The bytes of a screenshot of this moment."""
        self.screenshot("now")
        return (self.output / "now.png").read_bytes()

    def still_picture(self):
        """A picture that no longer changes: the paused water stands, and the camera has caught up with it."""
        last = [b""]

        def unchanged():
            before, last[0] = last[0], self.picture()
            return last[0] == before

        wait_for("the picture stands still", unchanged)
        return last[0]

    def size(self):
        """Client width and height, as the desktop has them."""
        shape = dict(line.split("=") for line in
                     xdotool("getwindowgeometry", "--shell", self.find_window()).splitlines() if "=" in line)
        return int(shape.get("WIDTH", 0)), int(shape.get("HEIGHT", 0))

    def end(self):
        """Asks the window to close, as its close button does; the program's exit status."""
        xdotool("key", "alt+F4")
        return self.process.wait(timeout=PATIENCE)


def other_window():
    """Another program that takes the focus."""
    other = subprocess.Popen(["xterm", "-T", "Other program", "-geometry", "40x10"])
    wait_for("the other program has the focus",
             lambda: xdotool("getactivewindow", "getwindowname") == "Other program")
    return other


def play(game):
    """Everything that a player does with the window; the asserts and waits are the test."""
    wait_for("a key skips the intro and the level is there", game.past_the_intro)
    wait_for("the window is full screen", lambda: game.size() == (1280, 1024))

    game.key("p")
    standing = game.still_picture()
    game.screenshot("1_start")
    xdotool("keydown", "Left")
    wait_for("a held key turns the world", lambda: game.picture() != standing)
    xdotool("keyup", "Left")
    game.screenshot("1_turned")

    game.key("grave")
    game.command("Pause", "\nPause is true")
    game.command("Pause false", "\nPause is now false")
    game.command("ParticleCount", "\nParticleCount is ")
    game.command("nonsense", "\nUNKNOWN COMMAND.")
    game.screenshot("2_console")

    game.command("Fullscreen false", "\nFullscreen is now false")
    wait_for("the window is 800 by 600", lambda: game.size() == (800, 600))
    game.screenshot("3_window")
    game.command("AntiAliasingSamples 4", "\nAntiAliasingSamples is now 4")
    wait_for("the new window has the focus", game.has_focus)
    assert game.size() == (800, 600), f"the new window has another size: {game.size()}"
    game.screenshot("4_samples")

    other = other_window()
    game.screenshot("5_focus_lost")
    xdotool("windowactivate", "--sync", game.find_window())
    wait_for("the focus is back", game.has_focus)
    game.command("Pause", "\nPause is true")
    other.terminate()
    other.wait()
    game.screenshot("6_paused")

    status = game.end()
    assert status == 0, f"the game ended with status {status}"
    scores = game.folder / "sav" / "scores.sav"
    assert scores.stat().st_size == 284, "the high scores were not saved"


def main():
    program, data, output = sys.argv[1:]
    game = Game(program, data, output)
    try:
        play(game)
    except BaseException:
        game.screenshot("failed")
        print(game.log()[-2000:])
        raise
    finally:
        if game.process.poll() is None:
            game.process.kill()
        shutil.rmtree(game.folder)
    print("passed")


if __name__ == "__main__":
    main()
