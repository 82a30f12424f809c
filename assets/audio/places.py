"""Makes the loops for sound sources in a level: wind, a machine, a drip, a fire."""

import numpy as np

from lib import sound, wav

# Levels have several of them at once: the rounds are long, and meet again only after minutes.
WIND_LENGTH, WIND_LEVEL = 26.0, -22.0
MACHINE_LENGTH, MACHINE_LEVEL = 21.0, -22.0
DRIP_LENGTH, DRIP_LEVEL = 23.0, -25.5
FIRE_LENGTH, FIRE_LEVEL = 20.0, -22.0


def wind():
    """Wind about a tower: a brown bed, and gusts that move through seven narrow bands, the higher the briefer."""
    length = WIND_LENGTH
    blown = 0.5 * sound.noise(length, 60, 320, seed=130, slope=-0.5)
    gust = sound.swell(length, seed=131, waves=14, lowest=0.15)
    for number, tone in enumerate((240, 330, 450, 620, 850, 1150, 1600)):
        band = sound.noise(length, tone * 0.9, tone * 1.1, seed=132 + number)
        own = sound.swell(length, seed=142 + number, waves=28, lowest=0.1)
        blown += band * gust ** (1 + 0.35 * number) * own * 0.75 * 0.86**number
    return blown


TURNS = 11  # of the wheel in one round of the loop
TEETH = 8  # of the pinion for each turn
KNOCK = ((148, 0.5, 0.035), (392, 0.35, 0.022), (905, 0.18, 0.012), (2050, 0.07, 0.006))
PAWL = ((1180, 0.16, 0.09), (2740, 0.10, 0.07), (4310, 0.05, 0.045), (690, 0.12, 0.05))


def machine():
    """The waterworks: wooden teeth that mesh, an iron pawl once a turn, and the slow groan of the axle.

    A wheel turns evenly, but no two turns of it are alike: the teeth have voices of their own and meet a little early or
    late, and the load comes and goes.
    """
    length = MACHINE_LENGTH
    random = np.random.default_rng(150)
    turn = 2 * np.pi * TURNS * sound.times(length) / length
    load = sound.swell(length, seed=154, waves=9, lowest=0.55)
    running = 0.10 * sound.noise(length, 45, 140, seed=151) * (0.75 + 0.25 * np.sin(TEETH * turn)) * load
    groan = sum(np.sin(number * 22 * turn + 0.8 * np.sin(3 * turn)) / number**1.3 for number in range(1, 9))
    running += 0.06 * groan * sound.swell(length, seed=155, waves=2 * TURNS, lowest=0.1)
    voices = random.uniform(0.90, 1.10, TEETH)
    for tooth in range(TURNS * TEETH):
        start = (tooth + 0.5 + random.uniform(-0.05, 0.05)) * length / (TURNS * TEETH)
        pitch, size = voices[tooth % TEETH] * random.uniform(0.97, 1.03), random.uniform(0.55, 1.0)
        partials = [(tone * pitch, share * size * random.uniform(0.7, 1.2), fall) for tone, share, fall in KNOCK]
        sound.add(running, start, sound.ringing(0.16, partials), wrap=True)
    for number in range(TURNS):
        pitch, size = random.uniform(0.98, 1.02), random.uniform(0.6, 1.1)
        partials = [(tone * pitch, share * size * random.uniform(0.7, 1.2), fall) for tone, share, fall in PAWL]
        sound.add(running, (number + 0.31 + random.uniform(-0.02, 0.02)) * length / TURNS, sound.ringing(0.5, partials),
                  wrap=True)
    running += 0.018 * sound.noise(length, 400, 2600, seed=152) * (0.6 + 0.4 * np.sin(TEETH * turn + 1)) * load
    return sound.room(running, seed=153, fall=0.22, share=0.35, wrap=True)


# Places where water gathers: seconds from drop to drop and how far they differ, tone in hertz, loudness.
DRIPS = ((1.63, 0.30, 920, 0.40), (2.87, 0.70, 1290, 0.24), (4.90, 1.20, 690, 0.34), (7.60, 1.80, 1040, 0.20))


def drip():
    """Drops that fall into a basin in a vault, with its echo. Four places, none of which keeps time."""
    dripping = sound.silence(DRIP_LENGTH)
    random = np.random.default_rng(161)
    for period, uneven, tone, loudness in DRIPS:
        count = round(DRIP_LENGTH / period)
        for number in range(count):
            start = (number + 0.5) * DRIP_LENGTH / count + random.uniform(-uneven, uneven)
            pitch, size = tone * random.uniform(0.96, 1.04), loudness * random.uniform(0.6, 1.15)
            sound.add(dripping, start, sound.bubble(pitch, size, rise=0.24, purity=2.6), wrap=True)
            sound.add(dripping, start - 0.012, sound.bubble(pitch * 3.1, size * 0.25, rise=0.05, purity=1.2), wrap=True)
            if random.random() < 0.25:  # a smaller one after it
                sound.add(dripping, start + random.uniform(0.12, 0.3), sound.bubble(pitch * 1.27, size * 0.35, rise=0.2,
                                                                                    purity=2.2), wrap=True)
    return sound.room(dripping, seed=160, fall=0.55, share=0.55, wrap=True)


def fire():
    """Burning wood: the flutter of flames, sap that hisses, and crackle of all sizes, often in showers."""
    length = FIRE_LENGTH
    random = np.random.default_rng(170)
    burning = 0.12 * sound.noise(length, 40, 260, seed=171) * sound.swell(length, seed=172, waves=180, lowest=0.25)
    burning += 0.025 * sound.noise(length, 300, 1400, seed=173) * sound.swell(length, seed=174, waves=120, lowest=0.2)
    burning += 0.007 * sound.noise(length, 3000, 9000, seed=175) * sound.swell(length, seed=176, waves=50, lowest=0.2)
    for _ in range(int(9 * length)):
        start, shower = random.uniform(0, length), random.geometric(0.3)
        for _ in range(shower):
            size = min(random.pareto(1.6) * 0.07 + 0.03, 0.60)
            partials = [(random.uniform(900, 6500), size, random.uniform(0.001, 0.006)) for _ in range(3)]
            sound.add(burning, start, sound.ringing(0.03, partials), wrap=True)
            start += random.exponential(0.035)
    return sound.limited(burning, 4.0)


if __name__ == "__main__":
    wav.save_loop("wind.wav", wind(), WIND_LEVEL, rate=wav.HALF_RATE)
    wav.save_loop("machine.wav", machine(), MACHINE_LEVEL, rate=wav.HALF_RATE)
    wav.save_loop("drip.wav", drip(), DRIP_LEVEL, rate=wav.HALF_RATE)
    wav.save_loop("fire.wav", fire(), FIRE_LEVEL, rate=wav.HALF_RATE)
