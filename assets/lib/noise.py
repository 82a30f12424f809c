"""Noise that repeats without a seam. Every source of chance has a seed of its own; nothing asks the clock."""

import numpy as np


def fbm(shape, beta, seed, stretch_x=1.0, stretch_y=1.0, lowest=0.0):
    """Fractal noise, 0 to 1 about 0.5, periodic in both directions by construction.

    A random normal field is divided by f^(beta/2) in the frequency domain. `beta` 1.2 is grit, 2.4 blotches, 3.4 a
    slow swell. A large `stretch_x` with a small `stretch_y` gives streaks along x. `shape` is one side or (rows,
    columns); the standard deviation is a fifth. Waves of a frequency below `lowest`, in waves over the shorter side
    times the stretch, are left out.
    """
    rows, columns = (shape, shape) if np.isscalar(shape) else shape
    # The frequency of a whole picture's period is 1 on the shorter side, so that a long picture is not stretched.
    shorter = min(rows, columns)
    fy = np.fft.fftfreq(rows)[:, None] * shorter * stretch_y
    fx = np.fft.rfftfreq(columns)[None, :] * shorter * stretch_x
    frequency = np.hypot(fx, fy)
    frequency[0, 0] = 1.0
    field = np.random.default_rng(seed).standard_normal((rows, columns))
    spectrum = np.fft.rfft2(field) / frequency ** (beta / 2)
    spectrum[0, 0] = 0.0
    spectrum[frequency < lowest] = 0.0
    noise = np.fft.irfft2(spectrum, s=(rows, columns))
    return np.clip(0.5 + noise / (5 * noise.std()), 0, 1)


def fbm_line(length, beta, seed):
    """Fractal noise along one line, 0 to 1, periodic: the outline of a ridge."""
    frequency = np.fft.rfftfreq(length) * length
    frequency[0] = 1.0
    spectrum = np.fft.rfft(np.random.default_rng(seed).standard_normal(length)) / frequency ** (beta / 2)
    spectrum[0] = 0.0
    noise = np.fft.irfft(spectrum, n=length)
    return np.clip(0.5 + noise / (5 * noise.std()), 0, 1)
