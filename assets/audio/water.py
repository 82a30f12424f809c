"""Makes the sounds of water: twelve splashes of three strengths, and the loop of water at rest."""

import numpy as np

from lib import sound, wav

# Level to its strength from 0 to 1 and its loudness in LUFS: even the weakest has to be heard over the water's own loop.
LEVELS = {1: (0.12, -24.0), 2: (0.50, -21.5), 3: (1.00, -19.0)}
VARIANTS = 4
AMBIENT_LENGTH, AMBIENT_LEVEL = 21.0, -20.0  # as loud as the music


def splash(strength, seed):
    """Something falls into water: the burst of the surface, spray, the cavity that closes, foam, and drops after it.

    The stronger, the longer, the lower, and the more drops. The seed varies place and pitch of everything a little.
    """
    random = np.random.default_rng(seed)
    length = 0.45 + 0.95 * strength
    pitch = random.uniform(0.88, 1.14)
    burst = sound.noise(length, (500 - 250 * strength) * pitch, (2600 + 2600 * strength) * pitch, seed + 1)
    spray = sound.noise(length, 2500, 9000, seed + 2)
    splashed = burst * sound.decay(length, 0.035 + 0.11 * strength, attack=0.003) * (0.10 + 0.26 * strength)
    splashed += spray * sound.decay(length, 0.02 + 0.06 * strength, attack=0.004) * 0.09 * (1 + strength)
    cavity = sound.bubble((330 - 170 * strength) * pitch, 0.36 + 0.28 * strength, rise=0.22,
                          purity=1.8 + 0.7 * strength, longest=0.4)
    sound.add(splashed, (0.012 + 0.03 * strength) * random.uniform(0.8, 1.5), cavity)
    foam = sound.decay(length, 0.10 + 0.28 * strength, attack=0.02)
    splashed += 0.9 * sound.bubbles(length, 140 + 420 * strength, 420, 3200, seed + 3, foam)
    for _ in range(int(2 + 7 * strength)):
        drop = sound.bubble(random.uniform(800, 2300), 0.16 * random.uniform(0.4, 1), rise=0.25, purity=1.8)
        sound.add(splashed, random.uniform(0.12, 0.28 + 0.8 * strength), drop)
    return sound.close(sound.limited(splashed, 4.0), fade=0.06)


def bed(seed):
    """Water that moves a little: bubbles of three sizes and a breath of noise.

    The middle of its spectrum lies near 1800 Hz; below 1000 it would be mud. Each part comes and goes for itself, once in
    a few seconds, so that no two moments are alike.
    """
    length = AMBIENT_LENGTH
    moving = sound.bubbles(length, 300, 420, 2600, seed) * sound.swell(length, seed + 1, waves=30, lowest=0.65)
    moving += 0.7 * sound.bubbles(length, 14, 230, 520, seed + 2)
    moving += 1.1 * sound.bubbles(length, 420, 2600, 7000, seed + 3) * sound.swell(length, seed + 4, waves=40, lowest=0.55)
    low = sound.noise(length, 300, 1400, seed + 5) * sound.swell(length, seed + 6, waves=24)
    high = sound.noise(length, 1800, 6500, seed + 7) * sound.swell(length, seed + 8, waves=24)
    return 0.35 * moving + 0.03 * (low + high)


def ambient():
    """Water about the listener, gently limited."""
    return sound.limited(sound.wide(bed(1), bed(101), bed(201), width=0.65), 3.2)


if __name__ == "__main__":
    for level, (strength, loudness) in LEVELS.items():
        for variant in range(1, VARIANTS + 1):
            wav.save_level(f"splash_{level}_{variant}.wav", splash(strength, seed=1000 * level + 10 * variant), loudness)
    wav.save_loop("water_ambient.wav", ambient(), AMBIENT_LEVEL, rate=wav.HALF_RATE)
