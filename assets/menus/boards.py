"""Boards of the menus that hold texts: planks in a brass frame, headings, sheets of paper, lines in ink, and chains.

Everything is laid out in units on a canvas that becomes one picture. Dark wood, so that the warm white letters of the
game's own font, which it draws on top, read well; light paper under what is painted here.
"""

import numpy as np
from scipy import ndimage

import palette
from lib import noise, shade, shapes
from menus import joinery, lettering, signs

SCALE = 2
CORNER = 14
EDGE = 6
MARGIN = 8  # canvas around a board while it is made
TEXT_SCALE = 4
CHAIN_WIDTH = 12
SHADOW = 0.55


def clear(rows, columns):
    return np.zeros((rows, columns, 4))


def planks(shape, step, seed):
    """Dark planks `step` units high one above the other, each with its own piece of grain."""
    colour, height = joinery.board(shape, seed, SCALE, palette.BOARD_RAMP)
    y = shapes.grid(*shape)[1] / SCALE
    gap = np.abs((y + step / 2) % step - step / 2)
    random = np.random.default_rng(seed)
    for top in range(0, shape[0], step * SCALE):
        shift, tone = int(random.integers(shape[1])), random.uniform(0.90, 1.06)
        piece = slice(top, top + step * SCALE)
        colour[piece] = np.roll(colour[piece], shift, axis=1) * tone
        height[piece] = np.roll(height[piece], shift, axis=1)
    height = height + shade.smoothstep(0, 5, gap) * 2.4 * SCALE
    lambert = shade.light(shade.blur(height, 0.5 * SCALE, mode="nearest"), 0.30, wrap=False)
    colour = colour * np.clip(lambert, 0.55, 1.4)[..., None]
    return shade.mix(colour, palette.WOOD_GAP, np.exp(-((gap / 1.1) ** 2)) * 0.85)


def board(rows, columns, left, top, right, bottom, plank, seed):
    """A board from (left, top) to (right, bottom) on a canvas of rows x columns units, with its shadow.

    Its planks are `plank` units high and begin MARGIN above the board.
    """
    shape = (bottom - top + 2 * MARGIN) * SCALE, (right - left + 2 * MARGIN) * SCALE
    centre, half = (shape[1] / SCALE / 2, shape[0] / SCALE / 2), ((right - left) / 2, (bottom - top) / 2)
    inside = joinery.plank(shape, centre, half, CORNER, SCALE, seed)
    colour = planks(shape, plank, seed)
    colour = colour * (0.55 + 0.45 * shade.smoothstep(4, 30, inside))[..., None]
    colour = shade.brush(colour, 2.0, share=0.65)
    edge, edge_mask = joinery.edge(inside, EDGE, SCALE)
    colour = joinery.shadowed(colour, edge_mask, 2.0, 1.6, 0.6, SCALE)
    colour = shade.mix(colour, edge, edge_mask)
    nails, nails_mask = joinery.nails(shape, [(centre[0] + x * (half[0] - 15), centre[1] + y * (half[1] - 15))
                                              for x in (-1, 1) for y in (-1, 1)], 3.8, SCALE)
    colour = shade.mix(colour, nails, nails_mask)
    picture = shapes.shrink(np.dstack([colour, np.clip(inside * SCALE + 0.5, 0, 1)]), SCALE)
    canvas = clear(rows, columns)
    canvas[top - MARGIN : bottom + MARGIN, left - MARGIN : right + MARGIN] = picture
    return shapes.over(shadow(canvas), canvas)


def shadow(canvas, distance=(5, 4), softness=5):
    """What a picture casts on all behind it."""
    alpha = shade.blur(ndimage.shift(canvas[..., 3], distance, order=1), softness, mode="constant")
    return np.dstack([shade.flat(alpha.shape, palette.INK), alpha * SHADOW])


def place(canvas, picture, left, top):
    """Lays a picture on the canvas at (left, top); what reaches over its border is cut."""
    rows, columns = picture.shape[:2]
    y0, x0 = max(top, 0), max(left, 0)
    y1, x1 = min(top + rows, canvas.shape[0]), min(left + columns, canvas.shape[1])
    piece = picture[y0 - top : y1 - top, x0 - left : x1 - left]
    canvas[y0:y1, x0:x1] = shapes.over(canvas[y0:y1, x0:x1], piece)


