"""Writes the picture behind each menu into data/gfx/menu: what `logo` in the menus' configuration names.

512 x 512 with the name of the game above, or 1024 x 512 with a heading; one pixel is one of the 800 by 600 units of
the menus. data/cfg/menu_*.cfg lays the widgets on them, and centres them on the screen: row and column of a small
canvas are 144 and 44 less than the screen's x and y where its logo stands at (400, 300).
"""

import palette
from lib import shapes, tga
from menus import boards, logo, medallions

PACKING = 3
SMALL, LARGE = (512, 512), (512, 1024)  # rows and columns
CHAINS = 256 - 84, 256 + 84
LOGO_CUT = 42  # clear rows of the logo's picture that stay above the canvas
HEADING = 42  # middle of a heading, from the top


def with_logo(canvas):
    boards.place(canvas, shapes.shrink(logo.picture(), logo.SCALE), 0, -LOGO_CUT)
    return canvas


def signs_screen():
    """Main menu and menu in play: a column of signs hangs on two chains from the logo."""
    canvas = boards.clear(*SMALL)
    boards.chains(canvas, CHAINS, 132, 496)
    boards.vignette(canvas, (256, 256), (250, 256), 0.50)
    return with_logo(canvas)


def question_screen(bottom, chains_end, plank):
    """A small board under the logo, and signs under the board."""
    canvas = boards.clear(*SMALL)
    boards.chains(canvas, CHAINS, 132, chains_end)
    boards.place(canvas, boards.board(*SMALL, 14, 186, 498, bottom, plank, seed=51), 0, 0)
    boards.vignette(canvas, (256, 230), (254, 228), 0.50)
    return with_logo(canvas)


def board_screen(text, half_heading, left, right, bottom, plank, seed):
    """A large board with a heading, which a sign hangs from."""
    canvas = boards.clear(*LARGE)
    boards.chains(canvas, (512 - 84, 512 + 84), bottom - 10, 512)
    boards.chains(canvas, (512 - 200, 512 + 200), 0, 60)
    boards.place(canvas, boards.board(*LARGE, left, 40, right, bottom, plank, seed), 0, 0)
    boards.heading(canvas, text, 512, HEADING, half_heading)
    return canvas


HINTS = (
    ("Turn the world", "Water only knows the way down. Turn the world with the mouse, or with the keys left and "
     "right, and down is elsewhere."),
    ("Lead the water home", "Bring it through the level to its end. When enough of it is there at one time, you have "
     "won. You cannot lose."),
    ("Ice and steam", "Frost makes ice, which slides as one block. Fire makes steam, which rises. Both are soon "
     "water again."),
    ("Check points", "If all your water is lost, it springs up again at the last check point, as much as you brought "
     "there."),
    ("The score", "Each drop you keep counts 500. A fast way home counts far more: up to 436,000."),
    ("Keys", "In play, Escape or the right button opens the menu, P pauses. In menus: the mouse, or arrows, "
     "Tab and Enter."),
)


def instructions_screen():
    """Six small pictures on a sheet, each with what it means."""
    canvas = board_screen("How to play", 170, 136, 888, 484, 148, 63)
    boards.sheet(canvas, 152, 112, 872, 468, seed=81)
    for index, (picture, (title, text)) in enumerate(zip(medallions.ALL, HINTS)):
        x, y = 157 + (index % 2) * 357, 121 + (index // 2) * 114
        boards.place(canvas, picture(), x, y)
        boards.ink(canvas, title, x + 106, y + 16, size=19, weight="Bold", colour=palette.WOVEN_RED_RAMP[0])
        boards.paragraph(canvas, text, x + 106, y + 40, 244, 18, size=14.5)
    return canvas


CREDITS = (
    ("Design, code, levels, pictures, sounds and music",
     "the Tarnwick team; code under the GPL 3 or later, all else under CC BY-SA 4.0"),
    ("Letters", "Vollkorn, Fantasque Sans Mono, JetBrains Mono (SIL Open Font Licence 1.1)"),
    ("Instruments of the music", "the sound font FluidR3 by Frank Wen (MIT licence)"),
    ("Built on", "SDL, SDL_image, SDL_mixer (zlib licence), OpenAL Soft (LGPL 2 or later),",
     "FFmpeg (GPL 2 or later), GLVND and Mesa (MIT), GLU (SGI Free Software Licence B 2.0),",
     "CLI11 and libzip (BSD), JSON for Modern C++ (MIT)"),
    ("Drawn and sounded with", "Python, NumPy, SciPy, Pillow, FreeType, librsvg and FluidSynth"),
)


def credits_screen():
    """Who made the game, and with what, on a sheet."""
    canvas = board_screen("Credits", 130, 172, 852, 445, 148, 64)
    boards.sheet(canvas, 192, 118, 832, 428, seed=84)
    y = 143
    for title, *lines in CREDITS:
        boards.ink(canvas, title, 512, y, size=16, weight="Bold", colour=palette.WOVEN_RED_RAMP[0], align=0.5)
        for row, text in enumerate(lines, start=1):
            boards.ink(canvas, text, 512, y + 2 + row * 19, size=14.5, align=0.5)
        y += 32 + 19 * len(lines)
    return canvas


if __name__ == "__main__":
    tga.save("menu/signs.tga", signs_screen(), PACKING)
    tga.save("menu/question.tga", question_screen(286, 330, 58), PACKING)
    tga.save("menu/load_map.tga", question_screen(318, 420, 74), PACKING)
    tga.save("menu/options.tga", board_screen("Options", 130, 172, 852, 425, 72, 61), PACKING)
    tga.save("menu/high_scores.tga", board_screen("High scores", 170, 152, 872, 445, 54, 62), PACKING)
    tga.save("menu/instructions.tga", instructions_screen(), PACKING)
    tga.save("menu/credits.tga", credits_screen(), PACKING)
