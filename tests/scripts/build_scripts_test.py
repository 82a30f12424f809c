"""Shows how cmake/ListSuites.cmake makes tests of a program's suites, and how scripts/measure-build keeps its figures."""

import importlib.machinery
import importlib.util
import os
import pathlib
import re
import stat
import subprocess
import tempfile
import unittest

TOP = pathlib.Path(__file__).resolve().parents[2]
LOADER = importlib.machinery.SourceFileLoader("measure_build", str(TOP / "scripts" / "measure-build"))
SPEC = importlib.util.spec_from_loader("measure_build", LOADER)
measure_build = importlib.util.module_from_spec(SPEC)
LOADER.exec_module(measure_build)

# As a GoogleTest program answers; each listing leaves a line in "asked".
PROGRAM = """#!/bin/sh
case "$1" in
--gtest_list_tests)
    echo asked >> "$(dirname "$0")/asked"
    printf 'PumpTest.\\n  Runs\\n  Stops\\nLevels/ValveTest.\\n  Opens/first  # GetParam() = 1.5\\n%s' "$MORE"
    ;;
*) echo "$1 shard $GTEST_SHARD_INDEX of $GTEST_TOTAL_SHARDS sound $SOUND" ;;
esac
"""


class ListSuites(unittest.TestCase):
    """The tests that CTest sees."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.top = pathlib.Path(folder.name)
        self.program = self.top / "program"
        (self.top / "CTestTestfile.cmake").write_text(
            f'set(program "{self.program}")\nset(working_directory "{self.top}")\nset(environment "SOUND=none")\n'
            f'set(shards Levels/ValveTest 2)\ninclude("{TOP}/cmake/ListSuites.cmake")\n')

    def build(self, age=0):
        """Writes the program, `age` seconds ago."""
        self.program.write_text(PROGRAM)
        self.program.chmod(self.program.stat().st_mode | stat.S_IXUSR)
        then = self.program.stat().st_mtime - age
        os.utime(self.program, (then, then))

    def ctest(self, *arguments, **variables):
        return subprocess.run(["ctest", *arguments], cwd=self.top, env=os.environ | variables, text=True,
                              capture_output=True, check=False).stdout

    def test_each_suite_is_a_test_and_a_long_one_is_dealt_out(self):
        self.build()

        listed = self.ctest("-N")

        names = [line.split(": ")[1] for line in listed.splitlines() if re.match(r" *Test +#", line)]
        self.assertEqual(["PumpTest", "Levels/ValveTest 1 of 2", "Levels/ValveTest 2 of 2"], names)

    def test_a_run_takes_its_suite_its_share_and_its_environment(self):
        self.build()

        told = self.ctest("-V")

        self.assertIn("--gtest_filter=PumpTest.* shard  of  sound none", told)
        self.assertIn("--gtest_filter=Levels/ValveTest.* shard 0 of 2 sound none", told)
        self.assertIn("--gtest_filter=Levels/ValveTest.* shard 1 of 2 sound none", told)

    def test_the_program_is_asked_again_only_after_it_has_changed(self):
        self.build(age=100)
        self.ctest("-N")
        self.ctest("-N")
        unchanged = (self.top / "asked").read_text().count("asked")
        self.build(age=-100)

        listed = self.ctest("-N", MORE="NewTest.\n  Runs\n")

        self.assertEqual(1, unchanged)
        self.assertIn("NewTest", listed)

    def test_a_program_that_is_not_built_fails_as_a_test(self):
        self.assertIn("NOT_BUILT", self.ctest("-N"))


class MeasureBuild(unittest.TestCase):
    """The table of docs/building.md."""

    TABLE = "Before.\n\n| row | a |\n|---|---|\n| `file` | what | 20 s | - | 9 s |\n| `header` | what | 90 s | - | - |\n"

    def test_a_figure_goes_into_its_row_alone(self):
        written = measure_build.with_figures(self.TABLE, {"file": (18.4, 31.6)})

        self.assertEqual(self.TABLE.replace("- | 9 s |", "18 s | 32 s |", 1), written)

    def test_a_row_that_the_document_lacks_is_an_error(self):
        with self.assertRaises(SystemExit):
            measure_build.with_figures(self.TABLE, {"play": (1.0, 2.0)})

    def test_the_document_has_each_row_with_the_limit_of_the_script(self):
        text = (TOP / "docs" / "building.md").read_text(encoding="utf-8")
        for row, (what, limit, _) in measure_build.ROWS.items():
            self.assertIn(f"| `{row}` | {what} | {limit} s |", text)


if __name__ == "__main__":
    unittest.main()
