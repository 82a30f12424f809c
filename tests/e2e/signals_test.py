#!/usr/bin/env python3
"""Requests to end, wherever the game is, on a desktop of its own (run by `with-desktop`).

Usage: signals_test.py PROGRAM DATA_FOLDER OUTPUT_FOLDER SECONDS. Sends SIGTERM or SIGINT in the intro, in the splash, in
the menu, in play and while the options make the window anew. Each time the window is gone within SECONDS, the report is the
one that was told, its box comes up, and the program ends with status 1. Once for each place; ten times, and within one
second, where TARNWICK_LONG_TESTS is set.
"""

import os
import random
import re
import select
import shutil
import signal
import subprocess
import sys
import time

from desktop_game import Game, PATIENCE, wait_for, xdotool

BOX_TITLE = "A fatal program error has occured."
ERROR_LINES = {
    signal.SIGINT: "Abnormal interuption of program by user.",
    signal.SIGTERM: "Program requested to terminate abnormally.",
}


def in_intro(_game, _rng):
    """The film runs from the first picture on."""


def skip_intro(game):
    """Presses the key until the game begins to load."""
    def loading():
        game.key("Shift_L")
        return "Level loading" in game.log()

    wait_for("a key skips the intro", loading)


def in_splash(game, rng):
    """Somewhere in the load of the first level."""
    skip_intro(game)
    time.sleep(rng.uniform(0.0, 0.3))


def in_menu(game, rng):
    wait_for("the level is there", game.past_the_intro)
    time.sleep(rng.uniform(1.0, 2.0))


def in_play(game, rng):
    in_menu(game, rng)
    game.still_picture()  # the signs of the menu have flown in
    game.start_playing()


def in_options(game, rng):
    """While the window is made anew and everything is loaded into it."""
    in_menu(game, rng)
    before = game.still_picture()
    game.click("main", "optionsButton")
    wait_for("the options open", lambda: game.picture() != before)
    game.still_picture()
    game.point_at("options", "graphicQualityChooser")
    for name in ["Left"] * 3:
        game.key(name)
    game.click("options", "backButton")
    time.sleep(rng.uniform(0.5, 3.0))  # an action comes 0.8 after its click


PLACES = {"intro": in_intro, "splash": in_splash, "menu": in_menu, "play": in_play, "options": in_options}


def report_of(game, seconds):
    """What the program writes to standard error until it has no more to say, or the time is over."""
    stream = game.process.stderr
    text = b""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        ready, _, _ = select.select([stream], [], [], max(end - time.monotonic(), 0.0))
        if ready:
            text += os.read(stream.fileno(), 65536)
        if re.search(rb"locations visited by program: \n(\n\d+ - [^\n]*)+\n$", text):
            break
    return text.decode("latin-1")


def game_windows():
    """The windows of the game that the desktop still has."""
    return xdotool("search", "--name", "^(Tarnwick: Version .*|Untitled window)$").split()


def request(game, signal_number, limit):
    """Sends the signal; seconds until the window was gone."""
    sent = time.monotonic()
    game.process.send_signal(signal_number)
    text = report_of(game, PATIENCE)
    gone = time.monotonic()
    end = gone + PATIENCE
    while game_windows():  # a dropped one goes when the X server comes to it
        gone = time.monotonic()
        assert gone < end, f"the report is out and the window still there: {text}"
    taken = gone - sent
    assert text.count("Error type: ") == 1 and f"\nError type: {ERROR_LINES[signal_number]}\n" in text, text
    assert "We are very sorry but 'Tarnwick' has encountered a techincal problem" in text, text
    places = re.findall(r"\n\d+ - (\S+)", text)
    print(f"  {taken:.3f} s, heard in {places[0]} < {places[1] if len(places) > 1 else ''}", flush=True)
    assert taken <= limit, f"the window took {taken:.3f} s: {text}"
    return taken


def close_box(game):
    """Reads the report in its box, as the player does, and closes it."""
    wait_for("the box shows the report", lambda: xdotool("getactivewindow", "getwindowname") == BOX_TITLE)

    def ended():
        xdotool("key", "Return")
        return game.process.poll() is not None

    wait_for("the program ends with its box", ended)
    assert game.process.returncode == 1, f"the game ended with status {game.process.returncode}"


def try_place(arguments, place, signal_number, rng):
    program, data, output, limit = arguments
    game = Game(program, data, output, stderr=subprocess.PIPE)
    try:
        PLACES[place](game, rng)
        print(f"{signal_number.name} in {place}", flush=True)
        taken = request(game, signal_number, float(limit))
        close_box(game)
        return taken
    except BaseException:
        game.screenshot("signals_failed")
        raise
    finally:
        if game.process.poll() is None:
            game.process.kill()
        shutil.rmtree(game.folder)


def main():
    arguments = sys.argv[1:5]
    rounds = 1
    if os.environ.get("TARNWICK_LONG_TESTS"):
        rounds = 10
        arguments[3] = "1"
    seed = random.randrange(2**32)
    print(f"seed {seed}")
    rng = random.Random(seed)
    taken = {place: [] for place in PLACES}
    for number in range(rounds):
        for index, (place, times) in enumerate(taken.items()):
            signal_number = signal.SIGINT if (number + index) % len(PLACES) == 3 else signal.SIGTERM
            times.append(try_place(arguments, place, signal_number, rng))
    for place, times in taken.items():
        print(f"{place}: {len(times)} times, at most {max(times):.3f} s")
    print("passed")


if __name__ == "__main__":
    main()