def chains(canvas, columns, top, bottom):
    """Hangs chains at the given x from `top` to `bottom`."""
    links = joinery.chain(bottom - top, width=CHAIN_WIDTH)
    for x in columns:
        place(canvas, links, x - CHAIN_WIDTH // 2, top)


def heading(canvas, text, x, y, half_width, seed=31):
    """A large sign whose carved letters stand in water, centred at (x, y)."""
    units = 80, 2 * half_width + 24
    sign = signs.Sign(text, half_width, seed, 36, units, half_height=29)
    picture = shapes.shrink(sign.frame(0.80, 0.7), signs.SCALE)
    under = clear(units[0] + 24, units[1] + 24)
    under[12:-12, 12:-12] = picture
    place(canvas, shapes.over(shadow(under, (4, 3), 3), under), x - units[1] // 2 - 12, y - units[0] // 2 - 12)


def vignette(canvas, centre, half, strength):
    """Dims what lies behind a menu, strongest at `centre`."""
    x, y = shapes.grid(*canvas.shape[:2])
    distance = np.hypot((x - centre[0]) / half[0], (y - centre[1]) / half[1])
    dim = np.dstack([shade.flat(canvas.shape[:2], palette.VIGNETTE), np.clip(1 - distance**2.6, 0, 1) * strength])
    canvas[:] = shapes.over(dim, canvas)


def sheet(canvas, left, top, right, bottom, seed):
    """A sheet of linen paper nailed to a board: text on it is painted dark."""
    shape = (bottom - top + 2 * MARGIN) * SCALE, (right - left + 2 * MARGIN) * SCALE
    x, y = (places / SCALE for places in shapes.grid(*shape))
    half = (right - left) / 2, (bottom - top) / 2
    ragged = (noise.fbm(shape, 2.2, seed=seed, lowest=4) - 0.5) * 5
    inside = shapes.rounded_box(x - half[0] - MARGIN, y - half[1] - MARGIN, *half, 5.0) + ragged
    blotches = noise.fbm(shape, 3.0, seed=seed + 1)
    fibre = noise.fbm(shape, 2.4, seed=seed + 2, stretch_x=14, stretch_y=0.8)
    tone = 0.80 + (blotches - 0.5) * 0.40 + (fibre - 0.5) * 0.12 - 0.42 * shade.smoothstep(26, -2, inside) ** 2
    colour = shade.ramp(np.clip(tone, 0, 1), palette.LINEN_RAMP) * palette.DUSK
    lambert = shade.light(np.clip(inside, 0, 3) * SCALE * 0.5 + fibre * 3, 0.3, wrap=False)
    colour = colour * np.clip(lambert, 0.75, 1.15)[..., None]
    places = [(MARGIN + nail_x, MARGIN + nail_y)
              for nail_x in (10, 2 * half[0] - 10) for nail_y in (10, 2 * half[1] - 10)]
    nails, nails_mask = joinery.nails(shape, places, 3.2, SCALE)
    colour = shade.mix(joinery.shadowed(colour, nails_mask, 1.4, 1.0, 0.6, SCALE), nails, nails_mask)
    picture = shapes.shrink(np.dstack([colour, np.clip(inside * SCALE + 0.5, 0, 1)]), SCALE)
    place(canvas, shapes.over(shadow(picture, (2, 2), 2), picture), left - MARGIN, top - MARGIN)


def ink(canvas, text, x, y, size=16, weight="Medium", colour=palette.INK, align=0.0, tracking=0.2):
    """One line of letters in ink, without a shadow; (x, y) is
    its start, middle or end by `align`, and the middle of its capitals."""
    rows, columns = int(size * 2), canvas.shape[1]
    letters = lettering.mask(text, weight, size, (rows, columns), (x, rows / 2 + (y - int(y))), tracking, TEXT_SCALE,
                             align)
    alpha = shapes.shrink(letters, TEXT_SCALE)
    place(canvas, np.dstack([shade.flat(alpha.shape, colour), alpha]), 0, int(y) - rows // 2)


def paragraph(canvas, text, x, y, width, step, **style):
    """Text in ink, broken into lines of at most `width` units, `step` apart."""
    row = []
    for word in text.split() + [None]:
        longer = " ".join(row + [word]) if word else ""
        if word is None or lettering.width(longer, style.get("weight", "Medium"), style["size"], 0.2) > width:
            ink(canvas, " ".join(row), x, y, **style)
            row, y = [], y + step
        row.append(word)
