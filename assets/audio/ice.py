"""Makes the sounds of ice: twelve cracks of three strengths, and the loops of freezing and of sliding."""

import numpy as np

from lib import sound, wav

# Level to its strength from 0 to 1 and its loudness in LUFS.
LEVELS = {1: (0.10, -25.0), 2: (0.45, -22.5), 3: (1.00, -21.5)}
VARIANTS = 4
FREEZE_LENGTH, FREEZE_LEVEL = 20.0, -22.0
FRICTION_LENGTH, FRICTION_LEVEL = 20.5, -22.0
SNAP_MODES = 7


def snap(random, length, strength):
    """A brittle break: modes of a thin plate, which start too high and fall, and a tick of noise.

    The tick must stay small: it would take up the peak, and the ice itself be too quiet to be heard.
    """
    lowest = 900 + 900 * (1 - strength)
    tones = np.exp(random.uniform(np.log(lowest), np.log(6800), SNAP_MODES))
    partials = [(tone, 0.14, random.uniform(0.008, 0.035)) for tone in tones]
    plate = sound.ringing(length, partials, chirp=0.9, phases=random.uniform(0, 6, SNAP_MODES))
    tick = random.standard_normal(len(plate)) * sound.decay(len(plate) / wav.RATE, 0.0012)
    return plate + 0.10 * tick


def crack(strength, seed):
    """Ice strikes something: one to three large snaps at once, a trail of small ones, and a thud of its weight."""
    random = np.random.default_rng(seed)
    length = 0.34 + 0.62 * strength
    cracked = sound.silence(length)
    large = 1 + round(2 * strength)
    trail = 0.05 + random.exponential(0.03 + 0.06 * strength, 4 + int(12 * strength)).cumsum()
    starts = [0.003, *np.sort(random.uniform(0.01, 0.05, large - 1)), *trail]
    for number, start in enumerate(starts):
        if start > length - 0.12:
            break
        size = 1 if number < large else random.uniform(0.12, 0.6) * np.exp(-start / (0.1 + 0.25 * strength))
        sound.add(cracked, start, size * snap(random, min(length - start, 0.25), strength))
    weight = random.uniform(140, 175) * (1.7 - 0.7 * strength)
    time = sound.times(length)
    thud = np.sin(2 * np.pi * (weight * time - 0.6 * weight * time**2)) * sound.decay(length, 0.05, attack=0.002)
    return sound.close(sound.limited(cracked + (0.10 + 0.35 * strength) * thud, 6.0))


# Partials of a glass bowl, by which freezing sings: ratio to the lowest, and loudness.
GLASS = ((1, 1), (1.502, 0.75), (2.005, 0.60), (2.67, 0.42), (3.36, 0.26), (4.01, 0.18), (5.43, 0.08))
GLASS_TONE = 659.26  # an E, as the music's; an octave higher it was shrill


def freeze():
    """Frost that grows: glassy partials which come and go each for itself, fine crackle, and cold air.

    The game lets it swell with the water that freezes, so the loop itself stays even. Less than a twentieth of its power
    lies above 4 kHz.
    """
    length = FREEZE_LENGTH
    random = np.random.default_rng(30)
    turn = 2 * np.pi * sound.times(length) / length
    growing = sound.silence(length)
    for number, (ratio, share) in enumerate(GLASS):
        periods = round(GLASS_TONE * ratio * length)
        trembling = 0.75 + 0.25 * np.sin(turn * random.integers(50, 130) + random.uniform(0, 6))
        come_and_go = sound.swell(length, seed=31 + number, waves=24, lowest=0.0) ** 1.5
        growing += 0.05 * share * np.sin(turn * periods + random.uniform(0, 6)) * trembling * come_and_go
    for _ in range(int(90 * length)):
        tone = np.exp(random.uniform(np.log(1400), np.log(5200)))
        partial = (tone, random.uniform(0.03, 0.2), random.uniform(0.001, 0.006))
        sound.add(growing, random.uniform(0, length), 0.30 * sound.ringing(0.025, [partial]), wrap=True)
    cold = sound.noise(length, 900, 3400, seed=40, slope=-0.5) * sound.swell(length, seed=41, waves=20)
    return growing + 0.006 * cold


def friction():
    """A block slides over stone: the rush of the contact, grains that catch, and the rumble of the block."""
    length = FRICTION_LENGTH
    random = np.random.default_rng(50)
    uneven = sound.swell(length, seed=51, waves=180, lowest=0.45)
    sliding = sound.noise(length, 700, 3200, seed=52) * uneven * 0.10
    sliding += sound.noise(length, 70, 260, seed=53) * sound.swell(length, seed=54, waves=84, lowest=0.5) * 0.10
    for _ in range(int(150 * length)):
        size = min(random.pareto(2.0) * 0.10 + 0.03, 0.5)
        partials = [(random.uniform(900, 5200), size, random.uniform(0.002, 0.009)) for _ in range(3)]
        sound.add(sliding, random.uniform(0, length), sound.ringing(0.04, partials), wrap=True)
    return sound.limited(sliding, 3.0)


if __name__ == "__main__":
    for level, (strength, loudness) in LEVELS.items():
        for variant in range(1, VARIANTS + 1):
            wav.save_level(f"ice_crack_{level}_{variant}.wav", crack(strength, seed=2000 * level + 10 * variant), loudness)
    wav.save_loop("ice_freeze.wav", freeze(), FREEZE_LEVEL, rate=wav.HALF_RATE)
    wav.save_loop("ice_friction.wav", friction(), FRICTION_LEVEL, rate=wav.HALF_RATE)
