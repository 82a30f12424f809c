"""The launcher as a player's system meets it: with homes of all kinds, two at a time, and a game that is a stand-in.

Usage: launcher_test.py LAUNCHER. The stand-in notes what it finds and writes what a game writes. Tests that need a file
system of their own mount one in a name space of their own; where the system does not let them, they are skipped, and say so.
"""

import os
import pathlib
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import time
import unittest
import zipfile

LAUNCHER = pathlib.Path(sys.argv.pop(1)).resolve() if len(sys.argv) > 1 else None
PATIENCE = 30  # seconds
LEVEL = b"not a level, but the launcher does not read it"

# Notes its folder, waits for `go` if it is told to, and writes what a game writes.
STAND_IN = """#!/bin/sh
cd . && pwd -P > "$NOTES.$$"
ls maps >> "$NOTES.$$"
[ -f cfg/start.cfg ] && cat cfg/start.cfg >> "$NOTES.$$"
mv "$NOTES.$$" "$NOTES"
[ -z "$COPY" ] || cp -rL . "$COPY"
[ -z "$HOLD" ] || while [ ! -e "$HOLD" ]; do sleep 0.05; done
mkdir -p sav
printf 'scores' > sav/scores.sav 2>/dev/null
printf 'log of %s' "$$" > ConsoleLog.txt 2>/dev/null
printf 'sound = 0' > cfg/comfort.cfg.new 2>/dev/null && mv cfg/comfort.cfg.new cfg/comfort.cfg
printf 'run' > replays/mine.replay 2>/dev/null
exit "${STATUS:-0}"
"""


def can_mount():
    """Whether this system lets a test mount a file system that only the test sees."""
    return subprocess.run(["unshare", *NAME_SPACE, "mount", "-t", "tmpfs", "none", "/mnt"], capture_output=True,
                          check=False).returncode == 0


NAME_SPACE = ["--mount"] if os.geteuid() == 0 else ["--map-root-user", "--mount"]


