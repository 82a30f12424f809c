"""Shows that the checks of the sources find the slips they are for, by planting them in a small tree."""

import pathlib
import subprocess
import tempfile
import unittest

SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts"

CORE_LISTS = """add_library(tarnwick_leaf STATIC
    Clock.cpp)
target_sources(tarnwick_leaf PUBLIC FILE_SET HEADERS BASE_DIRS src FILES
    Clock.h)
tarnwick_subsystem(core
    SOURCES
        Pump.cpp)
"""

PUMP_HEADER = """#pragma once

namespace tarnwick {
class Pump {
public:
    Pump();
    ~Pump();
    Pump(const Pump&) = delete;
    Pump& operator=(const Pump& other);
    bool runs() const { return running; }
    static void stop();

private:
    bool running = false;
    struct State {
        int level = 0;
    };
    static State state;
};
} // namespace tarnwick
"""

PUMP_SOURCE = """#include "core/Pump.h"

#include "core/LocationStack.h"

namespace tarnwick {
namespace {

/// Braces { in comments, "strings" and initialisers do not count.
int halved(
    int value) { // }
    TARNWICK_LOCATION("Pump::halved");
    const char* brace = "}{";
    return value / 2 + (brace == nullptr ? 1 : 0);
}

struct Valve {
    template <typename T>
    void turn(T by) {
        TARNWICK_LOCATION("Valve::turn");
        auto twice = [by] { return by * 2; };
        twice();
    }
};

} // namespace

Pump::Pump()
    : running{halved(2) == 1} {
    TARNWICK_LOCATION("Pump::Pump");
}

Pump::~Pump() {
    TARNWICK_LOCATION("Pump::~Pump");
}

Pump& Pump::operator=(const Pump& other) {
    // a comment may come first
    TARNWICK_LOCATION("Pump::operator=");
    running = other.running;
    return *this;
}

// no location: runs in a signal handler
void Pump::stop() {
    Valve().turn(1);
}

} // namespace tarnwick
"""

RESETS = """void ModuleReset::all() {
    Pump::state = {};
}
"""


class CheckTest(unittest.TestCase):
    """A tree without a slip, into which each test plants one."""

    script = ""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.write("src/core/CMakeLists.txt", CORE_LISTS)
        self.write("src/core/Clock.h", "#pragma once\nnamespace tarnwick {\nint now();\n}\n")
        self.write("src/core/Clock.cpp", '#include "core/Clock.h"\nint tarnwick::now() {\n    return 1;\n}\n')
        self.write("src/core/LocationStack.h", "#pragma once\n")
        self.write("src/core/Pump.h", PUMP_HEADER)
        self.write("src/core/Pump.cpp", PUMP_SOURCE)
        self.write("tests/support/ModuleReset.cpp", RESETS)

    def write(self, name, text):
        """Writes a file of the tree."""
        file = self.root / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def replace(self, name, old, new):
        """Plants a slip."""
        text = (self.root / name).read_text()
        self.assertIn(old, text)
        self.write(name, text.replace(old, new, 1))

    def check(self):
        """Runs the script; its status and what it printed."""
        command = [SCRIPTS / self.script, "--root", self.root]
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual(done.stderr, "")
        return done.returncode, done.stdout

    def expect_slip(self, *parts):
        """The check must fail with one line that has all the parts."""
        status, output = self.check()
        self.assertEqual(status, 1, output)
        self.assertTrue(any(all(part in line for part in parts) for line in output.splitlines()), output)

    def expect_clean(self):
        """The check must pass."""
        status, output = self.check()
        self.assertEqual(status, 0, output)


