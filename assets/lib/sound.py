"""Atoms of sound, and how they are put together.

Lengths are seconds, tones hertz, sounds arrays at 44.1 kHz. What goes round is made periodic from the start: parts are
laid down modulo the length, and noise and its slow gains are sums of whole periods. Every source of chance has a seed
of its own; nothing asks the clock.
"""

import numpy as np
from scipy import signal

from lib.wav import RATE


def times(length):
    return np.arange(round(length * RATE)) / RATE


def silence(length):
    return np.zeros(round(length * RATE))


def add(sound, start, part, wrap=False):
    """Adds `part` from `start` seconds on. What reaches past the end is cut, or begins again with `wrap`."""
    first = round(start * RATE)
    if wrap:
        np.add.at(sound, (first + np.arange(len(part))) % len(sound), part)
    else:
        end = min(len(sound), first + len(part))
        sound[first:end] += part[: max(end - first, 0)]


def bubble(tone, loudness, rise=0.1, purity=1.0, longest=0.35):
    """One bubble of air that closes in water, the atom of all its sounds.

    A sine that decays by what it radiates and by the heat it loses, and rises while the bubble nears the surface:
    `rise` is 0 for one that stays deep, 0.25 for a drop that plops. `purity` 1 is a bubble among others, 2.6 a single
    drop in a cave.
    """
    decay = 0.75 * (0.13 * tone + 0.0072 * tone**1.5) / purity
    time = times(min(longest, 6.9 / decay))
    phase = 2 * np.pi * np.cumsum(tone * (1 + rise * decay * time)) / RATE
    return loudness * np.sin(phase) * np.exp(-decay * time) * np.minimum(1, time / 0.0012)


LOUDEST_BUBBLE = 0.42  # a low bubble above this sticks out of a loop as a knock


def bubbles(length, per_second, lowest, highest, seed, envelope=None):
    """Many bubbles of all sizes, small ones far more often than large ones.

    Without an `envelope` they are spread evenly and go round; with one, loudness follows it and the end is cut.
    """
    random = np.random.default_rng(seed)
    sound = silence(length)
    for _ in range(random.poisson(per_second * length)):
        tone = np.exp(random.uniform(np.log(lowest), np.log(highest)))
        place = random.uniform(0, length - 1 / RATE)
        size = random.pareto(2.2) * 0.12 + 0.03
        if envelope is None:
            size = min(size, LOUDEST_BUBBLE) * (500 / tone) ** 0.35
        else:
            size = min(size, 1) * (500 / tone) ** 0.5 * envelope[int(place * RATE)]
        part = bubble(tone, size, random.choice([0, 0.05, 0.12, 0.2]), random.uniform(0.8, 1.6))
        add(sound, place, part, wrap=envelope is None)
    return sound


def noise(length, lowest, highest, seed, slope=0.0):
    """Noise between two tones, standard deviation 1, periodic. `slope` -0.5 makes it pink, -1 brown."""
    random = np.random.default_rng(seed)
    count = round(length * RATE)
    tone = np.fft.rfftfreq(count, 1 / RATE)
    band = 1 / (1 + (lowest / np.maximum(tone, 1)) ** 4) / (1 + (tone / highest) ** 4)
    spectrum = band * np.maximum(tone, 20) ** slope * np.exp(2j * np.pi * random.random(len(tone)))
    spectrum[tone < 20] = 0
    sound = np.fft.irfft(spectrum, count)
    return sound / sound.std()


def swell(length, seed, waves=8, lowest=0.4):
    """A slow gain from `lowest` to 1, periodic: the first `waves` - 1 harmonics of the length."""
    random = np.random.default_rng(seed)
    turn = 2 * np.pi * times(length) / length
    curve = sum(random.normal() / wave**0.6 * np.cos(wave * turn + random.uniform(0, 2 * np.pi))
                for wave in range(1, waves))
    return lowest + (1 - lowest) * (curve - curve.min()) / (curve.max() - curve.min())


def decay(length, fall, attack=0.0):
    """From 0 to 1 within about `attack`, then down to 1/e in each `fall`."""
    time = times(length)
    rise = 1 if attack == 0 else 1 - np.exp(-time / attack)
    return np.exp(-time / fall) * rise


def ringing(length, partials, chirp=0.0, phases=None):
    """Modes of a struck body, `partials` being (tone, loudness, fall). `chirp` bends the start up as thin ice does.

    The last tenth is faded, so that a mode which still rings there does not end in a click.
    """
    time = times(length)
    sound = np.zeros(len(time))
    for number, (tone, loudness, fall) in enumerate(partials):
        bent = time + chirp * 0.006 * (1 - np.exp(-time / 0.006))
        phase = 0 if phases is None else phases[number]
        sound += loudness * np.sin(2 * np.pi * tone * bent + phase) * np.exp(-time / fall)
    return sound * np.minimum(1, (length - time) / (0.1 * length))


def bell(tone, loudness, length, fall=0.7):
    """A small bronze bell or a glass bowl: partials that are not quite harmonic, the high ones gone first."""
    partials = [(tone * ratio, loudness * share, fall * life) for ratio, share, life in
                ((0.5, 0.10, 1.1), (1, 1.0, 1.0), (2.006, 0.42, 0.62), (2.98, 0.16, 0.40), (4.17, 0.11, 0.24),
                 (5.43, 0.06, 0.14))]
    return ringing(length, partials) * np.minimum(1, times(length) / 0.002)


def room(sound, seed, fall=0.35, share=0.25, wrap=False):
    """Adds the echo of a stone room: noise that decays by 1/e in `fall`, its high tones first."""
    length = min(5 * fall, len(sound) / RATE)
    tail = noise(length, 150, 5200, seed) * decay(length, fall, attack=0.006)
    tail += noise(length, 150, 1400, seed + 1) * decay(length, fall * 1.6, attack=0.01)
    tail *= share / np.sqrt((tail**2).sum())
    if wrap:
        return sound + np.fft.irfft(np.fft.rfft(sound) * np.fft.rfft(tail, len(sound)), len(sound))
    return sound + signal.fftconvolve(sound, tail)[: len(sound)]


def wide(middle, left, right, width=0.6):
    """Two channels of three sounds that have nothing in common: what all hear, and what lies to either side.

    The louder, the wider; at 0.6 both channels are as loud as `middle` alone, and their sum on one loudspeaker is 3 dB
    above that.
    """
    common = np.sqrt(1 - width**2)
    return np.stack([common * middle + width * left, common * middle + width * right], axis=1)


def placed(sound, side):
    """Two channels with a sound at `side`, -1 left to 1 right, of the same power everywhere."""
    angle = (side + 1) * np.pi / 4
    return np.stack([np.cos(angle) * sound, np.sin(angle) * sound], axis=1)


def limited(sound, ceiling):
    """Softly bent so that nothing rises above `ceiling` times the mean height (root of the mean square)."""
    limit = ceiling * sound.std()
    return limit * np.tanh(sound / limit)


def close(sound, fade=0.05, rise=0.0005):
    """Makes a sound that is heard once begin and end at 0: nothing below 30 Hz, its last `fade` seconds faded."""
    sound = signal.sosfilt(signal.butter(2, 30, "highpass", fs=RATE, output="sos"), sound)
    time = times(len(sound) / RATE)
    return sound * np.minimum(1, time / rise) * np.minimum(1, (time[-1] - time) / fade)
