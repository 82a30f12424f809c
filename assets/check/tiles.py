"""Contact sheet of the tiles, 3 by 3 each, and how well they close.

The measure of a seam is the mean step over it divided by the mean step elsewhere: 1 is perfect, 0.8 to 1.6 cannot be
seen. Boards meet in a real edge, so the upper seam of the wood is higher.
"""

import sys

import numpy as np
from PIL import Image

from lib import tga

NAMES = ("stone", "wood", "metal", "cloth", "sand")


def seams(tile):
    across = np.abs(tile[:, 0] - tile[:, -1]).mean() / np.abs(np.diff(tile, axis=1)).mean()
    down = np.abs(tile[0] - tile[-1]).mean() / np.abs(np.diff(tile, axis=0)).mean()
    return across, down


def contact_sheet():
    rows = []
    for suffix in ("", "_far"):
        tiles = [tga.load(f"{name}{suffix}.tga")[..., :3] for name in NAMES]
        for name, tile in zip(NAMES, tiles):
            across, down = seams(tile)
            mean = ", ".join(f"{value:.0f}" for value in tile.mean((0, 1)) * 255)
            print(f"{name}{suffix}: seam across {across:.2f}, down {down:.2f}, mean colour {mean}")
        rows.append(np.hstack([np.tile(tile, (3, 3, 1)) for tile in tiles]))
    return np.vstack(rows)


if __name__ == "__main__":
    Image.fromarray((contact_sheet() * 255 + 0.5).astype(np.uint8)).save(sys.argv[1])
