"""Writes the icons of the desktop into packaging/icons: the game's and that of a level file, each as SVG and as PNG from
16 to 512 pixels.

The game's is the window's icon (menus/cursor.py) drawn with curves in place of pixels, so that it is sharp at any size: a
brass ring with the tarn in it. A level's is a sheet of paper with that ring on it. Half the side is 1, y grows downwards.
"""

import math
import pathlib
import subprocess

import palette
from menus import cursor

ICONS = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "icons" / "hicolor"
SIZES = (16, 22, 24, 32, 48, 64, 96, 128, 256, 512)
SIDE = 512  # units of the SVG
OUTLINE = cursor.RING[0] + 0.05
WAVE_POINTS = 33
HIGHLIGHTS = ((0.17, 0.5), (0.34, 0.35), (0.50, 0.22))  # depth under the surface, and how much is seen
PAPER = (-0.66, -0.92, 0.66, 0.92)  # left, top, right, bottom
FOLD = 0.34  # side of the corner that is turned down


def gradient(name, colours, places=None, across=False):
    """A run of colours downwards, or from the upper left to the lower right."""
    places = places or [index / (len(colours) - 1) for index in range(len(colours))]
    stops = "".join(f'<stop offset="{place:.3g}" stop-color="#{colour}"/>' for place, colour in zip(places, colours))
    return f'<linearGradient id="{name}" x1="0" y1="0" x2="{1 if across else 0}" y2="1">{stops}</linearGradient>'


def fading(name, colour, *stops):
    """One colour from the middle outwards; `stops` are pairs of a share of the radius and how much is seen there."""
    stops = "".join(f'<stop offset="{place}" stop-color="#{colour}" stop-opacity="{seen}"/>' for place, seen in stops)
    return f'<radialGradient id="{name}">{stops}</radialGradient>'


def points(outline):
    return " ".join(f"{x:.4g},{y:.4g}" for x, y in outline)


def polygon(outline, fill):
    return f'<polygon points="{points(outline)}" fill="{fill}"/>'


def circle(radius, style, x=0.0, y=0.0):
    return f'<circle cx="{x}" cy="{y}" r="{radius:.4g}" {style}/>'


def line(outline, colour, width, opacity):
    return (f'<polyline points="{points(outline)}" fill="none" stroke="#{colour}" stroke-width="{width}" '
            f'stroke-linecap="round" stroke-opacity="{opacity}"/>')


def surface(x):
    return cursor.SURFACE + 0.030 * math.sin(x * 7.5 + 0.6) + 0.012 * math.sin(x * 17 + 2)


def across(left, right):
    return [left + (right - left) * index / (WAVE_POINTS - 1) for index in range(WAVE_POINTS)]


def definitions():
    return "".join((
        gradient("sky", palette.SKY_RAMP[1:], [0.1 + 0.1 * step for step in range(6)]),
        gradient("water", palette.WATER_RAMP, (0, 0.14, 0.55, 1)),
        gradient("brass", palette.BRASS_RAMP[::-1], (0, 0.2, 0.45, 0.8, 1), across=True),
        gradient("brass-shade", palette.BRASS_RAMP[1:4], across=True),
        gradient("paper", palette.LINEN_RAMP[::-1][:3]),
        fading("glow", palette.MOON, (0.3, 0.5), (1, 0)),
        fading("rim", palette.INK, (0.86, 0), (1, 0.6)),
        f'<clipPath id="inside"><circle cx="0" cy="0" r="{cursor.RING[1]}"/></clipPath>',
    ))


def tarn():
    """The mountain behind the water, inside the ring."""
    shade_side = [cursor.SUMMIT[3], (-0.04 + 0.25, 0.30), cursor.SUMMIT[6], cursor.SUMMIT[5], cursor.SUMMIT[4]]
    snow_shade = [cursor.SNOW[0], (0.035, -0.25), *cursor.SNOW[5:]]
    water = [(x, surface(x)) for x in across(-1, 1)]
    parts = [
        '<rect x="-1" y="-1" width="2" height="2" fill="url(#sky)"/>',
        circle(0.30, 'fill="url(#glow)"', 0.40, -0.46),
        circle(0.12, f'fill="#{palette.MOON}"', 0.40, -0.46),
        polygon(cursor.SUMMIT, f"#{palette.MIDDLE_RIDGE_RAMP[1]}"),
        polygon(shade_side, f"#{palette.MIDDLE_RIDGE_RAMP[0]}"),
        polygon(cursor.SNOW, f"#{palette.SNOW_RAMP[1]}"),
        polygon(snow_shade, f"#{palette.SNOW_RAMP[0]}"),
        polygon(water + [(1, 1), (-1, 1)], "url(#water)"),
        line(water, palette.FOAM, 0.035, 0.9),
    ]
    for depth, opacity in HIGHLIGHTS:
        half = (0.72 - depth) * 0.8
        parts.append(line([(x, surface(x) + depth + 0.022 * math.sin(x * 9 + depth * 30)) for x in across(-half, half)],
                          palette.WATER_RAMP[0], 0.022, opacity))
    parts.append(circle(cursor.RING[1], 'fill="url(#rim)"'))
    return f'<g clip-path="url(#inside)">{"".join(parts)}</g>'


def ring():
    middle, width = sum(cursor.RING) / 2, cursor.RING[0] - cursor.RING[1]
    return "".join((
        circle(middle, f'fill="none" stroke="#{palette.INK}" stroke-width="{width + 0.05}"'),
        circle(middle, f'fill="none" stroke="url(#brass-shade)" stroke-width="{width}"'),
        circle(middle, f'fill="none" stroke="url(#brass)" stroke-width="{width * 0.6:.3g}"'),
    ))


def emblem():
    return circle(OUTLINE, f'fill="#{palette.INK}"') + tarn() + ring()


def sheet():
    left, top, right, bottom = PAPER
    outline = [(left, top), (right - FOLD, top), (right, top + FOLD), (right, bottom), (left, bottom)]
    corner = [(right - FOLD, top), (right, top + FOLD), (right - FOLD, top + FOLD)]
    return "".join((
        f'<polygon points="{points(outline)}" fill="url(#paper)" stroke="#{palette.INK}" stroke-width="0.05" '
        'stroke-linejoin="round"/>',
        f'<polygon points="{points(corner)}" fill="#{palette.LINEN_RAMP[0]}" stroke="#{palette.INK}" stroke-width="0.03" '
        'stroke-linejoin="round"/>',
        f'<g transform="translate(0 0.2) scale(0.54)">{emblem()}</g>',
    ))


def save(picture, title, context, name):
    """The SVG, and the PNGs that are drawn of it."""
    svg = ICONS / "scalable" / context / f"{name}.svg"
    svg.parent.mkdir(parents=True, exist_ok=True)
    svg.write_text(f'<svg xmlns="http://www.w3.org/2000/svg" width="{SIDE}" height="{SIDE}" viewBox="-1 -1 2 2">'
                   f"<title>{title}</title><defs>{definitions()}</defs>{picture}</svg>\n".replace("><", ">\n<"),
                   encoding="utf-8")
    for size in SIZES:
        png = ICONS / f"{size}x{size}" / context / f"{name}.png"
        png.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["rsvg-convert", "-w", str(size), "-h", str(size), "-o", str(png), str(svg)], check=True)
    print(f"packaging/icons: {name} in {len(SIZES)} sizes and as SVG")


if __name__ == "__main__":
    save(emblem(), "Tarnwick", "apps", "tarnwick")
    save(sheet(), "Tarnwick level", "mimetypes", "application-x-tarnwick-level")
