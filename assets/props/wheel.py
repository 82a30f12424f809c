"""The wheel of the waterworks, 200 pixels across: eight pictures, each an eighth of a spoke's angle further on.

Played one after the other they turn it without end. The light is put on after the turning, so it stays at the top left.
"""

import numpy as np

import palette
from lib import noise, shade, shapes

SIZE = 256
FRAMES = 8
OVERSAMPLING = 3
SPOKES = 8
FELLOES = 16  # curved pieces of the wooden rim
BUCKETS = 32
BEHIND_WATER = np.array([0.80, 0.85, 0.87])  # it stands behind the water, in the shade of its masonry

# Radii and half widths in pixels
HUB, AXLE = 17.0, 7.5
RIM = 73.0, 87.0
RINGS = (71.5, 88.5)  # iron bands inside and outside of the rim
OUTER_BAND = 99.0
SPOKE_HALF = 4.6
BUCKET_PLACE, BUCKET_HALF_LENGTH, BUCKET_HALF, BUCKET_SLANT = 93.0, 10.5, 2.4, 0.60


class Relief:
    """Parts laid on one another: colour, height and cover, with a soft shadow of each on what lies below."""

    def __init__(self, rows):
        self.colour = shade.flat((rows, rows), palette.INK)
        self.height = np.zeros((rows, rows))
        self.cover = np.zeros((rows, rows))

    def add(self, depth, colour, level, bevel):
        """A part: pixels inside its edge (unit pixels), its colour, how high it lies, and its bevel's width."""
        mask = shade.smoothstep(-0.35, 0.35, depth)
        shadow = np.roll(shade.blur(mask, 2.0 * OVERSAMPLING), (2 * OVERSAMPLING, 2 * OVERSAMPLING), (0, 1))
        self.colour = self.colour * (1 - 0.5 * shadow * (1 - mask))[..., None]
        shape = level + bevel * (1 - (1 - np.clip(depth / bevel, 0, 1)) ** 2)
        self.colour = shade.mix(self.colour, colour, mask)
        self.height = np.where(mask > 0.5, shape, self.height)
        self.cover = np.maximum(self.cover, mask)


def folded(angle, count, offset=0.0):
    """The angle from the middle of the nearest of `count` equal parts, and that part's number."""
    step = 2 * np.pi / count
    part = np.floor(angle / step + 0.5 - offset)
    return angle - (part + offset) * step, part.astype(int) % count


def grain(along, across, part, seed):
    """Tone of wood along a beam; each beam takes another place of the same noise."""
    board = noise.fbm(256, 2.0, seed, stretch_x=5, stretch_y=0.6)
    rows = (across * 3 + part * 53).astype(int) % 256
    columns = (along * 3 + part * 91).astype(int) % 256
    return board[rows, columns] + ((part * 0.618) % 1 - 0.5) * 0.22


def wood(tone):
    return shade.ramp(np.clip(0.50 + 0.9 * (tone - 0.5), 0, 1), palette.WOOD_RAMP)


def frame(number):
    rows = SIZE * OVERSAMPLING
    x, y = shapes.grid(rows)
    x, y = (x + 0.5) / OVERSAMPLING - SIZE / 2, (y + 0.5) / OVERSAMPLING - SIZE / 2
    radius = np.hypot(x, y)
    angle = np.arctan2(y, x) - number / FRAMES * 2 * np.pi / SPOKES
    mottled = noise.fbm(rows, 2.2, seed=3)
    iron = shade.ramp(np.clip(0.45 + 1.1 * (mottled - 0.5), 0, 1), palette.IRON_RAMP)
    rust = shade.smoothstep(0.55, 0.75, noise.fbm(rows, 2.4, seed=8))
    iron = shade.mix(iron, palette.COPPER_RAMP[1], rust * 0.55)
    relief = Relief(rows)

    def ring(middle, half):
        return half - np.abs(radius - middle)

    turn, part = folded(angle, BUCKETS)
    along, across = radius * np.cos(turn) - BUCKET_PLACE, radius * np.sin(turn)
    leaning = along * np.cos(BUCKET_SLANT) + across * np.sin(BUCKET_SLANT)
    thickness = across * np.cos(BUCKET_SLANT) - along * np.sin(BUCKET_SLANT)
    bucket = shapes.rounded_box(leaning, thickness, BUCKET_HALF_LENGTH, BUCKET_HALF, 0.6)
    relief.add(bucket, wood(grain(leaning, thickness, part, 21)) * 0.95, 0, 1.2)
    relief.add(ring(OUTER_BAND, 1.2), iron, 1.0, 1.2)

    turn, part = folded(angle, SPOKES, 0.5)
    along, across = radius * np.cos(turn), radius * np.sin(turn)
    spoke = np.minimum(SPOKE_HALF - np.abs(across), np.minimum(along - 6, RIM[0] + 3 - radius))
    relief.add(np.where(np.cos(turn) > 0, spoke, -9), wood(grain(along, across, part, 22)), 1.5, 1.8)

    turn, part = folded(angle, FELLOES)
    middle = sum(RIM) / 2
    felloe = np.minimum(ring(middle, (RIM[1] - RIM[0]) / 2),
                        radius * (np.pi / FELLOES - np.abs(turn)) - 0.35)
    relief.add(felloe, wood(grain(turn * middle, radius - middle, part, 23)), 3, 2.2)
    for place in RINGS:
        relief.add(ring(place, 1.5), iron, 4, 1.4)
    bolt_turn, _ = folded(angle, FELLOES, 0.5)
    bolt = 1.5 - np.hypot(radius * np.cos(bolt_turn) - middle, radius * np.sin(bolt_turn))
    relief.add(bolt, iron * 0.8, 5, 1.5)

    relief.add(HUB - radius, iron, 5, 3.5)
    bolt_turn, _ = folded(angle, SPOKES)
    bolt = 1.7 - np.hypot(radius * np.cos(bolt_turn) - 12.3, radius * np.sin(bolt_turn))
    brass = shade.ramp(np.clip(0.45 + 0.8 * (mottled - 0.5), 0, 1), palette.BRASS_RAMP[1:4])
    relief.add(bolt, brass, 7, 1.7)
    relief.add(AXLE - radius, brass, 8, 4.5)

    height = shade.blur(relief.height * OVERSAMPLING, 0.4 * OVERSAMPLING, mode="nearest")
    picture = shade.lit(relief.colour, height, 0.55, lowest=0.35, wrap=False)
    return shapes.shrink(np.dstack([picture * BEHIND_WATER, relief.cover]), OVERSAMPLING)
