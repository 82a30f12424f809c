"""Makes the sprites of the particles, 64 x 64: data/gfx/water.tga, steam.tga and ice.tga, and data/gfx/default.tga.

A particle is drawn as sprites larger than itself over an outline of still larger ones in another colour. Overlapping
sprites merge into one body, and only the outer rim of the outline is left to be seen. The colours come from
data/cfg/water.cfg and are multiplied with the picture, so water and steam are nearly white.
"""

import numpy as np

import palette
from lib import noise, shade, shapes, tga

SIZE = 64


def disc():
    """Places from -1 to 1 on the sprite, and the distance from its middle."""
    x, y = shapes.grid(SIZE)
    x, y = (x - (SIZE - 1) / 2) / (SIZE / 2), (y - (SIZE - 1) / 2) / (SIZE / 2)
    return x, y, np.hypot(x, y)


def water():
    """Wide and soft: in a pool a dozen sprites lie on one another, so the body is even, and only its rim is darker."""
    _, _, radius = disc()
    colour = shade.mix(shade.flat(radius.shape, palette.WATER_SHALLOW), palette.WHITE,
                       shade.smoothstep(0.62, 0.0, radius))
    return np.dstack([colour, shade.smoothstep(0.96, 0.42, radius)])


def steam():
    """A weak uneven puff: only many together make a plume."""
    _, _, radius = disc()
    uneven = radius + (noise.fbm(SIZE, 2.6, seed=5) - 0.5) * 0.16
    alpha = shade.smoothstep(0.98, 0.0, uneven) ** 1.2 * shade.smoothstep(0.97, 0.80, radius)
    return np.dstack([shade.flat(radius.shape, palette.WHITE), alpha])


# One shard of ice: its outline, two inner points, and the facets between them with their tones on the ice's ramp.
SHARD = ((-0.86, 0.30), (-0.42, -0.62), (0.30, -0.88), (0.88, -0.26), (0.52, 0.60), (-0.20, 0.88))
INNER = (0.06, -0.10)
LOWER = (-0.22, 0.16)
FACETS = (
    ((SHARD[0], SHARD[1], INNER, LOWER), 0.92),
    ((SHARD[1], SHARD[2], INNER), 1.00),
    ((SHARD[2], SHARD[3], INNER), 0.62),
    ((SHARD[3], SHARD[4], INNER), 0.30),
    ((SHARD[4], SHARD[5], LOWER, INNER), 0.10),
    ((SHARD[5], SHARD[0], LOWER), 0.46),
)
EDGE_WIDTH = 0.035
OVERSAMPLING = 4


def ice():
    """One large shard of strong contrast: small or pale ones look like popcorn when a disc is made of them."""
    count = SIZE * OVERSAMPLING
    line = (np.arange(count) + 0.5) / count * 2 - 1
    x, y = np.meshgrid(line, line)

    def depth(points):
        """Distance inside the nearest side of a convex outline, negative outside."""
        sides = zip(points, points[1:] + points[:1])
        return np.min([(ex * (y - py) - ey * (x - px)) / np.hypot(ex, ey)
                       for (px, py), (ex, ey) in (((p), (q[0] - p[0], q[1] - p[1])) for p, q in sides)], axis=0)

    tone, edge = np.zeros_like(x), np.full_like(x, 9.0)
    for points, facet_tone in FACETS:
        inside = depth(points)
        tone = np.where(inside > 0, facet_tone, tone)
        edge = np.where(inside > 0, np.minimum(edge, inside), edge)
    cut = np.exp(-((edge / EDGE_WIDTH) ** 2))
    colour = shade.mix(shade.ramp(tone, palette.ICE_RAMP), palette.WHITE, cut * 0.75)
    alpha = (depth(SHARD) > 0) * (0.80 + 0.20 * cut)
    return shapes.shrink(np.dstack([colour, alpha]), OVERSAMPLING)


def default():
    """The stand-in for a missing picture: black and white, one pixel each, top left white, as the game makes it."""
    x, y = shapes.grid(16)
    return np.dstack([1 - (x + y) % 2] * 3)


if __name__ == "__main__":
    tga.save("water.tga", water())
    tga.save("steam.tga", steam())
    tga.save("ice.tga", ice())
    tga.save("default.tga", default())
