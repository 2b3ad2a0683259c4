#!/usr/bin/python3
"""The measurements that need Wine and a screen; run by scripts/bench.

on_desktop.py PROGRAMS FOLDER IDLE_SECONDS START_ROUNDS: takes the programs from one folder, works
in another and writes desktop.json there.
"""

import datetime
import itertools
import json
import os
import re
import shutil
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "scripts" / "lib"))
from process_memory import process_memory  # noqa: E402
from task_list import MINUTES, Task, list_bytes  # noqa: E402

TASKS = 20
# The first seconds of a process are its start, not its idling.
SETTLE_SECONDS = 5


def until(condition, what, deadline=60):
    """Polls until the answer is true, and returns it."""
    end = time.monotonic() + deadline
    while not (answer := condition()):
        if time.monotonic() > end:
            raise RuntimeError(f"waited {deadline} s for {what}")
        time.sleep(0.05)
    return answer


def lines_of(*command, folder=None):
    """Runs a Windows program that prints lines "name median minimum", and returns them."""
    printed = subprocess.run(
        ["wine", *command], cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
        check=True, text=True).stdout
    rows = (line.split() for line in printed.splitlines())
    return {name: {"median": float(median), "minimum": float(minimum)}
            for name, median, minimum in rows}


def make_program_folder(programs, folder, has_clock):
    """A folder with the program and a list of tasks that do not fall due during the measurement."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    shutil.copyfile(programs / "Tellurvane.exe", folder / "Tellurvane.exe")
    settings = (ROOT / "resources" / "Setting.ini").read_bytes().decode("utf-16")
    clock = f"TimeForm={int(has_clock)}"
    folder.joinpath("Setting.ini").write_text(
        re.sub("TimeForm=.", clock, settings), encoding="utf-16", newline="")
    due = datetime.datetime.now() + datetime.timedelta(days=30)
    (folder / "JobList.dbs").write_bytes(list_bytes(*(
        Task(f"休息一下 {i + 1}", r"起來走一走\r\n順便喝杯水", due, unit=MINUTES, interval=30)
        for i in range(TASKS))))
    return folder / "Tellurvane.exe"


class Program:
    """A running Windows program, as a process of this machine."""

    def __init__(self, folder, name, *arguments):
        self.process = subprocess.Popen(
            ["wine", name, *arguments], cwd=folder, stdin=subprocess.DEVNULL)
        self.proc = Path(f"/proc/{self.process.pid}")
        self.window = until(self.windows, f"a window of {name}")[0]
        # The loader becomes the program. The figures of another process would be wrong.
        command_line = self.proc.joinpath("cmdline").read_bytes().decode(errors="replace")
        if name not in command_line:
            raise RuntimeError(f"process {self.process.pid} is not {name}: {command_line}")

    def windows(self):
        return subprocess.run(
            ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.process.pid),
             "--name", ""], stdout=subprocess.PIPE, check=False, text=True).stdout.split()

    def hide(self):
        """Closes the main window, which only hides it."""
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window, "key", "alt+F4"],
                       check=True)
        until(lambda: not self.windows(), "the hidden window")

    def processor_seconds(self):
        """The time of all threads, to the nanosecond; /proc/PID/stat counts in ticks of 10 ms."""
        used = (task.joinpath("schedstat").read_text().split()[0]
                for task in self.proc.joinpath("task").iterdir())
        return sum(int(nanoseconds) for nanoseconds in used) / 1e9

    def end(self):
        self.process.kill()
        self.process.wait()


def stolen_seconds():
    """What other machines on the host took, of all cores together."""
    return int(Path("/proc/stat").read_text().split()[8]) / os.sysconf("SC_CLK_TCK")


def rest(programs, seconds):
    """Measures several idle programs at once, by their names."""
    time.sleep(SETTLE_SECONDS)
    stolen = stolen_seconds()
    before = {name: program.processor_seconds() for name, program in programs.items()}
    start = time.monotonic()
    time.sleep(seconds)
    elapsed = time.monotonic() - start
    stolen = (stolen_seconds() - stolen) / elapsed / os.cpu_count()
    return {name: {"share": (program.processor_seconds() - before[name]) / elapsed,
                   "stolen": stolen, "memory": process_memory(program.proc)}
            for name, program in programs.items()}


def idle(binaries, program, with_clock, seconds):
    """The program with its window, in the tray and with its clock, and other programs to compare."""
    running = {}

    def start(name, path, *arguments):
        running[name] = Program(path.parent, path.name, *arguments)

    def start_wines(name):
        running[f"Wine's {name}"] = Program(ROOT, f"C:\\windows\\system32\\{name}.exe")

    def end():
        while running:
            running.popitem()[1].end()

    try:
        start("empty window", binaries / "EmptyWindow.exe")
        start("toolkit's form", binaries / "EmptyForm.exe", "text")
        start_wines("notepad")
        start("window", program)
        figures = rest(running, seconds)
        running["window"].hide()
        running["tray"] = running.pop("window")
        figures |= rest({"tray": running["tray"]}, seconds)
        end()
        start_wines("clock")
        start("window and clock", with_clock)
        return figures | rest(running, seconds)
    finally:
        end()


def main():
    programs, folder = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
    idle_seconds, start_rounds = float(sys.argv[3]), sys.argv[4]
    program = make_program_folder(programs, folder / "program", False)
    with_clock = make_program_folder(programs, folder / "clock", True)
    empty = programs / "EmptyWindow.exe"

    print("bench: the list under Wine", flush=True)
    lists = folder / "list"
    lists.mkdir(exist_ok=True)
    figures = {"list": lines_of(programs / "windows_bench.exe", lists)}
    print("bench: painting", flush=True)
    figures["paint"] = lines_of(programs / "paint_bench.exe")
    print(f"bench: the programs at rest, three times {idle_seconds:g} seconds", flush=True)
    figures["idle"] = idle(programs, program, with_clock, idle_seconds)
    # Last: xdotool finds no new windows after this has killed the system's programs.
    print(f"bench: {start_rounds} starts of each program", flush=True)
    starts = {"empty": empty, "program": program, "with_clock": with_clock}
    paths = {name: str(path.relative_to(ROOT)) for name, path in starts.items()}
    captions = {path: Path(path).stem for path in paths.values()}
    for name in ("notepad", "clock"):
        paths[f"Wine's {name}"] = f"C:\\windows\\system32\\{name}.exe"
        captions[paths[f"Wine's {name}"]] = "*"
    pairs = ((caption, path) for path, caption in captions.items())
    figures_of = lines_of(programs / "start_bench.exe", start_rounds, *itertools.chain(*pairs),
                          folder=ROOT)
    figures["start"] = {name: figures_of[path] for name, path in paths.items()}
    figures["size"] = os.path.getsize(programs / "Tellurvane.exe")
    (folder / "desktop.json").write_text(json.dumps(figures, indent=1))


if __name__ == "__main__":
    main()
