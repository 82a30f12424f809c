"""Letters of the menus: their masks, the cut of a chisel, and water that stands in them.

The face is Vollkorn, whose broad serifs stay clear when a screen of 3840 x 2160 draws each pixel nearly four times as
large. All sizes are in units, one pixel of the finished picture; `scale` is the number of pixels drawn for each.
"""

import numpy as np
from PIL import Image, ImageDraw, ImageFont
from scipy import ndimage

import palette
from lib import shade, shapes

FOLDER = "/usr/share/fonts/truetype/vollkorn/Vollkorn-"
CHISEL = 3.2  # depth of a cut in units: wider strokes have a flat bottom


def font(weight, size, scale=1):
    return ImageFont.truetype(f"{FOLDER}{weight}.ttf", round(size * scale))


def advances(letters, text, tracking):
    """How far each letter moves the pen, in pixels, with the face's own kerning."""
    steps = []
    for index, letter in enumerate(text):
        pair = text[index : index + 2]
        own = letters.getlength(pair) - letters.getlength(pair[1:]) if len(pair) > 1 else letters.getlength(letter)
        steps.append(own + (tracking if len(pair) > 1 else 0))
    return steps


def width(text, weight, size, tracking=0.0):
    """The width of a text in units."""
    large = font(weight, size, 8)
    return sum(advances(large, text, tracking * 8)) / 8


def mask(text, weight, size, shape, place, tracking=0.0, scale=1, align=0.5):
    """The letters on a canvas of `shape` (rows, columns) units, 0 to 1.

    `place` is (x, y): the middle of the line at `align` 0.5, its start at 0, its end at 1; and the middle of the
    capitals.
    """
    rows, columns = shape
    letters = font(weight, size, scale)
    steps = advances(letters, text, tracking * scale)
    pen = place[0] * scale - sum(steps) * align
    baseline = place[1] * scale - letters.getbbox("H", anchor="ls")[1] / 2
    image = Image.new("L", (columns * scale, rows * scale))
    draw = ImageDraw.Draw(image)
    for letter, step in zip(text, steps):
        draw.text((pen, baseline), letter, fill=255, font=letters, anchor="ls")
        pen += step
    return np.array(image).astype(float) / 255


def carve(wood, letters, scale):
    """Cuts letters into a picture of wood: dark where the cut turns from the light, with a lit lower lip."""
    depth = ndimage.distance_transform_edt(letters > 0.5)
    lambert = shade.light(shade.blur(-np.minimum(depth, CHISEL * scale) * 0.95, 0.35 * scale, mode="nearest"), 1.0,
                          wrap=False)
    cut = shade.ramp(np.clip(0.34 + (lambert - 1) * 0.42, 0, 1), palette.CUT_RAMP)
    lip = np.clip(ndimage.shift(letters, (0.8 * scale, 0.8 * scale), order=1) - letters, 0, 1)
    return shade.mix(wood, cut, letters) + lip[..., None] * np.array(palette.CUT_LIP)


def extent(letters):
    """First and last row of the letters."""
    rows = np.flatnonzero(letters.sum(1))
    return rows[0], rows[-1]


def surface(shape, level, phase, scale):
    """The row of the water's surface over each column, for a calm level and a phase of its waves."""
    x = shapes.grid(*shape)[0] / scale
    return level + (np.sin(x / 9 + phase) * 1.3 + np.sin(x / 4.3 - phase * 1.7) * 0.6) * scale


def water(shape, below, phase, scale, depth):
    """Colours of water `below` pixels under its surface, brightest there, with slow caustics in it."""
    x, y = (places / scale for places in shapes.grid(*shape))
    colour = shade.ramp(np.clip(below / (depth * scale), 0, 1), palette.WATER_RAMP, (0, 0.18, 0.6, 1))
    caustics = np.sin(x / 5 + np.sin(y / 4 + phase) * 1.6) * np.sin(y / 3.2 - phase + np.sin(x / 7))
    return colour + np.clip(caustics - 0.45, 0, 1)[..., None] * 0.45


def pour(picture, letters, level, phase, scale, depth=22.0, rim=1.1, glow=1.0):
    """Fills letters with water from the bottom up to `level` (a row), and lets it shine on what is around."""
    below = shapes.grid(*letters.shape)[1] - surface(letters.shape, level, phase, scale)
    wet = letters * np.clip(below + 0.5, 0, 1)
    colour = water(letters.shape, below, phase, scale, depth)
    inside = ndimage.distance_transform_edt(letters > 0.5)
    colour = shade.mix(colour, palette.WATER_RIM, np.exp(-inside / (rim * scale)) * 0.75)
    colour = shade.mix(colour, palette.FOAM, np.exp(-((below / scale) ** 2)) * (below > -scale))
    shine = shade.blur(wet, 6 * scale, mode="constant") * 0.9 + shade.blur(wet, 2.2 * scale, mode="constant") * 0.35
    shine = (shine * (1 - letters))[..., None] * glow
    picture = picture * (1 - np.clip(0.9 * shine, 0, 0.62)) + shine * np.array(palette.WATER_SHINE)
    return shade.mix(picture, colour, wet * 0.96)
