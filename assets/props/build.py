"""Writes the things that stand about in a level: grass, the lantern and its glow, and the wheel's eight frames.

An object is drawn centred on its place, one pixel a unit, on any layer. Each picture keeps a clear border of two
pixels, since pictures repeat; sides are powers of two, so a thing is often smaller than its picture.
"""

import numpy as np
from PIL import Image, ImageDraw

import palette
from lib import shade, shapes, tga
from props import wheel

OVERSAMPLING = 6


def colour_bytes(colour):
    return tuple(int(round(value * 255)) for value in colour)


class Canvas:
    """An enlarged picture to draw on in units, clear at first in the given colour."""

    def __init__(self, columns, rows, clear):
        self.image = Image.new("RGBA", (columns * OVERSAMPLING, rows * OVERSAMPLING),
                               colour_bytes(shade.rgb(clear)) + (0,))
        self.pen = ImageDraw.Draw(self.image)

    @staticmethod
    def scaled(points):
        return [(x * OVERSAMPLING, y * OVERSAMPLING) for x, y in points]

    def polygon(self, points, colour):
        self.pen.polygon(self.scaled(points), fill=colour_bytes(colour) + (255,))

    def line(self, points, width, colour):
        self.pen.line(self.scaled(points), fill=colour_bytes(colour) + (255,),
                      width=max(1, round(width * OVERSAMPLING)), joint="curve")

    def ellipse(self, left, top, right, bottom, colour):
        self.pen.ellipse([value * OVERSAMPLING for value in (left, top, right, bottom)],
                         fill=colour_bytes(colour) + (255,))

    def picture(self):
        return shapes.shrink(np.array(self.image).astype(float) / 255, OVERSAMPLING)


TUFT_WIDTH, TUFT_HEIGHT, TUFT_BLADES = 64, 32, 30
TUFT_FADE = 6.0  # rows at the foot over which a tuft fades into the ground


def tuft(seed):
    """A tuft of bent blades. Its foot lies four rows above the picture's lower edge."""
    random = np.random.default_rng(seed)
    canvas = Canvas(TUFT_WIDTH, TUFT_HEIGHT, palette.GRASS_RAMP[1])
    foot = TUFT_HEIGHT - 4
    tall = random.uniform(20, 26)
    for blade in range(TUFT_BLADES):
        depth = blade / (TUFT_BLADES - 1)
        x = TUFT_WIDTH / 2 + random.normal(0, 6.0)
        length = tall * random.uniform(0.45, 1.0) * (1.08 - 0.35 * abs(x - TUFT_WIDTH / 2) / 16)
        bend = random.normal(0, 6.0) + (x - TUFT_WIDTH / 2) * 0.4
        tone = float(np.clip(depth * 0.75 + random.uniform(-0.12, 0.2), 0, 1))
        steps = np.linspace(0, 1, 9)
        middle = [(float(np.clip(x + bend * s * s, 3, TUFT_WIDTH - 3)), foot - length * s * (1 - 0.012 * abs(bend) * s))
                  for s in steps]
        for start, end, share in zip(middle[:-1], middle[1:], steps):
            half = 1.15 * (1 - share) ** 0.7 + 0.12
            colour = shade.ramp(np.array([[min(1.0, tone * 0.75 + share * 0.35)]]), palette.GRASS_RAMP)[0, 0]
            canvas.line([start, end], half * 2, colour)
    picture = canvas.picture()
    rows_above_foot = foot - np.arange(TUFT_HEIGHT)
    picture[..., 3] *= np.clip((rows_above_foot + 0.5) / TUFT_FADE, 0, 1)[:, None]
    return picture


LANTERN_WIDTH, LANTERN_HEIGHT = 32, 64


def lantern():
    """Hangs from its chain: the chain ends at the picture's top, the flame is in the middle."""
    iron, dark = shade.rgb(palette.IRON_RAMP[1]), shade.rgb(palette.WOOD_GAP)
    brass = [shade.rgb(colour) for colour in palette.BRASS_RAMP]
    canvas = Canvas(LANTERN_WIDTH, LANTERN_HEIGHT, palette.LANTERN_LIGHT)
    middle = LANTERN_WIDTH / 2
    for link in range(4):
        y = 3 + link * 4
        canvas.line([(middle - 0.9, y), (middle - 0.9, y + 3)], 0.9, iron)
        canvas.line([(middle + 0.9, y), (middle + 0.9, y + 3)], 0.9, iron)
        canvas.line([(middle, y + 2.5), (middle, y + 4.5)], 1.1, dark)
    canvas.line([(middle, 18), (middle, 21)], 2.0, brass[1])
    canvas.polygon([(middle - 9, 27.5), (middle - 2.2, 20), (middle + 2.2, 20), (middle + 9, 27.5)], brass[2])
    canvas.polygon([(middle - 9, 27.5), (middle - 2.2, 20), (middle - 0.4, 20), (middle - 4.5, 27.5)], brass[3])
    canvas.polygon([(middle + 3.5, 27.5), (middle + 1.2, 20), (middle + 2.2, 20), (middle + 9, 27.5)], brass[1])
    canvas.polygon([(middle - 7, 27), (middle + 7, 27), (middle + 6, 43), (middle - 6, 43)],
                   shade.rgb(palette.LANTERN_LIGHT))
    canvas.ellipse(middle - 4.6, 28.5, middle + 4.6, 42, shade.rgb(palette.LANTERN_CORE))
    canvas.ellipse(middle - 1.5, 32, middle + 1.5, 40, np.ones(3))
    for top, bottom, shade_index in ((-7, -6, 3), (0, 0, 2), (7, 6, 1)):
        canvas.line([(middle + top, 27), (middle + bottom, 43)], 1.3, brass[shade_index])
    canvas.polygon([(middle - 8, 42.5), (middle + 8, 42.5), (middle + 6.5, 46.5), (middle - 6.5, 46.5)], brass[2])
    canvas.polygon([(middle - 8, 42.5), (middle + 8, 42.5), (middle + 7.6, 43.6), (middle - 7.6, 43.6)], brass[3])
    canvas.line([(middle - 9, 27.5), (middle + 9, 27.5)], 1.2, brass[4])
    canvas.line([(middle, 46), (middle, 49)], 2.2, brass[1])
    return canvas.picture()


GLOW_SIZE = 256


def glow():
    """Warm light round a lantern, to be drawn behind it. It ends inside the picture."""
    x, y = shapes.grid(GLOW_SIZE)
    middle = (GLOW_SIZE - 1) / 2
    radius = np.hypot(x - middle, y - middle) / (GLOW_SIZE / 2 - 3)
    alpha = np.clip(1 - radius, 0, 1) ** 2 * 0.42
    return np.dstack([shade.flat(radius.shape, palette.LANTERN_GLOW), alpha])


if __name__ == "__main__":
    for number in range(1, 5):
        tga.save(f"grass_{number}.tga", tuft(number))
    tga.save("lantern.tga", lantern())
    tga.save("lantern_glow.tga", glow())
    for number in range(wheel.FRAMES):
        tga.save(f"wheel_frame{number:02}.tga", wheel.frame(number))
