"""Shows which single-line faults scripts/mutate makes of a text, which it leaves alone, and how it judges one."""

import importlib.machinery
import importlib.util
import pathlib
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "mutate"
LOADER = importlib.machinery.SourceFileLoader("mutate", str(SCRIPT))
SPEC = importlib.util.spec_from_loader("mutate", LOADER)
mutate = importlib.util.module_from_spec(SPEC)
LOADER.exec_module(mutate)


def changes(line):
    """What a line can become, as (kind, stripped line)."""
    return {(fault.kind, fault.instead[0].strip() if fault.instead else "")
            for fault in mutate.faults_of_text("src/core/Pump.cpp", line) if len(fault.lines) == 1}


def swaps(text, path="src/core/Pump.cpp"):
    """How many pairs of neighbouring lines can change places."""
    return sum(1 for fault in mutate.faults_of_text(path, text) if len(fault.lines) == 2)


class Faults(unittest.TestCase):
    """The faults of a line."""

    def test_comparisons_lose_or_gain_the_equal_case(self):
        self.assertIn(("comparison", "while (a <= b) {"), changes("    while (a < b) {"))
        self.assertIn(("comparison", "while (a > b) {"), changes("    while (a >= b) {"))
        self.assertIn(("comparison", "return a != b;"), changes("    return a == b;"))

    def test_signs_and_their_joints_turn(self):
        self.assertIn(("sign", "x = a - b;"), changes("    x = a + b;"))
        self.assertIn(("sign", "x -= b;"), changes("    x += b;"))
        self.assertIn(("sign", "turn(speed);"), changes("    turn(-speed);"))
        self.assertIn(("sign", "return a || b;"), changes("    return a && b;"))

    def test_constants_change_but_parts_of_names_do_not(self):
        self.assertIn(("constant", "x = 3;"), changes("    x = 2;"))
        self.assertIn(("constant", "x = 3.0f;"), changes("    x = 2.0f;"))
        self.assertIn(("constant", "x = 1.0f;"), changes("    x = 0.0f;"))
        self.assertIn(("constant", "on = false;"), changes("    on = true;"))
        self.assertFalse([c for c in changes("    x2 = loadGLTexture32;") if c[0] == "constant"])

    def test_texts_change_only_inside_their_quotes(self):
        self.assertEqual({("text", 'print("a < 2x");'), ("call removed", "")}, changes('    print("a < 2");'))

    def test_conditions_turn_round_or_go(self):
        found = changes("    if (a && b(c)) {")
        self.assertIn(("condition negated", "if (!(a && b(c))) {"), found)
        self.assertIn(("condition dropped", "if (true) {"), found)

    def test_calls_and_assignments_are_left_out_but_declarations_are_not(self):
        self.assertIn(("call removed", ""), changes("    Pump::state.list[2].stop(now);"))
        self.assertIn(("assignment removed", ""), changes("    state.on = now;"))
        self.assertEqual(set(), changes("    const Pump& pump = find(name);"))

    def test_comments_locations_and_includes_have_no_faults(self):
        for line in ["    // a < b", '    TARNWICK_LOCATION("Pump::stop");', '#include "core/Pump.h"', "    x(); // 2 < 3"]:
            self.assertFalse({kind for kind, _ in changes(line)} - {"call removed"}, line)

    def test_statements_change_places_where_the_order_can_matter(self):
        self.assertEqual(1, swaps("    stop();\n    start();"))
        self.assertEqual(1, swaps("    count = 0;\n    add(count);"))
        self.assertEqual(0, swaps("    stop(1);\n    stop(2);"))
        self.assertEqual(0, swaps("    state.a = 1;\n    state.b = 2;"))
        self.assertEqual(0, swaps("    stop();\n        start();"))
        self.assertEqual(0, swaps("    stop();\n    return now();"))
        self.assertEqual(0, swaps("    void stop();\n    void start();", "src/core/Pump.h"))


