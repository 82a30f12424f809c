"""Makes the pictures of the effect particles, 32 x 32: data/gfx/fx_drop.tga, fx_spark.tga and fx_dust.tga.

They are drawn a few world units wide, so they are little more than a soft shape. Their settings in data/fx colour them;
sparks are added to what lies below, all others cover it.
"""

import numpy as np

import palette
from lib import noise, shade, shapes, tga

SIZE = 32


def places():
    """Places from -1 to 1 on the sprite."""
    x, y = shapes.grid(SIZE)
    return (x - (SIZE - 1) / 2) / (SIZE / 2), (y - (SIZE - 1) / 2) / (SIZE / 2)


def drop():
    """A round drop, lit from the top left, that is clear at its border."""
    x, y = places()
    radius = np.hypot(x, y)
    light = shade.smoothstep(0.8, 0.0, np.hypot(x + 0.25, y + 0.3))
    colour = shade.mix(shade.flat(radius.shape, palette.WATER_SHALLOW), palette.WHITE, light)
    return np.dstack([colour, shade.smoothstep(0.88, 0.55, radius)])


def spark():
    """A hot core in a glow that fades out before the border."""
    x, y = places()
    radius = np.hypot(x, y)
    core = shade.smoothstep(0.45, 0.0, radius)
    colour = shade.mix(shade.flat(radius.shape, palette.LANTERN_GLOW), palette.LANTERN_CORE, core)
    return np.dstack([colour, np.clip(core + 0.45 * shade.smoothstep(0.9, 0.1, radius) ** 2, 0.0, 1.0)])


def dust():
    """An uneven puff."""
    x, y = places()
    radius = np.hypot(x, y)
    uneven = radius + (noise.fbm(SIZE, 2.6, seed=11) - 0.5) * 0.3
    alpha = shade.smoothstep(0.9, 0.1, uneven) * shade.smoothstep(0.95, 0.75, radius)
    return np.dstack([shade.flat(radius.shape, palette.WHITE), alpha])


if __name__ == "__main__":
    tga.save("fx_drop.tga", drop())
    tga.save("fx_spark.tga", spark())
    tga.save("fx_dust.tga", dust())
