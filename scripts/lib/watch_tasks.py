#!/usr/bin/python3
"""Runs the program in a folder for two minutes and reports the runs of its tasks.

The last picture shows the main window, the clock if it is on, and a note if one was due.

Exit code 0 when every enabled task that fell due was run and the last picture shows its windows, 1
when not, 2 when the program did not start or ended too early.
"""

import datetime
import os
import subprocess
import sys
import time
from pathlib import Path

from task_list import MARK, NOTE, read_tasks

DURATION = float(os.environ.get("TELLURVANE_RUN_SECONDS", "120"))
SCREENSHOT_EVERY = 30
# A task starts within about a second of its moment and is then written to the disk.
GRACE = datetime.timedelta(seconds=5)
KINDS = ["網路電台", "本地音樂", "應用程式", "記事提醒"]
# Their captions. The two others show none.
MAIN_WINDOW, CLOCK, A_NOTE = "Tellurvane", "FrmTime", "frmNotes"
PATIENCE = 15  # seconds for the windows of the last picture


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
        self.has_run_note = False

    def look(self):
        for task in read_tasks(self.path.read_bytes()) if self.path.exists() else []:
            if not task.enabled:
                continue
            before = self.last_runs.setdefault(task.name, task.last_run)
            if task.last_run != before:
                self.last_runs[task.name] = task.last_run
                self.due.pop(task.name, None)
                self.runs += 1
                self.has_run_note |= task.media_type == NOTE
                kind = KINDS[task.media_type] if task.media_type in range(len(KINDS)) else "?"
                say(f"ran: {task.name} ({kind}) at {task.last_run:%H:%M:%S}, "
                    f"next at {task.next_run:%Y-%m-%d %H:%M:%S}")
            if task.next_run >= self.started:
                self.due.setdefault(task.name, task.next_run)

    def overdue(self):
        now = datetime.datetime.now()
        return [name for name, moment in self.due.items() if moment + GRACE < now]


def is_on_screen(caption):
    search = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{caption}$"],
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    return search.returncode == 0


def missing_windows(folder, watch):
    """Those that the list and the settings ask for, but the screen does not show."""
    settings = (folder / "Setting.ini").read_bytes().removeprefix(MARK).decode("utf-16-le")
    wanted = {MAIN_WINDOW}
    if "TimeForm=1" in settings.splitlines():
        wanted.add(CLOCK)
    if watch.has_run_note:
        wanted.add(A_NOTE)
    return sorted(caption for caption in wanted if not is_on_screen(caption))


def save_last_screenshot(folder, watch):
    """Saves it when all windows are there. Returns whether they were."""
    end = time.monotonic() + PATIENCE
    while (missing := missing_windows(folder, watch)) and time.monotonic() < end:
        time.sleep(0.2)
    save_screenshot(folder)
    if missing:
        say("the last picture lacks: " + ", ".join(missing))
    return not missing


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
    is_complete = save_last_screenshot(folder, watch)

    late = watch.overdue()
    if late:
        say("did not run in time: " + ", ".join(late))
        return 1
    if not is_complete:
        return 1
    say(f"every due task ran ({watch.runs} runs)")
    return 0


if __name__ == "__main__":
    sys.exit(main())
