"""Stone: coursed rubble masonry, blocks with round shoulders in dark joints, moss where water would sit."""

import numpy as np

import palette
from lib import noise, shade, shapes

COURSES = (0, 44, 84, 132, 170, 214, 256)  # y of the joints
SHORTEST, LONGEST = 40, 78  # widths of blocks
CORNER = 10.0
JOINT = 2.1  # half the width of a joint


def course_blocks(random, size):
    """The x of the joints of one course, from somewhere to the same place a period later."""
    first = random.integers(0, SHORTEST)
    joints = [first]
    while first + size - joints[-1] > SHORTEST + LONGEST * 0.75:
        joints.append(joints[-1] + int(random.integers(SHORTEST, LONGEST)))
    return joints + [first + size]


def blocks(random, size):
    """For each pixel the distance inside its block, and the number of the block."""
    x, y = shapes.grid(size)
    x = x + (noise.fbm(size, 3.4, seed=1) - 0.5) * 14
    y = y + (noise.fbm(size, 3.4, seed=2) - 0.5) * 14
    depth, number, count = np.full((size, size), -1e9), np.zeros((size, size), int), 0
    for top, bottom in zip(COURSES[:-1], COURSES[1:]):
        joints = course_blocks(random, size)
        for left, right in zip(joints[:-1], joints[1:]):
            dx = shapes.wrapped(x - (left + right) / 2, size)
            dy = shapes.wrapped(y - (top + bottom) / 2, size)
            inside = shapes.rounded_box(dx, dy, (right - left) / 2 - JOINT, (bottom - top) / 2 - JOINT, CORNER)
            number = np.where(inside > depth, count, number)
            depth = np.maximum(depth, inside)
            count += 1
    return depth, number, count


def tile(size=256):
    random = np.random.default_rng(11)
    depth, number, count = blocks(random, size)
    # Neighbours differ, but no block stands out: it would be a landmark every 256 units.
    tone = np.linspace(0.12, 0.88, count)[random.permutation(count)][number]
    warmth = np.linspace(0, 1, count)[random.permutation(count)][number]
    swell, grit = noise.fbm(size, 2.7, seed=3), noise.fbm(size, 1.5, seed=4)
    hewn = noise.fbm(size, 2.1, seed=6)  # chips and dents of the chisel
    dome = 1 - (1 - np.clip(depth / 8, 0, 1)) ** 2.2
    height = shade.blur(dome * (6 + (tone - 0.5) * 2 + (swell - 0.5) * 11 + (hewn - 0.5) * 3.5), 0.8)

    colour = shade.ramp(0.34 + 0.30 * tone + 0.36 * (swell - 0.5) + 0.12 * (hewn - 0.5) - 0.10 * (1 - dome),
                        palette.STONE_RAMP)
    colour = shade.mix(colour, colour * (1.09, 1.0, 0.87), shade.smoothstep(0.5, 1, warmth) * 0.9)
    colour = shade.mix(colour, colour * (0.89, 1.0, 1.06), shade.smoothstep(0.5, 0, warmth) * 0.9)
    colour = shade.mix(colour, palette.MORTAR, shade.smoothstep(1.2, -1.2, depth) * 0.9)
    damp = shade.smoothstep(0.56, 0.70, noise.fbm(size, 2.4, seed=9)) * shade.smoothstep(6, 0, depth)
    colour = shade.mix(colour, shade.ramp(grit, palette.MOSS_RAMP), damp * 0.75)
    return shade.brush(shade.lit(colour, height, 0.62), 2.4, share=0.75)
