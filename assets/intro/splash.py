"""Makes what shows while a level loads: the tarn of the intro with the name above it, and a small wheel that turns.

The game cuts the splash's picture out of the middle of a square one, whose sides are powers of two.
"""

import numpy as np
from PIL import Image

import palette
from lib import shade, shapes, tga
from menus import logo
from props import wheel

FOLDER = tga.GFX / "splash"
SIDE = 1024  # pixels of the square picture
COLUMNS, ROWS = 1024, 768  # of the part that shows: 800 by 600 units
UNIT = COLUMNS / 800  # pixels
LOGO_PLACE = 400, 128  # units


def resized(planes, size):
    """Colours and alpha in another size; colours count by their alpha."""
    weighted = [planes[..., k] * planes[..., 3] for k in range(3)] + [planes[..., 3]]
    return np.dstack([np.asarray(Image.fromarray(plane.astype(np.float32)).resize(size, Image.BOX))
                      for plane in weighted])


def with_logo(picture):
    size = round(logo.COLUMNS * UNIT), round(logo.ROWS * UNIT)
    letters = resized(logo.picture(), size)
    column, row = (round(LOGO_PLACE[axis] * UNIT - size[axis] / 2) for axis in (0, 1))
    row = max(row, 0)
    area = picture[row : row + size[1], column : column + size[0]]
    area[:] = area * (1 - letters[..., 3:]) + letters[..., :3]
    return picture


def evening(picture):
    """Darkens the sky behind the name, the corners, and the masonry behind the wheel."""
    y, x = np.mgrid[-1 : 1 : ROWS * 1j, -1 : 1 : COLUMNS * 1j]
    cover = 0.38 * np.clip(np.hypot(x, y) / 1.4, 0, 1) ** 2.2
    cover = 1 - (1 - cover) * (1 - 0.30 * np.clip(0.2 - y, 0, 1)) * (1 - 0.72 * shade.smoothstep(0.36, 0.95, y))
    return shade.mix(picture, shade.flat(cover.shape, palette.INK), cover)


def save(place):
    """`place` is the tarn as the game draws it, 800 by 600 units, in any size."""
    small = np.asarray(Image.fromarray(place).resize((COLUMNS, ROWS), Image.LANCZOS)).astype(float) / 255
    square = shade.flat((SIDE, SIDE), palette.INK)
    first = (SIDE - ROWS) // 2
    square[first : first + ROWS] = with_logo(evening(small))
    FOLDER.mkdir(parents=True, exist_ok=True)
    path = FOLDER / "background.png"
    Image.fromarray((np.clip(square, 0, 1) * 255 + 0.5).astype(np.uint8)).save(path, optimize=True)
    print(f"data/gfx/splash/background.png: {SIDE} x {SIDE}, {path.stat().st_size} bytes")
    for number in range(wheel.FRAMES):
        tga.save(f"splash/wheel_frame{number:02}.tga", shapes.shrink(wheel.frame(number), 2))
