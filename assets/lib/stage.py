"""Draws textured polygons and particles the way the game does, for the contact sheets.

World units, y down, `scale` pixels a unit. Pictures repeat, filtering is bilinear between mipmaps, and blending is
by source alpha. Slow and plain; nothing of the game is made with it.
"""

import dataclasses

import numpy as np
from PIL import Image, ImageDraw
from scipy import ndimage

from lib import shade


@dataclasses.dataclass
class Drop:
    """A particle as the renderer sees it. `trail` holds its last three places, newest first."""

    x: float
    y: float
    speed: float = 0.0
    trail: tuple = ()
    fade: float = 1.0


def mipmaps(picture):
    levels = [picture]
    while levels[-1].shape[0] > 1:
        half = levels[-1].shape[0] // 2
        levels.append(levels[-1].reshape(half, 2, half, 2, 4).mean((1, 3)))
    return levels


def bilinear(texels, u, v):
    """The texels at columns `u` and rows `v` (0 to 1 over the picture), with repeat."""
    count = texels.shape[0]
    x, y = u * count - 0.5, v * count - 0.5
    left, top = np.floor(x).astype(int), np.floor(y).astype(int)
    fx, fy = (x - left)[None, :, None], (y - top)[:, None, None]
    rows, next_rows = (top % count)[:, None], ((top + 1) % count)[:, None]
    columns, next_columns = (left % count)[None], ((left + 1) % count)[None]
    upper = texels[rows, columns] * (1 - fx) + texels[rows, next_columns] * fx
    lower = texels[next_rows, columns] * (1 - fx) + texels[next_rows, next_columns] * fx
    return upper * (1 - fy) + lower * fy


class Stage:
    def __init__(self, width, height, scale=1, left=0.0, top=0.0):
        """Shows the world from (`left`, `top`), `width` by `height` units."""
        self.scale, self.left, self.top = scale, left, top
        self.picture = np.zeros((round(height * scale), round(width * scale), 3))

    def polygon(self, points, texture):
        """A polygon filled with a picture that tiles in world units, edges smoothed."""
        rows, columns = self.picture.shape[:2]
        pixels = [((x - self.left) * self.scale, (y - self.top) * self.scale) for x, y in points]
        x0, x1 = max(0, int(min(p[0] for p in pixels))), min(columns, int(max(p[0] for p in pixels)) + 2)
        y0, y1 = max(0, int(min(p[1] for p in pixels))), min(rows, int(max(p[1] for p in pixels)) + 2)
        if x1 <= x0 or y1 <= y0:
            return
        image = Image.new("L", ((x1 - x0) * 4, (y1 - y0) * 4))
        ImageDraw.Draw(image).polygon([((x - x0) * 4, (y - y0) * 4) for x, y in pixels], fill=255)
        mask = np.array(image.resize((x1 - x0, y1 - y0), Image.BOX)).astype(float)[..., None] / 255
        u = ((np.arange(x0, x1) + 0.5) / self.scale + self.left) - 0.5
        v = ((np.arange(y0, y1) + 0.5) / self.scale + self.top) - 0.5
        if self.scale == 1 and float(self.left).is_integer() and float(self.top).is_integer():
            texels = texture[np.round(v).astype(int)[:, None] % texture.shape[0],
                             np.round(u).astype(int)[None] % texture.shape[1]]
        else:
            places = np.meshgrid(v, u, indexing="ij")
            texels = np.dstack([ndimage.map_coordinates(texture[..., k], places, order=1, mode="grid-wrap")
                                for k in range(texture.shape[2])])
        if texture.shape[2] == 4:
            mask, texels = mask * texels[..., 3:], texels[..., :3]
        area = self.picture[y0:y1, x0:x1]
        area[:] = area * (1 - mask) + texels * mask

    def sprite(self, levels, x, y, half, colour):
        """A particle's quad: four numbers of colour, the last alpha."""
        scale, (rows, columns) = self.scale, self.picture.shape[:2]
        x0, x1 = (x - half - self.left) * scale, (x + half - self.left) * scale
        y0, y1 = (y - half - self.top) * scale, (y + half - self.top) * scale
        first, last = max(0, int(np.ceil(x0 - 0.5))), min(columns - 1, int(np.ceil(x1 - 0.5)) - 1)
        above, below = max(0, int(np.ceil(y0 - 0.5))), min(rows - 1, int(np.ceil(y1 - 0.5)) - 1)
        if last < first or below < above:
            return
        u = (np.arange(first, last + 1) + 0.5 - x0) / (x1 - x0)
        v = (np.arange(above, below + 1) + 0.5 - y0) / (y1 - y0)
        level = float(np.clip(np.log2(levels[0].shape[0] / (x1 - x0)), 0, len(levels) - 1))
        texels = bilinear(levels[int(level)], u, v)
        if level % 1:
            texels = shade.mix(texels, bilinear(levels[int(level) + 1], u, v), level % 1)
        cover = texels[..., 3:] * colour[3]
        area = self.picture[above : below + 1, first : last + 1]
        area[:] = area * (1 - cover) + texels[..., :3] * np.asarray(colour[:3]) * cover

    def particles(self, look, sprites, water=(), steam=(), ice=()):
        """The six passes in the game's order. `look` are the keys of water.cfg, `sprites` pictures by name."""
        levels = {name: mipmaps(picture) for name, picture in sprites.items()}
        groups = {"water": (water, 0.0, (0.5, 0.25, 0.125)),
                  "steam": (steam, look["steamExpansion"], (0.5, 0.25, 0.0125)),
                  "ice": (ice, look["iceExpansion"], ())}

        def colour(name, fade):
            return [look[f"{name}_{channel}"] for channel in "rgb"] + [look[f"{name}_a"] * fade]

        def swell(drop):
            return min(look["velocityExpansion"] * drop.speed, look["maxVelocityExpansion"])

        for name, (drops, expansion, _) in groups.items():
            for drop in drops:
                self.sprite(levels[name], drop.x, drop.y, look[f"{name}_outline_size"] + 2 + expansion + swell(drop),
                            colour(f"{name}_outline_color", drop.fade))
        for name, (drops, expansion, trail_alphas) in groups.items():
            for drop in drops:
                half = 2 + expansion + swell(drop)
                self.sprite(levels[name], drop.x, drop.y, half, colour(f"{name}_color", drop.fade))
                for place, alpha in zip(drop.trail or ((drop.x, drop.y),) * 3, trail_alphas):
                    self.sprite(levels[name], *place, half + 1, colour(f"{name}_color", drop.fade * alpha))


def read_settings(path):
    """The numbers of a configuration file, by key."""
    settings = {}
    for line in path.read_text().splitlines():
        key, separator, value = line.partition("=")
        try:
            settings[key.strip()] = float(value.split()[0]) if separator else 0.0
        except (ValueError, IndexError):
            continue
    return settings
