"""Mountains: a field of heights, seen from the front and lit, periodic from left to right."""

import dataclasses

import numpy as np

import palette
from lib import noise, shade, shapes

SLICES = 260  # lines of the field from its back to its front
OVERSAMPLING = 2
# Towards the light, in the field: x to the right, upwards, and towards the viewer
LIGHT = np.array([-0.66, 0.62, 0.42])


@dataclasses.dataclass
class Range:
    """A range of mountains. Lengths are in pixels of the picture."""

    seed: int
    foot: float  # y of the ground at the front
    height: float  # of a high summit above the ground
    depth: float  # how far the ground rises in the picture from front to back
    smoothness: float  # spectrum of the ridges: below 4 the finest slopes are the steepest, which looks spiky
    spurs: float  # of the widest spurs, how many lie on 520 pixels
    relief: tuple  # shares of swell, spurs and small ridges in the height
    ramp: tuple  # shade and light
    haze: str
    haze_strength: float
    snow_line: float = 2.0  # share of the height above which snow lies; above 1 there is none
    dip: tuple = ()  # (x, depth, width): a saddle through which the sky is seen


def heights(design, columns):
    """Heights from 0 to about 1, slices from back to front. Ridges fall from a crest towards the viewer."""
    shape = (SLICES * 2, columns)
    # A slice is one unit deep and a column half a unit wide. Spurs are longer towards the viewer than they are wide.
    swell = noise.fbm(shape, design.smoothness, design.seed, stretch_x=2.0, stretch_y=1.0)
    def ridges(beta, seed, lowest):
        wave = noise.fbm(shape, beta, seed, stretch_x=2.0, stretch_y=1.5, lowest=lowest)
        return 1 - np.abs(wave - 0.5) * 3.0

    spurs = ridges(design.smoothness, design.seed + 1, lowest=design.spurs)
    fine = ridges(design.smoothness - 0.5, design.seed + 2, lowest=design.spurs * 3.5)
    field = (design.relief[0] * swell + design.relief[1] * spurs + design.relief[2] * fine)[:SLICES]
    # The crest stands at a third from the back and wanders; before it the ground falls off towards the viewer.
    crest = 0.30 + (noise.fbm_line(columns, 3.6, design.seed + 3) - 0.5) * 0.3
    place = np.linspace(0, 1, SLICES)[:, None]
    before = np.clip((place - crest) / (1 - crest), 0, 1)
    behind = np.clip((crest - place) / crest, 0, 1)
    envelope = (1 - before) ** 1.15 * (1 - behind**2)
    along = 0.62 + 0.9 * (noise.fbm_line(columns, 3.4, design.seed + 4) - 0.5)
    if design.dip:
        x, depth, width = design.dip
        distance = shapes.wrapped(np.arange(columns) / OVERSAMPLING - x, columns / OVERSAMPLING)
        along = along - depth * np.exp(-((distance / width) ** 2))
    return np.clip(envelope * (0.16 + 0.84 * field) * along * 1.6, 0, None)


def seen(field, design, rows):
    """For each pixel the slice that is seen there, or -1 where nothing is, and how high it lies."""
    place = np.linspace(0, 1, SLICES)
    columns = field.shape[1]
    slices = np.full((rows, columns), -1, np.int16)
    row_numbers = np.arange(rows)[:, None]
    for index in range(SLICES):
        foot = design.foot - design.depth * (1 - place[index])
        top = ((foot - field[index] * design.height) * OVERSAMPLING)[None, :]
        highest = max(0, int(top.min()))
        covered = row_numbers[highest:] >= top
        slices[highest:][covered] = index
    return slices


def painted(field, design, slices, rows):
    """Colours of the whole field as it lies in the picture: light, snow, and haze towards the foot."""
    columns = field.shape[1]
    gx = (np.roll(field, -1, 1) - np.roll(field, 1, 1)) / 2 * design.height * OVERSAMPLING
    gz = np.gradient(field, axis=0) * design.height * 0.9
    normal = np.stack([-gx, np.ones_like(gx), -gz])
    lambert = np.tensordot(LIGHT / np.linalg.norm(LIGHT), normal / np.linalg.norm(normal, axis=0), axes=1)
    tone_field = np.clip(0.42 + 0.85 * (lambert - 0.25), 0, 1)
    steep = np.hypot(gx, gz)
    index = np.maximum(slices, 0)
    column = np.arange(columns)[None, :]
    tone, height = tone_field[index, column], field[index, column]
    colour = shade.ramp(tone, design.ramp)
    if design.snow_line < 1:
        uneven = noise.fbm((rows, columns), 2.2, design.seed + 5)
        lies = shade.smoothstep(-0.06, 0.07, height - design.snow_line + (uneven - 0.5) * 0.35
                                - steep[index, column] * 0.035)
        colour = shade.mix(colour, shade.ramp(tone, palette.SNOW_RAMP), lies * 0.5)
    foot = np.arange(rows)[:, None] / OVERSAMPLING
    depth = np.clip((foot - (design.foot - design.depth - design.height * 0.75)) / (design.height + design.depth), 0, 1)
    return shade.mix(colour, design.haze, (depth**1.3 * design.haze_strength))


def draw(picture, design):
    """Draws the range on the picture, with a brush whose strokes end at its outline."""
    rows, columns = picture.shape[0] * OVERSAMPLING, picture.shape[1] * OVERSAMPLING
    field = heights(design, columns)
    slices = seen(field, design, rows)
    cover = shapes.shrink((slices >= 0).astype(float), OVERSAMPLING)
    colour = shapes.shrink(painted(field, design, slices, rows), OVERSAMPLING)
    return shade.mix(picture, shade.brush(colour, 3.6, share=0.9), cover)
