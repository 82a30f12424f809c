"""Shows that the scripts of single gates see what they are for."""

import importlib.machinery
import importlib.util
import pathlib
import struct
import sys
import tempfile
import unittest

FOLDER = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "gates.d"
sys.path.insert(0, str(FOLDER))  # they import what they share
sys.dont_write_bytecode = True


def load(name):
    """The script as a module."""
    loader = importlib.machinery.SourceFileLoader(name.replace("-", "_"), str(FOLDER / name))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(loader.name, loader))
    sys.modules[loader.name] = module
    loader.exec_module(module)
    return module


kill, faults, monkey, coverage, determinism = (load(name) for name in
                                               ("kill", "faults", "monkey", "coverage", "determinism"))


def table(best, size=284):
    """A file of scores."""
    entry = b"A".ljust(24, b"\0") + struct.pack("<I", best)
    return (struct.pack("<I", 0x1231230F) + entry * 10)[:size]


class Kill(unittest.TestCase):
    """What a kill left."""

    def fault(self, content):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / "scores.sav"
            if content is not None:
                file.write_bytes(content)
            return kill.table_fault(file, 5, 6)

    def test_the_old_and_the_new_table_are_well(self):
        self.assertEqual(["", ""], [self.fault(table(5)), self.fault(table(6))])

    def test_no_table_half_a_table_and_a_lost_score_are_faults(self):
        self.assertIn("no table", self.fault(None))
        self.assertIn("100 bytes", self.fault(table(5, 100)))
        self.assertIn("best score is 4 after 5", self.fault(table(4)))
        self.assertIn("another kind", self.fault(b"x" * 284))


class Faults(unittest.TestCase):
    """What a failing call left."""

    def fault(self, content, printed, *more):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "sav").mkdir()
            (folder / "sav/scores.sav").write_bytes(content)
            for other in more:
                (folder / "sav" / other).touch()
            return faults.table_fault(folder, printed)

    def test_a_score_that_was_told_to_be_safe_must_be_there(self):
        self.assertEqual("", self.fault(table(5), ""))
        self.assertEqual("", self.fault(table(7), "saved 7\n"))
        self.assertIn("best score is 5", self.fault(table(5), "saved 7\n"))

    def test_nothing_may_be_left_beside_the_table(self):
        self.assertIn("left beside", self.fault(table(5), "", "scores.sav.new"))


class Monkey(unittest.TestCase):
    """Memory of a run."""

    def growth(self, *kib):
        return monkey.growth("".join(f"{i} events, {number} KiB\n" for i, number in enumerate(kib)))

    def test_memory_that_is_flat_after_the_start_is_well(self):
        self.assertEqual("", self.growth(1000, 90_000, *[100_000] * 8))

    def test_memory_that_goes_on_growing_is_told(self):
        self.assertIn("memory grew", self.growth(*[100_000 * i for i in range(1, 11)]))

    def test_a_run_that_ends_early_is_no_proof(self):
        self.assertIn("did not tell", self.growth(1000))


class Coverage(unittest.TestCase):
    """Counting what ran."""

    @staticmethod
    def line(number, count, *branches):
        return {"line_number": number, "count": count,
                "branches": [{"count": taken, "throw": throw} for taken, throw in branches]}

    def test_what_one_object_did_not_run_another_may_have(self):
        counts = coverage.Counts()
        counts.add([self.line(1, 0), self.line(2, 0)])
        counts.add([self.line(1, 3), self.line(2, 0)])

        self.assertEqual(50.0, coverage.share(counts.lines))

    def test_a_branch_of_an_exception_does_not_count(self):
        counts = coverage.Counts()
        counts.add([self.line(1, 1, (1, False), (0, True))])

        self.assertEqual(100.0, coverage.share(counts.branches))


class Determinism(unittest.TestCase):
    """Comparing runs."""

    def test_the_first_tick_that_differs_is_told(self):
        self.assertEqual(["s: parts at dumped tick 1"], determinism.compare("s", ["a", "b", "c"], ["a", "x", "y"]))

    def test_a_run_that_ends_early_differs(self):
        self.assertEqual(["s: 1 ticks instead of 2"], determinism.compare("s", ["a", "b"], ["a"]))

    def test_the_table_has_every_scene(self):
        self.assertEqual({scene.name for scene in determinism.scenes()}, set(determinism.read_golden()))


if __name__ == "__main__":
    unittest.main()
