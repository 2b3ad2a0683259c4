#!/usr/bin/python3
"""Runs the program in a folder for two minutes and reports the runs of its tasks.

Exit code 0 when every enabled task that fell due was run, 1 when one was not, 2 when the program
did not start or ended too early.
"""

import datetime
import os
import subprocess
import sys
import time
from pathlib import Path

from task_list import read_tasks

DURATION = float(os.environ.get("TELLURVANE_RUN_SECONDS", "120"))
SCREENSHOT_EVERY = 30
# A task starts within about a second of its moment and is then written to the disk.
GRACE = datetime.timedelta(seconds=5)
KINDS = ["網路電台", "本地音樂", "應用程式", "記事提醒"]


def say(text):
    print(f"{datetime.datetime.now():%H:%M:%S} {text}", flush=True)


def save_screenshot(folder):
    target = folder / "screenshots" / f"{datetime.datetime.now():%Y%m%d-%H%M%S}.png"
    target.parent.mkdir(exist_ok=True)
    if subprocess.run(["/usr/bin/import", "-window", "root", str(target)], check=False).returncode == 0:
        say(f"screenshot: {folder.name}/screenshots/{target.name}")


class Watch:
    """The list as seen so far."""

    def __init__(self, path):
        self.path = path
        self.started = datetime.datetime.now()
        self.last_runs = {}
        self.due = {}  # name -> the earliest moment at which the task has to have run
        self.runs = 0

    def look(self):
        for task in read_tasks(self.path.read_bytes()) if self.path.exists() else []:
            if not task.enabled:
                continue
            before = self.last_runs.setdefault(task.name, task.last_run)
            if task.last_run != before:
                self.last_runs[task.name] = task.last_run
                self.due.pop(task.name, None)
                self.runs += 1
                kind = KINDS[task.media_type] if task.media_type in range(len(KINDS)) else "?"
                say(f"ran: {task.name} ({kind}) at {task.last_run:%H:%M:%S}, "
                    f"next at {task.next_run:%Y-%m-%d %H:%M:%S}")
            if task.next_run >= self.started:
                self.due.setdefault(task.name, task.next_run)

    def overdue(self):
        now = datetime.datetime.now()
        return [name for name, moment in self.due.items() if moment + GRACE < now]


def main():
    folder = Path(sys.argv[1]).resolve()
    watch = Watch(folder / "JobList.dbs")
    program = subprocess.Popen(["wine", "Tellurvane.exe"], cwd=folder, stdin=subprocess.DEVNULL)
    shown = subprocess.run(
        ["timeout", "30", "xdotool", "search", "--sync", "--onlyvisible", "--name", "^Tellurvane$"],
        stdout=subprocess.DEVNULL, check=False)
    if shown.returncode != 0:
        say("the program shows no window")
        return 2
    say("the program is up")

    end = time.monotonic() + DURATION
    next_screenshot = time.monotonic() + 2
    while time.monotonic() < end:
        if program.poll() is not None:
            say(f"the program ended by itself with code {program.returncode}")
            return 2
        watch.look()
        if time.monotonic() >= next_screenshot:
            save_screenshot(folder)
            next_screenshot += SCREENSHOT_EVERY
        time.sleep(0.2)
    save_screenshot(folder)

    late = watch.overdue()
    if late:
        say("did not run in time: " + ", ".join(late))
        return 1
    say(f"every due task ran ({watch.runs} runs)")
    return 0


if __name__ == "__main__":
    sys.exit(main())
