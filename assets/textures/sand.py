"""Sand: ochre, with low wind ripples that fade in and out, and pebbles."""

import numpy as np

import palette
from lib import noise, shade, shapes

RIPPLES = 8  # crests a tile, bent so that none runs far in one direction
PEBBLE_COUNT = 30


def pebbles(random, size):
    """Place, radius, turn and flatness of each pebble."""
    for index in range(PEBBLE_COUNT):
        yield (*random.uniform(0, size, 2), random.uniform(1.4, 3.8), random.uniform(0, np.pi),
               random.uniform(1.1, 1.6), palette.PEBBLES[index % len(palette.PEBBLES)])


def tile(size=256):
    x, y = shapes.grid(size)
    bend, drift = noise.fbm(size, 4.2, seed=51), noise.fbm(size, 3.0, seed=52)
    turn = 2 * np.pi / size
    phase = (y + (bend - 0.5) * 64) * turn * RIPPLES + np.sin(x * turn) * 0.9
    # Steep on the side away from the light, like ripples that wind has pushed
    ripple = np.sin(phase) + 0.35 * np.sin(2 * phase + 0.8)
    strength = 0.12 + 0.88 * shade.smoothstep(0.40, 0.66, noise.fbm(size, 3.4, seed=55))
    grain = shade.blur(np.random.default_rng(53).standard_normal((size, size)), 0.8)
    grain /= grain.std()
    height = ripple * 1.5 * strength + (shade.blur(drift, 3) - 0.5) * 8 + grain * 0.16

    tone = 0.52 + 0.10 * ripple * strength + 0.30 * (drift - 0.5) + 0.03 * grain
    colour = shade.ramp(tone, palette.SAND_RAMP)
    for px, py, radius, angle, flatness, stone in pebbles(np.random.default_rng(54), size):
        dx, dy = shapes.wrapped(x - px, size), shapes.wrapped(y - py, size)
        along, across = dx * np.cos(angle) + dy * np.sin(angle), dy * np.cos(angle) - dx * np.sin(angle)
        distance = np.hypot(along, across * flatness)
        shadow = shade.smoothstep(radius + 2.2, radius - 0.5, np.hypot(dx - 1.3, dy - 1.5))
        colour = shade.mix(colour, colour * 0.62, shadow * 0.7)
        body = shade.smoothstep(radius + 0.6, radius - 0.6, distance)
        colour = shade.mix(colour, stone, body)
        height = shade.mix(height[..., None], (shapes.half_ball(distance, radius + 0.6) * radius * 1.5)[..., None],
                           body)[..., 0]
    lighted = shade.lit(colour, height, 0.40, lowest=0.45, highest=1.4, glint=(0.24, 0.17, 0.07))
    return shade.brush(lighted, 1.3, share=0.5)
