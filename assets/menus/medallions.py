"""Small round pictures that tell a newcomer how to play: brass rings with a scene in each.

Scenes are painted in places from -1 to 1, x to the right and y down, the ring lying at RING. All are `SIZE` units wide.
"""

import numpy as np

import palette
from lib import noise, shade, shapes
from menus import joinery, lettering

SIZE = 100
SCALE = 6
RING = 0.93, 0.80  # outer and inner radius
PIXEL = 2 / (SIZE * SCALE)


class Scene:
    """What is painted inside a ring; starts as the sky at dusk."""

    def __init__(self):
        x, y = shapes.grid(SIZE * SCALE)
        self.x, self.y = (x + 0.5) * PIXEL - 1, (y + 0.5) * PIXEL - 1
        self.radius = np.hypot(self.x, self.y)
        self.picture = shade.ramp(np.clip((self.y + 0.9) / 1.7, 0, 1), palette.SKY_RAMP[1:6])

    def paint(self, colour, mask):
        self.picture = shade.mix(self.picture, colour, np.clip(mask, 0, 1))

    def outlined(self, colour, inside, line=0.035):
        """A form with an outline of ink; `inside` is positive in it, in places."""
        self.paint(palette.INK, soft(inside + line))
        self.paint(colour, soft(inside))

    def polygon(self, points):
        """Distance to the edge of a polygon, positive inside."""
        return shapes.inside(shapes.polygon(SIZE * SCALE, SIZE * SCALE,
                                            [((x + 1) / PIXEL, (y + 1) / PIXEL) for x, y in points])) * PIXEL

    def water(self, inside, surface, phase=0.0):
        """Water in a form, from the line `surface` on down."""
        wave = surface + 0.016 * np.sin(self.x * 11 + phase) + 0.008 * np.sin(self.x * 23 - phase)
        below = self.y - wave
        colour = shade.ramp(np.clip(below / 0.75, 0, 1), palette.WATER_RAMP, (0, 0.16, 0.6, 1))
        wet = np.minimum(inside, below)
        self.paint(colour, soft(wet))
        self.paint(palette.FOAM, np.exp(-((below / 0.022) ** 2)) * soft(inside) * 0.9)

    def letters(self, text, x, y, size, colour, weight="Bold"):
        """A word whose capitals' middle lies at (x, y); its size in places."""
        mask = lettering.mask(text, weight, size / 2 * SIZE, (SIZE, SIZE), ((x + 1) / 2 * SIZE, (y + 1) / 2 * SIZE),
                              0.0, SCALE)
        self.paint(colour, mask)

    def finished(self):
        """The scene in its ring, one pixel a unit, with alpha."""
        self.picture = self.picture * (1 - 0.45 * np.exp(-(((RING[1] - self.radius) / 0.09) ** 2)))[..., None]
        middle, half = (RING[0] + RING[1]) / 2, (RING[0] - RING[1]) / 2
        height = shapes.half_ball(self.radius - middle, half * 1.08) * half / PIXEL * 0.9
        ring = np.minimum(RING[0] - self.radius, self.radius - RING[1])
        self.paint(joinery.brass(height), soft(ring))
        self.paint(palette.INK, np.exp(-(((self.radius - RING[1]) / 0.014) ** 2)) * 0.8)
        self.paint(palette.INK, soft(self.radius - RING[0]))
        return shapes.shrink(np.dstack([self.picture, soft(RING[0] + 0.04 - self.radius)]), SCALE)


def soft(distance):
    """A mask with an edge one pixel wide."""
    return np.clip(distance / PIXEL / 2 + 0.5, 0, 1)


def turned(points, degrees):
    angle = np.radians(degrees)
    return [(x * np.cos(angle) - y * np.sin(angle), x * np.sin(angle) + y * np.cos(angle)) for x, y in points]


def square(half):
    return [(-half, -half), (half, -half), (half, half), (-half, half)]


