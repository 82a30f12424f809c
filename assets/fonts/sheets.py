"""Makes the two sheets of letters: data/gfx/console_font.tga and data/gfx/game_font.tga.

A sheet holds 16 by 16 square cells in Latin-1 order, white with only alpha. Every letter advances by its whole cell,
so a monospaced face is stretched to fill it. What makes small letters crisp: the outlines are first fitted to a coarse
grid by FreeType's hinter, the console's at 8 pixels a cell, and only then drawn large. Each stem therefore covers whole
pixels of the mipmap in which a cell is 8 pixels, while at 32 pixels the curves are still round. The game's font is for
16 pixels and more, and is fitted at 16.

The faces are under the SIL Open Font Licence, which asks nothing of pictures of letters; see LICENCES.md.
"""

import ctypes
import dataclasses

import freetype
import numpy as np

from lib import shapes, tga

UNIT = 64  # FreeType's fixed point: 64 a pixel
OVERSAMPLING = 8


@dataclasses.dataclass
class Face:
    """How a face is brought into its cells. Heights are in rows of the hinting grid, y upwards from the baseline."""

    path: str
    cell: int  # pixels a cell in the sheet
    grid: int  # rows and columns a cell when the outlines are hinted
    height: float  # em size
    stretch: float  # width of the letters, as a multiple of the face's own
    rows_above: int  # rows of the cell above the baseline; the others lie below
    margin: float  # clear columns that a wide letter keeps, left and right together
    column_offset: float  # where in a column the hinter leaves the left edge of a stem, less than 1; None: anywhere
    hinting: int
    unhinted: str  # letters that the grid would spoil: rings would be filled, tildes made flat
    snap: float  # a point this near to a row's edge is moved onto it: bars then fill their rows
    descender: tuple  # heights of letters that go below the baseline, and the heights they get
    capital: tuple  # the same for capitals whose accent does not fit; the accent gets what is left
    small: tuple  # the same for small letters


CONSOLE = Face(
    path="/usr/share/fonts/truetype/jetbrains-mono/JetBrainsMono-Medium.ttf",
    cell=32, grid=8, height=8.9, stretch=1.22, rows_above=7, margin=1, column_offset=-0.09,
    snap=0.24,
    hinting=freetype.FT_LOAD_FORCE_AUTOHINT | freetype.FT_LOAD_TARGET_NORMAL,
    unhinted="©®",
    # One row below the baseline: a bowl gives a row away, and its bars stay one row thick.
    descender=((-2, -1, 0, 1, 4, 5, 7), (-1, 0, 1, 2, 4, 5, 7)),
    capital=((0, 1, 3, 4, 6, 7), (0, 1, 2, 3, 4, 5)),
    small=((0, 5), (0, 5)),
)
GAME = Face(
    path="/usr/share/fonts/truetype/fantasque-sans/Normal/TTF/FantasqueSansMono-Bold.ttf",
    cell=64, grid=16, height=17.0, stretch=1.42, rows_above=13, margin=1.2, column_offset=None,
    snap=0.0,
    hinting=freetype.FT_LOAD_FORCE_AUTOHINT | freetype.FT_LOAD_TARGET_LIGHT,
    unhinted="©®ÃÑÕãñõ",
    descender=((-4, 0, 12), (-3, 0, 12)),
    capital=((0, 2, 10, 12), (0, 1.9, 7.8, 9.6)),
    small=((0, 9), (0, 9)),
)


def printable(byte):
    """Control bytes, the no-break space and the soft hyphen keep empty cells."""
    return 32 < byte < 127 or 160 < byte < 256 and byte != 173


def snapped(height, reach):
    """Moves a height that is near to a row's edge onto it, and spreads the others between."""
    row = np.floor(height)
    return row + np.clip((height - row - reach) / (1 - 2 * reach), 0, 1)


