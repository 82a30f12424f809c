"""Makes the sounds of the game's rules: check point, all water lost, level finished, and the stand-in."""

import numpy as np

from lib import sound, wav

# Hertz, D dorian, as the music of the menus.
D3, A3, D4, E4, G4, A4, B4, D5, E5, A5, B5, D6 = (146.83, 220.00, 293.66, 329.63, 392.00, 440.00, 493.88, 587.33,
                                                  659.26, 880.00, 987.77, 1174.66)


def ring_out(length, notes):
    """Small bells, each given as (start, tone, loudness, fall)."""
    rung = sound.silence(length)
    for start, tone, loudness, fall in notes:
        sound.add(rung, start, sound.bell(tone, loudness, length - start, fall))
    return rung


def check_point():
    """Three bells upwards, open, and a drop before them: heard through splashing water, over within two seconds."""
    length = 1.9
    rung = ring_out(length, ((0.06, D5, 0.40, 0.45), (0.19, A5, 0.36, 0.42), (0.33, E5 * 2, 0.24, 0.38)))
    sound.add(rung, 0.002, sound.bubble(620, 0.4, rise=0.3, purity=2.4, longest=0.2))
    return sound.close(sound.room(rung, seed=100, fall=0.28, share=0.3), fade=0.25)


def water_lost():
    """The last water runs down a drain: gurgles that fall in pitch, and a low bell beneath. Not a punishment."""
    length = 2.3
    random = np.random.default_rng(110)
    rung = ring_out(length, ((0.02, A4, 0.20, 0.5), (0.34, E4, 0.20, 0.5), (0.72, D4 / 2, 0.34, 0.6)))
    drained = sound.silence(length)
    for number in range(34):
        place = (number / 34) ** 1.25 * 1.35
        tone = 620 * np.exp(-0.85 * place) * random.uniform(0.8, 1.2)
        sound.add(drained, place + random.uniform(0, 0.03),
                  sound.bubble(tone, random.uniform(0.10, 0.30), rise=0.16, purity=1.9, longest=0.25))
    rush = sound.noise(length, 250, 1500, seed=111) * sound.decay(length, 0.5, attack=0.1) * 0.035
    return sound.close(sound.room(rung + drained + rush, seed=112, fall=0.35, share=0.3), fade=0.3)


def level_finished():
    """The water is home: a surge that rises and breaks, and bells over it that end open on fifth and second."""
    length = 4.2
    time = sound.times(length)
    surge = np.clip(time / 0.75, 0, 1) ** 2 * np.where(time > 0.75, np.exp(-(time - 0.75) / 0.75), 1)
    water = 0.6 * sound.bubbles(length, 420, 420, 3600, seed=120, envelope=surge)
    water += 0.10 * surge * sound.noise(length, 500, 5200, seed=121)
    rung = ring_out(length, ((0.45, D3, 0.34, 1.1), (0.46, A3, 0.26, 1.1), (0.62, D5, 0.30, 0.8), (0.76, E5, 0.28, 0.8),
                             (0.90, A5, 0.28, 0.8), (1.06, B5, 0.24, 0.8), (1.30, D6, 0.20, 0.8),
                             (1.62, E5 * 2, 0.20, 0.9), (1.63, A4, 0.22, 1.0)))
    return sound.close(sound.room(water + rung, seed=122, fall=0.5, share=0.35), fade=0.7)


def default():
    """For a sound that nobody named: a short dry knock, quiet enough not to disturb and odd enough to be found."""
    return sound.close(sound.ringing(0.08, ((520, 0.6, 0.012), (1340, 0.3, 0.006))), fade=0.03)


if __name__ == "__main__":
    wav.save_once("check_point.wav", check_point(), peak=-4.0)
    wav.save_once("water_lost.wav", water_lost(), peak=-6.0, rate=wav.HALF_RATE)
    wav.save_once("level_finished.wav", level_finished(), peak=-4.0)
    wav.save_once("default.wav", default(), peak=-18.0)