def stone(seed):
    blotches = noise.fbm(SIZE * SCALE, 2.6, seed=seed)
    return shade.ramp(np.clip(0.55 + (blotches - 0.5) * 0.9, 0, 1), palette.STONE_RAMP)


def arc_arrow(scene, radius, start, end, head):
    """A bright arrow along a circle from `start` to `end` degrees, which points to its end."""
    angle = np.degrees(np.arctan2(scene.y, scene.x))
    low, high = min(start, end), max(start, end)
    band = 0.045 - np.abs(scene.radius - radius)
    sector = np.minimum(angle - low, high - angle) * np.pi / 180 * radius
    shaft = np.minimum(band, sector)
    tip = np.radians(end)
    along = np.array((-np.sin(tip), np.cos(tip))) * np.sign(end - start)
    out = np.array((np.cos(tip), np.sin(tip)))
    base = out * radius
    side = out * head * 0.62
    point = scene.polygon([tuple(base + side), tuple(base + along * head), tuple(base - side)])
    scene.outlined(palette.LANTERN_LIGHT, np.maximum(shaft, point))


def turn_the_world():
    """A room of stone that leans; the water in it does not."""
    scene = Scene()
    walls = scene.polygon(turned(square(0.50), -24))
    room = scene.polygon(turned(square(0.36), -24))
    scene.outlined(stone(71), walls)
    scene.outlined(shade.flat(scene.x.shape, palette.VALLEY_DEEP), room, 0.02)
    scene.water(room - 0.004, 0.06)
    arc_arrow(scene, 0.66, -60, -118, 0.17)
    arc_arrow(scene, 0.66, 120, 62, 0.17)
    return scene.finished()


def lead_it_home():
    """The village with its lit windows, and the water on its way into the tarn."""
    scene = Scene()
    hill = scene.y - (0.16 - 0.30 * np.exp(-(((scene.x - 0.24) / 0.42) ** 2)))
    scene.outlined(shade.ramp(np.clip(0.75 - hill, 0, 1), palette.NEAR_HILL_RAMP), hill, 0.02)
    for x, base, half, high in ((-0.06, 0.02, 0.10, 0.15), (0.52, 0.02, 0.11, 0.16), (0.22, -0.10, 0.10, 0.42)):
        wall = scene.polygon([(x - half, base), (x - half, base - high), (x + half, base - high), (x + half, base)])
        roof = scene.polygon([(x - half - 0.05, base - high), (x, base - high - half * 1.9),
                              (x + half + 0.05, base - high)])
        scene.outlined(palette.HOUSE_TOWER, wall, 0.025)
        scene.outlined(palette.ROOF_RAMP[1], roof, 0.025)
        window = np.minimum(0.032 - np.abs(scene.x - x), 0.045 - np.abs(scene.y - (base - high * 0.55)))
        glow = np.exp(-((np.hypot(scene.x - x, scene.y - base + high * 0.55) / 0.10) ** 2))
        scene.paint(palette.LANTERN_GLOW, glow * 0.45)
        scene.paint(palette.LANTERN_LIGHT, soft(window))
    bank = 0.30 + 0.05 * np.sin(scene.x * 4 + 1)
    scene.water(np.ones_like(scene.x), bank)
    fall = scene.x + 0.62 - 0.16 * np.sqrt(np.clip(scene.y + 0.55, 0, None))
    stream = np.minimum(0.060 - np.abs(fall), scene.y + 0.52)
    scene.outlined(palette.WATER_RAMP[1], np.minimum(stream, 0.42 - scene.y), 0.022)
    gutter = scene.polygon([(-0.95, -0.62), (-0.52, -0.52), (-0.52, -0.44), (-0.95, -0.54)])
    scene.outlined(palette.WOOD_RAMP[2], gutter)
    splash = np.hypot((scene.x + 0.47) / 1.9, scene.y - 0.36)
    scene.paint(palette.FOAM, shade.smoothstep(0.11, 0.02, splash))
    return scene.finished()


