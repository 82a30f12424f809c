"""Shows that scripts/soak finds what it looks for, with a runner that only pretends to play."""

import pathlib
import stat
import subprocess
import sys
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "soak"

# Writes state lines as the runner does; what goes wrong is told by the name of the level. A line is longer than a pipe
# holds, so that the runner never is more than a line ahead of who reads: its memory is looked at while it still lives.
RUNNER = r'''#!{python}
import json, os, pathlib, signal, sys
level = pathlib.Path(sys.argv[1]).stem
value = lambda name: sys.argv[sys.argv.index(name) + 1]
ticks, every = int(value("--ticks")), int(value("--dump-every"))
assert pathlib.Path(value("--input")).read_text().startswith("0 ")
hoard = []
for tick in range(0, ticks + 1, every):
    late = tick > ticks / 2
    particle = [9000.0 if level == "outside" and late else 1.0, 2.0] + [0.0] * 25
    if level == "nan" and late:
        particle[4] = "nan"
    if level == "infinite" and late:
        particle[5] = "-inf"
    if level == "growth":
        hoard.append(bytearray(b"x") * 2_000_000)
    if level == "crash" and late:
        print("what went wrong", file=sys.stderr, flush=True)
        os.kill(os.getpid(), signal.SIGSEGV)
    camera = dict(state=0 if level == "flight" else 1, x=0.0, y=0.0, angle=30.0, zoom=1.0, shakeOffsetX=0.0,
                  shakeOffsetY=0.0)
    if level == "flight":
        particle[0] = 9000.0
    groups = [dict(centre=[0.0, 900.0], radius=8.0)] if level == "group" and late else []
    menu = 9 if level == "short" and tick >= 300 else 0
    line = json.dumps(dict(tick=tick, menu=menu, camera=camera, particles=[particle], groups=groups))
    print(line.ljust(100_000), flush=True)
if level == "refused":
    print("no such thing", file=sys.stderr)
    sys.exit(2)
'''


class SoakTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.top = pathlib.Path(self.folder.name)
        (self.top / "maps").mkdir()
        self.runner = self.top / "runner"
        self.runner.write_text(RUNNER.replace("{python}", sys.executable))
        self.runner.chmod(self.runner.stat().st_mode | stat.S_IXUSR)

    def soak(self, *levels, arguments=()):
        for level in levels:
            (self.top / "maps" / f"{level}.rivl").write_bytes(b"")
        return subprocess.run(
            [SCRIPT, "--runner", self.runner, "--data", self.top, "--keep", self.top / "keep", "--ticks", "1000",
             "--every", "20", *arguments], capture_output=True, text=True, check=False)

    def expect_fault(self, level, text):
        done = self.soak(level)
        self.assertEqual(done.returncode, 1, done.stderr)
        self.assertIn(f"{level}: ", done.stdout)
        self.assertIn(text, done.stdout)
        self.assertIn(f"to see it again: {self.runner} ", done.stdout)
        self.assertTrue((self.top / "keep" / f"{level}-1.keys").is_file())

    def test_levels_without_a_fault_pass_one_after_the_other(self):
        done = self.soak("first", "second")

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("first: 1000 ticks in 1 run, at most ", done.stdout)
        self.assertIn("second: 1000 ticks in 1 run, at most ", done.stdout)
        self.assertIn("first:  50 %, tick 500, 1 particles, 0 ice groups, ", done.stderr)
        self.assertEqual(list((self.top / "keep").iterdir()), [])

    def test_a_level_that_ends_is_played_again_with_other_keys(self):
        done = self.soak("short")

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("short: 1000 ticks in 4 runs, ", done.stdout)

    def test_a_crash_is_told_with_its_last_words(self):
        self.expect_fault("crash", "ended by signal 11 after tick 500\nwhat went wrong")

    def test_a_bad_exit_status_is_a_fault(self):
        self.expect_fault("refused", "ended by exit status 2 after tick 1000\nno such thing")

    def test_what_is_no_number_is_told_with_its_place(self):
        self.expect_fault("nan", "tick 520: particles[0][4] is no number")

    def test_what_is_infinite_is_told_with_its_place(self):
        self.expect_fault("infinite", "tick 520: particles[0][5] is no number")

    def test_a_particle_far_outside_the_view_is_told(self):
        self.expect_fault("outside", "tick 520: particle 0 at [9000.0, 2.0] lies far outside the view")

    def test_an_ice_group_far_outside_the_view_is_told(self):
        self.expect_fault("group", "tick 520: ice group 0 at [0.0, 900.0] lies far outside the view")

    def test_while_the_camera_flies_water_may_be_anywhere(self):
        self.assertEqual(self.soak("flight").returncode, 0)

    def test_memory_that_grows_is_told(self):
        self.expect_fault("growth", "memory grew from ")

    def test_one_level_is_played_when_it_is_named(self):
        done = self.soak("first", "crash", arguments=["first"])

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def test_a_level_that_is_not_there_is_refused(self):
        done = self.soak("first", arguments=["missing"])

        self.assertEqual(done.returncode, 2)
        self.assertIn("there is no level ", done.stderr)

    def test_the_same_seed_gives_the_same_keys(self):
        keys = []
        for _ in range(2):
            self.soak("crash", arguments=["--seed", "7"])
            keys.append((self.top / "keep" / "crash-7.keys").read_text())

        self.assertEqual(keys[0], keys[1])
        self.assertGreater(len(keys[0].splitlines()), 5)


if __name__ == "__main__":
    unittest.main()
