"""Writes the menu's cursor, data/gfx/cursor.tga (32 x 32), and the icon, data/gfx/icon_48.png, _128 and _256.

The cursor is a drop of water as an arrow with a brass edge; its tip lies at (1.5, 1.5). The game draws the black copy
that lies under it. The icon is a brass ring with the tarn in it: dusk, the snowy summit, and the water before all.
"""

import numpy as np
from PIL import Image

import palette
from lib import noise, shade, shapes, tga

CURSOR_SIZE = 32
CURSOR_OUTLINE = ((1.5, 1.5), (25, 11), (15.4, 15.4), (11, 25))
OVERSAMPLING = 8
BRASS_WIDTH = 3.0


def cursor():
    scale = OVERSAMPLING
    mask = shapes.polygon(CURSOR_SIZE, CURSOR_SIZE, CURSOR_OUTLINE, scale)
    mask = (shade.blur(mask, 1.0 * scale, mode="constant") > 0.42).astype(float)
    depth = shapes.inside(mask) / scale
    grain = noise.fbm(CURSOR_SIZE * scale, 1.5, seed=3)
    brass = shade.metallic(shapes.half_ball(depth - 1.5, 1.7) * 2.2 * scale, grain, palette.BRASS_RAMP)
    x, y = shapes.grid(CURSOR_SIZE * scale)
    water = shade.ramp(np.clip(((x + y) / scale - 8) / 26, 0, 1), palette.WATER_RAMP[:3])
    colour = shade.mix(brass, water, shade.smoothstep(BRASS_WIDTH - 0.4, BRASS_WIDTH + 0.1, depth))
    return shapes.shrink(np.dstack([colour, mask]), scale)


ICON_SIZE = 1024  # drawn once, then shrunk to each size
ICON_SIZES = (48, 128, 256)
RING = 0.93, 0.80  # outer and inner radius of the ring, the half side being 1
SURFACE = 0.16  # height of the water
SUMMIT = ((-0.95, 0.30), (-0.62, -0.06), (-0.42, 0.04), (-0.04, -0.58), (0.18, -0.26), (0.32, -0.36), (0.95, 0.30))
SNOW = ((-0.04, -0.58), (-0.24, -0.26), (-0.15, -0.30), (-0.08, -0.18), (0.01, -0.30), (0.07, -0.20), (0.18, -0.26))


def icon():
    x, y = shapes.grid(ICON_SIZE)
    x, y = (x + 0.5) / ICON_SIZE * 2 - 1, (y + 0.5) / ICON_SIZE * 2 - 1
    radius = np.hypot(x, y)
    pixel = 2 / ICON_SIZE

    def area(points):
        return shapes.polygon(ICON_SIZE, ICON_SIZE, [((px + 1) / pixel, (py + 1) / pixel) for px, py in points])

    picture = shade.ramp(np.clip((y + 0.8) / 1.15, 0, 1), palette.SKY_RAMP[1:])
    moon = np.hypot(x - 0.40, y + 0.46)
    picture = picture + (np.exp(-((moon / 0.30) ** 2)) * 0.22)[..., None]
    picture = shade.mix(picture, palette.MOON, shade.smoothstep(0.125, 0.115, moon))
    mountain, snow = area(SUMMIT), area(SNOW)
    crease = shade.smoothstep(-0.012, 0.012, x + 0.04 - (y + 0.58) * 0.28)  # the side away from the light
    picture = shade.mix(picture, shade.ramp(1 - crease * 0.85, palette.MIDDLE_RIDGE_RAMP), mountain)
    picture = shade.mix(picture, shade.ramp(1 - crease, palette.SNOW_RAMP), snow)
    wave = SURFACE + 0.030 * np.sin(x * 7.5 + 0.6) + 0.012 * np.sin(x * 17 + 2)
    depth = y - wave
    water = shade.ramp(np.clip(depth / 0.72, 0, 1), palette.WATER_RAMP, (0, 0.14, 0.55, 1))
    for row, amount in ((0.17, 0.5), (0.34, 0.35), (0.50, 0.22)):
        line = depth - row - 0.022 * np.sin(x * 9 + row * 30)
        water = shade.mix(water, palette.WATER_RAMP[0], np.exp(-((line / 0.016) ** 2)) * amount
                          * np.clip(1 - (x / (0.72 - row)) ** 2, 0, 1))
    picture = shade.mix(picture, water, shade.smoothstep(-pixel, pixel, depth))
    picture = shade.mix(picture, palette.FOAM, np.exp(-((depth / 0.022) ** 2)) * 0.9)
    picture = picture * (1 - 0.45 * np.exp(-(((RING[1] - radius) / 0.07) ** 2)))[..., None]

    middle, half = (RING[0] + RING[1]) / 2, (RING[0] - RING[1]) / 2
    height = shapes.half_ball(radius - middle, half * 1.08) * half / pixel * 0.9
    brass = shade.metallic(height, noise.fbm(ICON_SIZE, 1.5, seed=3), palette.BRASS_RAMP, strength=0.8)
    ring = shade.smoothstep(RING[0] + pixel, RING[0] - pixel, radius) * shade.smoothstep(RING[1] - pixel,
                                                                                        RING[1] + pixel, radius)
    picture = shade.mix(picture, brass, ring)
    picture = shade.mix(picture, palette.INK, np.exp(-(((radius - RING[1]) / 0.012) ** 2)) * 0.8)
    outline = RING[0] + 0.05
    picture = shade.mix(picture, palette.INK, shade.smoothstep(RING[0] - pixel, RING[0] + pixel, radius))
    return np.dstack([picture, shade.smoothstep(outline + pixel, outline - pixel, radius)])


def save_icons():
    large = (np.clip(icon(), 0, 1) * 255 + 0.5).astype(np.uint8)
    for size in ICON_SIZES:
        path = tga.GFX / f"icon_{size}.png"
        Image.fromarray(large).resize((size, size), Image.LANCZOS).save(path, optimize=True)
        print(f"data/gfx/{path.name}: {size} x {size}, {path.stat().st_size} bytes")


if __name__ == "__main__":
    tga.save("cursor.tga", cursor())
    save_icons()
