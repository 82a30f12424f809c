"""Contact sheet of the sprites: a settled pool, a stream, spray, ice and a plume, in the six passes of the game.

Drawn over stone, sky and sand, at the scale given (1 is a window of 800 x 600, 4 a screen of 3840 x 2160).
"""

import sys

import numpy as np
from PIL import Image

from lib import stage, tga

PANEL_WIDTH, PANEL_HEIGHT = 264, 300
SPACING = 1.2  # units between drops in a settled pool; gravity packs them far closer than their radius of 2
GRAVITY = 700.0


def pool(random, left, right, surface, bottom):
    """Drops at rest in rows, a little uneven."""
    drops = []
    for row, y in enumerate(np.arange(bottom - 1.5, surface, -SPACING * 0.87)):
        for x in np.arange(left + 1.5 + (row % 2) * SPACING / 2, right - 1, SPACING):
            dx, dy = random.normal(0, 0.25, 2)
            drops.append(stage.Drop(x + dx, y + dy, abs(random.normal(0, 3))))
    return drops


def stream(random, x, top, bottom, speed, count):
    """Drops falling off a ledge, with the trails of a 75 Hz tick."""
    drops, longest = [], (-60 + np.sqrt(3600 + 2 * GRAVITY * (bottom - top))) / GRAVITY
    for age in np.linspace(0, longest, count):
        age += random.uniform(0, longest / count)
        wander = random.normal(0, 3.0)

        def place(t):
            return x + wander + speed * t, top + 60 * t + GRAVITY * t * t / 2

        drops.append(stage.Drop(*place(age), np.hypot(speed, 60 + GRAVITY * age),
                                tuple(place(max(age - back / 75, 0)) for back in (1, 2, 3))))
    return drops


def spray(random, x, y, count):
    drops = []
    for angle, speed, age in zip(random.uniform(-2.9, -0.25, count), random.uniform(60, 220, count),
                                 random.uniform(0.04, 0.35, count)):
        vx, vy = speed * np.cos(angle), speed * np.sin(angle)

        def place(t):
            return x + vx * t, y + vy * t + GRAVITY * t * t / 2

        drops.append(stage.Drop(*place(age), np.hypot(vx, vy + GRAVITY * age),
                                tuple(place(age - back / 75) for back in (1, 2, 3))))
    return drops


def ice_disc(random, x, y, members):
    """A frozen group: its radius is twice the square root of its members."""
    radius = 2 * np.sqrt(members)
    angles, distances = random.uniform(0, 2 * np.pi, members), np.sqrt(random.uniform(0, 1, members)) * 0.93
    return [stage.Drop(x + np.cos(a) * d * radius, y + np.sin(a) * d * radius) for a, d in zip(angles, distances)]


def plume(random, x, y, count):
    drops = []
    for share in random.uniform(0, 1, count) ** 0.8:
        px = x + np.sin(share * 4 + random.normal(0, 0.3)) * 10 * share + random.normal(0, 1) * (9 + 26 * share)
        py = y - share * 130 + random.normal(0, 5)
        trail = tuple((px + random.normal(0, 1), py + 0.9 * back) for back in (1, 2, 3))
        drops.append(stage.Drop(px, py, 60.0, trail, min(1.0, 1.15 - share)))
    return drops


def panel(backdrop, scale, look, sprites):
    picture = stage.Stage(PANEL_WIDTH, PANEL_HEIGHT, scale)
    picture.polygon([(0, 0), (PANEL_WIDTH, 0), (PANEL_WIDTH, PANEL_HEIGHT), (0, PANEL_HEIGHT)], backdrop)
    random = np.random.default_rng(1)
    water = pool(random, 0, PANEL_WIDTH, 272, PANEL_HEIGHT) + stream(random, 20, 30, 276, 110, 330)
    water += spray(random, 112, 272, 40)
    ice = ice_disc(random, 216, 252, 100) + ice_disc(random, 168, 262, 25)
    picture.particles(look, sprites, water, plume(random, 200, 180, 150), ice)
    return picture.picture


def contact_sheet(scale):
    look = stage.read_settings(tga.GFX.parent / "cfg" / "water.cfg")
    sprites = {name: tga.load(f"{name}.tga") for name in ("water", "steam", "ice")}
    sky = tga.load("background.tga")[300:812, 900:1412, :3]
    backdrops = tga.load("stone.tga")[..., :3], sky, tga.load("sand.tga")[..., :3]
    return np.hstack([panel(backdrop, scale, look, sprites) for backdrop in backdrops])


if __name__ == "__main__":
    sheet = contact_sheet(float(sys.argv[2]))
    Image.fromarray((np.clip(sheet, 0, 1) * 255 + 0.5).astype(np.uint8)).save(sys.argv[1])
