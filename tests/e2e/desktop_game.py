"""A running game on a desktop, for the tests that play it: started, driven by keys and mouse, looked at."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time

import stacks

TITLE = "Tarnwick: Version 1.00"
PATIENCE = 30.0  # seconds in which the game must have done what it was told


def run(*command, check=False):
    """Runs a command that takes no time; one that stands still ends the test and tells where everybody stands."""
    try:
        return subprocess.run(command, capture_output=True, text=True, check=check, timeout=2 * PATIENCE)
    except subprocess.TimeoutExpired:
        raise AssertionError(f"{' '.join(command)} does not end\n{stacks.of_children()}") from None


def xdotool(*arguments):
    """The output of an xdotool command, stripped; empty if it fails."""
    return run("xdotool", *arguments).stdout.strip()


def wait_for(what, condition, patience=PATIENCE):
    """Waits until `condition` gives something true and returns it; ends the test if it never does."""
    end = time.monotonic() + patience
    while time.monotonic() < end:
        result = condition()
        if result:
            return result
        time.sleep(0.05)
    raise AssertionError(f"timed out: {what}\n{stacks.of_children()}")


class Game:
    """A running game in a data folder that is its own, with its console log switched on."""

    def __init__(self, program, data, output, **process_options):
        self.output = pathlib.Path(output)
        self.output.mkdir(parents=True, exist_ok=True)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tarnwick-game-"))
        for part in pathlib.Path(data).iterdir():
            target = shutil.copytree if part.is_dir() else shutil.copy
            target(part, self.folder / part.name)
        self.switch_log_on()
        self.process = subprocess.Popen([os.path.abspath(program)], cwd=self.folder, **process_options)
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

    def place_of(self, menu, widget):
        """Left, top, width and height of a widget in pixels of the screen, which the window fills or is the middle of."""
        words = (self.folder / "cfg" / f"menu_{menu}.cfg").read_text(encoding="latin-1").split()
        values = {words[i - 1]: words[i + 1] for i in range(1, len(words) - 1) if words[i] == "="}
        width, height = self.size()
        shape = [float(values[f"{widget}_{side}"]) for side in "xywh"]
        scale = min(width / 800, height / 600)  # the menus keep their shape, in the middle of the window
        left, top = (1280 - 800 * scale) / 2, (1024 - 600 * scale) / 2
        return (int(left + shape[0] * scale), int(top + shape[1] * scale),
                int(shape[2] * scale), int(shape[3] * scale))

    def point_at(self, menu, widget, across=0.5):
        """Moves the pointer over a widget, from its left edge (0) to its right (1)."""
        left, top, width, height = self.place_of(menu, widget)
        xdotool("mousemove", str(int(left + width * across)), str(top + height // 2 + 2))
        xdotool("mousemove", str(int(left + width * across)), str(top + height // 2))

    def click(self, menu, widget, across=0.5, button="1"):
        """Clicks a widget as a player does."""
        self.point_at(menu, widget, across)
        xdotool("click", button)

    def start_playing(self):
        """Goes from the main menu into the level, and returns when its water runs."""
        self.key("grave")
        self.command("ShowSimSpeeds true", "\nShowSimSpeeds is now true")
        self.key("grave")
        before = len(self.log())
        self.click("main", "startButton")
        wait_for("the water runs", lambda: "Simulation - clock tics" in self.log()[before:], 3 * PATIENCE)

    def command(self, line, answer):
        """Types a line at the open console and waits for its answer."""
        before = len(self.log())
        xdotool("type", "--delay", "15", line)
        self.key("Return")
        wait_for(f"'{line}' answers '{answer}'", lambda: answer in self.log()[before:])

    def screenshot(self, name):
        run("scrot", "--overwrite", str(self.output / f"{name}.png"), check=True)

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

        wait_for("the picture stands still", unchanged, 3 * PATIENCE)
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
