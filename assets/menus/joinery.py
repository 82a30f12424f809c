"""What the menus are built of: boards of wood, brass edges and nails, iron chains. `scale` is pixels a unit."""

import numpy as np
from scipy import ndimage

import palette
from lib import noise, shade, shapes


def board(shape, seed, scale, tones=palette.SIGN_RAMP):
    """Polished wood with its grain along x: colours and a height field, both `shape` pixels."""
    blotches = noise.fbm(shape, 2.6, seed=seed, stretch_x=4)
    grain = noise.fbm(shape, 2.3, seed=seed + 2, stretch_x=18, stretch_y=0.45)
    tone = np.clip(0.56 + (grain - 0.5) * 0.62 + (blotches - 0.5) * 0.28, 0, 1)
    fibre = noise.fbm(shape, 1.8, seed=seed + 1, stretch_x=30, stretch_y=0.7)
    return shade.ramp(tone, tones), (fibre - 0.5) * 1.0 * scale + (grain - 0.5) * 4.0 * scale


def plank(shape, centre, half, corner, scale, seed=0):
    """How far inside a plank with scooped corners the pixels of `shape` are, in units; a little uneven by hand."""
    x, y = shapes.grid(*shape)
    dx, dy = x - centre[0] * scale, y - centre[1] * scale
    box = shapes.rounded_box(dx, dy, half[0] * scale, half[1] * scale, 0.0)
    scoop = np.hypot(np.abs(dx) - half[0] * scale, np.abs(dy) - half[1] * scale) - corner * scale
    uneven = (noise.fbm(shape, 3.0, seed=seed, stretch_x=2) - 0.5) * 1.0 * scale
    return (np.minimum(box, scoop) + uneven) / scale


def edge(inside, width, scale, seed=3):
    """A half-round brass edge over the outer `width` units of a shape: its colours and its mask."""
    mask = shade.smoothstep(0, 0.8, inside) * shade.smoothstep(width + 0.2, width - 0.6, inside)
    height = shapes.half_ball(inside - width * 0.48, width * 0.54) * 0.52 * width * scale
    return brass(shade.blur(height, 0.5 * scale, mode="nearest"), seed), mask


def nails(shape, places, radius, scale, seed=3):
    """Round brass nails at `places` (x, y in units): their colours and their mask."""
    x, y = shapes.grid(*shape)
    height = np.zeros(shape)
    for nail_x, nail_y in places:
        height = np.maximum(height, shapes.half_ball(np.hypot(x - nail_x * scale, y - nail_y * scale),
                                                     radius * scale))
    return brass(height * (radius + 0.2) * scale, seed), shade.smoothstep(0.05, 0.3, height)


def brass(height, seed=3, strength=0.56):
    grain = 0.5 + (noise.fbm(height.shape, 2.2, seed=seed) - 0.5) * 0.8
    return shade.metallic(height, grain + 0.3, palette.BRASS_RAMP, strength)


def shadowed(colour, mask, distance, softness, strength, scale):
    """Darkens what lies to the lower right of a mask, but not the mask itself."""
    shadow = ndimage.shift(mask, (distance * scale, distance * scale), order=1)
    shadow = shade.blur(shadow, softness * scale, mode="constant") * (1 - mask)
    return colour * (1 - strength * shadow)[..., None]


def chain(length, scale=6, width=12, link=11.0):
    """An iron chain that hangs `length` units down, with alpha; `width` units wide, shrunk to one pixel a unit."""
    shape = length * scale, width * scale
    x, y = (places / scale for places in shapes.grid(*shape))
    x = x - width / 2
    height = np.zeros(shape)
    for index in range(int(length / link * 2) + 1):
        dy = np.abs(y - index * link / 2 - 3)
        if index % 2 == 0:  # seen from the front: a ring
            across = np.abs(np.hypot(x, np.maximum(dy - 2.6, 0)) - 2.9)
            height = np.maximum(height, shapes.half_ball(across, 1.4) * 1.8)
        else:  # seen from its edge
            across = np.hypot(x, np.maximum(dy - 3.6, 0))
            height = np.maximum(height, shapes.half_ball(across, 1.4) * 2.1)
    lambert = shade.light(height * scale * 0.9, 0.7, wrap=False)
    colour = shade.ramp(np.clip(0.44 + (lambert - 1), 0, 1), palette.CHAIN_RAMP)
    return shapes.shrink(np.dstack([colour, (height > 0.05).astype(float)]), scale)
