"""Writes data/gfx/background.tga, 2048 x 1024: dusk over the mountains, the tarn and the village with lit windows.

It repeats from left to right every 2048 units, more than any view is wide, so that nobody sees two moons. Its first
and last rows are of one colour each, those of sky_top.tga and valley_deep.tga, with which levels go on above and below.
Everything stays darker and less saturated than the water that flows before it.
"""

import numpy as np
from PIL import Image, ImageDraw
from scipy import ndimage

import palette
from background import terrain
from lib import noise, shade, shapes, tga

WIDTH, HEIGHT = 2048, 1024
HORIZON = 600  # rows from the top to the brightest sky
SHORE = 652  # the tarn's far shore
MOON = (1210, 236, 27)  # x, y and radius
STARS = 170

FAR = terrain.Range(seed=101, foot=640, height=330, depth=60, smoothness=4.1, spurs=1.6,
                    relief=(0.67, 0.28, 0.05), ramp=palette.FAR_RIDGE_RAMP, haze=palette.FAR_RIDGE_HAZE,
                    haze_strength=0.85, snow_line=0.50, dip=(1180, 0.30, 210))
MIDDLE = terrain.Range(seed=211, foot=662, height=170, depth=40, smoothness=4.1, spurs=2.4,
                       relief=(0.62, 0.30, 0.08), ramp=palette.MIDDLE_RIDGE_RAMP, haze=palette.MIDDLE_RIDGE_HAZE,
                       haze_strength=0.75)


def sky():
    _, y = shapes.grid(HEIGHT, WIDTH)
    drift = noise.fbm((HEIGHT, WIDTH), 3.4, seed=71, stretch_x=2.4, stretch_y=0.55)
    wisps = noise.fbm((HEIGHT, WIDTH), 2.8, seed=72, stretch_x=3.2, stretch_y=0.6)
    high = shade.smoothstep(30, 200, y)  # the top rows stay of one colour
    tone = np.clip((y - 24) / HORIZON, 0, 1.2) + (drift - 0.5) * 0.10 * high
    picture = shade.ramp(tone, palette.SKY_RAMP, (0, 0.17, 0.36, 0.53, 0.68, 0.82, 1.05))
    cloud = shade.smoothstep(0.52, 0.72, drift * 0.6 + wisps * 0.4)
    cloud = cloud * shade.smoothstep(60, 280, y) * shade.smoothstep(650, 430, y)
    return shade.mix(picture, shade.ramp(tone, palette.CLOUD_RAMP, (0.2, 0.6, 0.95)), cloud * 0.55)


def add_moon_and_stars(picture):
    x, y = shapes.grid(HEIGHT, WIDTH)
    moon_x, moon_y, radius = MOON
    distance = np.hypot(shapes.wrapped(x - moon_x, WIDTH), y - moon_y)
    halo = np.exp(-((distance / 120) ** 2)) * 0.16 + np.exp(-((distance / 330) ** 2)) * 0.06
    picture = picture + (halo * shade.smoothstep(0, 90, y))[..., None] * (1.0, 1.0, 0.82)
    random = np.random.default_rng(4)
    stars = np.zeros((HEIGHT, WIDTH))
    for _ in range(STARS):
        star_x, star_y, brightness = random.integers(0, WIDTH), random.integers(24, 330), random.random() ** 3
        stars[star_y, star_x] += brightness * (1 - star_y / 350)
    stars = stars * 0.5 + shade.blur(stars, 0.8) * 0.9
    picture = picture + stars[..., None] * (0.95, 1.0, 0.9)
    face = np.clip(0.84 + 0.20 * noise.fbm((HEIGHT, WIDTH), 2.6, seed=73), 0, 1)
    return shade.mix(picture, palette.MOON, shade.smoothstep(radius + 0.8, radius - 0.8, distance) * face)


