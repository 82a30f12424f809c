"""Table of all sounds and pieces of music, and pictures of their spectra to look at.

Usage: python3 -m check.loudness FOLDER

Peaks are in decibels below full scale, loudness in LUFS. `ends` is the larger of the first and the last sample, in
decibels: what is heard once should begin and end in silence. `seam` is the step from the last sample to the first,
divided by the step that 99 of 100 neighbours stay below: below 1 it cannot be told from the sound itself. `middle` is
the mean frequency of its power in hertz, `shrill` how much of it lies above 4 kHz, in hundredths. A line that misses its target ends in what is wrong, and the exit status
is then 1. The pictures show 0 to 11 kHz upwards, the last 90 decibels from black to white.
"""

import pathlib
import subprocess
import sys

import numpy as np
from PIL import Image, ImageDraw
from scipy import signal

from lib import loudness, wav

MUSIC = wav.SOUNDS.parent / "music"
LOOPS = {"water_ambient", "ice_freeze", "ice_friction", "steam_evaporate", "steam_ambient", "wind", "machine", "drip",
         "fire", "menu_evening"}
LOOP_LEVELS = (-24.5, -19.5)  # LUFS
SPARSE = {"drip": (-26.5, -24.5)}  # what is mostly silence, by ear
LOOP_LENGTH = 20.0  # seconds: in shorter ones the ear finds the pattern
SHRILL = 0.25  # largest share of a loop's power above 4 kHz
MUSIC_LEVEL, MUSIC_PEAK = (-20.7, -19.3), -7.0
MUSIC_LENGTH = 120.0
LOUDEST_END = -60.0
LARGEST_FILES = {wav.SOUNDS: 16_000_000, MUSIC: 6_000_000}


def load_music(path):
    """A decoded piece at 44.1 kHz, (samples, 2), and its rate."""
    command = ["ffmpeg", "-v", "error", "-i", str(path), "-f", "f32le", "-ac", "2", "-ar", str(wav.RATE), "-"]
    raw = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
    return np.frombuffer(raw, "<f4").reshape(-1, 2).astype(float), wav.RATE


def seam(sound):
    steps = np.abs(np.diff(sound, axis=0)).max(1)
    return np.abs(sound[0] - sound[-1]).max() / np.percentile(steps, 99)


def middle(sound, rate):
    frequency, power = signal.welch(sound.mean(1), rate, nperseg=min(4096, len(sound)))
    return (frequency * power).sum() / power.sum()


def shrill(sound, rate):
    frequency, power = signal.welch(sound.mean(1), rate, nperseg=min(4096, len(sound)))
    return power[frequency > 4000].sum() / power.sum()


def measure(path):
    """One line of the table as a dictionary, with what is wrong under `faults`."""
    music = path.suffix == ".ogg"
    sound, rate = load_music(path) if music else wav.load(path)
    sound = sound.reshape(len(sound), -1)
    loops = music or path.stem in LOOPS
    heard = wav.rounds(sound, 2) if loops and not music else sound
    row = {"name": path.stem, "rate": rate, "length": len(sound) / rate, "peak": wav.decibels(np.abs(sound).max()),
           "true": wav.decibels(loudness.true_peak(sound)), "lufs": loudness.integrated(heard, rate),
           "ends": wav.decibels(np.abs(sound[[0, -1]]).max()), "middle": middle(sound, rate),
           "shrill": shrill(sound, rate), "seam": seam(sound) if loops else None}
    row["faults"] = list(faults(row, music, loops))
    return row


def faults(row, music, loops):
    if row["true"] > -0.5:
        yield "peak"
    if loops and row["seam"] > 1:
        yield "seam"
    if not loops and row["ends"] > LOUDEST_END:
        yield "ends"
    if music:
        if not MUSIC_LEVEL[0] <= row["lufs"] <= MUSIC_LEVEL[1]:
            yield "loudness"
        if row["true"] > MUSIC_PEAK:
            yield "music's peak"
        if row["length"] < MUSIC_LENGTH:
            yield "length"
    elif loops:
        lowest, highest = SPARSE.get(row["name"], LOOP_LEVELS)
        if not lowest <= row["lufs"] <= highest:
            yield "loudness"
        if row["length"] < LOOP_LENGTH:
            yield "length"
        if row["shrill"] > SHRILL:
            yield "shrill"


def spectrogram(sound, rate, columns, rows=140, highest=11025):
    """The spectrum over time as (rows, columns) from 0 to 1, a hop chosen so that the picture fits."""
    window = 2048 if len(sound) > 8 * rate else 512
    hop = max(1, len(sound) // columns)
    padded = np.pad(sound, window // 2)
    starts = np.arange(columns) * hop
    frames = padded[np.minimum(starts, len(padded) - window)[:, None] + np.arange(window)] * np.hanning(window)
    level = 20 * np.log10(np.abs(np.fft.rfft(frames)).T / window * 4 + 1e-9)
    bins = np.linspace(0, min(highest, rate / 2) / rate * window, rows).astype(int)
    return np.clip((level[bins] + 100) / 90, 0, 1)[::-1]


def contact_sheet(paths, columns=280, across=4):
    """One spectrogram for each file, its name above it."""
    down = -(-len(paths) // across)
    sheet = Image.new("L", (across * (columns + 8), down * 164))
    pen = ImageDraw.Draw(sheet)
    for number, path in enumerate(paths):
        sound, rate = load_music(path) if path.suffix == ".ogg" else wav.load(path)
        picture = spectrogram(sound.reshape(len(sound), -1).mean(1), rate, columns)
        left, top = number % across * (columns + 8), number // across * 164
        sheet.paste(Image.fromarray((picture * 255).astype(np.uint8)), (left, top + 14))
        pen.text((left + 2, top + 1), f"{path.stem}  {len(sound) / rate:.2f} s", fill=255)
    return sheet


def main(folder):
    files = sorted(wav.SOUNDS.glob("*.wav")), sorted(MUSIC.glob("*.ogg"))
    print(f"{'':22}{'rate':>6}{'length':>8}{'peak':>7}{'true':>7}{'LUFS':>7}{'ends':>8}{'middle':>8}{'shrill':>7}{'seam':>6}")
    failed = False
    for row in map(measure, files[0] + files[1]):
        closing = "" if row["seam"] is None else f"{row['seam']:.2f}"
        print(f"{row['name']:22}{row['rate']:6}{row['length']:8.2f}{row['peak']:7.1f}{row['true']:7.1f}"
              f"{row['lufs']:7.1f}{row['ends']:8.1f}{row['middle']:8.0f}{100 * row['shrill']:7.0f}{closing:>6} {', '.join(row['faults'])}")
        failed |= bool(row["faults"])
    for place, largest in LARGEST_FILES.items():
        size = sum(path.stat().st_size for path in place.glob("*.*"))
        print(f"{place.name}: {size} bytes of {largest}")
        failed |= size > largest
    folder.mkdir(parents=True, exist_ok=True)
    for name, paths in zip(("sounds", "music"), files):
        if paths:
            contact_sheet(paths, *((1200, 1) if name == "music" else ())).save(folder / f"{name}.png")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
