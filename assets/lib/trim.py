"""Outlines and edge strips of a level's polygons: what makes a wall look finished, since the game draws no edges.

Points are (x, y) in world units, y down, in either winding. The strips of an edge lie inside the polygon: light where
the edge faces the light, dark where it faces away, so that walls look cut from something thick.
"""

import math

OUTLINE = 1.6  # units that an outline stands out
STRIP = 1.8  # width of an edge strip
FACING_LIGHT, FACING_AWAY = 0.25, -0.2  # cosines to the light beyond which an edge gets a strip
BRIGHT = 0.75  # cosine from which a light strip is the strong one
TOWARDS_LIGHT = (-0.62, -0.78)
SHORTEST_MITRE = 0.35  # limits how far a sharp corner is drawn out


def signed_area(points):
    return sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(points, points[1:] + points[:1])) / 2


def outward(a, b, winding):
    """Unit normal of the edge from a to b that points out of the polygon."""
    length = math.hypot(b[0] - a[0], b[1] - a[1]) or 1.0
    return winding * (b[1] - a[1]) / length, -winding * (b[0] - a[0]) / length


def grown(points, distance):
    """The outline moved outwards (inwards when negative), corners mitred."""
    winding = 1 if signed_area(points) > 0 else -1
    result = []
    for index, point in enumerate(points):
        before = outward(points[index - 1], point, winding)
        after = outward(point, points[(index + 1) % len(points)], winding)
        mitre = max(1 + before[0] * after[0] + before[1] * after[1], SHORTEST_MITRE)
        result.append((point[0] + distance * (before[0] + after[0]) / mitre,
                       point[1] + distance * (before[1] + after[1]) / mitre))
    return result


def strips(points, width=STRIP):
    """The edge strips as (kind, four points), kind being "light", "light_soft" or "dark"."""
    winding = 1 if signed_area(points) > 0 else -1
    inner = grown(points, -width)
    result = []
    for index, point in enumerate(points):
        following = (index + 1) % len(points)
        normal = outward(point, points[following], winding)
        facing = normal[0] * TOWARDS_LIGHT[0] + normal[1] * TOWARDS_LIGHT[1]
        if FACING_AWAY <= facing <= FACING_LIGHT:
            continue
        kind = "dark" if facing < 0 else "light" if facing > BRIGHT else "light_soft"
        result.append((kind, [point, points[following], inner[following], inner[index]]))
    return result


def bands(points, width):
    """A band along every edge, for the dark that deepens towards the inside of stone."""
    inner = grown(points, -width)
    count = len(points)
    return [[points[i], points[(i + 1) % count], inner[(i + 1) % count], inner[i]] for i in range(count)]
