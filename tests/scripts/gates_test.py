"""Shows what scripts/gates makes of gates that are green, red or cannot run, with gates that only pretend."""

import importlib.machinery
import importlib.util
import io
import pathlib
import stat
import tempfile
import unittest
from contextlib import redirect_stderr, redirect_stdout

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "gates"
LOADER = importlib.machinery.SourceFileLoader("gates", str(SCRIPT))
SPEC = importlib.util.spec_from_loader("gates", LOADER)
gates = importlib.util.module_from_spec(SPEC)
LOADER.exec_module(gates)


class GatesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.top = pathlib.Path(folder.name)
        self.before = gates.GATES
        gates.GATES = []
        self.addCleanup(lambda: setattr(gates, "GATES", self.before))

    def add(self, name, text, **more):
        """A gate whose script is a few lines of shell."""
        script = self.top / name
        script.write_text(f"#!/bin/sh\n{text}\n")
        script.chmod(script.stat().st_mode | stat.S_IXUSR)
        gates.GATES.append(gates.Gate(name, f"about {name}", more.pop("share", 30), **more))

    def run_gates(self, *arguments):
        """Exit status and what was printed."""
        output = io.StringIO()
        with redirect_stdout(output), redirect_stderr(output):
            try:
                status = gates.main([*arguments, "--scripts", str(self.top), "--logs", str(self.top / "logs")])
            except SystemExit as ended:
                status = ended.code
        return status, output.getvalue()

    def test_a_green_gate_shows_the_last_line_that_it_printed(self):
        self.add("one", "echo working; echo '0 findings in 7 inputs'")

        status, printed = self.run_gates()

        self.assertEqual(status, 0)
        self.assertRegex(printed, r"^one +green +0:00  0 findings in 7 inputs\n1 of 1 gates green\n$")

    def test_one_red_gate_is_enough_and_all_that_it_printed_is_shown(self):
        self.add("one", "echo well")
        self.add("two", "echo what went wrong; echo '1 finding'; exit 1")

        status, printed = self.run_gates()

        self.assertEqual(status, 1)
        self.assertRegex(printed, r"two +RED +0:00  1 finding\nwhat went wrong\n1 finding\n")
        self.assertIn("1 of 2 gates green", printed)

    def test_a_gate_without_its_tool_fails_and_says_what_to_install(self):
        self.add("one", f"touch {self.top}/was-run", tools={"no-such-program": "the-package"})

        status, printed = self.run_gates()

        self.assertEqual(status, 1)
        self.assertIn("MISSING", printed)
        self.assertIn("apt-get install the-package", printed)
        self.assertFalse((self.top / "was-run").exists())

    def test_a_file_can_be_the_tool(self):
        self.add("one", "echo well", tools={f"{self.top}/lib*/fuzzer.a": "the-package"})

        self.assertEqual(self.run_gates()[0], 1)
        (self.top / "lib14").mkdir()
        (self.top / "lib14/fuzzer.a").touch()
        self.assertEqual(self.run_gates()[0], 0)

    def test_a_gate_that_finds_out_itself_that_it_cannot_run_is_not_green(self):
        self.add("one", "echo 'apt-get install xvfb'; exit 3")

        status, printed = self.run_gates()

        self.assertEqual(status, 1)
        self.assertRegex(printed, r"one +MISSING +0:00  apt-get install xvfb\n0 of 1")

    def test_gates_share_the_minutes_out(self):
        self.add("one", 'echo "$@"', share=30)
        self.add("two", 'echo "none: $@"', share=0)

        printed = self.run_gates("--minutes", "10")[1]

        self.assertIn("--minutes 5\n", printed)
        self.assertIn("none: \n", printed)

    def test_a_gate_can_be_run_alone(self):
        self.add("one", "echo well")
        self.add("two", "exit 1")

        self.assertEqual(self.run_gates("one")[0], 0)

    def test_an_unknown_gate_is_refused(self):
        self.add("one", "echo well")

        status, printed = self.run_gates("three")

        self.assertEqual(status, 2)
        self.assertIn("there is no gate three", printed)

    def test_the_short_forms_leave_out_a_gate_that_has_none(self):
        self.add("one", 'echo "$@"')
        self.add("two", "exit 1", short=False)

        status, printed = self.run_gates("--short")

        self.assertEqual(status, 0)
        self.assertIn("--short\n1 of 1", printed)

    def test_the_list_tells_commands_and_what_is_missing_and_runs_nothing(self):
        self.add("one", f"touch {self.top}/was-run", tools={"no-such-program": "the-package"})

        status, printed = self.run_gates("--list", "--minutes", "6")

        self.assertEqual(status, 0)
        self.assertRegex(printed, r"one +\S*one --minutes 3   MISSING: apt-get install the-package\n +about one\n")
        self.assertFalse((self.top / "was-run").exists())


class Table(unittest.TestCase):
    """The gates that there are."""

    def test_each_has_its_script_and_the_hour_is_shared_out(self):
        for gate in gates.GATES:
            self.assertTrue((SCRIPT.parent / "gates.d" / gate.name).is_file(), gate.name)
        self.assertLessEqual(sum(gate.share for gate in gates.GATES), 60)

    def test_the_document_has_a_row_for_each(self):
        text = (SCRIPT.parents[1] / "docs/testing.md").read_text(encoding="utf-8")
        for gate in gates.GATES:
            self.assertIn(f"| `{gate.name}` |", text)


if __name__ == "__main__":
    unittest.main()
