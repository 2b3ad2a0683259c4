#!/usr/bin/python3
"""The measurements that need Wine and a screen; run by scripts/bench.

on_desktop.py PROGRAMS FOLDER IDLE_SECONDS START_ROUNDS: takes the programs from one folder, works
in another and writes desktop.json there.
"""

import datetime
import json
import os
import shutil
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "scripts"))
import task_list  # noqa: E402

TASKS = 20
# The first seconds of a process are its start, not its idling.
SETTLE_SECONDS = 5
MINUTES, NOTE = 0, 3


def lines_of(*command, folder=None):
    """Runs a Windows program and gives the "name median minimum" lines that it prints."""
    printed = subprocess.run(
        ["wine", *command], cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
        check=True, text=True).stdout
    rows = (line.split() for line in printed.splitlines())
    return {name: {"median": float(median), "minimum": float(minimum)}
            for name, median, minimum in rows}


def make_program_folder(programs, folder):
    """The program with a list of tasks that are not due while it is measured."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    shutil.copyfile(programs / "Tellurvane.exe", folder / "Tellurvane.exe")
    shutil.copyfile(ROOT / "resources" / "Setting.ini", folder / "Setting.ini")
    due = datetime.datetime.now() + datetime.timedelta(days=30)
    task_list.write(folder / "JobList.dbs", [
        (MINUTES, 30, True, NOTE, f"休息一下 {i + 1}", r"起來走一走\r\n順便喝杯水", due)
        for i in range(TASKS)])


class Program:
    """A running Windows program, as the system under Wine sees it."""

    def __init__(self, path):
        self.process = subprocess.Popen(
            ["wine", path.name], cwd=path.parent, stdin=subprocess.DEVNULL)
        self.proc = Path(f"/proc/{self.process.pid}")
        subprocess.run(
            ["timeout", "30", "xdotool", "search", "--sync", "--onlyvisible", "--name",
             f"^{path.stem}$"], stdout=subprocess.DEVNULL, check=True)
        # The loader turns into the program; were it another process, nothing here would be right.
        command_line = self.proc.joinpath("cmdline").read_bytes().decode(errors="replace")
        if path.name not in command_line:
            raise RuntimeError(f"process {self.process.pid} is not {path.name}: {command_line}")

    def processor_seconds(self):
        """What all threads have used, to the nanosecond; /proc/PID/stat counts in ticks of 10 ms."""
        used = (task.joinpath("schedstat").read_text().split()[0]
                for task in self.proc.joinpath("task").iterdir())
        return sum(int(nanoseconds) for nanoseconds in used) / 1e9

    def memory(self):
        """Bytes: resident, its proportional share of what is shared, and what is its own alone."""
        sizes = {}
        for line in self.proc.joinpath("smaps_rollup").read_text().splitlines()[1:]:
            name, size = line.split()[:2]
            sizes[name.rstrip(":")] = int(size) * 1024
        return {"resident": sizes["Rss"], "proportional": sizes["Pss"],
                "private": sizes["Private_Clean"] + sizes["Private_Dirty"]}

    def end(self):
        self.process.kill()
        self.process.wait()


def idle(paths, seconds):
    """Both programs at once: they rest, so neither is in the other's way."""
    programs = [Program(path) for path in paths]
    try:
        time.sleep(SETTLE_SECONDS)
        before = [program.processor_seconds() for program in programs]
        start = time.monotonic()
        time.sleep(seconds)
        elapsed = time.monotonic() - start
        used = [program.processor_seconds() - was for program, was in zip(programs, before)]
        return {path.stem: {"share": share / elapsed, "memory": program.memory()}
                for path, share, program in zip(paths, used, programs)}
    finally:
        for program in programs:
            program.end()


def main():
    programs, folder = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
    idle_seconds, start_rounds = float(sys.argv[3]), sys.argv[4]
    program_folder = folder / "program"
    make_program_folder(programs, program_folder)
    program, empty = program_folder / "Tellurvane.exe", programs / "EmptyWindow.exe"

    print("bench: the list under Wine", flush=True)
    lists = folder / "list"
    lists.mkdir(exist_ok=True)
    figures = {"list": lines_of(programs / "windows_bench.exe", lists)}
    print("bench: painting", flush=True)
    figures["paint"] = lines_of(programs / "paint_bench.exe")
    print(f"bench: {start_rounds} starts of each program", flush=True)
    figures["start"] = lines_of(
        programs / "start_bench.exe", start_rounds, "EmptyWindow", empty.relative_to(ROOT),
        "TellurvaneForm", program.relative_to(ROOT), folder=ROOT)
    print(f"bench: both programs at rest for {idle_seconds:g} seconds", flush=True)
    figures["idle"] = idle([empty, program], idle_seconds)
    figures["size"] = os.path.getsize(programs / "Tellurvane.exe")
    (folder / "desktop.json").write_text(json.dumps(figures, indent=1))


if __name__ == "__main__":
    main()
