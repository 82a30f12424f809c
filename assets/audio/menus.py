"""Makes the sounds of the menus: focus, click, the evening behind all screens, the three counts at a level's end."""

import numpy as np

from lib import sound, wav

EVENING_LENGTH, EVENING_LEVEL = 30.0, -20.5
COUNT_LEVEL = -20.0  # LUFS, of the three counts
# Seconds: each ends with the count of `cfg\\menu_levelFinished.cfg` that it is heard in, for a level's whole water.
WATER_COUNT, TIME_COUNT, TOTAL_COUNT = 3.0, 2.5, 2.0
KNOCK = ((310, 0.9, 0.028), (690, 0.5, 0.018), (1270, 0.35, 0.011), (2380, 0.2, 0.006), (3900, 0.1, 0.003))


def click():
    """A knock on a wooden sign, and one drop that falls from it."""
    length = 0.28
    clicked = sound.ringing(length, KNOCK)
    clicked += 0.25 * np.random.default_rng(40).standard_normal(len(clicked)) * sound.decay(length, 0.0015)
    clicked *= 1 - np.exp(-sound.times(length) / 0.0003)
    sound.add(clicked, 0.055, sound.bubble(760, 0.34, rise=0.34, purity=2.6, longest=0.16))
    return sound.close(clicked, fade=0.04)


def over():
    """The water that rises in a sign's letters: two small bubbles, hardly there."""
    gained = sound.silence(0.20)
    sound.add(gained, 0.002, sound.bubble(1050, 0.5, rise=0.22, purity=2.2, longest=0.12))
    sound.add(gained, 0.060, sound.bubble(1480, 0.3, rise=0.22, purity=2.2, longest=0.10))
    return sound.close(gained, fade=0.04)


def shore(seed, waves):
    """Small waves that run up on gravel, none like the other."""
    length = EVENING_LENGTH
    random = np.random.default_rng(seed)
    lapping = sound.silence(length)
    for number in range(waves):
        start = (number + random.uniform(0.1, 0.9)) * length / waves
        size, long = random.uniform(0.5, 1.0), random.uniform(1.6, 3.0)
        run_up = np.hanning(round(long * wav.RATE)) ** 1.3
        ripples = sound.bubbles(long, 90, 420, 2600, seed=int(random.integers(1 << 31)), envelope=run_up)
        gravel = sound.noise(long, 900, 3600, seed=int(random.integers(1 << 31)), slope=-0.5) * run_up**2
        sound.add(lapping, start, size * (ripples + 0.03 * gravel), wrap=True)
    return lapping


def breeze(seed):
    """Air in the firs on the other shore."""
    low = sound.noise(EVENING_LENGTH, 180, 800, seed, slope=-0.5)
    high = sound.noise(EVENING_LENGTH, 700, 2400, seed + 1, slope=-0.5)
    gust = sound.swell(EVENING_LENGTH, seed + 2, waves=14, lowest=0.3)
    return low * gust + 0.4 * high * gust**2


def cricket(tone, seed, rests):
    """One that sings for a while and then rests: bursts of three pulses, never quite in time."""
    length = EVENING_LENGTH
    random = np.random.default_rng(seed)
    song, start = sound.silence(length), random.uniform(0, 2)
    shape = np.sin(np.pi * sound.times(0.035) / 0.035) ** 2
    while start < length - 1:
        for _ in range(random.integers(2, 6)):
            pitch = tone * random.uniform(0.995, 1.005)
            for pulse in range(random.integers(2, 5)):
                sound.add(song, start + pulse * 0.055, random.uniform(0.6, 1) * shape *
                          np.sin(2 * np.pi * pitch * sound.times(0.035)), wrap=True)
            start += random.uniform(0.55, 0.8)
        start += random.uniform(*rests)
    return sound.room(song, seed + 1, fall=0.3, share=0.6, wrap=True)


def evening():
    """The tarn at dusk, behind all menus and under music: waves on a shore, a breeze, two crickets far apart.

    As loud as the music, and yet in the background: it has neither beat nor tune.
    """
    lapping = sound.wide(shore(80, 9), shore(180, 7), shore(280, 7), width=0.7)
    air = sound.wide(breeze(85), breeze(185), breeze(285), width=0.7)
    chirps = sound.placed(cricket(3850, 380, (2, 6)), -0.6) + sound.placed(cricket(3480, 390, (4, 9)), 0.7)
    return sound.limited(lapping, 5.0) + 0.045 * air + 0.018 * chirps


def water_count(length=WATER_COUNT):
    """A vessel that fills while the water is counted: the air above the water sings higher and higher.

    The game cuts it where there are fewer drops, and the vessel is then that much less full.
    """
    time = sound.times(length)
    full = time / length
    filled = sound.bubbles(length, 170, 300, 1500, seed=90, envelope=0.5 + 0.5 * full)
    column = 260 * np.exp(1.25 * full)  # hertz: the column of air grows shorter
    phase = 2 * np.pi * np.cumsum(column) / wav.RATE
    breath = sound.swell(length, seed=91, waves=60, lowest=0.2)
    filled += 0.05 * (np.sin(phase) + 0.4 * np.sin(3 * phase)) * breath
    filled = sound.limited(filled + 0.02 * sound.noise(length, 700, 4200, seed=92) * breath, 3.0)
    return sound.close(filled * np.minimum(1, time / 0.08), fade=0.15)


def time_count(length=TIME_COUNT):
    """A clockwork that runs through the time: sixteen ticks a second, the wheel a little higher with each turn."""
    random = np.random.default_rng(95)
    ticking = sound.silence(length)
    for number in range(int((length - 0.15) * 16)):
        pitch = 1 + 0.35 * number / (length * 16)
        partials = [(tone * pitch, share * (1.0 if number % 4 == 0 else 0.6), fall) for tone, share, fall in
                    ((1450, 0.5, 0.010), (2900, 0.28, 0.005), (4700, 0.12, 0.003), (620, 0.5, 0.022))]
        sound.add(ticking, number / 16 + random.uniform(0, 0.003), sound.ringing(0.10, partials))
    return sound.close(sound.limited(sound.room(ticking, seed=96, fall=0.12, share=0.35), 3.6), fade=0.12)


# D dorian without its third and sixth at first: the row climbs through two octaves.
CLIMB = (293.66, 329.63, 392.00, 440.00, 523.25, 587.33, 659.26, 783.99, 880.00, 987.77, 1174.66)


def total_count(length=TOTAL_COUNT):
    """Bells that climb while the sum is counted, and ring out before it ends."""
    climbing = sound.silence(length)
    for number, tone in enumerate(CLIMB):
        start = 0.004 + number * 0.115
        sound.add(climbing, start, sound.bell(tone, 0.5 - 0.02 * number, length - start, fall=0.30))
    return sound.close(sound.room(climbing, seed=97, fall=0.25, share=0.3), fade=0.45)


if __name__ == "__main__":
    wav.save_once("menu_click.wav", click(), peak=-4.0)
    wav.save_once("menu_over.wav", over(), peak=-8.0)
    wav.save_loop("menu_evening.wav", evening(), EVENING_LEVEL, rate=wav.HALF_RATE)
    wav.save_level("score_water.wav", water_count(), COUNT_LEVEL, rate=wav.HALF_RATE)
    wav.save_level("score_time.wav", time_count(), COUNT_LEVEL, rate=wav.HALF_RATE)
    wav.save_level("score_total.wav", total_count(), COUNT_LEVEL, rate=wav.HALF_RATE)
