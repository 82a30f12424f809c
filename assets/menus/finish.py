"""Writes the end of a level: data/gfx/menu/home_frame00.tga, 2048 x 1024, and data/gfx/menu/finish.tga, 1024 x 1024.

The first is the depth of the tarn, in which the picture of the level fades away. The game lays it on the middle of a
view that is up to twice as wide as its 800 units, hence its size. The second is the same depth with the board of the
scores; the column of water is drawn under it by the game, in a pale blue that the glass in front of it makes cyan.
"""

import numpy as np

import palette
from lib import shade, shapes, tga
from menus import boards, joinery

FADE = (1024, 2048)  # rows and columns, one a unit, about the middle of the screen
CANVAS = (1024, 1024)
LEFT, TOP = (CANVAS[1] - 800) // 2, (CANVAS[0] - 600) // 2  # where the screen lies on the canvas
SMOOTH, PACKING = 1, 3  # for the depth, and for the board
# The column: its glass on the screen, and the place of the water, whose top is 128 drops
GLASS = 106, 112, 214, 440
WATER_TOP, WATER_BOTTOM = 143, 435
FULL = 128
RAYS = ((120, 90, 0.9), (330, 60, 0.7), (520, 130, 1.0), (760, 80, 0.8), (980, 110, 0.7), (-140, 120, 0.9),
        (-420, 90, 0.7), (1240, 120, 0.8))  # x at the surface, width, strength


def depths(x, y):
    """Colours of the tarn's depth at places of the screen, in units: light falls in from the top left."""
    colour = shade.ramp(np.clip((y + 120) / 860, 0, 1), palette.DEPTH_RAMP, (0, 0.16, 0.42, 0.72, 1))
    light = np.zeros(x.shape)
    for start, width, strength in RAYS:
        across = (x - start - 0.42 * y) / (width * (0.7 + y / 900))
        light += strength * np.exp(-(across**2))
    fade = np.clip(1 - (y + 120) / 760, 0, 1) ** 1.4
    colour = colour + (light * fade)[..., None] * np.array(palette.RAY)
    random = np.random.default_rng(7)
    for _ in range(70):
        bubble_x, bubble_y, size = random.uniform(-600, 1400), random.uniform(-100, 700), random.uniform(1.5, 6.0)
        near = (slice(max(int(bubble_y - y[0, 0] - 9), 0), max(int(bubble_y - y[0, 0] + 10), 0)),
                slice(max(int(bubble_x - x[0, 0] - 9), 0), max(int(bubble_x - x[0, 0] + 10), 0)))
        distance = np.hypot(x[near] - bubble_x, y[near] - bubble_y)
        rim = np.exp(-(((distance - size) / 0.9) ** 2)) * 0.30
        glint = np.exp(-((np.hypot(x[near] - bubble_x + size * 0.4, y[near] - bubble_y + size * 0.4) / (0.5 + size / 5))
                         ** 2)) * 0.5
        colour[near] = shade.mix(colour[near], palette.FOAM, np.clip(rim + glint, 0, 1))
    return np.clip(colour, 0, 1)


def places(rows, columns):
    """Places on the screen of a canvas that lies on its middle."""
    x, y = shapes.grid(rows, columns)
    return x + 0.5 + 400 - columns / 2, y + 0.5 + 300 - rows / 2


def on_screen(x, y):
    return LEFT + x, TOP + y


def glass(canvas):
    """Lays the glass of the column into the board: clear, cyan, with a brass rim and a scale."""
    x, y = places(*CANVAS)
    left, top, right, bottom = GLASS
    inside = shapes.rounded_box(x - (left + right) / 2, y - (top + bottom) / 2, (right - left) / 2, (bottom - top) / 2,
                                26)
    across = (x - left) / (right - left) * 2 - 1
    rounding = 0.52 + 0.40 * np.abs(across) ** 3
    colour = shade.mix(shade.flat(CANVAS, palette.GLASS), palette.INK, np.abs(across) ** 3 * 0.75)
    for place, width, strength in ((-0.62, 0.12, 0.55), (0.52, 0.05, 0.35)):
        shine = np.exp(-(((across - place) / width) ** 2)) * strength * shade.smoothstep(6, 24, inside)
        colour, rounding = shade.mix(colour, palette.FOAM, shine), rounding + shine * 0.3
    hole = np.clip(inside - 5, 0, 1)
    pane = np.dstack([colour, np.clip(rounding, 0, 1)])
    canvas[:] = shade.mix(canvas, pane, hole)
    rim = shapes.half_ball(inside - 1.2, 5.6) * 5.0
    rim_mask = np.clip(4.4 - np.abs(inside - 1.2), 0, 1)
    dark = np.exp(-((np.clip(-inside - 2.5, 0, None) / 4.0) ** 2)) * (inside < 0) * 0.55
    canvas[:] = shapes.over(canvas, np.dstack([shade.flat(CANVAS, palette.INK), dark]))
    canvas[:] = shapes.over(canvas, np.dstack([joinery.brass(rim, strength=0.7), rim_mask]))
    for drops in range(0, FULL + 1, FULL // 4):
        level = WATER_BOTTOM + (WATER_TOP - WATER_BOTTOM) * drops / FULL
        tick = np.clip(np.minimum(1.6 - np.abs(y - level), np.minimum(x - right - 7, right + 19 - x)), 0, 1)
        canvas[:] = shapes.over(canvas, np.dstack([shade.flat(CANVAS, palette.BRASS_RAMP[3]), tick]))
        mark = np.clip(np.minimum(0.9 - np.abs(y - level), 16 - np.abs(x - (right - 20))), 0, 1) * (inside > 4) * 0.6
        canvas[:] = shapes.over(canvas, np.dstack([shade.flat(CANVAS, palette.BRASS_RAMP[3]), mark]))
        if drops:
            boards.ink(canvas, str(drops), *on_screen(right + 23, level), size=13, weight="Bold",
                       colour=palette.BRASS_RAMP[3])


def backdrop():
    """The board of the scores in the depth, on a canvas of which the middle is the screen; and where it is smooth."""
    canvas = np.dstack([depths(*places(*CANVAS)), np.ones(CANVAS)])
    x, y = places(*CANVAS)
    hung = boards.clear(*CANVAS)
    boards.chains(hung, [LEFT + 400 - 84, LEFT + 400 + 84], TOP + 470, TOP + 512)
    boards.chains(hung, [LEFT + 400 - 230, LEFT + 400 + 230], TOP, TOP + 70)
    boards.place(hung, boards.board(*CANVAS, LEFT + 60, TOP + 46, LEFT + 740, TOP + 480, 74, seed=65), 0, 0)
    boards.heading(hung, "The water is home", LEFT + 400, TOP + 48, 205)
    canvas = shapes.over(canvas, hung)
    line = np.minimum(1.2 - np.abs(y - 356), np.minimum(x - 290, 700 - x))
    canvas = shapes.over(canvas, np.dstack([shade.flat(CANVAS, palette.BRASS_RAMP[2]), np.clip(line, 0, 1)]))
    glass(canvas)
    seen = (x >= -4) & (x <= 804) & (y >= -4) & (y <= 604)
    canvas[~seen] = 0
    return canvas, hung[..., 3] < 1


if __name__ == "__main__":
    tga.save("menu/home_frame00.tga", depths(*places(*FADE)), SMOOTH)
    board, depth = backdrop()
    tga.save("menu/finish.tga", board, PACKING, smooth=depth)
