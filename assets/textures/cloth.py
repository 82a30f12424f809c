"""Cloth: linen of a coarse weave in soft folds, with one woven red stripe between two blue lines."""

import numpy as np

import palette
from lib import noise, shade, shapes

THREAD = 8.0  # two threads of the weave
STRIPE = 64  # y of the stripe; narrow cloth is laid so that it shows


def tile(size=256):
    x, y = shapes.grid(size)
    stains, shades = noise.fbm(size, 2.4, seed=33), noise.fbm(size, 3.2, seed=31)
    folds = shade.blur(noise.fbm(size, 4.0, seed=37, stretch_x=1.0, stretch_y=1.5), 2)
    thread_x = x + (noise.fbm(size, 2, seed=32) - 0.5) * 3
    thread_y = y + (noise.fbm(size, 2, seed=34) - 0.5) * 3
    warp = np.abs(np.sin(thread_x * np.pi / THREAD))
    weft = np.abs(np.sin(thread_y * np.pi / THREAD))
    warp_above = ((thread_x // THREAD).astype(int) + (thread_y // THREAD).astype(int)) % 2 == 0
    above = np.where(warp_above, warp, weft)
    height = above * 0.55 + np.where(warp_above, weft, warp) * 0.2
    height += (folds - 0.5) * 46 + (noise.fbm(size, 1.6, seed=35) - 0.5) * 0.5

    tone = 0.60 + 0.18 * (shades - 0.5) + 0.20 * (stains - 0.5) + 0.16 * (above - 0.6)
    tone += 0.10 * (noise.fbm(size, 1.0, seed=36) - 0.5)
    colour = shade.ramp(tone, palette.LINEN_RAMP)
    wavy = y + (shades - 0.5) * 6

    def stripe(middle, half):
        return shade.smoothstep(half + 0.8, half - 0.8, np.abs(shapes.wrapped(wavy - middle, size)))

    dyed = 0.45 + 0.9 * (tone - 0.6)
    colour = shade.mix(colour, shade.ramp(dyed, palette.WOVEN_RED_RAMP), stripe(STRIPE, 11) * 0.88)
    lines = np.maximum(stripe(STRIPE - 20, 2.6), stripe(STRIPE + 20, 2.6))
    colour = shade.mix(colour, shade.ramp(dyed, palette.WOVEN_BLUE_RAMP), lines * 0.85)
    return shade.lit(colour, height, 0.42, lowest=0.6, highest=1.3, glint=(0.13, 0.10, 0.05))
