"""Writes and reads the pictures of the game: TGA, 32 bit, straight alpha, top row first.

Rows stand top first, so that the game can hand an uncompressed picture on without a copy. Run-length packets end at
row ends, as its decoder wants. Sides are powers of two: other sizes would be stretched and blurred by the mipmaps.
"""

import pathlib
import struct

import numpy as np

GFX = pathlib.Path(__file__).resolve().parents[2] / "data" / "gfx"
LONGEST_PACKET = 128
SHORTEST_RUN = 3  # pixels that are worth being made alike
WORTH_PACKING = 0.9  # run lengths are kept only if they take less than this share of the plain size


def save(name, picture, tolerance=0, smooth=None):
    """Writes `picture` (rows, columns, 3 or 4; 0 to 1) to data/gfx/`name`, the shorter of plain and run lengths.

    Neighbours in a row that differ by no more than twice `tolerance`, in steps of 1/255, become one colour; not where
    the mask `smooth` is set, since in a slow change of colour that would show as bands.
    """
    exact = to_bytes(picture)
    pixels = steadied(exact, tolerance)
    if smooth is not None:
        pixels[smooth] = exact[smooth]
    rows, columns = pixels.shape[:2]
    if rows & (rows - 1) or columns & (columns - 1) or min(rows, columns) < 4:
        raise ValueError(f"{name}: {columns} x {rows} are not powers of two from 4 on")
    plain = pixels.tobytes()
    packed = b"".join(pack_row(row) for row in pixels)
    run_lengths = len(packed) < WORTH_PACKING * len(plain)
    header = struct.pack("<BBBHHBHHHHBB", 0, 0, 10 if run_lengths else 2, 0, 0, 0, 0, 0, columns, rows, 32, 0x28)
    path = GFX / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(header + (packed if run_lengths else plain))
    print(f"data/gfx/{name}: {columns} x {rows}, {path.stat().st_size} bytes")


def to_bytes(picture):
    """Blue, green, red, alpha bytes; a picture without alpha is opaque."""
    if picture.shape[2] == 3:
        picture = np.dstack([picture, np.ones(picture.shape[:2])])
    rounded = (np.clip(picture, 0, 1) * 255 + 0.5).astype(np.uint8)
    return np.ascontiguousarray(rounded[..., [2, 1, 0, 3]])


def steadied(pixels, tolerance):
    """Makes pixels of a row alike that nearly are: each run gets the middle of its colours."""
    steady = pixels.copy()
    if tolerance == 0:
        return steady
    for row, source in zip(steady, pixels.tolist()):
        start, lowest, highest = 0, source[0], source[0]
        for place in range(1, len(source) + 1):
            if place < len(source):
                low = [min(a, b) for a, b in zip(lowest, source[place])]
                high = [max(a, b) for a, b in zip(highest, source[place])]
                if all(b - a <= 2 * tolerance for a, b in zip(low, high)):
                    lowest, highest = low, high
                    continue
            if place - start >= SHORTEST_RUN:
                row[start:place] = [(a + b + 1) // 2 for a, b in zip(lowest, highest)]
            if place < len(source):
                start, lowest, highest = place, source[place], source[place]
    return steady


def pack_row(row):
    """One row as packets of at most 128 pixels. A run pays from two equal pixels on."""
    words = np.ascontiguousarray(row).view(np.uint32).ravel()
    starts = np.concatenate(([0], np.flatnonzero(np.diff(words)) + 1, [len(words)]))
    packets, literal = [], [0, 0]

    def flush():
        for start in range(literal[0], literal[1], LONGEST_PACKET):
            end = min(start + LONGEST_PACKET, literal[1])
            packets.append(bytes([end - start - 1]) + row[start:end].tobytes())

    for start, end in zip(starts[:-1], starts[1:]):
        if end - start < 2:
            literal[1] = end
            continue
        flush()
        for place in range(start, end, LONGEST_PACKET):
            packets.append(bytes([127 + min(LONGEST_PACKET, end - place)]) + row[place].tobytes())
        literal[:] = [end, end]
    flush()
    return b"".join(packets)


def load(name):
    """Reads a picture written by `save`, as (rows, columns, 4) from 0 to 1. For the contact sheets."""
    data = (GFX / name).read_bytes()
    kind, columns, rows = data[2], *struct.unpack("<HH", data[12:16])
    pixels = np.frombuffer(data, np.uint8, offset=18) if kind == 2 else unpack(data[18:], rows * columns)
    return pixels.reshape(rows, columns, 4)[..., [2, 1, 0, 3]].astype(float) / 255


def unpack(data, count):
    pixels, place = bytearray(), 0
    while len(pixels) < count * 4:
        control, place = data[place], place + 1
        if control > 127:
            pixels += data[place : place + 4] * (control - 127)
            place += 4
        else:
            length = 4 * (control + 1)
            pixels += data[place : place + length]
            place += length
    return np.frombuffer(bytes(pixels), np.uint8)