class LauncherTest(unittest.TestCase):
    """An installed launcher with a stand-in for the game, and a player with an empty home."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tarnwick launcher ")
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.launcher = self.root / "games" / "tarnwick"
        self.launcher.parent.mkdir()
        shutil.copy(LAUNCHER, self.launcher)
        self.write("libexec/tarnwick/tarnwick", STAND_IN)
        (self.root / "libexec/tarnwick/tarnwick").chmod(0o755)
        self.data = self.root / "share" / "games" / "tarnwick"
        self.write("share/games/tarnwick/cfg/game.cfg", "system")
        self.write("share/games/tarnwick/cfg/water.cfg", "system")
        self.write("share/games/tarnwick/gfx/stone.tga", "system")
        self.write("share/games/tarnwick/gfx/menu/sign.tga", "system")
        self.write("share/games/tarnwick/gfx/menu/rope.tga", "system")
        self.write("share/games/tarnwick/maps/kettle.rivl", "system")
        self.home = self.root / "home"
        self.home.mkdir()
        self.own = self.home / ".local" / "share" / "tarnwick"
        self.state = self.home / ".local" / "state" / "tarnwick"
        self.settings = self.home / ".config" / "tarnwick"
        self.notes = self.root / "notes"

    def write(self, name, content):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def environment(self, **more):
        """A bare one: nothing of the session that runs the tests."""
        return {"HOME": str(self.home), "PATH": os.environ["PATH"], "NOTES": str(self.notes),
                "TMPDIR": str(self.root), **more}

    def run_launcher(self, *arguments, status=0, **more):
        """Runs it to its end; what it printed on standard error."""
        done = subprocess.run([self.launcher, *arguments], env=self.environment(**more), capture_output=True, text=True,
                              timeout=PATIENCE, check=False)
        self.assertEqual(done.returncode, status, done.stderr)
        return done.stderr

    def start(self, **more):
        process = subprocess.Popen([self.launcher], env=self.environment(**more), stderr=subprocess.PIPE, text=True)
        self.addCleanup(process.stderr.close)
        return process

    def wait_for(self, path):
        end = time.monotonic() + PATIENCE
        while not path.exists():
            self.assertLess(time.monotonic(), end, f"{path} did not come")
            time.sleep(0.02)

    def noted(self):
        """Lines that the stand-in noted: its folder, the list of maps, the start file."""
        return self.notes.read_bytes().decode("latin-1").splitlines()

    def seen(self, *arguments):
        """A copy of all that the game saw."""
        self.run_launcher(*arguments, COPY=str(self.root / "seen"))
        return self.root / "seen"

    def zip(self, name, entries):
        self.own.mkdir(parents=True, exist_ok=True)
        with zipfile.ZipFile(self.own / name, "w", zipfile.ZIP_DEFLATED) as archive:
            for entry, content in entries:
                archive.writestr(entry, content)


class PlainStartTest(LauncherTest):
    """What a first start leaves."""

    def test_what_the_game_writes_is_kept_where_it_belongs(self):
        self.assertEqual(self.run_launcher(), "")

        self.assertEqual(self.noted()[1:], ["kettle.rivl"])
        self.assertEqual((self.state / "sav/scores.sav").read_text(), "scores")
        self.assertTrue((self.state / "ConsoleLog.txt").read_text().startswith("log of "))
        self.assertEqual((self.settings / "comfort.cfg").read_text(), "sound = 0")
        self.assertEqual((self.own / "replays/mine.replay").read_text(), "run")

    def test_the_running_games_folder_is_in_the_state_and_gone_after_it(self):
        self.run_launcher()

        self.assertEqual(pathlib.Path(self.noted()[0]), (self.state / "run/1").resolve())
        self.assertEqual([path.name for path in (self.state / "run").iterdir()], ["1.lock"])

    def test_nothing_else_is_written(self):
        before = {path for path in self.root.rglob("*")}

        self.run_launcher()

        ours = (self.state, self.settings, self.own)
        for path in set(self.root.rglob("*")) - before - {self.notes}:
            self.assertTrue(any(path == folder or folder in path.parents or path in folder.parents for folder in ours), path)

    def test_the_standards_folders_count(self):
        self.run_launcher(XDG_DATA_HOME=str(self.root / "d"), XDG_STATE_HOME=str(self.root / "s"),
                          XDG_CONFIG_HOME=str(self.root / "c"))

        self.assertTrue((self.root / "s/tarnwick/sav/scores.sav").exists())
        self.assertTrue((self.root / "c/tarnwick/comfort.cfg").exists())
        self.assertTrue((self.root / "d/tarnwick/replays/mine.replay").exists())
        self.assertEqual(list(self.home.iterdir()), [])

    def test_a_folder_that_is_no_absolute_path_does_not_count(self):
        self.run_launcher(XDG_STATE_HOME="here")

        self.assertTrue((self.state / "sav/scores.sav").exists())

    def test_the_games_status_is_the_launchers(self):
        self.run_launcher(STATUS="7", status=7)

    def test_a_name_with_blanks_and_umlauts(self):
        self.home = self.root / "Jörg Müller's »Spiele«"
        self.home.mkdir()

        self.assertEqual(self.run_launcher(), "")

        self.assertTrue((self.home / ".local/state/tarnwick/sav/scores.sav").exists())


class OwnNamesTest(LauncherTest):
    """The player's files go before the system's."""

    def test_a_setting_of_ones_own_replaces_the_systems_file(self):
        (self.settings).mkdir(parents=True)
        (self.settings / "Water.CFG").write_text("own")

        seen = self.seen()

        names = [path.name for path in (seen / "cfg").iterdir()]
        self.assertIn("Water.CFG", names)
        self.assertNotIn("water.cfg", names)
        self.assertEqual((seen / "cfg/Water.CFG").read_text(), "own")
        self.assertEqual((seen / "cfg/game.cfg").read_text(), "system")

    def test_a_picture_of_ones_own_in_a_folder_below_replaces_the_systems(self):
        self.write("home/.local/share/tarnwick/GFX/Menu/SIGN.tga", "own")

        seen = self.seen()

        self.assertEqual((seen / "gfx/Menu/SIGN.tga").read_text(), "own")
        self.assertEqual((seen / "gfx/Menu/rope.tga").read_text(), "system")
        self.assertEqual((seen / "gfx/stone.tga").read_text(), "system")
        self.assertFalse((seen / "gfx/Menu/sign.tga").exists())

    def test_a_level_of_ones_own_is_in_the_list(self):
        self.write("home/.local/share/tarnwick/maps/mine.rivl", "own")
        self.write("home/.local/share/tarnwick/dropped here.rivl", "own")
        self.write("home/.local/share/tarnwick/maps/Kettle.rivl", "own")

        self.run_launcher()

        self.assertEqual(self.noted()[1:], ["Kettle.rivl", "dropped\xa0here.rivl", "mine.rivl"])

    def test_letters_that_the_games_font_has_are_its_own(self):
        self.write("home/.local/share/tarnwick/maps/über a=b.rivl", "own")
        self.write("home/.local/share/tarnwick/maps/вода.rivl", "own")

        self.run_launcher()

        self.assertEqual(self.noted()[1:], sorted(["kettle.rivl", "вода.rivl".encode().decode("latin-1"), "über\xa0a_b.rivl"]))

    def test_a_setting_that_the_game_writes_replaces_the_players(self):
        self.settings.mkdir(parents=True)
        (self.settings / "comfort.cfg").write_text("sound = 1")

        self.run_launcher()

        self.assertEqual((self.settings / "comfort.cfg").read_text(), "sound = 0")
        self.assertFalse((self.settings / "comfort.cfg").is_symlink())

    def test_devices_pipes_and_links_to_nothing_are_left_out(self):
        maps = self.own / "maps"
        maps.mkdir(parents=True)
        os.mkfifo(maps / "pipe.rivl")
        (maps / "gone.rivl").symlink_to("nowhere")
        (maps / "round").symlink_to(maps)
        (self.own / "gfx").mkdir()
        (self.own / "gfx" / "menu").symlink_to(self.own / "gfx")

        self.run_launcher()

        self.assertEqual(self.noted()[1:], ["kettle.rivl"])


class StartTest(LauncherTest):
    """What the command line asks for."""

    def test_a_level_by_its_name_with_or_without_ending_in_any_case(self):
        for name in ("kettle", "kettle.rivl", "KETTLE"):
            with self.subTest(name):
                self.run_launcher("--level", name)
                self.assertEqual(self.noted()[2:], ["map = maps\\kettle.rivl"])

    def test_a_level_file_from_elsewhere(self):
        level = self.write("down loads/Käse 1.rivl", LEVEL)

        self.run_launcher(str(level))

        self.assertEqual(self.noted()[1:], ["K\xe4se\xa01.rivl", "kettle.rivl", "map = maps\\K\xe4se\xa01.rivl"])

    def test_a_level_file_with_a_name_of_the_list_takes_its_place(self):
        level = self.write("downloads/KETTLE.rivl", LEVEL)

        seen = self.seen("--level", str(level))

        self.assertEqual([path.name for path in (seen / "maps").iterdir()], ["KETTLE.rivl"])
        self.assertEqual((seen / "maps/KETTLE.rivl").read_bytes(), LEVEL)

    def test_opening_a_level_of_a_pack_plays_the_packs(self):
        level = self.write("home/.local/share/tarnwick/Winter/frost.rivl", LEVEL)

        self.run_launcher(str(level))

        self.assertEqual(self.noted()[3:], ["map = maps\\Winter:\xa0frost.rivl"])

    def test_a_window(self):
        self.run_launcher("--windowed", "1280x720")

        self.assertEqual(self.noted()[2:], ["windowWidth = 1280", "windowHeight = 720"])

    def test_the_start_file_is_not_kept(self):
        self.run_launcher("--windowed", "1280x720")

        self.assertFalse((self.settings / "start.cfg").exists())

    def test_a_start_file_of_ones_own_stays(self):
        self.settings.mkdir(parents=True)
        (self.settings / "start.cfg").write_text("map = mine")

        self.run_launcher("--windowed", "1280x720")

        self.assertEqual(self.noted()[2:], ["windowWidth = 1280", "windowHeight = 720"])
        self.assertEqual((self.settings / "start.cfg").read_text(), "map = mine")

    def test_other_data(self):
        for name in ("cfg/game.cfg", "gfx/other.tga", "maps/other.rivl", "sav/scores.sav", "ConsoleLog.txt"):
            self.write(f"other/{name}", "other")

        self.run_launcher("--data", str(self.root / "other"))

        self.assertEqual(self.noted()[1:], ["other.rivl"])
        self.assertEqual((self.root / "other/sav/scores.sav").read_text(), "other")
        self.assertEqual((self.root / "other/ConsoleLog.txt").read_text(), "other")

    def test_mistakes_are_told(self):
        text = self.write("note.txt", "text")
        for arguments, told in ((["--level", "kettel"], "kettel: there is no such level"),
                                (["/nowhere/a.rivl"], "/nowhere/a.rivl: there is no such file"),
                                ([str(text)], "note.txt: not a level file, its name does not end in .rivl"),
                                (["--data", "/nowhere"], "/nowhere: no data of the game, there is no cfg")):
            with self.subTest(arguments):
                self.assertIn(told, self.run_launcher(*arguments, status=2))
                self.assertFalse(self.notes.exists())
        for arguments in (["--windowed", "1280"], ["--windowed", "0x600"], ["--windowed", "800x600x"],
                          ["--windowed", "99999x1"], ["--nonsense"], ["a.rivl", "--level", "b"]):
            with self.subTest(arguments):
                done = subprocess.run([self.launcher, *arguments], env=self.environment(), capture_output=True, check=False)
                self.assertNotEqual(done.returncode, 0)
                self.assertFalse(self.notes.exists())
        self.assertEqual([path.name for path in (self.state / "run").iterdir()], ["1.lock"])

    def test_help_and_version(self):
        for argument, told in (("--help", "--windowed"), ("--version", "tarnwick ")):
            done = subprocess.run([self.launcher, argument], env=self.environment(), capture_output=True, text=True, check=True)
            self.assertIn(told, done.stdout)
            self.assertEqual(list(self.home.iterdir()), [])

    def test_a_missing_game_is_told(self):
        (self.root / "libexec/tarnwick/tarnwick").unlink()

        self.assertIn("libexec/tarnwick/tarnwick: the game's program is not there", self.run_launcher(status=2))


class PacksTest(LauncherTest):
    """Folders and archives of levels."""

    def test_the_levels_of_a_folder_stand_under_its_name(self):
        self.write("home/.local/share/tarnwick/Winter Tales/frost.rivl", LEVEL)
        self.write("home/.local/share/tarnwick/Winter Tales/maps/thaw.rivl", LEVEL)
        self.write("home/.local/share/tarnwick/notes/readme.txt", "no level")

        self.assertEqual(self.run_launcher(), "")

        self.assertEqual(self.noted()[1:], ["Winter\xa0Tales:\xa0frost.rivl", "Winter\xa0Tales:\xa0thaw.rivl", "kettle.rivl"])

    def test_the_levels_of_an_archive_stand_under_its_name(self):
        self.zip("Winter.zip", [("frost.rivl", LEVEL), ("README.txt", "hello"), ("maps/thaw.rivl", LEVEL)])
        self.zip("Summer.ZIP", [("summer-1.2/", b""), ("summer-1.2/maps/heat.rivl", LEVEL), ("__MACOSX/x.rivl", b"")])

        self.assertEqual(self.run_launcher(), "")

        self.assertEqual(self.noted()[1:], ["Summer:\xa0heat.rivl", "Winter:\xa0frost.rivl", "Winter:\xa0thaw.rivl",
                                            "kettle.rivl"])

    def test_what_a_pack_has_of_its_own_fills_names_that_are_missing(self):
        self.zip("Winter.zip", [("maps/frost.rivl", LEVEL), ("gfx/snow.tga", "pack"), ("gfx/Stone.tga", "pack"),
                                ("snd/wind.wav", "pack"), ("cfg/game.cfg", "pack")])

        seen = self.seen()

        self.assertEqual((seen / "gfx/snow.tga").read_text(), "pack")
        self.assertEqual((seen / "gfx/stone.tga").read_text(), "system")
        self.assertEqual((seen / "snd/wind.wav").read_text(), "pack")
        self.assertEqual((seen / "cfg/game.cfg").read_text(), "system")

    def test_an_archive_is_unpacked_once_and_again_when_it_changes(self):
        self.zip("Winter.zip", [("frost.rivl", LEVEL)])
        self.run_launcher()
        first = list((self.state / "packs").iterdir())
        written = (first[0] / "frost.rivl").stat().st_mtime_ns
        self.run_launcher()
        self.assertEqual((first[0] / "frost.rivl").stat().st_mtime_ns, written)

        self.zip("Winter.zip", [("thaw.rivl", LEVEL)])
        self.run_launcher()

        self.assertEqual(self.noted()[1:], ["Winter:\xa0thaw.rivl", "kettle.rivl"])
        self.assertEqual(len(list((self.state / "packs").iterdir())), 1)

    def refused(self, told):
        """The pack is left out, said why; the game runs all the same, and nothing of the pack is on disk."""
        messages = self.run_launcher()
        self.assertIn("level pack left out: ", messages)
        self.assertIn(told, messages)
        self.assertEqual(self.noted()[1:], ["kettle.rivl"])
        packs = self.state / "packs"
        self.assertEqual(list(packs.iterdir()) if packs.exists() else [], [])

    def test_names_that_lead_out_are_refused(self):
        for name in ("../evil.rivl", "maps/../../evil.rivl", "/tmp/evil.rivl", "..\\evil.rivl", "C:\\evil.rivl",
                     "a/" * 20 + "deep.rivl", "n" * 300 + ".rivl"):
            with self.subTest(name):
                self.zip("hostile.zip", [("good.rivl", LEVEL), (name, b"evil")])
                self.refused("the name leads out of the archive")
        self.assertEqual([path for path in self.root.rglob("*evil*")], [])

    def test_links_and_devices_are_refused(self):
        for kind in (stat.S_IFLNK, stat.S_IFIFO, stat.S_IFCHR):
            with self.subTest(oct(kind)):
                entry = zipfile.ZipInfo("gfx/link.tga")
                entry.create_system = 3
                entry.external_attr = (kind | 0o777) << 16
                self.zip("hostile.zip", [("good.rivl", LEVEL), (entry, "/etc/passwd")])
                self.refused("neither a file nor a folder")

    def test_a_bomb_is_refused(self):
        self.own.mkdir(parents=True)
        with zipfile.ZipFile(self.own / "bomb.zip", "w", zipfile.ZIP_DEFLATED) as archive:
            with archive.open("big.rivl", "w", force_zip64=True) as entry:
                for _ in range(65):
                    entry.write(bytes(1 << 20))
        self.refused("it unpacks to more than 64 MiB")

    def test_a_bomb_of_many_files_is_refused(self):
        self.zip("bomb.zip", [(f"{number}.rivl", bytes(60 << 20)) for number in range(5)])
        self.refused("it unpacks to more than 256 MiB")

    def test_a_bomb_that_lies_about_its_size_is_refused(self):
        self.zip("bomb.zip", [("big.rivl", bytes(65 << 20))])
        archive = self.own / "bomb.zip"
        size = (65 << 20).to_bytes(4, "little")
        archive.write_bytes(archive.read_bytes().replace(size, (100).to_bytes(4, "little")))
        self.refused("big.rivl")

    def test_too_many_entries_are_refused(self):
        self.zip("many.zip", [(f"{number}.txt", b"") for number in range(4097)])
        self.refused("more than 4096 entries")

    def test_damaged_archives_are_refused(self):
        self.zip("whole.zip", [("good.rivl", os.urandom(5000))])
        whole = (self.own / "whole.zip").read_bytes()
        (self.own / "whole.zip").unlink()
        damaged = bytearray(whole)
        damaged[1000] ^= 0xFF
        for told, content in (("", b""), ("", b"PK"), ("", whole[: len(whole) // 2]), ("CRC", bytes(damaged))):
            (self.own / "damaged.zip").write_bytes(content)
            self.refused(told)

    def test_two_entries_of_one_name_are_refused(self):
        self.zip("twice.zip", [("a.rivl", LEVEL), ("A.rivl", LEVEL)])
        self.refused("it is there twice")

    def test_an_archive_without_a_level_is_told(self):
        self.zip("texts.zip", [("readme.txt", "text")])
        self.assertIn("there is no level in it", self.run_launcher())


class TwoGamesTest(LauncherTest):
    """Games at a time, and games that are cut off."""

    def test_two_games_have_folders_and_logs_of_their_own(self):
        hold = self.root / "go"
        first = self.start(HOLD=str(hold), NOTES=str(self.root / "first"))
        self.wait_for(self.root / "first")
        second = self.start(HOLD=str(hold), NOTES=str(self.root / "second"))
        self.wait_for(self.root / "second")
        hold.touch()
        self.assertEqual([first.wait(PATIENCE), second.wait(PATIENCE)], [0, 0])

        folders = [(self.root / name).read_text().splitlines()[0] for name in ("first", "second")]
        self.assertEqual([pathlib.Path(folder).name for folder in folders], ["1", "2"])
        logs = [(self.state / name).read_text() for name in ("ConsoleLog.txt", "ConsoleLog-2.txt")]
        self.assertNotEqual(logs[0], logs[1])
        self.assertEqual(sorted(path.name for path in (self.state / "run").iterdir()), ["1.lock", "2.lock"])

    def test_a_game_whose_launcher_was_killed_keeps_its_folder_and_is_tidied_up_later(self):
        hold = self.root / "go"
        cut = self.start(HOLD=str(hold))
        self.wait_for(self.notes)
        cut.kill()
        cut.wait(PATIENCE)
        self.run_launcher(NOTES=str(self.root / "second"))
        self.assertTrue((self.root / "second").read_text().splitlines()[0].endswith("run/2"))
        self.assertTrue((self.state / "run/1/cfg").is_dir())
        (self.settings / "comfort.cfg").unlink()
        hold.touch()
        self.wait_for(self.state / "run/1/replays/mine.replay")
        time.sleep(0.2)  # the stand-in's own end

        self.run_launcher(NOTES=str(self.root / "third"))

        self.assertTrue((self.root / "third").read_text().splitlines()[0].endswith("run/1"))
        self.assertTrue((self.state / "ConsoleLog.txt").exists())
        self.assertFalse((self.state / "run/1").exists())

    def test_requests_to_end_reach_the_game(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            self.notes.unlink(missing_ok=True)
            process = self.start(HOLD=str(self.root / "never"))
            self.wait_for(self.notes)
            process.send_signal(number)
            self.assertEqual(process.wait(PATIENCE), 128 + number)
            self.assertFalse((self.state / "run/1").exists())


@unittest.skipUnless(can_mount(), "this system lets no test mount a file system")
class FileSystemsTest(LauncherTest):
    """Homes on file systems of other kinds, mounted for one launcher alone."""

    def run_mounted(self, mount, home, **more):
        """Runs the launcher after `mount`, a shell command, and prints what is in the home after it."""
        command = f'{mount} && "$LAUNCHER"; echo "status $?"; cd "$LOOK" && find . -type f | sort'
        done = subprocess.run(["unshare", *NAME_SPACE, "sh", "-c", command], capture_output=True, text=True, check=False,
                              timeout=PATIENCE,
                              env=self.environment(**{"LAUNCHER": str(self.launcher), "HOME": str(home), "LOOK": str(home),
                                                      **more}))
        self.assertIn("status 0", done.stdout, done.stderr)
        return done.stdout, done.stderr

    def test_a_home_on_another_file_system(self):
        found, messages = self.run_mounted('mount -t tmpfs none "$HOME"', self.home)

        self.assertEqual(messages, "")
        for name in ("state/tarnwick/sav/scores.sav", "state/tarnwick/ConsoleLog.txt", "share/tarnwick/replays/mine.replay"):
            self.assertIn(f"./.local/{name}", found)

    def test_folders_on_three_file_systems(self):
        mount = 'for d in a b c; do mkdir -p "$HOME/$d" && mount -t tmpfs none "$HOME/$d"; done'
        found, messages = self.run_mounted(mount, self.home, XDG_DATA_HOME=str(self.home / "a"),
                                           XDG_STATE_HOME=str(self.home / "b"), XDG_CONFIG_HOME=str(self.home / "c"))

        self.assertEqual(messages, "")
        for name in ("a/tarnwick/replays/mine.replay", "b/tarnwick/sav/scores.sav", "c/tarnwick/comfort.cfg"):
            self.assertIn(f"./{name}", found)

    def test_a_home_that_is_only_to_be_read(self):
        self.write("home/.local/share/tarnwick/maps/mine.rivl", "own")
        runtime = self.root / "runtime"
        runtime.mkdir()
        found, messages = self.run_mounted('mount --bind "$HOME" "$HOME" && mount -o remount,ro,bind "$HOME"', self.home,
                                           XDG_RUNTIME_DIR=str(runtime))

        self.assertIn("Read-only file system", messages)
        self.assertIn("what you do now may not be kept", messages)
        self.assertEqual(self.noted()[1:], ["kettle.rivl", "mine.rivl"])
        self.assertEqual(pathlib.Path(self.noted()[0]), (runtime / "tarnwick/run/1").resolve())

    def test_a_home_that_is_only_to_be_read_and_no_session(self):
        found, messages = self.run_mounted('mount --bind "$HOME" "$HOME" && mount -o remount,ro,bind "$HOME"', self.home)

        self.assertIn("Read-only file system", messages)
        self.assertTrue(pathlib.Path(self.noted()[0]).name.startswith("tarnwick-"))

    def run_on_full_disk(self, limit, **more):
        """Runs the launcher in a home with settings on a file system with `limit` that a filler has filled."""
        command = (f'mount -t tmpfs -o {limit} none "$HOME" && mkdir -p "$HOME/.local/state/tarnwick/sav" '
                   '"$HOME/.config/tarnwick" "$HOME/.local/share/tarnwick/maps" "$HOME/.local/share/tarnwick/replays" '
                   '&& printf old > "$HOME/.config/tarnwick/comfort.cfg" '
                   '&& { dd if=/dev/zero of="$HOME/filler" bs=1k 2>/dev/null; true; } '
                   '&& { n=0; while touch "$HOME/filler.$n" 2>/dev/null && [ $n -lt 50 ]; do n=$((n + 1)); done; true; } '
                   '&& "$LAUNCHER"; echo "status $?"; cat "$HOME/.config/tarnwick/comfort.cfg"')
        done = subprocess.run(["unshare", *NAME_SPACE, "sh", "-c", command], capture_output=True, text=True,
                              timeout=PATIENCE, check=False, env=self.environment(LAUNCHER=str(self.launcher), **more))
        self.assertIn("status 0\nold", done.stdout, done.stderr)
        self.assertEqual(self.noted()[1:], ["kettle.rivl"])
        return done.stderr

    def test_a_full_disk_loses_nothing_that_was_there(self):
        self.run_on_full_disk("size=64k")

    def test_a_disk_without_room_for_another_folder(self):
        runtime = self.root / "runtime"
        runtime.mkdir()
        for more, place in (({}, "tarnwick-"), ({"XDG_RUNTIME_DIR": str(runtime)}, "1")):
            with self.subTest(more):
                self.assertIn("No space left on device", self.run_on_full_disk("size=64k,nr_inodes=20", **more))
                self.assertTrue(pathlib.Path(self.noted()[0]).name.startswith(place))


if __name__ == "__main__":
    unittest.main()
