"""Colour, light and brush. Colours are arrays of red, green, blue from 0 to 1; pictures are (rows, columns, 3 or 4)."""

import numpy as np
from scipy import ndimage

# Towards the light, in picture coordinates: from the top left, and out of the picture. The same for everything.
LIGHT = np.array([-0.62, -0.70, 0.75])
WARM_HIGHLIGHT = np.array([0.25, 0.17, 0.08])


def rgb(colour):
    """A palette entry as three numbers from 0 to 1."""
    return np.array([int(colour[i : i + 2], 16) for i in (0, 2, 4)], float) / 255


def smoothstep(start, end, x):
    """0 at `start`, 1 at `end`, smooth between; `start` may be the larger one."""
    t = np.clip((x - start) / (end - start), 0, 1)
    return t * t * (3 - 2 * t)


def ramp(tone, colours, places=None):
    """Maps `tone` (0 to 1) through palette colours, evenly spaced or at `places`."""
    table = np.array([rgb(colour) for colour in colours])
    places = np.linspace(0, 1, len(table)) if places is None else places
    return np.dstack([np.interp(tone, places, table[:, channel]) for channel in range(3)])


def flat(shape, colour):
    """A picture of one palette colour."""
    return np.ones(shape + (3,)) * rgb(colour)


def mix(first, second, share):
    """`first` where `share` is 0, `second` where it is 1. `second` may be a palette colour."""
    second = rgb(second) if isinstance(second, str) else second
    share = np.asarray(share)
    if share.ndim == 2:
        share = share[..., None]
    return first * (1 - share) + second * share


def blur(picture, sigma, mode="wrap"):
    return ndimage.gaussian_filter(picture, sigma if picture.ndim == 2 else (sigma, sigma, 0), mode=mode)


def light(height, strength=1.0, wrap=True):
    """Lambert's light on a height field in pixels, divided by its value on flat ground: 1 is flat."""
    if wrap:
        gx = (np.roll(height, -1, 1) - np.roll(height, 1, 1)) / 2
        gy = (np.roll(height, -1, 0) - np.roll(height, 1, 0)) / 2
    else:
        gy, gx = np.gradient(height)
    nx, ny = -gx * strength, -gy * strength
    towards = LIGHT / np.linalg.norm(LIGHT)
    return (nx * towards[0] + ny * towards[1] + towards[2]) / np.sqrt(nx * nx + ny * ny + 1) / towards[2]


def lit(colour, height, strength, lowest=0.4, highest=1.5, glint=WARM_HIGHLIGHT, wrap=True):
    """Lights a picture by a height field; what faces the light turns warmer, not only brighter."""
    lambert = light(height, strength, wrap)
    shaded = colour * np.clip(lambert, lowest, highest)[..., None] ** 0.9
    return shaded + np.clip(lambert - 1, 0, 1)[..., None] * np.asarray(glint)


def metallic(height, grain, colours, strength=0.5):
    """A polished metal: the light itself runs through the ramp. Not periodic; for single things."""
    lambert = light(height, strength, wrap=False)
    return ramp(np.clip(0.40 + (lambert - 1) * 1.25 + (grain - 0.5) * 0.18, 0, 1), colours)


def warp(picture, dx, dy):
    """The picture looked up at (x + dx, y + dy), with wrap-round."""
    yy, xx = np.mgrid[0 : picture.shape[0], 0 : picture.shape[1]].astype(float)
    places = [yy + dy, xx + dx]
    if picture.ndim == 2:
        return ndimage.map_coordinates(picture, places, order=1, mode="grid-wrap")
    return np.dstack([ndimage.map_coordinates(picture[..., k], places, order=1, mode="grid-wrap")
                      for k in range(picture.shape[2])])


def brush(picture, radius, share=0.75, sharpness=5.0):
    """The painter's brush: a smooth Kuwahara filter with eight soft sectors.

    Each sector's mean counts the more the calmer the sector is, so edges stay and noise turns into strokes. Square
    sectors would leave blocks; soft round ones do not. Works with wrap-round. `share` is mixed with the source.
    """
    sums = np.zeros(picture.shape)
    weights = np.zeros(picture.shape[:2])
    spectra = [np.fft.rfft2(picture[..., channel]) for channel in range(3)]
    luminance = picture.mean(2)
    luminance_spectra = np.fft.rfft2(luminance), np.fft.rfft2(luminance**2)
    for kernel in sector_kernels(picture.shape[:2], radius):
        kernel_spectrum = np.fft.rfft2(kernel)

        def mean(spectrum):
            return np.fft.irfft2(spectrum * kernel_spectrum, s=kernel.shape)

        variance = np.maximum(mean(luminance_spectra[1]) - mean(luminance_spectra[0]) ** 2, 0)
        weight = 1 / (1 + (255 * np.sqrt(variance)) ** sharpness / 50)
        weights += weight
        for channel in range(3):
            sums[..., channel] += mean(spectra[channel]) * weight
    return mix(picture, sums / weights[..., None], share)


def sector_kernels(shape, radius):
    """Eight soft pieces of a disc round (0, 0), with wrap-round, each of sum 1."""
    rows, columns = shape
    y = ((np.arange(rows) + rows // 2) % rows - rows // 2)[:, None]
    x = ((np.arange(columns) + columns // 2) % columns - columns // 2)[None, :]
    distance = np.hypot(x, y)
    disc = np.exp(-((distance / (0.6 * radius)) ** 2)) * (distance <= 1.6 * radius)
    angle = np.arctan2(y, x)
    for sector in range(8):
        turn = (angle - sector * np.pi / 4 + np.pi) % (2 * np.pi) - np.pi
        kernel = disc * np.exp(-((turn / 0.42) ** 2))
        kernel[0, 0] = 1 / 8 * disc[0, 0]
        yield kernel / kernel.sum()