def add_tarn(picture):
    """Mirrors what stands above the shore in still water, a little darker and drawn out by ripples."""
    x, y = shapes.grid(HEIGHT, WIDTH)
    below = np.clip(y - SHORE, 0, None)
    ripple = (noise.fbm((HEIGHT, WIDTH), 1.6, seed=160, stretch_x=0.5, stretch_y=0.05) - 0.5)
    streaks = noise.fbm((HEIGHT, WIDTH), 2.0, seed=161, stretch_x=7, stretch_y=0.3)
    sway = (streaks - 0.5) * np.clip(below, 0, 40)
    mirror_rows = np.clip(SHORE - 1 - below * 2.3 + sway * 0.6, 0, HEIGHT - 1)
    mirrored = shade.warp(picture, sway * 0.8, mirror_rows - y)
    depth = np.clip(below / 130, 0, 1)
    water = shade.mix(mirrored * (0.80, 0.88, 0.88), shade.ramp(1 - depth, palette.TARN_RAMP[:2]), 0.25 + 0.45 * depth)
    glitter = shade.smoothstep(0.60, 0.74, streaks + ripple * 0.10) * (1 - depth) * 0.22
    water = shade.mix(water, palette.TARN_RAMP[2], glitter)
    water = shade.mix(water, palette.TARN_RAMP[2], np.exp(-((below / 2.5) ** 2)) * 0.28)
    return shade.mix(picture, water, (y >= SHORE).astype(float))


def near_ridge():
    """y of the near hills' outline, for each column. The village's hill rises a little."""
    ridge = 726 - (noise.fbm_line(WIDTH, 2.7, seed=105) - 0.5) * 118
    hill = np.exp(-((shapes.wrapped(np.arange(WIDTH) - 700, WIDTH) / 150) ** 2))
    return ridge * (1 - hill * 0.7) + 706 * hill * 0.7


def add_near_hills(picture, ridge):
    x, y = shapes.grid(HEIGHT, WIDTH)
    body = y - ridge[None, :]
    slope = ndimage.gaussian_filter1d(np.gradient(ridge), 9, mode="wrap")[None, :] * np.exp(-np.clip(body, 0, 400) / 60)
    grass = noise.fbm((HEIGHT, WIDTH), 2.6, seed=131)
    tone = np.clip(0.40 - slope * 0.6 + (grass - 0.5) * 0.9 - body / 400, 0, 1)
    colour = shade.mix(shade.ramp(tone, palette.NEAR_HILL_RAMP), palette.NEAR_HILL_HAZE,
                       np.clip(body / 130, 0, 1) ** 1.2 * 0.4)
    colour = colour + (np.exp(-np.clip(body, 0, 99) / 2.5) * 0.10 * (slope < 0.2))[..., None] * (1.0, 0.85, 0.55)
    return shade.mix(picture, shade.brush(colour, 2.4, share=0.8), np.clip(body + 0.5, 0, 1))


FOLK_TOP, FOLK_BOTTOM, FOLK_SCALE = 520, 900, 4  # the rows in which trees and houses are drawn, enlarged
HOUSES = (560, 590, 618, 650, 676, 704, 756, 782, 812, 842, 1530, 1556, 1586, 300)
TOWER = 730
FIRS = 430


