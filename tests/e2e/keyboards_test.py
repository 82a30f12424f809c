#!/usr/bin/env python3
"""What a player types arrives under the keyboards of Europe, on a desktop of its own (run by `with-desktop`).

Usage: keyboards_test.py PROGRAM DATA_FOLDER OUTPUT_FOLDER. Under each layout a line is typed into the console key by key,
by the places of the keys, among them characters behind AltGr and dead keys; what the console says it got is compared with
what is printed on such a keyboard. SteamDeck=1 is set: SDL counts on no keyboard then, and starts no text input by itself.
"""

import os
import shutil
import sys

from desktop_game import Game, run, wait_for, xdotool

CONSOLE = 49  # the key left of 1
RETURN = 36
SHIFT = 50
ALTGR = 108

# Places of keys: the rows E (digits), D, C and B, from the left; and three by name.
ROWS = {"E": 10, "D": 24, "C": 38, "B": 52}
OTHERS = {"BKSL": 51, "LSGT": 94, "SPCE": 65}

# For each layout what is pressed, and what a keyboard of that kind types then. ^ is Shift, + AltGr.
LAYOUTS = {
    ("us", ""): [("D1", "q"), ("^D1", "Q"), ("E1", "1"), ("^E2", "@"), ("BKSL", "\\"), ("^BKSL", "|"), ("D11", "["),
                 ("D12", "]"), ("^D11", "{"), ("^D12", "}"), ("B8", ","), ("C10", ";")],
    ("de", ""): [("D6", "z"), ("^B1", "Y"), ("+D1", "@"), ("+E7", "{"), ("+E8", "["), ("+E9", "]"), ("+E10", "}"),
                 ("+E11", "\\"), ("+LSGT", "|"), ("+D12", "~"), ("^E7", "/"), ("C10", "ö"), ("^C11", "Ä"), ("D11", "ü"),
                 ("E11", "ß"), ("LSGT", "<")],
    ("fr", ""): [("D1", "a"), ("^C1", "Q"), ("E2", "é"), ("^E2", "2"), ("+E10", "@"), ("+E8", "\\"), ("+E5", "["),
                 ("+E11", "]"), ("+E4", "{"), ("+E12", "}"), ("+E6", "|"), ("+E3", "#"), ("E10", "à"), ("C10", "m")],
    ("es", ""): [("D1", "q"), ("C10", "ñ"), ("^C10", "Ñ"), ("+E1", "|"), ("+E2", "@"), ("+E3", "#"), ("+D11", "["),
                 ("+D12", "]"), ("+C11", "{"), ("+BKSL", "}"), ("^E7", "/")],
    ("us", "intl"): [("D1", "q"), ("^E2", "@"), ("BKSL", "\\"), ("D11", "["), ("^D12", "}"), ("+C1", "á"), ("+B6", "ñ"),
                     ("+C2", "ß"), ("B9", ".")],
    ("us", "dvorak"): [("C2", "o"), ("^D4", "P"), ("D6", "f"), ("E11", "["), ("E12", "]"), ("^E11", "{"), ("BKSL", "\\"),
                       ("C10", "s"), ("B1", ";"), ("E2", "2")],
}


def code_of(place):
    return OTHERS[place] if place in OTHERS else ROWS[place[0]] + int(place[1:]) - 1


def press(*pressed):
    """Presses keys by their places, each with what is held with it."""
    words = []
    for place in pressed:
        held = {"^": [SHIFT], "+": [ALTGR]}.get(place[0], [])
        words += [word for key in held for word in ("keydown", str(key))]
        words += ["key", str(code_of(place.lstrip("^+")))]
        words += [word for key in held for word in ("keyup", str(key))]
    xdotool(*words)


def type_line(game, keys):
    """Types the keys and Return; the line that the console got."""
    before = len(game.log())
    press(*[place for place, _ in keys])
    xdotool("key", str(RETURN))
    wait_for("the console answers", lambda: "UNKNOWN COMMAND." in game.log()[before:])
    return game.log()[before:].split("\n")[1]


def try_layout(game, layout, variant, keys):
    """The console key, a dead one or not, opens and closes, and swallows nothing that is typed behind it."""
    run("setxkbmap", "-layout", layout, "-variant", variant, check=True)
    expected = "".join(character for _, character in keys)
    for _ in range(2):
        xdotool("key", str(CONSOLE))
        got = type_line(game, keys)
        assert got == expected, f"{layout} {variant}: typed '{expected}', got '{got}'"
        xdotool("key", str(CONSOLE))


def main():
    program, data, output = sys.argv[1:]
    game = Game(program, data, output, env={**os.environ, "SteamDeck": "1"})
    try:
        wait_for("a key skips the intro and the level is there", game.past_the_intro)
        wait_for("the game has the focus", game.has_focus)
        for (layout, variant), keys in LAYOUTS.items():
            try_layout(game, layout, variant, keys)
            print(f"{layout} {variant}", flush=True)
        run("setxkbmap", "us", check=True)
        status = game.end()
        assert status == 0, f"the game ended with status {status}"
    except BaseException:
        game.screenshot("keyboards_failed")
        print(game.log()[-2000:])
        raise
    finally:
        if game.process.poll() is None:
            game.process.kill()
        shutil.rmtree(game.folder)
    print("passed")


if __name__ == "__main__":
    main()
