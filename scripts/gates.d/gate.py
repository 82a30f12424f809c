"""What the scripts of the gates share: their command line, builds, and the figure at the end."""
import argparse
import fcntl
import os
import pathlib
import subprocess
import sys
import time

TOP = pathlib.Path(__file__).resolve().parents[2]
QUIET = {"SDL_AUDIODRIVER": "dummy", "ALSOFT_DRIVERS": "null", "LP_NUM_THREADS": "0"}
MISSING = 3  # exit status of a gate that lacks something


def parse(about: str, minutes: float, add=None):
    """The options of a gate; `add` may add some of its own."""
    parser = argparse.ArgumentParser(prog=os.path.relpath(sys.argv[0], TOP), description=about,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--short", action="store_true", help="the form that ./check runs")
    parser.add_argument("--minutes", type=float, default=minutes, help=f"of the long form ({minutes:g})")
    if add is not None:
        add(parser)
    options = parser.parse_args()
    if options.minutes <= 0:
        parser.error("--minutes is above 0")
    return options


def build(preset: str, *targets: str) -> pathlib.Path:
    """Brings the targets of a preset up to date; the folder of its programs."""
    (TOP / "build").mkdir(exist_ok=True)
    with open(TOP / "build" / f"{preset}.lock", "w", encoding="ascii") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)  # gates run side by side, and two builds in one folder spoil each other
        if not (TOP / "build" / preset / "build.ninja").is_file():
            quietly("cmake", "--preset", preset)
        if targets:
            quietly("cmake", "--build", "--preset", preset, "--target", *targets)
    return TOP / "build" / preset / "bin"


def quietly(*command: str) -> None:
    """Runs a command in the tree; what it prints is seen only if it fails, and the gate ends then."""
    done = subprocess.run(command, cwd=TOP, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    if done.returncode != 0:
        print(done.stdout)
        end(False, f"{' '.join(command)} failed")


def environment(**more: str) -> dict:
    """That of this program, with nothing to be heard or seen."""
    return {**os.environ, **QUIET, **more}


def lack(package: str):
    """Ends a gate that cannot run."""
    print(f"apt-get install {package}")
    sys.exit(MISSING)


def end(green: bool, figure: str):
    """Ends a gate with its figure."""
    print(figure, flush=True)
    sys.exit(0 if green else 1)


class Deadline:
    """So many seconds from now."""

    def __init__(self, seconds: float):
        self.at = time.monotonic() + seconds

    def left(self) -> float:
        return max(0.0, self.at - time.monotonic())
