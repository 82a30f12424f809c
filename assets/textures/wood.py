"""Wood: honey-coloured boards along x, with grain, a knot in each second one, and nailed butt joints."""

import numpy as np

import palette
from lib import noise, shade, shapes

GAPS = (0, 52, 104, 152, 204, 256)  # y of the gaps between boards
# Where the boards' butt joints and knots lie: spread over the tile, so that they make no line when it repeats.
JOINTS = (196, 62, 232, 110, 20)
KNOTS = (88, None, 140, None, 212)
# Boards differ a little; one much darker than the others would be a stripe every 256 units.
TONES = (0.02, -0.05, 0.04, -0.02, 0.03)
NAIL = 2.6


def board(size, index):
    """Tone and height of one board, as if it covered the whole tile."""
    x, y = shapes.grid(size)
    top, bottom = GAPS[index], GAPS[index + 1]
    bend = noise.fbm(size, 3.8, seed=20 + index, stretch_x=1.2, stretch_y=1.0)
    grain = shade.warp(noise.fbm(size, 2.0, seed=40 + index, stretch_x=5, stretch_y=0.55), 0, (bend - 0.5) * 18)
    fibre = noise.fbm(size, 1.3, seed=60 + index, stretch_x=14, stretch_y=0.6)
    rings = y + (bend - 0.5) * 44
    tone = 0.42 * (grain - 0.5) + 0.14 * (fibre - 0.5)
    knot = np.zeros((size, size))
    if KNOTS[index] is not None:
        dx = shapes.wrapped(x - KNOTS[index], size)
        dy = y - (top + bottom) / 2 - 3
        distance = np.hypot(dx * 0.48, dy)
        knot = np.exp(-((distance / 6) ** 2))
        near = np.exp(-((np.hypot(dx * 0.30, dy) / 17) ** 2))
        rings = rings * (1 - near) + distance * 1.7 * near  # the grain flows round a knot
    tone += 0.10 * np.sin(rings * 2 * np.pi / (size / 22)) - 0.36 * knot
    edge = np.minimum(y - top + 0.5, bottom - y - 0.5) + (noise.fbm(size, 2.0, seed=80 + index) - 0.5) * 2.0
    height = (1 - (1 - np.clip(edge / 6, 0, 1)) ** 2) * 3.4 + (fibre - 0.5) * 0.7 + (grain - 0.5) * 1.6 - 1.3 * knot
    here = (y >= top) & (y < bottom)
    return tone - tone[here].mean() + 0.56 + TONES[index], height, here


def tile(size=256):
    x, y = shapes.grid(size)
    tone, height = np.zeros((size, size)), np.zeros((size, size))
    cut = np.zeros((size, size))
    for index, joint in enumerate(JOINTS):
        board_tone, board_height, here = board(size, index)
        tone[here], height[here] = board_tone[here], board_height[here]
        cut = np.where(here, np.exp(-((shapes.wrapped(x - joint, size) / 1.3) ** 2)), cut)
    colour = shade.ramp(tone, palette.WOOD_RAMP)
    colour = colour * (1 - 0.55 * cut)[..., None]
    height -= 2.6 * cut
    for index, joint in enumerate(JOINTS):
        for place in (joint - 8, joint + 8):
            for share in (0.28, 0.72):
                ny = GAPS[index] + (GAPS[index + 1] - GAPS[index]) * share
                distance = np.hypot(shapes.wrapped(x - place, size), y - ny)
                colour = shade.mix(colour, colour * 0.6, shade.smoothstep(NAIL + 1.8, NAIL, distance) * 0.8)
                colour = shade.mix(colour, palette.NAIL, shade.smoothstep(NAIL + 0.5, NAIL - 0.5, distance) * 0.9)
                height += shapes.half_ball(distance, NAIL + 0.3) * 2.2
    gap = np.min([np.abs(shapes.wrapped(y - line, size)) for line in GAPS], axis=0)
    colour = shade.mix(colour, palette.WOOD_GAP, np.exp(-((gap / 1.5) ** 2)) * 0.9)
    lighted = shade.lit(colour, height, 0.42, highest=1.45, glint=(0.26, 0.18, 0.08))
    return shade.brush(lighted, 1.8, share=0.7)
