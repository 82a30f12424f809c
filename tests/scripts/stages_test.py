"""Shows what ./play and scripts/stages print, with programs that only pretend to build and to play."""

import os
import pathlib
import re
import shutil
import stat
import subprocess
import tempfile
import unittest

TOP = pathlib.Path(__file__).resolve().parents[2]

# Writes the pictures that it is asked for; of the level's it writes none before the stills of the menus are there.
RUNNER = """#!/bin/sh
level=$1
while [ $# -gt 0 ]; do
    case "$1" in
    --ticks) ticks=$2 ;;
    --frames) frames=$2 ;;
    esac
    shift
done
[ "$level" != "$BAD_LEVEL" ] || { echo "no such level" >&2; exit 3; }
[ "$level" = testLevel ] || ls build/film > build/seen
mkdir -p "$frames"
number=0
while [ $number -le $((ticks / 3)) ]; do
    echo "$level $number" > "$frames/$(printf %06d $number).png"
    number=$((number + 1))
done
"""
BUILDER = """#!/bin/sh
case "$*" in *--build*) echo '[7/9] Building x.o'; echo '[9/9] Linking y' ;; esac
"""
JOINER = """#!/bin/sh
for last in "$@"; do :; done
echo film > "$last"
"""


class ScriptTest(unittest.TestCase):
    """A tree with the scripts and with programs in place of the real ones."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.top = pathlib.Path(folder.name)
        for name in ("play", "scripts/stages", "scripts/film-menus.txt", "data/replays/frozenBridge.keys"):
            (self.top / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(TOP / name, self.top / name)
        self.program("scripts/install-packages", "#!/bin/sh\n")
        self.program("build/release/bin/tarnwick-sim", RUNNER)
        self.program("bin/cmake", BUILDER)
        self.program("bin/ffmpeg", JOINER)

    def program(self, name, text):
        path = self.top / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        path.chmod(path.stat().st_mode | stat.S_IXUSR)

    def run_here(self, *command, **variables):
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        environment["PATH"] = f"{self.top / 'bin'}:{environment['PATH']}"
        return subprocess.run(command, cwd=self.top, env=environment | variables, text=True, check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def stages(self, script, **variables):
        """What a script says and how it ends that runs stages as ./check does."""
        return self.run_here("bash", "-euo", "pipefail", "-c", f". scripts/stages\n{script}", **variables)


class Stages(ScriptTest):
    """scripts/stages."""

    def test_a_stage_is_one_line_and_what_its_command_prints_goes_to_a_file(self):
        done = self.stages('stage "some work" sh -c "echo noise; echo progress: 4 of 4 pictures"')

        self.assertEqual(0, done.returncode)
        self.assertRegex(done.stdout, r"^some work +4 of 4 pictures +\d+:\d\d\n$")
        self.assertIn("noise", (self.top / "build/logs/some-work.log").read_text())

    def test_a_build_tells_its_steps(self):
        self.assertRegex(self.stages("stage build cmake --build --preset release").stdout, "^build +9 steps ")

    def test_a_stage_that_fails_shows_all_and_ends_the_script_with_its_status(self):
        done = self.stages('stage work sh -c "echo noise; exit 5"\necho more')

        self.assertEqual(5, done.returncode)
        self.assertRegex(done.stdout, r"^work +FAILED +\d+:\d\d\nnoise\nwork failed\.")
        self.assertNotIn("more", done.stdout)

    def test_tests_are_counted_inside_their_runs_and_beside_them(self):
        (self.top / "LastTest.log").write_text("[  PASSED  ] 30 tests.\n[  PASSED  ] 12 tests.\n")
        self.program("bin/ctest", "#!/bin/sh\necho '100% tests passed, 0 tests failed out of 5'\n")

        done = self.stages("stage_test_log=LastTest.log\nstage tests ctest --preset release")

        self.assertIn("45 tests passed in 5 runs", done.stdout)


class Play(ScriptTest):
    """./play without a display."""

    def test_it_prints_a_line_a_stage_and_where_film_and_stills_are(self):
        done = self.run_here("./play")

        self.assertEqual(0, done.returncode, done.stdout)
        begins = [re.split(r"  +", line)[0] for line in done.stdout.splitlines() if re.search(r"\d:\d\d$", line)]
        self.assertEqual(["packages", "configure", "build", "film of the menus", "film of a level", "film"], begins)
        self.assertIn("434 pictures", done.stdout)
        stills = re.findall(r"^still +(\S+)$", done.stdout, re.MULTILINE)
        self.assertEqual(8, len(stills))
        self.assertEqual("testLevel 20\n", pathlib.Path(stills[0]).read_text())
        self.assertEqual("frozenBridge 636\n", pathlib.Path(stills[7]).read_text())
        self.assertEqual("film\n", (self.top / "build/film/tarnwick.mp4").read_text())

    def test_the_first_stills_lie_there_before_the_level_is_played(self):
        self.run_here("./play")

        self.assertIn("still-1.png", (self.top / "build/seen").read_text())
        self.assertNotIn("still-5.png", (self.top / "build/seen").read_text())

    def test_a_level_that_cannot_be_played_is_told(self):
        done = self.run_here("./play", BAD_LEVEL="frozenBridge")

        self.assertEqual(3, done.returncode)
        self.assertIn("no such level", done.stdout)
        self.assertNotIn("tarnwick.mp4", done.stdout)


if __name__ == "__main__":
    unittest.main()
