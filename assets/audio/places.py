"""Makes the loops for sound sources in a level: wind, a machine, a drip, a fire."""

import numpy as np

from lib import sound, wav

WIND_LENGTH, WIND_LEVEL = 8.0, -24.0
MACHINE_LENGTH, MACHINE_LEVEL = 4.0, -23.0
DRIP_LENGTH, DRIP_LEVEL = 5.0, -30.0
FIRE_LENGTH, FIRE_LEVEL = 4.0, -23.0


def wind():
    """Wind about a tower: a brown bed, and gusts that move through seven narrow bands, the higher the briefer."""
    length = WIND_LENGTH
    blown = 0.5 * sound.noise(length, 60, 320, seed=130, slope=-0.5)
    gust = sound.swell(length, seed=131, waves=5, lowest=0.15)
    for number, tone in enumerate((240, 330, 450, 620, 850, 1150, 1600)):
        band = sound.noise(length, tone * 0.9, tone * 1.1, seed=132 + number)
        own = sound.swell(length, seed=142 + number, waves=9, lowest=0.1)
        blown += band * gust ** (1 + 0.35 * number) * own * 0.75 * 0.86**number
    return blown


TURNS = 2  # of the wheel in one round of the loop
TEETH = 8  # of the pinion for each turn


def machine():
    """The waterworks: wooden teeth that mesh, an iron pawl once a turn, and the slow groan of the axle."""
    length = MACHINE_LENGTH
    random = np.random.default_rng(150)
    turn = 2 * np.pi * TURNS * sound.times(length) / length
    running = 0.10 * sound.noise(length, 45, 140, seed=151) * (0.75 + 0.25 * np.sin(TEETH * turn))
    groan = sum(np.sin(number * 22 * turn + 0.8 * np.sin(3 * turn)) / number**1.3 for number in range(1, 9))
    running += 0.05 * groan * (0.4 + 0.6 * np.sin(turn / 2) ** 2)
    for tooth in range(TURNS * TEETH):
        start = (tooth + 0.5 + random.uniform(-0.03, 0.03)) * length / (TURNS * TEETH)
        pitch, size = random.uniform(0.93, 1.07), random.uniform(0.7, 1.0)
        knock = sound.ringing(0.16, [(tone * pitch, share * size, fall) for tone, share, fall in
                                     ((148, 0.5, 0.035), (392, 0.35, 0.022), (905, 0.18, 0.012), (2050, 0.07, 0.006))])
        sound.add(running, start, knock, wrap=True)
    for number in range(TURNS):
        pawl = sound.ringing(0.5, ((1180, 0.16, 0.09), (2740, 0.12, 0.07), (4310, 0.07, 0.045), (690, 0.10, 0.05)))
        sound.add(running, (number + 0.31) * length / TURNS, pawl, wrap=True)
    running += 0.018 * sound.noise(length, 400, 2600, seed=152) * (0.6 + 0.4 * np.sin(TEETH * turn + 1))
    return sound.room(running, seed=153, fall=0.22, share=0.35, wrap=True)


# Start in seconds, tone in hertz, loudness: two places where water gathers, and now and then a third.
DROPS = ((0.20, 930, 0.40), (1.14, 1270, 0.26), (1.52, 905, 0.34), (2.61, 960, 0.42), (2.83, 1310, 0.16),
         (3.70, 690, 0.30), (4.25, 915, 0.30))


def drip():
    """Drops that fall into a basin in a vault, with its echo."""
    dripping = sound.silence(DRIP_LENGTH)
    for start, tone, size in DROPS:
        sound.add(dripping, start, sound.bubble(tone, size, rise=0.24, purity=2.6), wrap=True)
        sound.add(dripping, start - 0.012, sound.bubble(tone * 3.1, size * 0.25, rise=0.05, purity=1.2), wrap=True)
    return sound.room(dripping, seed=160, fall=0.55, share=0.55, wrap=True)


def fire():
    """Burning wood: the flutter of flames, sap that hisses, and crackle of all sizes, often in showers."""
    length = FIRE_LENGTH
    random = np.random.default_rng(170)
    burning = 0.12 * sound.noise(length, 40, 260, seed=171) * sound.swell(length, seed=172, waves=36, lowest=0.25)
    burning += 0.025 * sound.noise(length, 300, 1400, seed=173) * sound.swell(length, seed=174, waves=24, lowest=0.2)
    burning += 0.007 * sound.noise(length, 3000, 9000, seed=175) * sound.swell(length, seed=176, waves=10, lowest=0.2)
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
    wav.save_loop("fire.wav", fire(), FIRE_LEVEL)