class LocationsTest(CheckTest):
    """scripts/check-locations"""

    script = "check-locations"

    def test_a_tree_without_slip_passes(self):
        self.expect_clean()

    def test_a_missing_scope_is_found_in_every_kind_of_function(self):
        for name in ("Pump::halved", "Pump::Pump", "Pump::~Pump", "Pump::operator=", "Valve::turn"):
            with self.subTest(name):
                self.write("src/core/Pump.cpp", PUMP_SOURCE.replace(f'TARNWICK_LOCATION("{name}");', ""))
                self.expect_slip("Pump.cpp", f'does not open with TARNWICK_LOCATION("{name}")')

    def test_a_wrong_name_is_found(self):
        self.replace("src/core/Pump.cpp", '("Pump::~Pump")', '("Pump::Pump")')
        self.expect_slip('"Pump::Pump" instead of "Pump::~Pump"')

    def test_a_helper_without_its_class_is_found(self):
        self.replace("src/core/Pump.cpp", '("Pump::halved")', '("halved")')
        self.expect_slip('"halved" instead of "Pump::halved"')

    def test_a_scope_behind_another_statement_is_found(self):
        self.replace("src/core/Pump.cpp", '    TARNWICK_LOCATION("Pump::halved");\n    const char* brace = "}{";\n',
                     '    const char* brace = "}{";\n    TARNWICK_LOCATION("Pump::halved");\n')
        self.expect_slip("does not open with", "Pump::halved")

    def test_a_scope_that_is_commented_out_is_missing(self):
        self.replace("src/core/Pump.cpp", '    TARNWICK_LOCATION("Pump::halved");', '    // TARNWICK_LOCATION("Pump::halved");')
        self.expect_slip("does not open with", "Pump::halved")

    def test_an_exception_without_a_reason_is_none(self):
        self.replace("src/core/Pump.cpp", "// no location: runs in a signal handler", "// no location:")
        self.expect_slip("does not open with", "Pump::stop")

    def test_a_function_of_several_statements_in_a_header_is_found(self):
        self.replace("src/core/Pump.h", "{ return running; }", "{ if (running) { return true; } return false; }")
        self.expect_slip("Pump.h", "Pump::runs")

    def test_a_constexpr_function_can_have_no_scope(self):
        self.replace("src/core/Pump.cpp", "struct Valve {", "constexpr int turned(int by) {\n    return by;\n}\n\nstruct Valve {")
        self.expect_clean()

    def test_a_second_source_of_a_class_uses_the_name_of_the_class(self):
        self.write("src/core/PumpValves.cpp", '#include "core/Pump.h"\nnamespace tarnwick {\nnamespace {\n'
                   'void open() {\n    TARNWICK_LOCATION("Pump::open");\n}\n}\n}\n')
        self.expect_clean()

    def test_the_emitter_goes_by_the_name_of_the_forces(self):
        emitter = ('#include "core/FxParticleEmitter.h"\nvoid tarnwick::FxParticleEmitter::run() {\n'
                   '    TARNWICK_LOCATION("ForceManager::run");\n}\n')
        self.write("src/core/FxParticleEmitter.h", "#pragma once\nnamespace tarnwick {\nclass FxParticleEmitter;\n}\n")
        self.write("src/core/FxParticleEmitter.cpp", emitter)
        self.expect_clean()
        self.write("src/core/FxParticleEmitter.cpp", emitter.replace("ForceManager", "FxParticleEmitter"))
        self.expect_slip('"FxParticleEmitter::run" instead of "ForceManager::run"')

    def test_a_source_without_a_header_uses_plain_names(self):
        self.write("src/game/main.cpp", 'namespace {\nvoid open() {\n    TARNWICK_LOCATION("open");\n}\n}\n'
                   'int main() {\n    TARNWICK_LOCATION("main");\n    open();\n    return 0;\n}\n')
        self.expect_clean()

    def test_the_files_of_the_leaf_library_take_no_part(self):
        self.replace("src/core/CMakeLists.txt", "    Clock.cpp)", "    Other.cpp)")
        self.expect_slip("Clock.cpp", "now")

    def test_an_empty_tree_does_not_pass(self):
        for file in (self.root / "src").rglob("*.*"):
            if file.suffix in (".h", ".cpp"):
                file.unlink()
        self.assertEqual(self.check()[0], 1)


