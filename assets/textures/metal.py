"""Metal: riveted sheets, a row of iron and a row of copper with grey-green patina, the pipes and tanks of the works."""

import numpy as np

import palette
from lib import noise, shade, shapes

SHEET = 128  # side of a sheet; iron above, copper below
RIVET = 4.2
RIVET_INSET = 9
RIVETS_A_SIDE = 4


def rivet_places(size):
    """Rivets along the four sides of each sheet."""
    along = np.arange(SHEET / RIVETS_A_SIDE / 2, size, SHEET / RIVETS_A_SIDE)
    for inset in (RIVET_INSET, SHEET - RIVET_INSET, SHEET + RIVET_INSET, size - RIVET_INSET):
        for place in along:
            yield place, inset
            if 20 <= place % SHEET <= SHEET - 20:
                yield inset, place


def tile(size=256):
    x, y = shapes.grid(size)
    joint = np.minimum(np.abs(shapes.wrapped(x, SHEET)), np.abs(shapes.wrapped(y, SHEET)))
    edge = joint + (noise.fbm(size, 2.2, seed=5) - 0.5) * 1.6
    blotches, grit = noise.fbm(size, 2.8, seed=6), noise.fbm(size, 1.2, seed=7)
    rolled = noise.fbm(size, 1.4, seed=8, stretch_x=7, stretch_y=0.6)  # streaks of the rolling mill, along x
    height = (1 - (1 - np.clip((edge - 1.2) / 3.6, 0, 1)) ** 2) * 3.4
    height += (blotches - 0.5) * 4.5 + (grit - 0.5) * 0.25 + (rolled - 0.5) * 0.6

    tone = 0.44 + 0.8 * (blotches - 0.5) + 0.14 * (grit - 0.5) + 0.22 * (rolled - 0.5)
    copper = (y >= SHEET).astype(float)
    iron = shade.ramp(tone, palette.IRON_RAMP, (0, 0.35, 0.65, 1))
    colour = shade.mix(iron, shade.ramp(tone, palette.COPPER_RAMP, (0, 0.3, 0.6, 1)), copper)
    # Rust in the iron's corners ties it to the copper below.
    rust = shade.smoothstep(0.50, 0.74, noise.fbm(size, 2.6, seed=15)) * np.exp(-((edge / 22) ** 2)) * (1 - copper)
    colour = shade.mix(colour, shade.ramp(tone, palette.COPPER_RAMP), rust * 0.6)
    weather = noise.fbm(size, 2.8, seed=12) + 0.20 * np.exp(-((edge / 10) ** 2)) + 0.05 * (grit - 0.5)
    patina = shade.smoothstep(0.52, 0.80, weather + 0.04 * copper) * (0.45 + 0.35 * copper)
    colour = shade.mix(colour, shade.ramp(grit * 0.6 + blotches * 0.4, palette.PATINA_RAMP), patina)
    for place_x, place_y in rivet_places(size):
        distance = np.hypot(shapes.wrapped(x - place_x, size), shapes.wrapped(y - place_y, size))
        ball = shapes.half_ball(distance, RIVET)
        height = np.where(ball > 0, np.maximum(height, 3.6 + ball * 4.2), height)
        colour = colour * (1 - 0.26 * np.exp(-(((distance - RIVET - 0.8) / 1.4) ** 2)))[..., None]
    colour = shade.mix(colour, palette.SEAM, shade.smoothstep(1.6, -0.2, edge) * 0.85)
    lambert = shade.light(height, 0.5)
    glint = np.clip(lambert - 1.05, 0, 1) ** 1.5
    lighted = colour * np.clip(lambert, 0.4, 1.5)[..., None] ** 0.95 + glint[..., None] * (0.75, 0.62, 0.42)
    return shade.brush(lighted, 1.6, share=0.6)
