"""Builds the place that the intro shows: an old spring tower, a flume, an aqueduct, and a dry tarn below the village.

Places are in the units of the landscape picture, whose moon stands at (1210, 236) and whose village at (700, 700). The
map is one like those of the levels.
"""

SPRING = (1580, 284)  # where the water waits, inside of the tower
TARN = (700, 689)  # middle of the first and of the last view
GROUND, BOTTOM = 800, 1500
LEFT_END, RIGHT_END = -500, 2600

FLOOR = ((1472, 336), (1500, 330), (1720, 302), (RIGHT_END, 302), (RIGHT_END, BOTTOM), (1536, BOTTOM), (1536, 640),
         (1524, 628), (1524, 410), (1500, 376), (1480, 350))
ROOF = ((1500, 128), (1506, 120), (1546, 120), (1546, 142), (1586, 142), (1586, 120), (1628, 120), (1628, 142),
        (1668, 142), (1668, 120), (1710, 120), (1710, 142), (1750, 142), (1750, 120), (1790, 120), (1790, 142),
        (1830, 142), (1830, 120), (RIGHT_END, 120), (RIGHT_END, 240), (1720, 240), (1540, 258), (1500, 266))
BACK = ((1720, 240), (RIGHT_END, 240), (RIGHT_END, 302), (1720, 302))
MOUTH = ((1503, 250), (1560, 250), (1560, 344), (1503, 344))
FRONT = ((1546, 236), (1730, 230), (1730, 344), (1546, 348), (1540, 330), (1536, 304), (1536, 280), (1540, 254))

FLUME = ((1524, 372), (1152, 434), (1150, 448), (1524, 388))
AQUEDUCT = ((1150, 506), (1150, BOTTOM), (1078, BOTTOM), (1078, 690), (1072, 668), (1056, 650), (1034, 642),
            (1008, 642), (986, 650), (970, 668), (964, 690), (964, BOTTOM), (890, BOTTOM), (890, 668), (866, 648),
            (838, 640), (832, 622), (834, 594), (1120, 544), (1128, 534), (1128, 510))
BED = ((592, 806), (602, 826), (624, 844), (664, 855), (716, 858), (762, 850), (790, 834), (804, 808))
BANK = ((LEFT_END, 806), (120, 812), (300, 800), (430, 806), (520, 800), *BED, (890, 800), (890, BOTTOM),
        (LEFT_END, BOTTOM))
SAND = (*BED, (794, 806), (782, 827), (758, 840), (716, 847), (666, 844), (632, 834), (612, 818), (603, 804))
PASSAGE = ((964, 836), (1020, 828), (1078, 834), (1078, BOTTOM), (964, BOTTOM))
YARD = ((1150, 836), (1260, 846), (1400, 838), (1536, 848), (1536, BOTTOM), (1150, BOTTOM))

POSTS = (1210, 1400)
LANTERNS = ((1304, 434), (928, 744), (456, 768), (1021, 668))
GRASS = ((1, 60), (3, 180), (2, 400), (4, 505), (1, 880), (3, 1190), (2, 1330), (4, 1460), (2, 290), (3, 340))


def rectangle(left, top, right, bottom):
    return (left, top), (right, top), (right, bottom), (left, bottom)


def ruin():
    """A wall with three blind arches, far behind the left bank."""
    points = [(40, 640), (86, 628), (150, 632), (214, 622), (262, 644), (330, 656), (346, 690), (380, 704), (386, 820)]
    for right in (350, 250, 150):
        left = right - 62
        points += [(right, 820), (right, 750), (right - 6, 730), (right - 18, 716), (right - 31, 712), (left + 18, 716),
                   (left + 6, 730), (left, 750), (left, 820)]
    return points + [(40, 820)]


