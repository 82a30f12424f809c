"""Gives the walls of a Tiled map their outlines and edge strips: `python3 -m levels.trim MAP.tmj` rewrites the map.

The game draws no edges, so a wall is finished with narrow polygons that are seen only: an outline round it, strips
along the edges that face the light or face away, and inside of stone the dark that deepens from its edge. For each
layer of polygons "N name" they stand in a layer "N trim" behind it; those of an earlier run are replaced, so the script
is run again after each change of the map. Where walls of one picture meet, or a later picture lies over, there is none.

A layer is drawn in the order in which its pictures were loaded, that is in the order in which the level file first
names them. The trim comes after the tiles, so it lies on them.
"""

import json
import math
import sys

import numpy as np

from lib import trim

CELL = 2.0  # units between the places where an edge is looked at
SHORTEST = 1.5  # units; a shorter piece of an edge gets nothing
LOOK_OUT, LOOK_IN = 2.0, 1.0  # units beside the edge where another wall is looked for
SHADES = (10, 6, 3)  # widths of the nested bands inside of stone
SUFFIX = " trim"
BACKDROPS = ("background", "sky_top", "valley_deep")


class Wall:
    """A polygon of the map: its world points, and the name of its picture without folder and ending."""

    def __init__(self, thing):
        self.points = [(thing["x"] + point["x"], thing["y"] + point["y"]) for point in thing["polygon"]]
        properties = {entry["name"]: entry["value"] for entry in thing.get("properties", ())}
        self.picture = properties.get("texture", "").replace("/", "\\").split("\\")[-1].removesuffix(".tga")
        self.seen = properties.get("mode", "solid") in ("solid", "seen-only") and self.picture not in BACKDROPS
        self.order = 0  # of the picture among those of the layer

    def covers(self, places):
        """Which of the places (count, 2) lie inside."""
        x, y = places[:, 0], places[:, 1]
        inside = np.zeros(len(places), bool)
        for (ax, ay), (bx, by) in zip(self.points, self.points[1:] + self.points[:1]):
            if ay != by:
                inside ^= ((ay > y) != (by > y)) & (x < (bx - ax) * (y - ay) / (by - ay) + ax)
        return inside


def open_pieces(walls, wall, start, end):
    """The parts of an edge where the wall really ends, as pairs of shares of its length."""
    length = math.hypot(end[0] - start[0], end[1] - start[1])
    count = max(1, round(length / CELL))
    shares = (np.arange(count) + 0.5) / count
    winding = 1 if trim.signed_area(wall.points) > 0 else -1
    normal = np.array(trim.outward(start, end, winding))
    places = np.array(start) + shares[:, None] * (np.array(end) - np.array(start))
    hidden = np.zeros(count, bool)
    for other in walls:
        if other is wall or not other.seen:
            continue
        if other.order >= wall.order:
            hidden |= other.covers(places + normal * LOOK_OUT)
        if other.order > wall.order:
            hidden |= other.covers(places - normal * LOOK_IN)
    borders = np.flatnonzero(np.diff(np.concatenate(([True], hidden, [True])).astype(int)))
    pieces = [(first / count, last / count) for first, last in zip(borders[::2], borders[1::2])]
    return [piece for piece in pieces if (piece[1] - piece[0]) * length >= SHORTEST]


def quads(walls, wall, width, frame):
    """Bands of `width` along the wall's open edges, inside or, when negative, outside: (edge's number, points)."""
    beside = trim.grown(wall.points, -width)
    result = []
    for index, start in enumerate(wall.points):
        following = (index + 1) % len(wall.points)
        end = wall.points[following]
        if frame.holds(start, end):
            continue
        for first, last in open_pieces(walls, wall, start, end):
            points = distinct([between(start, end, first), between(start, end, last),
                               between(beside[index], beside[following], last),
                               between(beside[index], beside[following], first)])
            if len(points) > 2 and trim.signed_area(points) != 0:
                result.append((index, points))
    return result


def between(start, end, share):
    """The whole place nearest to a share of the way."""
    return round(start[0] + (end[0] - start[0]) * share), round(start[1] + (end[1] - start[1]) * share)


def distinct(points):
    return [point for index, point in enumerate(points) if point != points[index - 1]]