def drop(scene, x, y, size):
    """A falling drop's outline, positive inside."""
    dx, dy = (scene.x - x) / size, (scene.y - y) / size
    bulb = 0.55 - np.hypot(dx, dy - 0.22)
    tip = np.minimum(np.minimum(dy + 0.95, 0.22 - dy), 0.55 * np.clip((dy + 0.95) / 1.17, 0, 1) ** 1.4 - np.abs(dx))
    return np.maximum(bulb, tip) * size


def ice_and_steam():
    """A drop between a shard of ice and a puff of steam."""
    scene = Scene()
    points = [(-0.80, 0.20), (-0.66, -0.22), (-0.40, -0.32), (-0.20, -0.04), (-0.28, 0.34), (-0.58, 0.46)]
    heart = (-0.48, 0.04)
    shard = scene.polygon(points)
    scene.outlined(palette.ICE_RAMP[0], shard)
    for index, tone in enumerate((0.92, 1.0, 0.62, 0.30, 0.10, 0.46)):
        facet = scene.polygon([points[index], points[(index + 1) % 6], heart])
        scene.paint(shade.ramp(np.full(scene.x.shape, tone), palette.ICE_RAMP), soft(facet + PIXEL))
        scene.paint(palette.ICE_RAMP[3], np.exp(-((facet / 0.014) ** 2)) * soft(shard) * 0.8)
    puff = np.zeros_like(scene.x)
    for x, y, size, strength in ((0.46, 0.18, 0.20, 0.9), (0.36, -0.02, 0.17, 0.8), (0.56, -0.06, 0.19, 0.8),
                                 (0.44, -0.28, 0.18, 0.62), (0.60, -0.34, 0.13, 0.5), (0.50, -0.52, 0.12, 0.36)):
        distance = np.hypot(scene.x - x, scene.y - y) / size
        puff = 1 - (1 - puff) * (1 - strength * shade.smoothstep(1.15, 0.35, distance))
    scene.paint(palette.STEAM, puff)
    body = drop(scene, -0.01, 0.26, 0.40)
    shaded = shade.ramp(np.clip((scene.y + 0.12) / 0.75, 0, 1), palette.WATER_RAMP[:3])
    scene.outlined(shaded, body)
    scene.paint(palette.WHITE, shade.smoothstep(0.09, 0.03, np.hypot((scene.x + 0.09), (scene.y - 0.26) / 1.6)) * 0.9)
    return scene.finished()


def check_point():
    """A lantern whose light stands over water that springs up again."""
    scene = Scene()
    glow = np.exp(-((np.hypot(scene.x, scene.y + 0.20) / 0.52) ** 2))
    scene.paint(palette.LANTERN_GLOW, glow * 0.75)
    scene.outlined(palette.IRON_RAMP[1], np.minimum(0.03 - np.abs(scene.x), -scene.y - 0.55), 0.02)
    cap = scene.polygon([(-0.24, -0.44), (-0.08, -0.62), (0.08, -0.62), (0.24, -0.44)])
    glass = scene.polygon([(-0.19, -0.44), (0.19, -0.44), (0.15, 0.04), (-0.15, 0.04)])
    foot = scene.polygon([(-0.21, 0.04), (0.21, 0.04), (0.21, 0.13), (-0.21, 0.13)])
    core = np.exp(-((np.hypot(scene.x / 0.8, scene.y + 0.18) / 0.16) ** 2))
    scene.outlined(shade.mix(shade.flat(scene.x.shape, palette.LANTERN_LIGHT), palette.LANTERN_CORE, core), glass)
    scene.paint(palette.INK, soft(np.minimum(0.014 - np.abs(scene.x), glass)) * 0.7)
    scene.outlined(palette.BRASS_RAMP[2], cap)
    scene.outlined(palette.BRASS_RAMP[2], foot)
    surface = 0.44 + 0.02 * np.sin(scene.x * 9)
    for x, y, size in ((-0.44, 0.18, 0.15), (0.42, 0.10, 0.17), (-0.28, 0.32, 0.10), (0.30, 0.34, 0.10)):
        scene.outlined(palette.WATER_RAMP[1], drop(scene, x, y, size), 0.025)
    scene.water(np.ones_like(scene.x), surface)
    return scene.finished()