class Map:
    """A Tiled map in the making."""

    def __init__(self):
        self.layers, self.number = [], 0

    def layer(self, name):
        self.layers.append({"draworder": "index", "id": len(self.layers) + 1, "name": name, "objects": [],
                            "opacity": 1, "type": "objectgroup", "visible": True, "x": 0, "y": 0})

    def add(self, kind, name, x, y, **members):
        self.number += 1
        properties = [{"name": key, "type": "bool" if isinstance(value, bool) else "string", "value": value}
                      for key, value in members.pop("properties", {}).items()]
        self.layers[-1]["objects"].append({"id": self.number, "class": kind, "name": name, "x": x, "y": y, "width": 0,
                                           "height": 0, "rotation": 0, "visible": True, "properties": properties,
                                           **members})

    def wall(self, name, picture, points, mode="solid", dressed=True):
        x, y = points[0]
        surface = next((kind for kind in ("wood", "sand") if kind in picture), "stone")
        self.add("polygon", name, x, y, polygon=[{"x": px - x, "y": py - y} for px, py in points],
                 properties={"mode": mode, "surface": surface, "texture": f"gfx\\{picture}.tga", "dressed": dressed})

    def far(self, name, picture, points, dressed=True):
        self.wall(name, picture, points, "seen-only", dressed)

    def thing(self, name, picture, x, y, mirrored=False):
        self.add("object", name, x, y, point=True, properties={"texture": f"gfx\\{picture}.tga", "mirrored": mirrored})

    def tiled(self):
        return {"type": "map", "version": "1.9", "tiledversion": "1.9.2", "orientation": "orthogonal",
                "renderorder": "right-down", "infinite": False, "width": 25, "height": 19, "tilewidth": 32,
                "tileheight": 32, "nextlayerid": 90, "nextobjectid": 900, "tilesets": [], "layers": self.layers}


def below_flume(x):
    """The underside of the flume."""
    (left, left_bottom), (right, right_bottom) = FLUME[2:]
    return round(left_bottom + (x - left) * (right_bottom - left_bottom) / (right - left))


def far_layer(place):
    place.layer("0 far")
    place.far("sky", "background", rectangle(LEFT_END, 0, RIGHT_END, 1024), dressed=False)
    place.far("night", "sky_top", rectangle(LEFT_END, -700, RIGHT_END, 0), dressed=False)
    place.far("deep", "valley_deep", rectangle(LEFT_END, 1024, RIGHT_END, BOTTOM), dressed=False)
    place.far("ruin", "stone_far", ruin())
    place.far("mouth of the tower", "stone_far", MOUTH)
    for x in POSTS:
        top = below_flume(x)
        place.far("post", "wood_far", rectangle(x, top - 4, x + 14, 846))
        for outer, inner in ((x + 84, x + 12), (x - 70, x + 2)):
            way = 4 if outer > inner else -4
            place.far("brace", "wood_far", ((inner, top + 66), (outer, below_flume(outer) - 4),
                                            (outer + way, below_flume(outer) + 4), (inner + way, top + 75)))
    place.far("tie", "wood_far", rectangle(1176, 640, 1454, 650))
    place.far("lamp post", "wood_far", rectangle(434, 736, 442, 810))
    place.far("arm of the lamp post", "wood_far", rectangle(430, 736, 466, 742))


def wall_layer(place):
    place.layer("1 walls")
    for name, points in (("floor of the tower", FLOOR), ("roof of the tower", ROOF), ("back of the tower", BACK),
                         ("aqueduct", AQUEDUCT), ("bank", BANK), ("passage", PASSAGE), ("yard", YARD)):
        place.wall(name, "stone", points)
    place.wall("bed of the tarn", "sand", SAND)
    place.wall("flume", "wood", FLUME)


def thing_layer(place):
    place.layer("2 things")
    for x, y in LANTERNS:
        place.thing("lantern", "lantern", x, y)
    for number, x in GRASS:
        place.thing("grass", f"grass_{number}", x, ground(x) - 12, mirrored=x % 40 == 0)
    for x, y in LANTERNS:
        place.thing("glow", "lantern_glow", x, y - 4)


def ground(x):
    """The height of the ground at `x`, along the tops of bank, passage and yard."""
    tops = sorted(point for points in (BANK, PASSAGE, YARD) for point in points if point[1] < BOTTOM)
    for (ax, ay), (bx, by) in zip(tops, tops[1:]):
        if ax <= x < bx:
            return round(ay + (by - ay) * (x - ax) / (bx - ax))
    raise ValueError(f"no ground at {x}")


def build():
    """The map. What stands before the mouth of the tower is bare, for it is the tower's own wall."""
    place = Map()
    far_layer(place)
    wall_layer(place)
    thing_layer(place)
    place.layer("3 front of the tower")
    place.far("front of the tower", "stone", FRONT, dressed=False)
    place.layer("start")
    place.add("waterStart", "", *SPRING, point=True)
    place.add("cameraStart", "", *TARN, point=True)
    return place.tiled()
