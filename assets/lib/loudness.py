"""How loud a sound is: ITU-R BS.1770-4, and its peak between the samples."""

import numpy as np
from scipy import signal

# The two filters of BS.1770-4, table 1 and 2, which stand for head and ear, at 48 kHz.
RATE = 48000
SHELF = ((1.53512485958697, -2.69169618940638, 1.19839281085285), (1.0, -1.69065929318241, 0.73248077421585))
HIGH_PASS = ((1.0, -2.0, 1.0), (1.0, -1.99004745483398, 0.99007225036621))
BLOCK, STEP = 0.4, 0.1  # seconds: length of a block and way to the next
ABSOLUTE_GATE = -70.0  # LUFS: a block below is silence
RELATIVE_GATE = -10.0  # against the mean of the blocks above the absolute gate
SILENCE = -120.0  # LUFS, for a sound with nothing in it


def integrated(sound, rate):
    """Loudness in LUFS of samples or (samples, channels). Shorter than a block: ungated, over its own length."""
    power = block_powers(sound, rate)
    level = -0.691 + 10 * np.log10(power + 1e-15)
    if len(level) == 1:
        return max(level[0], SILENCE)
    heard = level > ABSOLUTE_GATE
    if not heard.any():
        return SILENCE
    gate = -0.691 + 10 * np.log10(power[heard].mean()) + RELATIVE_GATE
    return -0.691 + 10 * np.log10(power[heard & (level > gate)].mean())


def block_powers(sound, rate):
    """Mean square of every block after the two filters, channels added."""
    channels = sound.reshape(len(sound), -1)
    common = np.gcd(RATE, rate)
    weighted = signal.resample_poly(channels, RATE // common, rate // common, axis=0)
    for numerator, denominator in (SHELF, HIGH_PASS):
        weighted = signal.lfilter(numerator, denominator, weighted, axis=0)
    square = np.concatenate(([0.0], np.cumsum((weighted**2).sum(1))))
    length = min(len(weighted), round(BLOCK * RATE))
    starts = np.arange(0, len(weighted) - length + 1, round(STEP * RATE))
    return (square[starts + length] - square[starts]) / length


def true_peak(sound):
    """The largest value that the wave reaches between its samples, found at four times the rate."""
    return np.abs(signal.resample_poly(sound.reshape(len(sound), -1), 4, 1, axis=0)).max()
