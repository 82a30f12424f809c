"""Writes and reads the sounds of the game: WAV, 16 bit, one channel or two.

A sound is an array of floats, full scale 1, made at 44.1 kHz: (samples), or (samples, 2) for one that lies around. One whose highest tones lie below 10 kHz is stored at
half that rate. The level is set last: a sound that is heard once by its peak, one that goes round by its loudness.
"""

import pathlib
import wave

import numpy as np
from scipy import signal

from lib import loudness

SOUNDS = pathlib.Path(__file__).resolve().parents[2] / "data" / "snd"
RATE = 44100  # hertz, of all sounds in the making
HALF_RATE = RATE // 2
FULL_SCALE = 32767
LOUDEST_PEAK = -1.0  # decibels below full scale: room for the dither and for a player that resamples
DITHER_SEED = 99


def decibels(ratio):
    return 20 * np.log10(max(ratio, 1e-9))


def save_once(name, sound, peak, rate=RATE):
    """A sound with a beginning and an end. `peak` is in decibels below full scale."""
    sound = at_rate(sound, rate)
    write(name, sound / np.abs(sound).max() * 10 ** (peak / 20), rate)


def save_loop(name, sound, level, rate=RATE):
    """A sound that follows its own end. `level` is its loudness in LUFS, measured over two rounds."""
    sound = at_rate(sound, rate)
    sound = sound * 10 ** ((level - loudness.integrated(rounds(sound, 2), rate)) / 20)
    write(name, sound, rate)


def save_level(name, sound, level, rate=RATE):
    """A sound with a beginning and an end that is set by its loudness."""
    sound = at_rate(sound, rate)
    write(name, sound * 10 ** ((level - loudness.integrated(sound, rate)) / 20), rate)


def rounds(sound, count):
    return np.concatenate([sound] * count)


def at_rate(sound, rate):
    """Resampled as a period of an endless sound: right for a loop, and for one that is silent at both ends."""
    return sound if rate == RATE else signal.resample(sound, len(sound) * rate // RATE, axis=0)


def write(name, sound, rate):
    """Rounds with triangular dither, so that a fading sound ends in faint noise and not in steps."""
    peak = np.abs(sound).max()
    if decibels(peak) > LOUDEST_PEAK:
        raise ValueError(f"{name}: peak of {decibels(peak):.1f} dB")
    random = np.random.default_rng(DITHER_SEED)
    dither = random.random(sound.shape) - random.random(sound.shape)
    samples = np.round(sound * FULL_SCALE + dither).astype("<i2")
    path = SOUNDS / name
    path.parent.mkdir(parents=True, exist_ok=True)
    with wave.open(str(path), "wb") as file:
        file.setnchannels(sound.ndim)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(samples.tobytes())
    print(f"data/snd/{name}: {len(samples) / rate:.2f} s, {path.stat().st_size} bytes")


def load(path):
    """A file written by `write`: samples from -1 to 1, (samples) or (samples, 2), and their rate."""
    with wave.open(str(path), "rb") as file:
        samples = np.frombuffer(file.readframes(file.getnframes()), "<i2")
        channels = file.getnchannels()
        whole = samples / (FULL_SCALE + 1)
        return (whole if channels == 1 else whole.reshape(-1, channels)), file.getframerate()
