"""Contact sheets of the menus: each screen at a window's size, from its configuration and pictures, over a picture of
the game.

usage: python3 -m check.menus FOLDER GAME.png WIDTHxHEIGHT [SCREEN[:BUTTON_IN_FOCUS] ...]

Widgets are placed as the game places them: in 800 by 600 units that are stretched to the window, pictures at their own
size, letters in square cells. Filtering is the graphics card's: bilinear, and between mipmaps where it shrinks.
"""

import pathlib
import sys

import numpy as np
from PIL import Image
from scipy import ndimage

from lib import tga

SCREENS = ("main", "inGame", "options", "highScores", "instructions", "quitGame", "loadMap", "credits", "levelFinished",
           "restart")
LABELS = {
    "fullscreenLabel": "Fullscreen", "musicLabel": "Music", "soundLabel": "Sound",
    "graphicQualityLabel": "Graphic quality", "mapLabel": "Choose Map to load",
    "quitLabel": "Quit game: are you sure?", "restartLabel": "Restart game: are you sure?",
    "waterScoreLabel": "Water score:", "timeScoreLabel": "Time  score:", "totalScoreLabel": "Total score:",
    "waterScoreCount": "57500", "timeScoreCount": "318212", "totalScoreCount": "375712",
}
CHOICES = {
    "fullscreenChooser": ("on", 1, 1), "musicChooser": ("on", 1, 1), "soundChooser": ("off", 0, 1),
    "graphicQualityChooser": ("very high", 4, 5), "mapChooser": ("testLevel.rivl", 0, 2),
}
SCORES = (("Anna", 481500), ("The miller", 455212), ("Bartholomew of Tarn X", 401000)) + (("NO NAME", 0),) * 7
WATER = 115 / 128


def settings(name):
    """Keys in lower case, with their values, of a configuration file."""
    text = (tga.GFX.parent / "cfg" / f"{name}.cfg").read_bytes().decode("latin-1")
    words = text.replace("=", " = ").replace("\n", " ").split(" ")
    words = [word for word in words if word]
    return {words[i - 1].lower(): words[i + 1] for i, word in enumerate(words) if word == "="}