def score():
    """A clock that stands in water."""
    scene = Scene()
    centre = np.hypot(scene.x, scene.y + 0.08)
    scene.outlined(palette.BRASS_RAMP[2], 0.56 - centre)
    scene.outlined(palette.LINEN_RAMP[3], 0.47 - centre, 0.02)
    angle = np.arctan2(scene.y + 0.08, scene.x)
    for hour in range(12):
        turn = hour * np.pi / 6
        along = np.cos(turn) * scene.x + np.sin(turn) * (scene.y + 0.08)
        across = -np.sin(turn) * scene.x + np.cos(turn) * (scene.y + 0.08)
        scene.paint(palette.INK, soft(np.minimum(0.018 - np.abs(across), 0.035 - np.abs(along - 0.40))))
    full = np.radians(80)  # two minutes and forty seconds after the hour
    wedge = np.minimum(0.36 - centre, np.where((angle > -np.pi / 2) & (angle < -np.pi / 2 + full), 1, -1))
    scene.paint(palette.WATER_RAMP[1], soft(wedge) * 0.85)
    for turn, length in ((-np.pi / 2 + full, 0.36), (-np.pi / 2, 0.28)):
        along = np.cos(turn) * scene.x + np.sin(turn) * (scene.y + 0.08)
        across = -np.sin(turn) * scene.x + np.cos(turn) * (scene.y + 0.08)
        scene.paint(palette.INK, soft(np.minimum(0.030 - np.abs(across), np.minimum(along + 0.05, length - along))))
    scene.water(np.ones_like(scene.x), 0.36, 1.4)
    return scene.finished()


def keys():
    """Keys with an arrow each, and a mouse."""
    scene = Scene()
    scene.paint(palette.VALLEY_RAMP[0], np.full(scene.x.shape, 0.55))
    for side in (-1, 1):
        x, y = side * 0.33 - 0.02, -0.24
        key = shapes.rounded_box(scene.x - x, scene.y - y, 0.27, 0.25, 0.07)
        top = shapes.rounded_box(scene.x - x, scene.y - y + 0.03, 0.20, 0.17, 0.05)
        scene.outlined(palette.LINEN_RAMP[1], key)
        scene.paint(palette.LINEN_RAMP[3], soft(top))
        head = scene.polygon([(x + side * 0.13, y - 0.03), (x, y - 0.14), (x, y + 0.08)])
        shaft = np.minimum(0.03 - np.abs(scene.y - y + 0.03), 0.11 - np.abs(scene.x - x + side * 0.02))
        scene.paint(palette.INK, soft(np.maximum(head, shaft)))
    mouse = shapes.rounded_box(scene.x + 0.02, scene.y - 0.42, 0.22, 0.30, 0.20)
    scene.outlined(palette.LINEN_RAMP[3], mouse)
    button = np.minimum(mouse - 0.012, np.minimum(scene.x + 0.02 - 0.012, 0.36 - scene.y))
    scene.paint(palette.WATER_RAMP[1], soft(button))
    scene.paint(palette.INK, soft(np.minimum(mouse, 0.012 - np.abs(scene.x + 0.02))) * soft(0.37 - scene.y))
    scene.paint(palette.INK, soft(np.minimum(mouse, 0.012 - np.abs(scene.y - 0.37))))
    return scene.finished()


ALL = (turn_the_world, lead_it_home, ice_and_steam, check_point, score, keys)