class IncludesTest(CheckTest):
    """scripts/check-includes"""

    script = "check-includes"

    def test_a_tree_without_slip_passes(self):
        self.expect_clean()

    def test_a_circle_of_headers_is_found(self):
        self.replace("src/core/Pump.h", "#pragma once\n", '#pragma once\n#include "core/Valve.h"\n')
        self.write("src/core/Valve.h", '#pragma once\n#include "core/Tap.h"\n')
        self.write("src/core/Tap.h", '#pragma once\n#include "core/Pump.h"\n')
        self.expect_slip("in a circle", "core/Pump.h", "core/Valve.h", "core/Tap.h")

    def test_sources_may_include_in_circles(self):
        self.replace("src/core/Pump.cpp", '#include "core/LocationStack.h"', '#include "core/Clock.h"')
        self.replace("src/core/Clock.cpp", '#include "core/Clock.h"', '#include "core/Clock.h"\n#include "core/Pump.h"')
        self.expect_clean()

    def test_a_platform_library_in_a_header_is_found(self):
        for library in ("<SDL.h>", "<SDL2/SDL.h>", "<SDL_opengl.h>", "<GL/gl.h>", "<AL/al.h>", "<libavcodec/avcodec.h>",
                        "<libswscale/swscale.h>", '"SDL.h"'):
            with self.subTest(library):
                self.write("src/core/Pump.h", PUMP_HEADER.replace("#pragma once\n", f"#pragma once\n#include {library}\n"))
                self.expect_slip("src/core/Pump.h", "platform library")

    def test_a_platform_library_in_a_source_is_allowed(self):
        self.write("src/audio/Tone.cpp", "#include <SDL.h>\n")
        self.expect_clean()

    def test_a_path_that_does_not_start_at_src_is_found(self):
        self.replace("src/core/Pump.cpp", '"core/LocationStack.h"', '"LocationStack.h"')
        self.expect_slip("src/core/Pump.cpp", '"LocationStack.h"')

    def test_a_header_that_may_be_read_twice_is_found(self):
        self.replace("src/core/Pump.h", "#pragma once\n", "")
        self.expect_slip("src/core/Pump.h", "#pragma once")

    def test_a_header_that_opens_a_namespace_for_all_is_found(self):
        self.replace("src/core/Pump.h", "namespace tarnwick {", "using namespace std;\nnamespace tarnwick {")
        self.expect_slip("src/core/Pump.h", "using namespace")

    def test_a_file_that_looks_up_is_found(self):
        self.write("src/game/Game.h", "#pragma once\n")
        self.replace("src/core/Pump.cpp", '#include "core/LocationStack.h"', '#include "game/Game.h"')
        self.expect_slip("src/core/Pump.cpp", "game/Game.h", "floor above")

    def test_a_file_may_look_down_and_beside_it(self):
        self.write("src/audio/Tone.h", "#pragma once\n")
        self.write("src/mechanisms/Valve.cpp", '#include "audio/Tone.h"\n#include "core/Pump.h"\n')
        self.expect_clean()

    def test_an_exception_lets_a_file_look_up_and_no_further(self):
        self.write("src/game/GameRules.h", "#pragma once\n")
        self.write("src/game/Camera.h", "#pragma once\n")
        self.write("src/gui/GameMenus.cpp", '#include "game/GameRules.h"\n')
        self.expect_clean()
        self.write("src/gui/GameMenus.cpp", '#include "game/GameRules.h"\n#include "game/Camera.h"\n')
        self.expect_slip("src/gui/GameMenus.cpp", "game/Camera.h")

    def test_an_exception_that_is_used_no_more_is_found(self):
        self.write("src/gui/GameMenus.cpp", "")
        self.expect_slip("GameMenus.cpp", "used no more")

    def test_a_folder_without_a_floor_is_found(self):
        self.write("src/cellar/Pipe.cpp", "")
        self.expect_slip("src/cellar/Pipe.cpp", "no floor")

    def test_opengl_outside_of_the_folders_that_draw_is_found(self):
        self.write("src/overlays/Lines.cpp", "#include <GL/gl.h>\n")
        self.expect_clean()
        self.write("src/audio/Tone.cpp", "#include <GL/gl.h>\n")
        self.expect_slip("src/audio/Tone.cpp", "OpenGL")

    def test_a_platform_library_in_the_world_is_found(self):
        self.write("src/particles/Drop.cpp", "#include <AL/al.h>\n")
        self.expect_slip("src/particles/Drop.cpp", "platform library")

    def test_too_large_a_knot_is_found(self):
        for number in range(27):
            self.write(f"src/game/Part{number}.h", "#pragma once\n")
            self.write(f"src/game/Part{number}.cpp",
                       f'#include "game/Part{number}.h"\n#include "game/Part{(number + 1) % 27}.h"\n')
        self.expect_slip("knot of 27")
        self.write("src/game/Part26.cpp", '#include "game/Part26.h"\n')
        self.expect_clean()

    def test_a_source_that_does_not_begin_with_its_header_is_found(self):
        self.replace("src/core/Pump.cpp", '#include "core/Pump.h"', '#include "core/Clock.h"\n#include "core/Pump.h"')
        self.expect_slip("src/core/Pump.cpp", "core/Pump.h")


class ResetsTest(CheckTest):
    """scripts/check-resets"""

    script = "check-resets"

    def test_a_tree_without_slip_passes(self):
        self.expect_clean()

    def test_a_module_that_is_not_put_back_is_found(self):
        self.replace("tests/support/ModuleReset.cpp", "    Pump::state = {};\n", "")
        self.expect_slip("src/core/Pump.h", "Pump::state")

    def test_a_reset_that_is_commented_out_is_none(self):
        self.replace("tests/support/ModuleReset.cpp", "    Pump::state = {};", "    // Pump::state = {};")
        self.expect_slip("src/core/Pump.h", "Pump::state")


SNAPSHOT_SOURCE = """#include "game/Snapshot.h"

void Snapshot::take() {
    Pump::keep(contents->pump);
}
void Snapshot::putBack() {
    Pump::putBack(contents->pump);
}
"""