class Window:
    """A window that the game's picture fills; draws in units."""

    def __init__(self, background, width, height):
        self.picture = np.asarray(background.resize((width, height), Image.LANCZOS).convert("RGB"), float) / 255
        self.sx, self.sy = width / 800, height / 600
        self.pictures = {}

    def load(self, name):
        """A picture by the name it has in a configuration file."""
        if name not in self.pictures:
            self.pictures[name] = tga.load(name.lower().removeprefix("gfx\\").replace("\\", "/"))
        return self.pictures[name]

    def quad(self, texels, x, y, width, height, colour=(1, 1, 1, 1)):
        """A textured rectangle at (x, y), blended by alpha."""
        rows, columns = texels.shape[:2]
        while rows > 2 * height * self.sy and columns > 2 * width * self.sx:
            texels = texels.reshape(rows // 2, 2, columns // 2, 2, 4).mean((1, 3))
            rows, columns = texels.shape[:2]
        x0, x1, y0, y1 = x * self.sx, (x + width) * self.sx, y * self.sy, (y + height) * self.sy
        left, right = max(0, round(x0)), min(self.picture.shape[1], round(x1))
        top, bottom = max(0, round(y0)), min(self.picture.shape[0], round(y1))
        if left >= right or top >= bottom:
            return
        u = (np.arange(left, right) + 0.5 - x0) / (x1 - x0) * columns - 0.5
        v = (np.arange(top, bottom) + 0.5 - y0) / (y1 - y0) * rows - 0.5
        places = np.meshgrid(v, u, indexing="ij")
        drawn = np.dstack([ndimage.map_coordinates(texels[..., k], places, order=1, mode="grid-wrap")
                           for k in range(4)])
        alpha = drawn[..., 3:] * colour[3]
        area = self.picture[top:bottom, left:right]
        area[:] = area * (1 - alpha) + drawn[..., :3] * np.asarray(colour[:3]) * alpha

    def image(self, name, x, y, colour=(1, 1, 1, 1)):
        """A picture at its own size, centred on (x, y)."""
        texels = self.load(name)
        rows, columns = texels.shape[:2]
        self.quad(texels, x - columns / 2, y - rows / 2, columns, rows, colour)

    def text(self, general, text, x, y, size):
        """A line of letters with its shadow."""
        sheet = self.load(general["menufont"])
        cell = sheet.shape[0] // 16
        for prefix, offset in (("textdropshadow", True), ("menufont", False)):
            colour = [float(general[f"{prefix}color_{channel}"]) for channel in "rgba"]
            dx, dy = (float(general[f"textdropshadowoffset_{axis}"]) if offset else 0.0 for axis in "xy")
            for index, byte in enumerate(text.encode("latin-1")):
                row, column = byte >> 4, byte & 15
                glyph = sheet[row * cell : (row + 1) * cell, column * cell : (column + 1) * cell]
                self.quad(glyph, x + dx + index * size, y + dy, size, size, colour)


class Menu:
    def __init__(self, window, name, focus):
        self.window, self.own, self.general = window, settings(f"menu_{name}"), settings("menu_general")
        self.focus = focus

    def number(self, key):
        return float(self.own[key.lower()])

    def rectangle(self, name):
        return [self.number(f"{name}_{side}") for side in "xywh"]

    def draw(self):
        if "waterlevel_x" in self.own:
            self.draw_finish()
        else:
            self.window.image(self.own["logo"], self.number("logo_x"), self.number("logo_y"))
        for name in [key.removesuffix("_frames_outoffocus") for key in self.own if key.endswith("_frames_outoffocus")]:
            self.draw_button(name)
        for name, text in LABELS.items():
            if f"{name}_x".lower() in self.own:
                size = float(self.own.get(f"{name}_fontSize".lower(), self.general["labelfontsizes"]))
                self.text(text, self.number(f"{name}_x"), self.number(f"{name}_y"), size)
        for name, choice in CHOICES.items():
            if f"{name}_x".lower() in self.own:
                self.draw_chooser(name, *choice)
        for name in ("instructionsText", "creditsText"):
            if f"{name}_text".lower() in self.own:
                text, size = self.own[f"{name}_text".lower()], self.number(f"{name}_fontSize")
                middle = self.number(f"{name}_x") + self.number(f"{name}_w") / 2
                self.text(text, middle - len(text) * size / 2, self.number(f"{name}_y"), size)
        if "highscores_x" in self.own:
            self.draw_scores()

    def text(self, text, x, y, size):
        self.window.text(self.general, text, x, y, size)

    def draw_button(self, name):
        x, y, width, height = self.rectangle(name)
        key, last = (f"{name}_frames_infocus", True) if name == self.focus.lower() else (f"{name}_frames_outoffocus",
                                                                                         False)
        frame = self.own[key]
        if last:
            stem = frame.removeprefix("gfx\\").replace("\\", "/").rpartition("_frame")[0]
            frame = sorted(path.name for path in tga.GFX.glob(f"{stem}_frame*.tga"))[-1]
            frame = f"gfx\\menu\\{frame}"
        shadow = [float(self.general[f"buttondropshadowcolor_{channel}"]) for channel in "rgba"]
        dx, dy = (float(self.general[f"buttondropshadowoffset_{axis}"]) for axis in "xy")
        self.window.image(frame, x + width / 2 + dx, y + height / 2 + dy, shadow)
        self.window.image(frame, x + width / 2, y + height / 2)

    def draw_chooser(self, name, text, index, last):
        x, y, width, height = self.rectangle(name)
        size = float(self.general["optionchooserfontsizes"])
        middle_x, middle_y, half = x + width / 2, y + height / 2, len(text) * size / 2
        self.text(text, middle_x - half, middle_y - size / 2, size)
        for side, end, key in ((-1, 0, "left"), (1, last, "right")):
            frame = self.general[f"optionchooser{key}buttons_frames_outoffocus"]
            arrow = self.window.load(frame).shape[1]
            self.window.image(frame, middle_x + side * (half + arrow / 2), middle_y,
                              (1, 1, 1, 0.25 if index == end else 1))

    def draw_scores(self):
        x, y = self.number("highScores_x"), self.number("highScores_y")
        title, entry = self.number("highScores_titleFontSize"), self.number("highScores_entryFontSize")
        columns = x, x + 6 * title, x + 18 * title
        for place, text in zip(columns, ("Rank", "Name", "Score")):
            self.text(text, place, y, title)
        y += 2 * title
        for rank, (name, score) in enumerate(SCORES):
            for place, text in zip(columns, (str(rank + 1), name[:20], str(score))):
                self.text(text, place, y, entry)
            y += title

    def draw_finish(self):
        x, y, width, height = self.rectangle("waterLevel")
        backdrop = settings("game")
        self.window.picture[:] = [float(backdrop[f"background_{channel}"]) for channel in "rgb"]
        share = np.linspace(0, 1, 16)[:, None, None]
        water = np.ones((16, 16, 3)) * (0.8, 0.85, 1.0) * (1 - share) + np.array((0.7, 0.75, 1.0)) * share
        self.window.quad(np.dstack([water, np.ones((16, 16))]), x, y + height * (1 - WATER), width, height * WATER)
        self.window.quad(self.window.load(self.own["backgroundimage"]), *self.rectangle("backgroundImage"))
        x, y, width, height = self.rectangle("timeDisplay")
        size = self.number("timeDisplay_fontSize")
        self.text("02:17:48", x + width / 2 - 4 * size, y + height / 2 - size / 2, size)


def main(folder, game, size, *screens):
    width, height = (int(side) for side in size.split("x"))
    background = Image.open(game)
    for screen in screens or SCREENS:
        name, _, focus = screen.partition(":")
        window = Window(background, width, height)
        Menu(window, name, focus).draw()
        path = pathlib.Path(folder) / f"menu_{name}_{size}.png"
        Image.fromarray((np.clip(window.picture, 0, 1) * 255 + 0.5).astype(np.uint8)).save(path)
        print(path)


if __name__ == "__main__":
    main(*sys.argv[1:])
