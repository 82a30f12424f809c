"""Makes the sounds of steam: the loop of water that boils away, and that of steam in the air."""

import numpy as np

from lib import sound, wav

EVAPORATE_LENGTH, EVAPORATE_LEVEL = 20.0, -22.0
AMBIENT_LENGTH, AMBIENT_LEVEL = 22.0, -22.0


def evaporate():
    """Water on a hot plate: hiss that spits, drops that burst, and the boil beneath."""
    length = EVAPORATE_LENGTH
    random = np.random.default_rng(60)
    hiss = sound.noise(length, 1300, 6200, seed=61, slope=-0.4) * sound.swell(length, seed=62, waves=240, lowest=0.5)
    boil = 0.7 * sound.bubbles(length, 120, 180, 900, seed=63)
    spitting = sound.silence(length)
    for _ in range(int(55 * length)):
        burst = sound.noise(0.05, 1500, 6000, seed=int(random.integers(1 << 31)))
        size = min(random.pareto(2.4) * 0.05 + 0.03, 0.3)
        shape = sound.decay(0.05, random.uniform(0.004, 0.015), attack=0.002)
        sound.add(spitting, random.uniform(0, length), size * burst * shape, wrap=True)
    return sound.limited(0.09 * hiss + boil + spitting, 3.2)


def ambient():
    """Steam that drifts: a soft breath in three bands, each with its own slow swell."""
    length = AMBIENT_LENGTH
    bands = ((350, 900, 0.8), (900, 2200, 1.0), (2200, 5600, 0.7))
    return sum(share * sound.noise(length, low, high, seed=70 + 2 * number)
               * sound.swell(length, seed=71 + 2 * number, waves=36, lowest=0.35)
               for number, (low, high, share) in enumerate(bands))


if __name__ == "__main__":
    wav.save_loop("steam_evaporate.wav", evaporate(), EVAPORATE_LEVEL, rate=wav.HALF_RATE)
    wav.save_loop("steam_ambient.wav", ambient(), AMBIENT_LEVEL, rate=wav.HALF_RATE)