class Frame:
    """The outer border of the level: no view reaches its edges."""

    def __init__(self, walls):
        x, y = zip(*(point for wall in walls for point in wall.points))
        self.limits = min(x), max(x), min(y), max(y)

    def holds(self, start, end):
        left, right, top, bottom = self.limits
        return any(start[axis] == end[axis] == limit
                   for axis, limit in ((0, left), (0, right), (1, top), (1, bottom)))


def trim_of(walls, frame):
    """The trim of one layer, as (picture, points) in the order in which it is to be drawn."""
    result = []
    for wall in walls:
        if wall.seen and wall.picture == "stone":
            for width in SHADES:
                result += [(f"shade_{width}", points) for _, points in quads(walls, wall, width, frame)]
    for wall in walls:
        if wall.seen:
            outline = "outline_far" if wall.picture.endswith("_far") else "outline"
            result += [(outline, points) for _, points in quads(walls, wall, -trim.OUTLINE, frame)]
    for wall in walls:
        if not wall.seen:
            continue
        kinds = trim.strip_kinds(wall.points)
        family = "far" if wall.picture.endswith("_far") else wall.picture
        result += [(f"edge_{family}_{kinds[index]}", points)
                   for index, points in quads(walls, wall, trim.STRIP, frame) if kinds[index]]
    return result


def tiled_polygon(number, picture, points):
    x, y = points[0]
    return {"class": "polygon", "height": 0, "id": number, "name": "trim",
            "polygon": [{"x": px - x, "y": py - y} for px, py in points],
            "properties": [{"name": "mode", "propertytype": "mode", "type": "string", "value": "seen-only"},
                           {"name": "texture", "type": "string", "value": f"gfx\\{picture}.tga"}],
            "rotation": 0, "visible": True, "width": 0, "x": x, "y": y}


def add_trim(tiled):
    """Replaces the trim of all layers."""
    layers = [layer for layer in tiled["layers"] if not layer["name"].endswith(SUFFIX)]
    number = 1 + max(thing["id"] for layer in layers for thing in layer.get("objects", ()))
    layer_number = 1 + max(layer["id"] for layer in layers)
    walls_of = {layer["id"]: [Wall(thing) for thing in layer["objects"] if "polygon" in thing]
                for layer in layers if layer["name"][:1].isdigit()}
    frame = Frame([wall for walls in walls_of.values() for wall in walls])
    tiled["layers"] = []
    pictures = []  # in the order in which the level file first names them
    for layer in layers:
        tiled["layers"].append(layer)
        walls = walls_of.get(layer["id"])
        if not walls:
            continue
        pictures += [wall.picture for wall in walls if wall.picture not in pictures]
        for wall in walls:
            wall.order = pictures.index(wall.picture)
        polygons = [tiled_polygon(number + index, *entry) for index, entry in enumerate(trim_of(walls, frame))]
        number += len(polygons)
        tiled["layers"].append({"draworder": "index", "id": layer_number, "name": layer["name"][0] + SUFFIX,
                                "objects": polygons, "opacity": 1, "type": "objectgroup", "visible": True,
                                "x": 0, "y": 0})
        layer_number += 1
    tiled["nextobjectid"], tiled["nextlayerid"] = number, layer_number


def written(value, indent=0, inline=False):
    """JSON as Tiled writes it, so that a map saved there and one written here differ in what changed only."""
    if isinstance(value, dict):
        members = [f"{json.dumps(key)}:{written(entry, indent + 2, key in ('polygon', 'properties'))}"
                   for key, entry in value.items()]
        if inline:
            return "{ " + ", ".join(members) + " }"
        lines = (",\n" + " " * (indent + 2)).join(members)
        return "{ " + lines + "\n" + " " * indent + "}"
    if isinstance(value, list) and value:
        items = [written(entry, indent + 2, inline) for entry in value]
        return "[\n" + ",\n".join(" " * (indent + 2) + item for item in items) + "]"
    return json.dumps(value, ensure_ascii=False)


if __name__ == "__main__":
    for path in sys.argv[1:]:
        with open(path, encoding="utf-8") as file:
            level = json.load(file)
        add_trim(level)
        with open(path, "w", encoding="utf-8") as file:
            file.write(written(level) + "\n")
