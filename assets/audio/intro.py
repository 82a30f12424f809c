"""Makes the sound of the intro, data/vid/intro.ogg: wind over the dry tarn, harp and celesta, and the water's way home.

The times are those of the film (`intro/film.py`), in seconds, and the music counts seconds for beats. D dorian, as the
menus that follow; it ends open on fifth and second.
"""

import numpy as np

from audio import performance
from lib import loudness, midi, sound, wav

LENGTH = 12.0
SILENT = 11.6  # from here on: the screen on which the film is shortest ends it here, and the sound with it
MOUTH, FLUME, ARCH, TARN = 3.6, 4.35, 6.45, 7.95  # the water comes out, and falls on each in turn
NAME = 8.7
RATE = wav.RATE

DUSK = ((0.5, "D3"), (1.0, "A3"), (1.5, "D4"), (2.0, "E4"), (2.5, "A4"), (3.0, "E4"))
RUN = ("F3 C4 E4 G4 A4", "C3 G3 D4 E4 G4", "G3 B3 D4 A4 B4")  # a chord for every stage of the way
CROSSING = (0, 2, 1, 3, 2, 4, 3, 1)
RISE = ("D4", "E4", "A4", "B4", "D5", "E5", "A5", "B5", "D6")


def compose():
    piece = midi.Piece(60, 24)
    harp, celesta = piece.voice(46, 92, 54, 90), piece.voice(8, 92, 80, 100)
    strings, cello = piece.voice(48, 58, 60, 90), piece.voice(42, 66, 48, 85)
    plucked = piece.voice(45, 80, 70, 90)
    for start, note in DUSK:
        harp.play(start, 1.8, note, 52)
    cello.play(0.3, 3.2, "D2", 46)
    strings.play(0.8, 2.7, "A2", 34)
    for start, length, note in ((1.6, 0.8, "A5"), (2.4, 0.4, "G5"), (2.8, 0.9, "E5")):
        celesta.play(start, length, note, 50)

    for start, end, root, figure in ((MOUTH, FLUME + 0.9, "F2", RUN[0]), (FLUME + 0.9, ARCH, "C2", RUN[1]),
                                     (ARCH, TARN, "G2", RUN[2])):
        notes = figure.split()
        cello.play(start, end - start, root, 52)
        strings.play(start, end - start, notes[1], 40)
        for step in range(round((end - start) / 0.2)):
            harp.play(start + step * 0.2, 0.6, notes[CROSSING[step % 8]], 50 + 8 * (step % 4 == 0))
    for start, note in ((FLUME, "A4"), (ARCH, "B4"), (TARN, "D4")):
        plucked.play(start, 0.4, note, 74)
        celesta.play(start, 1.2, note, 56)

    cello.play(TARN, 3.9, "D2", 54)
    for note, velocity in (("A2", 44), ("D3", 40), ("E4", 34)):
        strings.play(TARN + 0.1, 3.8, note, velocity)
    for step, note in enumerate(RISE):
        harp.play(NAME + step * 0.22, 2.5, note, 56 + step)
    for start, note in ((NAME + 1.1, "A5"), (NAME + 1.55, "B5"), (NAME + 2.0, "E6")):
        celesta.play(start, 2.0, note, 60)
    return piece


def envelope(*points):
    """Loudness along (second, height) points."""
    seconds, heights = zip(*points)
    return np.interp(sound.times(LENGTH), seconds, heights)


def wind(seed):
    gusts = sound.noise(LENGTH, 140, 900, seed, slope=-0.5) * sound.swell(LENGTH, seed + 1, lowest=0.35)
    return 0.020 * gusts * envelope((0, 0), (0.8, 1), (4, 0.7), (8, 0.35), (10.8, 0.3), (SILENT, 0), (LENGTH, 0))


def water(seed):
    """The rush along the way, swelling at each fall, and at last the lapping of a full tarn."""
    way = envelope((0, 0), (MOUTH - 0.3, 0), (MOUTH + 0.3, 0.55), (FLUME, 0.6), (FLUME + 0.1, 0.95), (5.4, 0.6),
                   (ARCH, 0.55), (ARCH + 0.1, 1.0), (7.2, 0.6), (TARN - 0.1, 0.45), (TARN, 1.3), (8.5, 0.6), (9.5, 0.3),
                   (11.0, 0.22), (SILENT, 0), (LENGTH, 0))
    rush = 0.55 * sound.bubbles(LENGTH, 420, 420, 4200, seed, envelope=way)
    rush += way * (0.030 * sound.noise(LENGTH, 350, 1800, seed + 1) + 0.022 * sound.noise(LENGTH, 1800, 6500, seed + 2))
    for place, tone, height in ((FLUME, 300, 0.25), (ARCH, 260, 0.3), (TARN, 190, 0.5), (TARN + 0.12, 240, 0.3),
                                (9.9, 700, 0.14), (10.6, 860, 0.12)):
        sound.add(rush, place, sound.bubble(tone, height, rise=0.2, purity=2.2))
    return sound.room(rush, seed + 3, fall=0.35, share=0.25)


def mixed():
    played = performance.play(compose())[: round(LENGTH * RATE)]
    nature = np.stack([wind(310) + water(320), wind(330) + water(340)], axis=1)
    whole = played * 1.0 + nature * 0.42
    whole *= envelope((0, 1), (10.7, 1), (SILENT, 0), (LENGTH, 0))[:, None] ** 2
    gain = performance.LEVEL - loudness.integrated(whole, RATE)
    return performance.bend_peaks(whole * 10 ** (gain / 20))


if __name__ == "__main__":
    PATH = performance.MUSIC.parent / "vid" / "intro.ogg"
    performance.encode(PATH, mixed())
    print(f"data/vid/intro.ogg: {LENGTH} s, {PATH.stat().st_size} bytes")
