"""Contact sheet of the two fonts: the sheets, and texts at the sizes of the game, small ones also enlarged."""

import sys

import numpy as np
from PIL import Image
from scipy import ndimage

import palette
from lib import shade, tga

TEXTS = (
    "> TextureList : GFX\\STONE.TGA : 32 BIT [ParticleDraw 1] {0xDF}",
    "The quick brown fox jumps over the lazy dog. iIl1| 0Oo {}[]()",
    "Grüße, été, ñandú, Übermaß, Ångström ¿qué? «¼ ½ ¾» © ® ±µ¶ÿ",
    "ParticleCount 1280; gravity=-98.1 a/b\\c <d> \"e\" 'f' @#$%^&*~`",
)


def mipmaps(alpha):
    levels = [alpha]
    while levels[-1].shape[0] > 32:
        half = levels[-1].shape[0] // 2
        levels.append(levels[-1].reshape(half, 2, half, 2).mean((1, 3)))
    return levels


def letter(levels, byte, size):
    """One cell at `size` pixels, filtered as the graphics card does it: bilinear in and linear between levels."""
    level = np.clip(np.log2(levels[0].shape[0] / 16 / size), 0, len(levels) - 1)
    drawn = 0
    for index, share in ((int(level), 1 - level % 1), (int(level) + 1, level % 1)):
        if share == 0:
            continue
        texels = levels[index]
        cell = texels.shape[0] / 16
        u = ((byte & 15) + (np.arange(size) + 0.5) / size) * cell - 0.5
        v = ((byte >> 4) + (np.arange(size) + 0.5) / size) * cell - 0.5
        drawn = drawn + share * ndimage.map_coordinates(texels, np.meshgrid(v, u, indexing="ij"), order=1,
                                                        mode="grid-wrap")
    return drawn


def write(canvas, levels, text, x, y, size):
    for byte in text.encode("latin-1"):
        if x + size > canvas.shape[1]:
            break
        area = canvas[y : y + size, x : x + size]
        area[:] = shade.mix(area, palette.TEXT, letter(levels, byte, size))
        x += size


def contact_sheet():
    fonts = [mipmaps(tga.load(name)[..., 3]) for name in ("console_font.tga", "game_font.tga")]
    canvas = shade.flat((1330, 1100), palette.FAR_HAZE)
    for index, levels in enumerate(fonts):
        sheet = next(level for level in levels if level.shape[0] == 512)
        area = canvas[8:520, 16 + 540 * index : 528 + 540 * index]
        area[:] = shade.mix(area, palette.TEXT, sheet)
    y = 530
    for levels in fonts:
        for size in (8, 16, 32):
            for text in TEXTS:
                write(canvas, levels, text, 8, y, size)
                y += size
            y += 4
    for index, levels in enumerate(fonts):
        small = shade.flat((40, 264), palette.FAR_HAZE)
        for row, text in enumerate(TEXTS):
            write(small, levels, text[:33] if row else text[:33], 0, row * 10, 8)
        enlarged = np.kron(small, np.ones((4, 4, 1)))
        canvas[y : y + 160, 8 : 8 + enlarged.shape[1]] = enlarged
        y += 168
    return canvas


if __name__ == "__main__":
    picture = (np.clip(contact_sheet(), 0, 1) * 255 + 0.5).astype(np.uint8)
    Image.fromarray(picture).save(sys.argv[1])
