#!/usr/bin/env python3
"""Prints the stacks of all threads of a process and of all that it started, for a test that passed its time.

Usage: stacks.py [--kill] PID. With --kill it ends them afterwards. Needs gdb; without it the names of the processes are
all that is told.
"""

import os
import pathlib
import signal
import subprocess
import sys

PATIENCE = 60  # seconds that gdb may take for a process


def parent_of(process):
    """The parent's number; 0 for a process that has just gone."""
    try:
        text = pathlib.Path(f"/proc/{process}/stat").read_text(encoding="latin-1")
    except OSError:
        return 0
    return int(text[text.rindex(")") + 2:].split()[1])


def family_of(process):
    """The process and its descendants, parents first."""
    everyone = [int(entry.name) for entry in pathlib.Path("/proc").iterdir() if entry.name.isdigit()]
    parents = {number: parent_of(number) for number in everyone}
    family = [process]
    for member in family:
        family += [number for number, parent in parents.items() if parent == member]
    return family


def stacks_of(process):
    """What gdb tells about a process, below its command line."""
    try:
        command = pathlib.Path(f"/proc/{process}/cmdline").read_bytes().replace(b"\0", b" ").decode("latin-1")
    except OSError:
        return ""
    try:
        told = subprocess.run(["gdb", "-p", str(process), "-batch", "-ex", "set pagination off",
                               "-ex", "thread apply all bt"], capture_output=True, text=True, errors="replace",
                              timeout=PATIENCE, check=False)
        lines = [line for line in told.stdout.splitlines() if line.startswith(("#", "Thread ", "    "))]
        text = "\n".join(lines) or told.stderr
    except (OSError, subprocess.TimeoutExpired) as failure:
        text = str(failure)
    return f"--- process {process}: {command}\n{text}\n"


def of_children():
    """The stacks of all that this program started."""
    return "".join(stacks_of(process) for process in family_of(os.getpid())[1:])


def main():
    kill = sys.argv[1] == "--kill"
    family = [process for process in family_of(int(sys.argv[-1])) if process != os.getpid()]
    for process in family:
        print(stacks_of(process), end="", flush=True)
    for process in family if kill else []:
        try:
            os.kill(process, signal.SIGKILL)
        except ProcessLookupError:
            pass


if __name__ == "__main__":
    main()
