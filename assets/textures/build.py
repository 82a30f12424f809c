"""Writes the tiles of data/gfx, 256 x 256 and without seams: each near one, for walls that collide, and a far one.

A far tile is the near one darkened, cooled and hazed: a player tells a wall that stops the water from one that does
not at a glance. Nothing draws the edges of a polygon, so there are also flat pictures of 8 x 8 for the outline below
a polygon, the strips along its edges and the dark that deepens towards its inside; levels lay polygons with them.
"""

import numpy as np

import palette
from lib import shade, tga
from textures import cloth, metal, sand, stone, wood

NEAR = {"stone": stone, "wood": wood, "metal": metal, "cloth": cloth, "sand": sand}
FAR_TINT = (0.46, 0.60, 0.66)
FAR_HAZE = 0.35
FLAT_SIZE = 8

# Edge strips: the side that faces the top left is light, the other one dark. Levels choose by the edge's direction.
LIGHT_STRENGTHS = {"": 0.85, "_soft": 0.45}
DARK_STRENGTH = 0.55
EDGES = {
    "stone": palette.STONE_EDGES,
    "wood": palette.WOOD_EDGES,
    "metal": palette.METAL_EDGES,
    "cloth": palette.CLOTH_EDGES,
    "sand": palette.SAND_EDGES,
    "far": palette.FAR_EDGES,
}
# Outlines under a polygon, and nested strips 10, 6 and 3 units wide inside a stone wall
FLATS = {
    "outline": (palette.INK, 1.0),
    "outline_far": (palette.FAR_OUTLINE, 1.0),
    "shade_10": (palette.INK, 0.10),
    "shade_6": (palette.INK, 0.12),
    "shade_3": (palette.INK, 0.14),
    "sky_top": (palette.SKY_TOP, 1.0),
    "valley_deep": (palette.VALLEY_DEEP, 1.0),
}


def far(near):
    return shade.mix(near * FAR_TINT, palette.FAR_HAZE, FAR_HAZE)


def flat(colour, alpha):
    return np.dstack([shade.flat((FLAT_SIZE, FLAT_SIZE), colour), np.full((FLAT_SIZE, FLAT_SIZE), alpha)])


if __name__ == "__main__":
    for name, module in NEAR.items():
        tile = module.tile()
        tga.save(f"{name}.tga", tile)
        tga.save(f"{name}_far.tga", far(tile))
    for name, (light, dark) in EDGES.items():
        for suffix, strength in LIGHT_STRENGTHS.items():
            tga.save(f"edge_{name}_light{suffix}.tga", flat(light, strength))
        tga.save(f"edge_{name}_dark.tga", flat(dark, DARK_STRENGTH))
    for name, (colour, alpha) in FLATS.items():
        tga.save(f"{name}.tga", flat(colour, alpha))