class Sample(unittest.TestCase):
    """The draw of a sample."""

    def test_a_seed_always_draws_the_same_and_another_one_something_else(self):
        keys = [[fault.key() for fault in mutate.draw(["src/core"], seed)] for seed in (1, 1, 2)]
        self.assertEqual(keys[0], keys[1])
        self.assertNotEqual(keys[0], keys[2])

    def test_faults_that_cannot_be_seen_are_left_out(self):
        first = mutate.draw(["src/core"], 1)[0]
        with tempfile.TemporaryDirectory() as folder:
            unseen = pathlib.Path(folder) / "unseen.txt"
            unseen.write_text(f"# those\n{first.key()} | the same by another road\n", encoding="utf-8")
            before, mutate.UNSEEN = mutate.UNSEEN, unseen
            try:
                self.assertNotIn(first.key(), [fault.key() for fault in mutate.draw(["src/core"], 1)])
            finally:
                mutate.UNSEEN = before


class FakeWorker(mutate.Worker):
    """A worker whose build and tests are told what to say; it remembers the text that they met."""

    def __init__(self, tree, built, passing, near=False):
        super().__init__(0, "release", near)
        self.tree = tree
        self.built = built
        self.passing = passing
        self.met = None

    def compile(self, log, target):
        self.met = next(self.tree.rglob("a.cpp")).read_text(encoding="utf-8")
        return self.built

    def passes(self, program, tests, limit):
        return self.passing(program, tests)


class Judgement(unittest.TestCase):
    """What becomes of one fault."""

    def judge(self, built, passing, path="src/audio/a.cpp", near=False):
        with tempfile.TemporaryDirectory() as folder:
            tree = pathlib.Path(folder)
            (tree / path).parent.mkdir(parents=True)
            (tree / path).write_text("one;\n    x = 2;\nthree;\n", encoding="utf-8")
            fault = mutate.Fault(path, 1, "constant", ["    x = 2;"], ["    x = 3;"])
            worker = FakeWorker(tree, built, passing, near)
            verdict = worker.judge(fault, 1)
            self.assertEqual("one;\n    x = 3;\nthree;\n", worker.met)
            self.assertEqual("one;\n    x = 2;\nthree;\n", (tree / path).read_text(encoding="utf-8"))
            return verdict

    def test_a_fault_lives_only_if_all_tests_pass(self):
        for path in ("src/audio/a.cpp", "tools/house/a.cpp"):
            self.assertEqual("lived", self.judge(True, lambda program, tests: True, path))
            self.assertEqual("noticed", self.judge(True, lambda program, tests: tests == "*a*", path))
            self.assertEqual("noticed", self.judge(True, lambda program, tests: tests != "*a*", path))
        self.assertEqual("noticed", self.judge(True, lambda program, tests: program != "tarnwick_tests"))

    def test_the_tests_of_the_own_folder_run_once_and_are_a_program_of_their_own(self):
        runs = []
        self.judge(True, lambda program, tests: runs.append((program, tests)) or True)
        self.assertEqual([("tarnwick_tests_audio", "*a*"), ("tarnwick_tests_audio", "*-*a*")], runs[:2])
        self.assertEqual("tarnwick_tests", runs[2][0])
        self.assertIn(":SoundTest.*", runs[2][1])
        self.assertNotIn("ParticleManagerTest.*", runs[2][1])
        self.assertEqual(3, len(runs))

    def test_near_no_other_folder_is_asked(self):
        runs = []
        self.assertEqual("lived", self.judge(True, lambda program, tests: runs.append(program) or True, near=True))
        self.assertEqual({"tarnwick_tests_audio"}, set(runs))

    def test_a_fault_that_does_not_build_is_no_fault(self):
        self.assertEqual("not built", self.judge(False, lambda program, tests: True))


if __name__ == "__main__":
    unittest.main()
