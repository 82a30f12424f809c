"""The colours of Tarnwick, and the only place where hex values stand.

A mountain village round a tarn, at dusk. Order of attention: water, then warm light (lanterns, windows, brass), then
walls that collide, then far walls, then the landscape. Only water is bright saturated cyan; sky, patina and blue
cloth stay well below it, so that a player finds the water at a glance.

A name that ends in `_RAMP` is a run of colours from dark to light, or as its comment says. The colours of the water,
the steam and the ice in play are set by `data/cfg/water.cfg`; their sprites are painted nearly white.
"""

# Outlines and deepest shade
INK = "0B171D"

# The landscape: sky from top to horizon, then the ridges from far to near
SKY_RAMP = ("0C2230", "123442", "1E5260", "3C7C7E", "87A795", "DDBB86", "E9C48E")
SKY_TOP = SKY_RAMP[0]
CLOUD_RAMP = ("2B5A66", "6C938E", "F0D2A0")
MOON = "F5EBCB"
FAR_RIDGE_RAMP = ("3A6570", "7F9C98")
FAR_RIDGE_HAZE = "A6A68C"
SNOW_RAMP = ("6E8F98", "EADFC8")
MIDDLE_RIDGE_RAMP = ("215059", "4E7F7C")
MIDDLE_RIDGE_HAZE = "7E9A8A"
NEAR_HILL_RAMP = ("123B45", "2E5F5E")
NEAR_HILL_HAZE = "35696A"
FIR = "143C44"
MIST = "6F9C96"
VALLEY_RAMP = ("1C4B52", "0B2530")
VALLEY_DEEP = VALLEY_RAMP[1]
TARN_RAMP = ("1B4B58", "3F7D84", "C9B48E")
HOUSE_WALL = "2C4A4C"
HOUSE_TOWER = "345456"
ROOF_RAMP = ("5E4434", "A07648")

# Stone
STONE_RAMP = ("40484A", "68706C", "94968A", "BDB8A2")
MORTAR = "2A3032"
MOSS_RAMP = ("3E5A3C", "7C8B4E")
FAR_HAZE = "16333D"

# Wood, iron, copper, brass
WOOD_RAMP = ("3F2412", "6E4220", "A66C31", "D09A54", "E6BC7C")
WOOD_GAP = "1E120A"
NAIL = "2B2A28"
IRON_RAMP = ("2E383D", "46545A", "66767A", "8A979A")
SEAM = "131A1C"
COPPER_RAMP = ("46302A", "6E4836", "94634A", "BC8D6A")
PATINA_RAMP = ("43595A", "5F7A74", "86988A", "A9B5A2")
BRASS_RAMP = ("2E1D0A", "6B4716", "B9862F", "E6BE63", "FFF1BE")

# Cloth and sand
LINEN_RAMP = ("6E5E4C", "A18B6E", "CDB994", "EBDFC2")
WOVEN_RED_RAMP = ("5A231C", "A8452F", "D2775A")
WOVEN_BLUE_RAMP = ("23404C", "3F6F7C", "7FA6A8")
SAND_RAMP = ("7C5628", "A67637", "C4954F", "DDB873", "ECD39A")
PEBBLES = ("8C8F82", "A98A62", "6E6A60", "C9B48C")

# Edge strips inside a polygon: the side that faces the light, and the one that faces away
STONE_EDGES = ("C9C3A2", "1A2226")
WOOD_EDGES = ("F6CE8C", "3A2010")
METAL_EDGES = ("D8C09A", "12191C")
CLOTH_EDGES = ("FFF4D8", "6A4A3A")
SAND_EDGES = ("FFE9B0", "7A5526")
FAR_EDGES = ("7FA39A", "0B1C25")
FAR_OUTLINE = "0E222B"

# Water in pictures (surface to depth), ice, grass, light
WATER_RAMP = ("8CF4FF", "2CCBF2", "12A0D8", "0B6E9E")
WATER_SHALLOW = "C2F0FA"
FOAM = "E8FDFF"
ICE_RAMP = ("3F93C2", "7CC3E2", "BDE6F4", "F4FCFF")
GRASS_RAMP = ("25463C", "4F7A46", "9DB35A")
LANTERN_LIGHT = "FFCD78"
LANTERN_CORE = "FFF6D6"
LANTERN_GLOW = "FFB54A"
TEXT = "FFF3D6"
WHITE = "FFFFFF"

# The menus: letters cut into wood, what lies in the logo's letters, the dark rim and the shine of water in letters
CUT_RAMP = ("150A04", "33190A", "6B4220", "C08A4C")
CUT_LIP = (0.32, 0.224, 0.104)
LETTER_RAMP = ("FFF6DA", "F3D596", "D99A52")
WATER_RIM = "0A4A62"
WATER_SHINE = (0.02, 0.36, 0.46)
SIGN_RAMP = ("43260F", "7A4A22", "B4793A", "DDAA62")
CHAIN_RAMP = ("12191C", "46545A", "8A979A", "EFE6CC")
GLEAM = (1.0, 0.93, 0.76)
BOARD_RAMP = ("24140A", "3A2412", "573818", "7A5428")
VIGNETTE = "071820"
STEAM = "FFF2DE"
DUSK = (0.94, 0.91, 0.85)
DEPTH_RAMP = ("3FB4D2", "1F8FB8", "0E6288", "083E5A", "05283C")
RAY = (0.13, 0.24, 0.25)
GLASS = "009ECC"
