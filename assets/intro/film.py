"""Films the intro, data/vid/intro.avi: dusk over a dry tarn, the spring, the water's way down, and the name.

One shot without a cut. The camera goes from the tarn to the spring over a still panorama; there the game itself takes
over, played by `tarnwick-sim` in the place that `scene` builds, and the view follows the water home. While the water
comes to rest, the name appears and fills. Needs the programs of the release preset.
"""

import json
import pathlib
import shutil
import subprocess
import sys

import numpy as np
from PIL import Image

import palette
from intro import scene, splash
from lib import shade
from menus import logo

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAMS = ROOT / "build" / "release" / "bin"
WORK = ROOT / "build" / "intro"
VIDEO = ROOT / "data" / "vid" / "intro.avi"

COLUMNS, ROWS = 1280, 720  # pixels of the film
SCALE = COLUMNS / 800  # pixels of the film for a unit: the game's view is 800 wide in a tall window
FINER = 1.25  # pixels that the game draws for each of the film: its off-screen edges are hard
TALL = round(1000 * SCALE * FINER), round(800 * SCALE * FINER)  # rows and columns of the game's pictures

SECONDS = 12.0  # of the film's own time, as of its sound
PICTURES = 147
RATE = PICTURES / SECONDS
# The game goes on to the next picture with the first pass of the screen that lies more than this many milliseconds behind
# the last, and drops the rest. A whole number of passes is then 79 to 84 milliseconds long at 50, 59.94, 60, 75, 100, 120,
# 144 and 240 hertz, so that the film stays within 3 % of its sound at each. With the 25 pictures a second of an earlier
# film it took a quarter longer than its sound at 60 hertz, and half as long again at 50.
DURATION = 77
PAN = 0.5, 3.2  # seconds: the way from the tarn to the spring
TICKS_PER_PICTURE = 6
TICKS_PER_SHOT = 2  # the shutter stays open for some shots of each picture, so that few pictures move softly
SHOTS = 3
TICK = 1 / (RATE * TICKS_PER_PICTURE)  # seconds
FIRST_TICK = 72  # just before the water comes to the mouth
FOLLOW = 4.6, 8.2  # seconds: the view goes from the water's height to that of the first picture
NAME = 8.1, 9.3  # seconds: the name appears
RISE = 8.6, 10.9  # seconds: it fills
FADE_IN, FADE_OUT = (0.0, 0.8), (11.3, 11.95)
DRY = 1.06  # share of the letters' height that stays dry while there is no water in them
LOGO_SCALE = 1.72  # pixels for a unit of the logo
LOGO_MIDDLE = 0.255  # of the film's height
DUSK = 0.42  # how much the sky behind the name darkens
SPLASH_LOWER = 50  # units that the splash looks below the film
LIGHT = 2.2  # exponent from a picture's values to light
QUALITY = "21.5"  # of x264: smaller is better

# More water than a level has: what waits in the tower, as commands of the console.
WATER = ("ParticleCreate 1572 288 24 1800", "ParticleCreate 1622 280 26 1800", "ParticleCreate 1680 272 28 2000",
         "ParticleCreate {0} {1} 1 1".format(*scene.SPRING))


def smooth(span, time):
    """0 before the span of seconds, 1 after it, with a soft start and end between."""
    share = np.clip((time - span[0]) / (span[1] - span[0]), 0, 1)
    return share * share * share * (share * (share * 6 - 15) + 10)


