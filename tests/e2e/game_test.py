#!/usr/bin/env python3
"""The game as a player meets it, on a desktop of its own (run by `with-desktop`).

Usage: game_test.py PROGRAM DATA_FOLDER OUTPUT_FOLDER. Keeps a screenshot of each step in OUTPUT_FOLDER.
"""

import shutil
import subprocess
import sys

from desktop_game import Game, wait_for, xdotool

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

    game.still_picture()
    game.screenshot("0_main_menu")
    game.start_playing()

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
