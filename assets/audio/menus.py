"""Makes the sounds of the menus: focus, click, the evening behind all screens, the three counts at a level's end."""

import numpy as np

from lib import sound, wav

EVENING_LENGTH, EVENING_LEVEL = 10.0, -32.0
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


def evening():
    """The tarn at dusk, behind all menus and under their music: ripples on a shore, a breath of wind, crickets."""
    length = EVENING_LENGTH
    lapping = sound.silence(length)
    for wave in range(4):
        ripples = sound.bubbles(2.2, 70, 420, 2200, seed=80 + wave, envelope=np.hanning(round(2.2 * wav.RATE)))
        sound.add(lapping, wave * length / 4 + (0.0, 0.5, -0.3, 0.2)[wave] + 0.3, ripples, wrap=True)
    air = sound.noise(length, 160, 700, seed=85, slope=-0.5) * sound.swell(length, seed=86, waves=5, lowest=0.3)
    chirps = sound.silence(length)
    for start, tone in ((0.9, 4150), (3.1, 4150), (4.4, 3780), (6.3, 4150), (8.6, 3780)):
        for pulse in range(3):
            shape = np.sin(np.pi * sound.times(0.035) / 0.035) ** 2
            sound.add(chirps, start + pulse * 0.055, shape * np.sin(2 * np.pi * tone * sound.times(0.035)), wrap=True)
    return sound.limited(lapping, 5.0) + 0.05 * air + 0.03 * sound.room(chirps, seed=87, fall=0.3, share=0.6, wrap=True)


def water_count(length=3.6):
    """A vessel that fills while the water is counted: the air above the water sings higher and higher."""
    time = sound.times(length)
    full = time / length
    filled = sound.bubbles(length, 170, 300, 1500, seed=90, envelope=0.5 + 0.5 * full)
    column = 260 * np.exp(1.25 * full)  # hertz: the column of air grows shorter
    phase = 2 * np.pi * np.cumsum(column) / wav.RATE
    breath = sound.swell(length, seed=91, waves=60, lowest=0.2)
    filled += 0.05 * (np.sin(phase) + 0.4 * np.sin(3 * phase)) * breath
    filled = sound.limited(filled + 0.02 * sound.noise(length, 700, 4200, seed=92) * breath, 3.0)
    return sound.close(filled * np.minimum(1, time / 0.08), fade=0.12)


def time_count(length=3.0):
    """A clockwork that runs through the time: sixteen ticks a second, the wheel a little higher with each turn."""
    random = np.random.default_rng(95)
    ticking = sound.silence(length)
    for number in range(int((length - 0.1) * 16)):
        pitch = 1 + 0.35 * number / (length * 16)
        partials = [(tone * pitch, share * (1.0 if number % 4 == 0 else 0.6), fall) for tone, share, fall in
                    ((1450, 0.5, 0.008), (2900, 0.35, 0.005), (4700, 0.2, 0.003), (620, 0.3, 0.012))]
        sound.add(ticking, number / 16 + random.uniform(0, 0.003), sound.ringing(0.06, partials))
    return sound.close(sound.room(ticking, seed=96, fall=0.12, share=0.3))


# D dorian without its third and sixth at first: the row climbs through two octaves and a half.
CLIMB = (293.66, 329.63, 392.00, 440.00, 523.25, 587.33, 659.26, 783.99, 880.00, 987.77, 1174.66, 1318.51, 1567.98)


def total_count(length=3.0):
    """Bells that climb while the sum is counted, and ring on."""
    climbing = sound.silence(length)
    for number, tone in enumerate(CLIMB):
        sound.add(climbing, 0.004 + number * 0.15, sound.bell(tone, 0.5 - 0.02 * number, 1.2, fall=0.32))
    return sound.close(sound.room(climbing, seed=97, fall=0.3, share=0.3), fade=0.3)


if __name__ == "__main__":
    wav.save_once("menu_click.wav", click(), peak=-8.0)
    wav.save_once("menu_over.wav", over(), peak=-15.0)
    wav.save_loop("menu_evening.wav", evening(), EVENING_LEVEL, rate=wav.HALF_RATE)
    wav.save_once("score_water.wav", water_count(), peak=-10.0, rate=wav.HALF_RATE)
    wav.save_once("score_time.wav", time_count(), peak=-13.0, rate=wav.HALF_RATE)
    wav.save_once("score_total.wav", total_count(), peak=-10.0, rate=wav.HALF_RATE)