class Village:
    """Firs and houses drawn with polygons on an enlarged strip of the picture."""

    def __init__(self, ridge):
        self.ridge = ridge
        rows = (FOLK_BOTTOM - FOLK_TOP) * FOLK_SCALE
        clear = tuple(int(value * 255) for value in shade.rgb(palette.FIR)) + (0,)
        self.things = Image.new("RGBA", (WIDTH * FOLK_SCALE, rows), clear)
        self.lights = Image.new("L", self.things.size)
        self.pen, self.lamp = ImageDraw.Draw(self.things), ImageDraw.Draw(self.lights)

    @staticmethod
    def pixels(points):
        return [(x * FOLK_SCALE, (y - FOLK_TOP) * FOLK_SCALE) for x, y in points]

    def shape(self, points, colour, strength=1.0):
        fill = tuple(int(min(1, value * strength) * 255) for value in shade.rgb(colour)) + (255,)
        self.pen.polygon(self.pixels(points), fill=fill)

    def box(self, left, top, right, bottom, colour, strength=1.0):
        self.shape([(left, top), (right, top), (right, bottom), (left, bottom)], colour, strength)

    def window(self, x, y, width, height):
        points = [(x, y), (x + width, y), (x + width, y + height), (x, y + height)]
        self.shape(points, palette.LANTERN_LIGHT)
        self.lamp.polygon(self.pixels(points), fill=255)

    def fir(self, random):
        x = random.integers(0, WIDTH)
        if min(abs(x - house) for house in HOUSES + (TOWER,)) < 15:
            return
        foot = self.ridge[x] + random.uniform(-1, 34)
        height, strength = random.uniform(13, 34), random.uniform(0.75, 1.15)
        for storey in range(4):
            top, half = foot - height * (1 - 0.2 * storey), height * 0.085 * (storey + 1.3)
            outline = [(x, top), (x - half, top + height * 0.36), (x + half, top + height * 0.36)]
            self.shape(outline, palette.FIR, strength * 0.86)
            self.shape([outline[0], outline[1], (x - half * 0.1, top + height * 0.33)], palette.FIR, strength * 1.22)

    def house(self, random, x):
        ground = self.ridge[x] + 9
        half, wall = random.uniform(9, 14), random.uniform(9, 15)
        self.box(x - half, ground - wall, x + half, ground + 14, palette.HOUSE_WALL)
        self.box(x - half, ground - wall, x - half * 0.2, ground + 14, palette.HOUSE_WALL, 1.22)
        eaves, top = ground - wall, ground - wall - half * 0.95
        self.shape([(x - half - 3, eaves + 1), (x, top), (x + half + 3, eaves + 1)], palette.ROOF_RAMP[0])
        self.shape([(x - half - 3, eaves + 1), (x, top), (x + 1, top + 2), (x - half + 2, eaves + 1)],
                   palette.ROOF_RAMP[1])
        self.box(x + half * 0.35, top + half * 0.10, x + half * 0.35 + 3, top + half * 0.6, palette.ROOF_RAMP[0], 0.8)
        for place in (-0.62, 0.18):
            self.window(x + half * place, ground - wall * 0.62, 3.4, 4.4)

    def tower(self, x):
        ground = self.ridge[x] + 6
        self.box(x - 7, ground - 52, x + 7, ground + 14, palette.HOUSE_TOWER)
        self.box(x - 7, ground - 52, x - 2, ground + 14, palette.HOUSE_TOWER, 1.25)
        self.shape([(x - 10, ground - 51), (x, ground - 88), (x + 10, ground - 51)], palette.ROOF_RAMP[0])
        self.shape([(x - 10, ground - 51), (x, ground - 88), (x + 0.8, ground - 83), (x - 4, ground - 51)],
                   palette.ROOF_RAMP[1])
        self.window(x - 1.8, ground - 44, 3.6, 7)
        self.window(x - 1.4, ground - 24, 2.8, 4)

    def draw(self, picture):
        random = np.random.default_rng(9)
        for _ in range(FIRS):
            self.fir(random)
        for house in HOUSES:
            self.house(random, house)
        self.tower(TOWER)
        things = shapes.shrink(np.array(self.things).astype(float) / 255, FOLK_SCALE)
        strip = picture[FOLK_TOP:FOLK_BOTTOM]
        strip[:] = shade.mix(strip, things[..., :3], things[..., 3])
        lights = np.zeros((HEIGHT, WIDTH))
        lights[FOLK_TOP:FOLK_BOTTOM] = shapes.shrink(np.array(self.lights).astype(float) / 255, FOLK_SCALE)
        glow = shade.blur(lights, 5) * 3.2 + shade.blur(lights, 15) * 5.5
        return picture + glow[..., None] * shade.rgb(palette.LANTERN_GLOW) * 0.6


def add_valley(picture):
    """Mist in the valley, then the deep in which the picture ends."""
    _, y = shapes.grid(HEIGHT, WIDTH)
    rise = (noise.fbm((HEIGHT, WIDTH), 3.0, seed=150, stretch_x=1.6, stretch_y=0.8) - 0.5) * 90
    picture = shade.mix(picture, palette.MIST, np.exp(-(((y - 792 - rise) / 46) ** 2)) * 0.34)
    deep = shade.ramp(np.clip((y - 760) / 200, 0, 1), palette.VALLEY_RAMP)
    return shade.mix(picture, deep, shade.smoothstep(770, 965, y))


def landscape():
    picture = add_moon_and_stars(sky())
    picture = terrain.draw(picture, FAR)
    picture = terrain.draw(picture, MIDDLE)
    picture = add_tarn(picture)
    ridge = near_ridge()
    picture = add_near_hills(picture, ridge)
    picture = Village(ridge).draw(picture)
    return add_valley(picture)


if __name__ == "__main__":
    tga.save("background.tga", landscape())