class SnapshotsTest(CheckTest):
    """scripts/check-snapshots"""

    script = "check-snapshots"

    def setUp(self):
        super().setUp()
        self.write("src/game/Snapshot.cpp", SNAPSHOT_SOURCE)
        self.replace("src/core/Pump.h", "    static void stop();\n", "    static void stop();\n    class Moment;\n")
        self.write("src/core/Pump.cpp", "void Pump::keep(Moment& moment) {\n    moment.level = state.level;\n}\n"
                   "void Pump::putBack(const Moment& moment) {\n    state.level = moment.level;\n}\n")

    def slips(self):
        """What the check finds, but for the lines of its list, which this tree does not need."""
        found = self.check()[1].splitlines()
        return [line for line in found if not line.startswith("scripts/check-snapshots:")]

    def test_a_tree_without_slip_passes(self):
        self.assertEqual(self.slips(), [])

    def test_a_field_that_is_not_kept_is_found(self):
        self.replace("src/core/Pump.h", "        int level = 0;\n", "        int level = 0;\n        int speed = 3;\n")
        self.assertEqual(self.slips(), ["src/core/Pump.h: Pump::keep forgets speed",
                                        "src/core/Pump.h: Pump::putBack forgets speed"])

    def test_a_field_that_is_only_kept_is_found(self):
        self.replace("src/core/Pump.cpp", "    state.level = moment.level;\n", "")
        self.assertEqual(self.slips(), ["src/core/Pump.h: Pump::putBack forgets level"])

    def test_a_module_that_the_snapshot_does_not_ask_is_found(self):
        self.replace("src/game/Snapshot.cpp", "    Pump::putBack(contents->pump);\n", "")
        self.assertEqual(self.slips(), ["src/game/Snapshot.cpp: does not call Pump::putBack"])

    def test_a_module_with_a_state_that_keeps_nothing_is_found(self):
        self.replace("src/core/Pump.h", "    class Moment;\n", "")
        self.assertEqual(self.slips(), ["src/core/Pump.h: Pump has a state that no snapshot keeps"])


class DocumentsTest(CheckTest):
    """scripts/check-documents"""

    script = "check-documents"

    def setUp(self):
        super().setUp()
        self.write("README.md", "Read [on](docs/pumps.md), or [elsewhere](https://example.org/docs/none.md).\n")
        self.write("docs/pumps.md", "`src/core/Pump.h` has [the story](../README.md#pumps); `src/*/Other.h` is a kind.\n")

    def test_a_tree_without_slip_passes(self):
        self.expect_clean()

    def test_a_link_to_nowhere_is_found(self):
        self.replace("README.md", "docs/pumps.md", "docs/valves.md")
        self.expect_slip("README.md:1", "docs/valves.md")

    def test_a_link_is_meant_from_where_its_document_stands(self):
        self.replace("docs/pumps.md", "../README.md", "README.md")
        self.expect_slip("docs/pumps.md:1", "README.md")

    def test_a_path_that_is_gone_is_found(self):
        self.replace("docs/pumps.md", "src/core/Pump.h", "src/core/Valve.h")
        self.expect_slip("docs/pumps.md:1", "src/core/Valve.h")

    def test_a_command_on_a_path_that_is_gone_is_found(self):
        self.replace("docs/pumps.md", "`src/core/Pump.h`", "`scripts/pump --fast`")
        self.expect_slip("docs/pumps.md:1", "scripts/pump")


class LicencesTest(CheckTest):
    """scripts/check-licences"""

    script = "check-licences"

    def setUp(self):
        super().setUp()
        self.write(".reuse/dep5", "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\n\n"
                   "Files: .reuse/* assets/* docs/* scripts/* src/* tests/*\nCopyright: 2026 The team\nLicense: MIT\n")
        self.write("LICENSES/MIT.txt", "Permission is granted.\n")
        self.write("scripts/packages.txt", "cmake\nlibpump-dev\n")
        self.write("assets/packages.txt", "fonts-tap\n")
        self.write("docs/licences.md", "`libpump-dev` Zlib, `fonts-tap` OFL\n")

    def test_a_tree_without_slip_passes(self):
        self.expect_clean()

    def test_a_file_without_a_licence_is_found(self):
        self.write("music/song.ogg", "OggS")
        self.expect_slip("music/song.ogg")

    def test_a_licence_without_its_text_is_found(self):
        self.replace(".reuse/dep5", "License: MIT", "License: MIT AND Zlib")
        self.expect_slip("Zlib")

    def test_a_library_that_is_not_named_is_found(self):
        self.replace("docs/licences.md", "`libpump-dev` Zlib, ", "")
        self.expect_slip("libpump-dev is not there")

    def test_a_font_that_is_not_named_is_found(self):
        self.replace("docs/licences.md", "`fonts-tap` OFL", "")
        self.expect_slip("fonts-tap is not there")


if __name__ == "__main__":
    unittest.main()
