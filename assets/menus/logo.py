"""Writes the name of the game, data/gfx/menu/logo.tga (512 x 256): brass letters, the dusk above and water below."""

import numpy as np
from scipy import ndimage

import palette
from lib import noise, shade, shapes, tga
from menus import lettering

ROWS, COLUMNS = 256, 512
SCALE = 3
SIZE = 94
TRACKING = 1.6
BASE = 132  # row of the middle of the capitals
FILL = 0.54  # how much of the letters' height stays dry
RIM = 3.9  # width of the brass around the letters
CONTOUR = 7.2  # distance of the ink contour's edge
# Ripples below the letters: distance, half length, thickness
RIPPLES = ((16, 150, 2.0), (25, 104, 1.7), (33, 58, 1.4))


def interior(letters, level, phase):
    """Light of the dusk with water up to `level`, darker towards the brass."""
    top, bottom = lettering.extent(letters)
    rows = shapes.grid(*letters.shape)[1]
    sky = shade.ramp(np.clip((rows - top) / (bottom - top), 0, 1), palette.LETTER_RAMP)
    sky = sky * (0.92 + 0.16 * noise.fbm(letters.shape, 2.4, seed=5, stretch_x=2, stretch_y=0.8))[..., None]
    filled = lettering.pour(sky, letters, level, phase, SCALE * 1.6)
    depth = ndimage.distance_transform_edt(letters > 0.5) / SCALE
    return filled * (0.72 + 0.28 * shade.smoothstep(0, 4.5, depth))[..., None]


def ripples(shape, bottom):
    """Bright lines on the water that the letters stand in, 0 to 1."""
    x, y = shapes.grid(*shape)
    lines = np.zeros(shape)
    for index, (distance, half, thickness) in enumerate(RIPPLES):
        line = bottom + distance * SCALE + np.sin(x / (13 * SCALE) + index * 1.3) * 1.8 * SCALE
        fade = np.clip(1 - ((x - shape[1] / 2) / (half * SCALE)) ** 2, 0, 1) ** 0.6
        lines = np.maximum(lines, np.exp(-(((y - line) / (thickness * SCALE * 0.62)) ** 2)) * fade)
    return lines


def picture(fill=FILL, phase=0.6, ripple=1.0):
    """The logo at SCALE pixels a unit: `fill` is how much of the letters stays dry, `phase` that of the waves."""
    letters = lettering.mask("Tarnwick", "Black", SIZE, (ROWS, COLUMNS), (COLUMNS / 2, BASE), TRACKING, SCALE)
    distance = shapes.inside(letters) / SCALE
    top, bottom = lettering.extent(letters)
    level = top + (bottom - top) * fill
    rows = shapes.grid(*letters.shape)[1]

    rim = shade.smoothstep(-RIM - 0.8, -RIM, distance) * shade.smoothstep(0.9, 0.2, distance)
    height = shade.blur(shapes.half_ball(distance + 1.8, 2.8) * 3.0 * SCALE, 0.6 * SCALE, mode="nearest")
    grain = 0.5 + (noise.fbm(letters.shape, 2.4, seed=3) - 0.5) * 0.7
    brass = shade.metallic(height, grain + 0.35, palette.BRASS_RAMP, strength=0.62)
    solid = shade.smoothstep(-CONTOUR - 0.6, -CONTOUR + 0.8, distance)
    colour = shade.mix(shade.flat(letters.shape, palette.INK), interior(letters, level, phase),
                       shade.smoothstep(-0.2, 0.6, distance))
    colour = shade.mix(colour, brass, rim)

    # Around the contour: a soft shadow, the shine of the water, and ripples
    shine = shade.blur(letters * shade.smoothstep(level - 4 * SCALE, level + 12 * SCALE, rows), 9 * SCALE, "constant")
    shine = np.clip(shine * 0.8, 0, 0.5)
    shadow = shade.blur(ndimage.shift(solid, (3 * SCALE, 2 * SCALE), order=1), 3.5 * SCALE, "constant") * 0.55
    lines = ripples(letters.shape, bottom) * ripple
    alpha = 1 - (1 - solid) * (1 - shadow) * (1 - shine) * (1 - lines * 0.95)
    around = shade.mix(shade.flat(letters.shape, palette.INK), palette.WATER_RAMP[1], shine / (shine + shadow + 1e-4))
    around = shade.mix(around, palette.WATER_RAMP[0], lines)
    return np.dstack([shade.mix(around, colour, solid), alpha])


if __name__ == "__main__":
    tga.save("menu/logo.tga", shapes.shrink(picture(), SCALE))
