"""Outlines and edge strips of a level's polygons: what makes a wall look finished, since the game draws no edges.

Points are (x, y) in world units, y down, in either winding. The strips of an edge lie inside the polygon: light where
the edge faces the light, dark where it faces away, so that walls look cut from something thick.
"""

import math

OUTLINE = 2  # units that an outline stands out
STRIP = 2  # width of an edge strip
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
    """The outline moved outwards (inwards when negative), corners mitred.

    The points of a level are whole units, so each corner takes the whole place that keeps the wanted distance from its
    two edges best: a band along an edge stays even.
    """
    winding = 1 if signed_area(points) > 0 else -1
    result = []
    for index, point in enumerate(points):
        before = outward(points[index - 1], point, winding)
        after = outward(point, points[(index + 1) % len(points)], winding)
        mitre = max(1 + before[0] * after[0] + before[1] * after[1], SHORTEST_MITRE)
        dx, dy = (distance * (before[axis] + after[axis]) / mitre for axis in (0, 1))

        def miss(move):
            return sum((move[0] * normal[0] + move[1] * normal[1] - distance) ** 2 for normal in (before, after))

        near = [(round(dx) + x, round(dy) + y) for x in (-1, 0, 1) for y in (-1, 0, 1)]
        move = min(near, key=lambda place: (miss(place), math.hypot(place[0] - dx, place[1] - dy)))
        result.append((point[0] + move[0], point[1] + move[1]))
    return result


def strip_kinds(points):
    """For each edge "light", "light_soft" or "dark" by how it faces the light, or None when it gets no strip."""
    winding = 1 if signed_area(points) > 0 else -1
    kinds = []
    for point, following in zip(points, points[1:] + points[:1]):
        normal = outward(point, following, winding)
        facing = normal[0] * TOWARDS_LIGHT[0] + normal[1] * TOWARDS_LIGHT[1]
        if facing < FACING_AWAY:
            kinds.append("dark")
        elif facing > FACING_LIGHT:
            kinds.append("light" if facing > BRIGHT else "light_soft")
        else:
            kinds.append(None)
    return kinds
