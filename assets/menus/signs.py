"""Writes the buttons of the menus into data/gfx/menu, 256 x 64: wooden signs with a brass edge and carved letters.

Each has three runs of frames, NAME_idle_frame00.tga and so on. Idle is a picture that rests. Under the pointer,
`focus`, water rises in the letters; it drains when the pointer goes, since the game then plays the run backwards. After a
click, `clicked`, the letters of all signs are full, and the signs tip over like the leaves of a sluice and are gone.
"""

import numpy as np
from scipy import ndimage

import palette
from lib import shade, shapes, tga
from menus import joinery, lettering

ROWS, COLUMNS = 64, 256
SCALE = 4
HALF_HEIGHT = 23
CORNER = 9
EDGE = 5
LONG, SHORT = 118, 78  # half the width of a sign
LETTERS, TRACKING = 28, 1.6
LONG_TEXT, SMALLER_LETTERS = 11, 26  # a text from this length on takes smaller letters
LIT_DEPTH = 110  # units over which the water darkens: letters are shallow, and shine
FOCUS_FRAMES = 6
FULL_FRAMES = 1  # frames of a click before the sign tips
TIPS = (0.90, 0.68, 0.40, 0.14)  # height of the sign while it tips
PACKING = 3  # steps of a colour by which neighbours may be made alike, so that run lengths pay

# File, text, half the width of its plank
SIGNS = (
    ("start", "Start", LONG),
    ("continue", "Continue", LONG),
    ("restart", "Restart", LONG),
    ("load_map", "Load map", LONG),
    ("options", "Options", LONG),
    ("instructions", "Instructions", LONG),
    ("high_scores", "High scores", LONG),
    ("credits", "Credits", LONG),
    ("quit", "Quit", LONG),
    ("load", "Load", LONG),
    ("back", "Back", LONG),
    ("yes", "Yes", SHORT),
    ("no", "No", SHORT),
)


class Sign:
    """The parts of one sign, drawn once, from which its frames are put together."""

    def __init__(self, text, half_width, seed, size=None, units=(ROWS, COLUMNS), half_height=HALF_HEIGHT):
        rows, columns = units
        self.shape = rows * SCALE, columns * SCALE
        centre = columns / 2, rows / 2
        self.inside = joinery.plank(self.shape, centre, (half_width, half_height), CORNER, SCALE, seed + 7)
        self.edge, self.edge_mask = joinery.edge(self.inside, EDGE, SCALE)
        self.nails, self.nails_mask = joinery.nails(
            self.shape, [(centre[0] + side * (half_width - 11), centre[1]) for side in (-1, 1)], 3.2, SCALE)
        size = size or (LETTERS if len(text) < LONG_TEXT else SMALLER_LETTERS)
        self.letters = lettering.mask(text, "Bold", size, units, (centre[0], centre[1] + 0.5), TRACKING, SCALE)
        self.wood = self.carved_wood(seed)

    def carved_wood(self, seed):
        colour, height = joinery.board(self.shape, seed, SCALE)
        lip = shade.blur(self.letters, 1.2 * SCALE, mode="constant") * -0.8 * SCALE
        lambert = shade.light(shade.blur(height + lip, 0.5 * SCALE, mode="nearest"), 0.32, wrap=False)
        colour = colour * np.clip(lambert, 0.55, 1.4)[..., None]
        colour = colour * (0.62 + 0.38 * shade.smoothstep(4.6, 13, self.inside))[..., None]
        colour = shade.brush(colour, 3.5, share=0.65)
        rows = shapes.grid(*self.shape)[1]
        colour = colour * (1.14 - 0.28 * rows / self.shape[0])[..., None]
        colour = lettering.carve(colour, self.letters, SCALE)
        return joinery.shadowed(colour, self.edge_mask, 1.6, 1.2, 0.55, SCALE)

    def frame(self, fill, phase):
        """The sign with its letters filled to `fill`, 0 to 1, at full resolution."""
        picture = self.wood
        if fill > 0:
            top, bottom = lettering.extent(self.letters)
            level = bottom + 3 * SCALE - (bottom - top + 7 * SCALE) * fill
            picture = lettering.pour(picture, self.letters, level, phase, SCALE, depth=LIT_DEPTH, rim=0.6, glow=1.3)
        picture = shade.mix(picture, self.edge, self.edge_mask)
        picture = shade.mix(picture, self.nails, self.nails_mask)
        return np.dstack([picture, np.clip(self.inside * SCALE + 0.5, 0, 1)])


def tipped(picture, height):
    """The sign turned about its long axis until it looks `height` times as high, and catches the light."""
    premultiplied = np.dstack([picture[..., :3] * picture[..., 3:], picture[..., 3:]])
    middle = (picture.shape[0] - 1) / 2
    turned = ndimage.affine_transform(premultiplied, np.diag((1 / height, 1, 1)),
                                      offset=(middle - middle / height, 0, 0), order=1)
    alpha = turned[..., 3:]
    colour = turned[..., :3] / np.maximum(alpha, 1e-6)
    gleam = (1 - height) * 0.30
    return np.dstack([colour * (1 - gleam) + np.array(palette.GLEAM) * gleam, alpha])


def save_run(name, run, frames):
    for index, frame in enumerate(frames):
        tga.save(f"menu/{name}_{run}_frame{index:02d}.tga", shapes.shrink(frame, SCALE), PACKING)


def save_sign(name, text, half_width, seed):
    sign = Sign(text, half_width, seed)
    save_run(name, "idle", [sign.frame(0, 0)])
    fills = 1 - (1 - (np.arange(FOCUS_FRAMES) + 1) / FOCUS_FRAMES) ** 1.7  # fast at first: it answers at once
    save_run(name, "focus", [sign.frame(fill, 0.9 * (index + 1)) for index, fill in enumerate(fills)])
    full = [sign.frame(1, 0.9 * (FOCUS_FRAMES + index + 1)) for index in range(FULL_FRAMES + len(TIPS))]
    tips = [tipped(frame, height) for frame, height in zip(full[FULL_FRAMES:], TIPS)]
    save_run(name, "clicked", full[:FULL_FRAMES] + tips + [np.zeros(full[0].shape)])


if __name__ == "__main__":
    for number, (file, caption, half) in enumerate(SIGNS):
        save_sign(file, caption, half, seed=number + 1)
