"""Writes the arrows beside a choice into data/gfx/menu, 32 x 32: brass arrow heads that turn to water.

Frames and states are those of the signs: arrow_left_idle_frame00.tga and so on.
"""

import numpy as np

from lib import shade, shapes, tga
from menus import joinery, lettering

SIZE = 32
SCALE = 8
RIGHT = ((7.5, 3.5), (27.5, 16), (7.5, 28.5), (11.5, 16))
ROUNDING = 1.2
EDGE = 2.6
FOCUS_FRAMES = 4
PACKING = 2


def arrow(points, fill, phase):
    """An arrow filled with water to `fill`, 0 to 1; solid brass while it is dry."""
    mask = shapes.polygon(SIZE, SIZE, points, SCALE)
    mask = (shade.blur(mask, ROUNDING * SCALE, mode="constant") > 0.44).astype(float)
    inside = shapes.inside(mask) / SCALE
    colour = joinery.brass(shade.blur(np.clip(inside, 0, 4.5), 0.3) * SCALE * 0.8, seed=5)
    if fill > 0:
        well = shade.smoothstep(EDGE - 0.5, EDGE + 0.2, inside)
        rows = np.flatnonzero(well.sum(1) > 0.5)
        level = rows[-1] + 2 * SCALE - (rows[-1] - rows[0] + 5 * SCALE) * fill
        colour = lettering.pour(colour, well, level, phase, SCALE, depth=60, rim=0.4, glow=0.0)
    return shapes.shrink(np.dstack([colour, mask]), SCALE)


def save_arrow(name, points):
    def save(run, index, picture):
        tga.save(f"menu/arrow_{name}_{run}_frame{index:02d}.tga", picture, PACKING)

    save("idle", 0, arrow(points, 0, 0))
    for index in range(FOCUS_FRAMES):
        save("focus", index, arrow(points, (index + 1) / FOCUS_FRAMES, 0.9 * (index + 1)))
    save("clicked", 0, arrow(points, 1, 5.4))


if __name__ == "__main__":
    save_arrow("right", RIGHT)
    save_arrow("left", [(SIZE - x, y) for x, y in RIGHT])