def run(*words):
    subprocess.run([str(word) for word in words], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def play(name, ticks, every, *options):
    """Plays the scene: the pictures' files and where the camera stood in each."""
    frames, dump = WORK / name, WORK / f"{name}.jsonl"
    run(PROGRAMS / "tarnwick-sim", WORK / "scene.rivl", "--ticks", ticks, "--dump-every", every, "--frames", frames,
        "--dump", dump, "--size", f"{TALL[1]}x{TALL[0]}", *options)
    cameras = []
    with open(dump, encoding="utf-8") as lines:
        for line in lines:
            camera = json.loads(line)["camera"]
            cameras.append((camera["x"], camera["y"]))
    return list(zip(sorted(frames.glob("*.png")), cameras))


def pictures_of_the_game():
    shutil.rmtree(WORK, ignore_errors=True)
    WORK.mkdir(parents=True)
    (WORK / "scene.tmj").write_text(json.dumps(scene.build()), encoding="utf-8")
    (WORK / "water.txt").write_text("\n".join(WATER) + "\n", encoding="utf-8")
    run(PROGRAMS / "tarnwick-level", "compile", WORK / "scene.tmj", WORK / "scene.rivl")
    flight = play("flight", 170, 10)
    last_tick = FIRST_TICK + (round((SECONDS - PAN[1]) * RATE) + 1) * TICKS_PER_PICTURE
    water = play("water", last_tick, TICKS_PER_SHOT, "--no-flight", "--dt", f"{TICK:.9f}", "--console",
                 WORK / "water.txt")
    return flight, water[FIRST_TICK // TICKS_PER_SHOT :]


def load(path):
    with Image.open(path) as picture:
        return np.asarray(picture.convert("RGB"))


class Panorama:
    """The still pictures of the flight laid side by side, in the pixels of the game's pictures."""

    def __init__(self, shots):
        unit = SCALE * FINER
        places = [(round(x * unit), round(y * unit)) for _, (x, y) in shots]
        self.left = min(x for x, _ in places) - TALL[1] // 2
        self.top = min(y for _, y in places) - TALL[0] // 2
        right, bottom = max(x for x, _ in places), max(y for _, y in places)
        self.picture = np.zeros((bottom - self.top + TALL[0] // 2, right - self.left + TALL[1] // 2, 3), np.uint8)
        for (path, _), (x, y) in zip(shots, places):
            row, column = y - TALL[0] // 2 - self.top, x - TALL[1] // 2 - self.left
            self.picture[row : row + TALL[0], column : column + TALL[1]] = load(path)

    def view(self, x, y):
        return view(self.picture, x * SCALE * FINER - self.left, y * SCALE * FINER - self.top)


def view(picture, column, row):
    """A picture of the film with its middle at a place of a larger one, between pixels too."""
    wide, high = COLUMNS * FINER, ROWS * FINER
    left = min(max(column - wide / 2, 0), picture.shape[1] - wide)  # a shot's own place is rounded to whole pixels
    box = (left, row - high / 2, left + wide, row + high / 2)
    image = Image.fromarray(picture).resize((COLUMNS, ROWS), Image.LANCZOS, box=box)
    return np.asarray(image).astype(float) / 255


def name(time):
    """The logo at a moment, in the size of the film: colours that count by their alpha, and alpha."""
    fill = DRY + (logo.FILL - DRY) * smooth(RISE, time)
    drawn = logo.picture(fill, phase=time * 2.6, ripple=smooth(RISE, time))
    size = round(logo.COLUMNS * LOGO_SCALE), round(logo.ROWS * LOGO_SCALE)
    whole = np.zeros((ROWS, COLUMNS, 4))
    row, column = round(ROWS * LOGO_MIDDLE) - size[1] // 2, (COLUMNS - size[0]) // 2
    above = max(-row, 0)  # rows of the logo's empty border that lie beyond the film
    whole[row + above : row + size[1], column : column + size[0]] = splash.resized(drawn, size)[above:]
    return whole


def finish(picture, time):
    """What lies over the game's picture: the evening behind the name, the name, a vignette, light and dark."""
    y, x = np.mgrid[-1 : 1 : ROWS * 1j, -1 : 1 : COLUMNS * 1j]
    ink = np.array(shade.rgb(palette.INK))
    vignette = 0.30 * np.clip(np.hypot(x * 0.9, y) / 1.35, 0, 1) ** 2.6
    evening = DUSK * smooth(NAME, time) * np.clip(0.55 - y * 0.75, 0, 1)
    cover = (1 - (1 - vignette) * (1 - evening))[..., None]
    picture = picture * (1 - cover) + ink * cover
    if time > NAME[0]:
        letters = name(time) * smooth(NAME, time)
        picture = picture * (1 - letters[..., 3:]) + letters[..., :3]
    return picture * smooth(FADE_IN, time) * (1 - smooth(FADE_OUT, time))


def film(flight, water):
    """The pictures of the film, one after the other. Each is the mean of what its shots saw, in light and not in values."""
    panorama = Panorama(flight + water[:1])
    first = np.array(scene.TARN, float)
    spring = np.array(water[0][1])

    def shot_at(time):
        """What the camera sees at a moment."""
        number = round((time - PAN[1]) / (TICK * TICKS_PER_SHOT))
        if number < 0:
            return panorama.view(*(first + (spring - first) * smooth(PAN, time)))
        path, (_, height) = water[number]
        lift = (scene.TARN[1] - height) * smooth(FOLLOW, time)
        return view(load(path), TALL[1] / 2, TALL[0] / 2 + lift * SCALE * FINER)

    for number in range(PICTURES):
        time = number / RATE
        shots = [shot_at(time + shot * TICKS_PER_SHOT * TICK) for shot in range(SHOTS)]
        yield time, np.mean([shot**LIGHT for shot in shots], axis=0) ** (1 / LIGHT)


def encode(pictures):
    VIDEO.parent.mkdir(parents=True, exist_ok=True)
    # Without pictures that refer to later ones: the n-th picture of the file is then the n-th that is shown.
    words = ["ffmpeg", "-y", "-v", "error", "-f", "rawvideo", "-pix_fmt", "rgb24", "-s", f"{COLUMNS}x{ROWS}", "-r",
             f"1000/{DURATION}", "-i", "-", "-an", "-c:v", "libx264", "-preset", "slow", "-crf", QUALITY, "-bf", "0",
             "-pix_fmt", "yuv420p", "-threads", "1", "-fflags", "+bitexact", "-flags:v", "+bitexact",
             "-map_metadata", "-1", str(VIDEO)]
    with subprocess.Popen(words, stdin=subprocess.PIPE) as process:
        for time, picture in pictures:
            whole = np.clip(finish(picture, time) * 255 + 0.5, 0, 255).astype(np.uint8)
            process.stdin.write(whole.tobytes())
        process.stdin.close()
        if process.wait() != 0:
            sys.exit("the film could not be encoded")
    print(f"data/vid/intro.avi: {SECONDS} s, {VIDEO.stat().st_size} bytes")


def at_rest(water):
    """The end of the game's pictures: 800 by 600 units about the tarn."""
    path, (_, height) = water[-1]
    unit = SCALE * FINER
    top = round(TALL[0] / 2 + (scene.TARN[1] + SPLASH_LOWER - height) * unit - 300 * unit)
    return load(path)[top : top + round(600 * unit)]


if __name__ == "__main__":
    flight_shots, water_shots = pictures_of_the_game()
    encode(film(flight_shots, water_shots))
    splash.save(at_rest(water_shots))
