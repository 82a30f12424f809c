"""Masks and distances. Distances are in pixels and positive inside; masks go from 0 to 1."""

import numpy as np
from PIL import Image, ImageDraw
from scipy import ndimage


def grid(rows, columns=None):
    """Two arrays, x and y, of the pixels' columns and rows."""
    yy, xx = np.mgrid[0:rows, 0 : rows if columns is None else columns].astype(float)
    return xx, yy


def wrapped(difference, period):
    """The difference of two places on a ring, from -period / 2 to period / 2."""
    return (difference + period / 2) % period - period / 2


def rounded_box(dx, dy, half_width, half_height, radius):
    """How far inside a box with round corners the places (dx, dy) from its centre are."""
    qx = np.abs(dx) - (half_width - radius)
    qy = np.abs(dy) - (half_height - radius)
    outside = np.hypot(np.maximum(qx, 0), np.maximum(qy, 0))
    return radius - outside - np.minimum(np.maximum(qx, qy), 0)


def half_ball(distance, radius):
    """Height of a half ball, 0 to 1, at a distance from its centre."""
    return np.sqrt(np.clip(1 - (distance / radius) ** 2, 0, 1))


def inside(mask):
    """Distance to the edge of a mask, positive inside and negative outside."""
    solid = mask > 0.5
    return ndimage.distance_transform_edt(solid) - ndimage.distance_transform_edt(~solid)


def polygon(rows, columns, points, scale=1):
    """Mask of a polygon in units, drawn at `scale` pixels a unit on a canvas of rows x columns units."""
    image = Image.new("L", (columns * scale, rows * scale))
    ImageDraw.Draw(image).polygon([(x * scale, y * scale) for x, y in points], fill=255)
    return np.array(image).astype(float) / 255


def shrink(picture, factor):
    """Box filter down by a whole factor. With alpha, colour counts by alpha; clear pixels take their neighbours'."""
    rows, columns = picture.shape[0] // factor, picture.shape[1] // factor
    if picture.ndim == 2:
        return picture.reshape(rows, factor, columns, factor).mean((1, 3))
    if picture.shape[2] == 3:
        return picture.reshape(rows, factor, columns, factor, 3).mean((1, 3))
    alpha = picture[..., 3:]
    weighted = np.dstack([picture[..., :3] * alpha, alpha])
    weighted = weighted.reshape(rows, factor, columns, factor, 4).mean((1, 3))
    return fill_clear(np.dstack([weighted[..., :3] / np.maximum(weighted[..., 3:], 1e-6), weighted[..., 3]]))


def fill_clear(picture):
    """Gives each nearly clear pixel the colour of its nearest visible one: filtering then leaves no dark fringe."""
    clear = picture[..., 3] < 1 / 255
    if clear.all() or not clear.any():
        return picture
    nearest = ndimage.distance_transform_edt(clear, return_distances=False, return_indices=True)
    colour = picture[..., :3][tuple(nearest)]
    return np.dstack([colour, np.where(clear, 0, picture[..., 3])])


def over(below, above):
    """`above` drawn on `below`, both with straight alpha."""
    alpha = above[..., 3:] + below[..., 3:] * (1 - above[..., 3:])
    colour = above[..., :3] * above[..., 3:] + below[..., :3] * below[..., 3:] * (1 - above[..., 3:])
    return np.dstack([colour / np.maximum(alpha, 1e-6), alpha])
