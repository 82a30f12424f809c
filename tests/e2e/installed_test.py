#!/usr/bin/env python3
"""The installed game as a player meets it, on a desktop of its own (run by `with-desktop`).

Usage: installed_test.py LAUNCHER OUTPUT_FOLDER. A player who owns nothing but an empty home drops a level pack into it, plays
a level of it to its end and enters a name. Where strace is installed, it shows that nothing is written but in the
player's folders. Keeps pictures in OUTPUT_FOLDER.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile

from desktop_game import Game, PATIENCE, wait_for, xdotool
from menus_test import Menus, finish_level

WRITERS = "openat,open,creat,mkdir,mkdirat,rename,renameat,renameat2,unlink,unlinkat,rmdir,link,linkat,symlink,symlinkat,truncate"
WRITING = re.compile(r"O_WRONLY|O_RDWR|O_CREAT|O_TRUNC")
PATH = re.compile(r'(?:(?:AT_FDCWD|\d+)<([^>]*)>, )?"((?:[^"\\]|\\.)*)"')  # with the folder that it starts in
DEVICES = ("/dev/", "/proc/self/", "/sys/")


class InstalledGame(Game):
    """The launcher's game; its folder is the one that the launcher made."""

    def __init__(self, launcher, output, home):
        self.output = pathlib.Path(output)
        self.output.mkdir(parents=True, exist_ok=True)
        self.home = home
        self.state = home / ".local" / "state" / "tarnwick"
        self.folder = self.state / "run" / "1"
        self.trace = pathlib.Path(f"{home}.trace")
        command = [launcher, "--windowed", "800x600", "--level", "Pack One: finish"]
        if shutil.which("strace"):
            command = ["strace", "-f", "--seccomp-bpf", "-y", "-qq", "-e", f"trace={WRITERS}", "-e", "status=successful",
                       "-o", str(self.trace), *command]
        kept = {name: value for name, value in os.environ.items() if not name.startswith(("XDG_", "TARNWICK"))}
        # The driver keeps what it has compiled under the home's cache: its own affair, and switched off here.
        self.process = subprocess.Popen(command, env={**kept, "HOME": str(home), "MESA_SHADER_CACHE_DISABLE": "true"})
        try:
            self.window = wait_for("the window opens", self.find_window, 4 * PATIENCE)
            wait_for("the game has the focus", self.has_focus)
        except BaseException:
            self.process.kill()
            raise


def prepare(home, launcher):
    """A pack of one's own, and the console's log switched on: it is how the test hears what the console says."""
    packs = home / ".local" / "share" / "tarnwick"
    packs.mkdir(parents=True)
    with zipfile.ZipFile(packs / "Pack One.zip", "w") as pack:
        pack.writestr("Pack One/maps/finish.rivl", finish_level())
    settings = home / ".config" / "tarnwick"
    settings.mkdir(parents=True)
    system = launcher.parent.parent / "share" / "games" / "tarnwick" / "cfg" / "console.cfg"
    lines = [line for line in system.read_text().splitlines() if "enableLogging" not in line]
    (settings / "console.cfg").write_text("\n".join(lines + ["enableLogging = true", ""]))


def play(game):
    """From the main menu to a name in the table of scores."""
    wait_for("a key skips the intro and the level is there", game.past_the_intro, 2 * PATIENCE)
    assert game.size() == (800, 600), f"the window has another size: {game.size()}"
    game.key("grave")
    game.command("Map", "\nMap is maps\\Pack\xa0One:\xa0finish.rivl")
    game.key("grave")
    game.start_playing()
    xdotool("keydown", "Left")
    time.sleep(8)  # on a slow machine, too, the world is turned far enough for the water to run
    xdotool("keyup", "Left")
    time.sleep(8)  # the finish and the count; while these run no picture stays
    menus = Menus(game)
    menus.expect("levelFinished")
    game.click("levelFinished", "continueButton")
    menus.expect("name")
    xdotool("type", "--delay", "60", "Home")
    menus.keys("Return")
    menus.expect("highScores")
    assert game.end() == 0, "the game did not end well"


def written(trace, working_folder):
    """Paths that were written, made, renamed or removed; calls without a folder are the game's, in its own."""
    paths = set()
    for line in trace.read_text(errors="replace").splitlines():
        call = line.split(None, 1)[1]
        if call.startswith(("open", "creat")) and not WRITING.search(call) or not re.match(r"\w+\(", call):
            continue
        names = PATH.findall(call)
        for folder, name in names[-1:] if call.startswith("symlink") else names:  # not where a link leads
            paths.add(os.path.normpath(os.path.join(folder or working_folder, name)))
    return {path for path in paths if not path.startswith(DEVICES)}


def main():
    launcher, output = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
    home = pathlib.Path(tempfile.mkdtemp(prefix="tarnwick home "))
    game = None
    try:
        prepare(home, launcher)
        game = InstalledGame(launcher, output, home)
        play(game)
        scores = (game.state / "sav" / "scores.sav").read_bytes()
        assert len(scores) == 284 and scores[4:8] == b"Home", "the scores were not kept"
        assert "Map is" in (game.state / "ConsoleLog.txt").read_text(encoding="latin-1"), "the log was not kept"
        assert not game.folder.exists(), "the game's folder was left"
        if game.trace.exists():
            ours = [home / place for place in (".local/state", ".local/share", ".config")]
            paths = written(game.trace, game.folder)
            elsewhere = sorted(path for path in paths if not any(path.startswith(str(place)) for place in ours))
            assert any(path.endswith("sav/scores.sav") for path in paths), "the trace does not show the scores"
            assert not elsewhere, f"written elsewhere: {elsewhere}"
            print("written nowhere but in the player's folders")
        else:
            print("strace is not installed: what is written was not looked at")
    except BaseException:
        if game is not None:
            game.screenshot("installed_failed")
            print(game.log()[-2000:])
        raise
    finally:
        if game is not None and game.process.poll() is None:
            game.process.kill()  # a request to end would show a box and wait
        if game is not None:
            game.trace.unlink(missing_ok=True)
        shutil.rmtree(home)
    print("passed")


if __name__ == "__main__":
    main()
