"""Makes the sounds of water: twelve splashes of three strengths, and the loop of water at rest."""

import numpy as np

from lib import sound, wav

# Level to its strength from 0 to 1 and its peak in decibels.
LEVELS = {1: (0.12, -12.0), 2: (0.50, -7.0), 3: (1.00, -3.0)}
VARIANTS = 4
AMBIENT_LENGTH, AMBIENT_LEVEL = 5.0, -22.0


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
    return sound.close(splashed, fade=0.06)


def ambient():
    """Water that moves a little in its bed: bubbles of three sizes and a breath of noise, gently limited.

    The middle of its spectrum lies near 1800 Hz; below 1000 it would be mud.
    """
    length = AMBIENT_LENGTH
    moving = sound.bubbles(length, 300, 420, 2600, seed=1)
    moving += 0.7 * sound.bubbles(length, 14, 230, 520, seed=2)
    moving += 1.1 * sound.bubbles(length, 420, 2600, 7000, seed=3)
    low = sound.noise(length, 300, 1400, seed=4) * sound.swell(length, seed=5)
    high = sound.noise(length, 1800, 6500, seed=6) * sound.swell(length, seed=7)
    return sound.limited(0.35 * moving + 0.03 * (low + high), 3.2)


if __name__ == "__main__":
    for level, (strength, peak) in LEVELS.items():
        for variant in range(1, VARIANTS + 1):
            wav.save_once(f"splash_{level}_{variant}.wav", splash(strength, seed=1000 * level + 10 * variant), peak)
    wav.save_loop("water_ambient.wav", ambient(), AMBIENT_LEVEL)