def hinted_outline(face, design, letter):
    """The letter's outline fitted to the grid, and its lowest and highest rows. Points are in 1/64, y upwards."""
    hinted = letter not in design.unhinted
    face.load_char(letter, (design.hinting if hinted else freetype.FT_LOAD_NO_HINTING) | freetype.FT_LOAD_NO_BITMAP)
    outline = face.glyph.outline
    heights = np.array([y for _, y in outline.points]) / UNIT
    if len(heights) == 0:
        return outline
    if hinted:
        heights = snapped(heights, design.snap)
    if heights.min() < -1 and heights.max() < design.rows_above + 0.5 and letter not in ",;@Q":
        heights = np.interp(heights, *design.descender)
    elif heights.max() > design.rows_above and letter.isalpha():
        heights_from, heights_to = design.small if letter.islower() else design.capital
        raised = np.interp(heights, heights_from + (heights.max(),), heights_to + (design.rows_above,))
        heights = np.where(heights > 0, raised, heights)
    lowest, highest = design.rows_above - design.grid, design.rows_above
    if heights.min() < lowest or heights.max() > highest:
        above = min(1.0, highest / heights.max())
        below = min(1.0, lowest / min(heights.min(), -0.01))
        heights = np.where(heights > 0, heights * above, heights * below)
    for index, height in enumerate(heights):
        outline._FT_Outline.points[index].y = round(height * UNIT)
    return outline


def draw(outline, pixels, scale, shift):
    """Coverage of the outline in a square of `pixels`, after scaling by (x, y) and a shift in pixels."""
    raw = ctypes.byref(outline._FT_Outline)
    matrix = freetype.FT_Matrix(round(scale[0] * 65536), 0, 0, round(scale[1] * 65536))
    freetype.FT_Outline_Transform(raw, ctypes.byref(matrix))
    freetype.FT_Outline_Translate(raw, round(shift[0] * UNIT), round(shift[1] * UNIT))
    coverage = np.zeros((pixels, pixels), np.uint8)
    bitmap = freetype.FT_Bitmap()
    bitmap.rows = bitmap.width = bitmap.pitch = pixels
    bitmap.num_grays, bitmap.pixel_mode = 256, freetype.FT_PIXEL_MODE_GRAY
    bitmap.buffer = coverage.ctypes.data_as(type(bitmap.buffer))
    if freetype.FT_Outline_Get_Bitmap(freetype.get_handle(), raw, ctypes.byref(bitmap)):
        raise RuntimeError("a letter could not be drawn")
    return coverage.astype(float) / 255


def cell(face, design, letter):
    """One letter in its cell, 0 to 1, in the middle but on whole columns, so that stems stay where they were put."""
    outline = hinted_outline(face, design, letter)
    if not outline.points:
        return np.zeros((design.cell, design.cell))
    box = outline.get_bbox()
    left, right = box.xMin / UNIT, box.xMax / UNIT
    squeeze = min(1.0, (design.grid - design.margin) / (right - left))
    width = (right - left) * squeeze
    move = (design.grid - width) / 2 - left * squeeze
    if design.column_offset is not None:
        move = np.floor(move + 0.4) - design.column_offset
    pixels = design.cell * OVERSAMPLING
    scale = pixels / design.grid
    shift = move * scale, (design.grid - design.rows_above) * scale
    return shapes.shrink(draw(outline, pixels, (squeeze * scale, scale), shift), OVERSAMPLING)


def sheet(design):
    face = freetype.Face(design.path)
    # A horizontal resolution of its own stretches the letters before they are hinted.
    face.set_char_size(0, int(design.height * UNIT), int(72 * design.stretch), 72)
    alpha = np.zeros((16 * design.cell, 16 * design.cell))
    for byte in filter(printable, range(256)):
        row, column = byte >> 4, byte & 15
        alpha[row * design.cell : (row + 1) * design.cell, column * design.cell : (column + 1) * design.cell] = cell(
            face, design, bytes([byte]).decode("latin-1")
        )
    return np.dstack([np.ones(alpha.shape + (3,)), alpha])


if __name__ == "__main__":
    tga.save("console_font.tga", sheet(CONSOLE))
    tga.save("game_font.tga", sheet(GAME))
