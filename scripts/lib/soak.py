#!/usr/bin/python3
"""Uses the program under Wine for a long time: a task of each kind every minute, notes closed by
clicks, menus and the editor opened, the window hidden and shown; run by scripts/soak.

A fake control plays. Wine 8.0's own keeps 77 kernel handles for each played file and a thread for
each address that fails, which would hide leaks of the program. The fake loses the stream after a
second, at its start and at each try.

soak.py FOLDER MINUTES: works in the folder and writes samples.json there. Exit code 0 when nothing
grew and every task ran exactly once at each of its moments.
"""

import json
import os
import shutil
import sys
import threading
import time
from datetime import datetime, timedelta
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "program"))
from desktop import (BINARIES, click, click_at, click_tray_icon, happens, press_key,  # noqa: E402
                     run, screenshot, until, windows_path)
from editor import open_editor  # noqa: E402
from harness import SETTINGS, Folder, Program, end_all_in  # noqa: E402
from player import WINDOWS, FakeMediaControl, register  # noqa: E402
from process_memory import process_memory  # noqa: E402
from soak_report import UNITS, Count, Runs, print_report  # noqa: E402
from task_list import APPLICATION, MINUTES, MUSIC, NOTE, RADIO, Task, now  # noqa: E402

SECONDS_TO_START = 45
# The second of its minute at which each task falls due.
# The stream is tried again once: eight seconds after its start, and before the command stops it.
MUSIC_AT, RADIO_AT, COMMAND_AT, NOTE_AT, FAILURE_AT, SAMPLE_AT = 0, 10, 24, 32, 42, 52
HIDDEN_EVERY = 3  # minutes
NO_STREAM = "http://127.0.0.1:1/live"  # nothing listens there
BESIDE = (300, 800)  # the bare screen while the main window is hidden


class Plan:
    """The list, and when each of its tasks is due."""

    def __init__(self, folder, first):
        self.log = folder.path / "runs.log"
        logger = windows_path(folder.add("RunLog.exe"))
        self.chime = windows_path(shutil.copy(ROOT / "resources" / "chime.wav", folder.path))
        self.tasks = []

        def add(name, second, media_type, source, **facts):
            self.tasks.append(Task(name, source, first + timedelta(seconds=second), unit=MINUTES,
                                   interval=1, media_type=media_type, **facts))

        def add_command(name, **facts):
            add(name, COMMAND_AT, APPLICATION,
                f'"{logger}" "{windows_path(self.log)}" {name}', **facts)

        add("music", MUSIC_AT, MUSIC, self.chime)
        add("radio", RADIO_AT, RADIO, NO_STREAM)
        add_command("command")
        add_command("disabled", enabled=False)
        add_command("command-2")
        add("failing", FAILURE_AT, APPLICATION, "no such program")
        add("note", NOTE_AT, NOTE, r"起來走一走\r\n順便喝杯水")
        folder.write_list(*self.tasks)

    def first_due(self, name):
        return next(task.next_run for task in self.tasks if task.name == name)

    def logged(self, name):
        """When the command of this name was started."""
        lines = (line.split("\t") for line in self.log.read_text("ascii").splitlines())
        return [datetime.fromisoformat(moment) for logged, moment in lines if logged == name]


class ListWatch(threading.Thread):
    """Sees each run that the program records in its list."""

    def __init__(self, folder):
        super().__init__(daemon=True)
        self.folder = folder
        self.seen = {}
        self.failure = None
        self.stopped = threading.Event()
        self.before = self.read()

    def read(self):
        return {task.name: task.last_run for task in self.folder.tasks()}

    def run(self):
        try:
            while not self.stopped.wait(0.2):
                latest = self.read()
                for name, moment in latest.items():
                    if moment != self.before[name]:
                        self.seen.setdefault(name, []).append(moment)
                self.before = latest
        except Exception as failure:  # raised in the main thread by stop()
            self.failure = failure

    def stop(self):
        self.stopped.set()
        self.join()
        if self.failure:
            raise self.failure


class Robot:
    """Uses the program as a user does all day."""

    def __init__(self, program, first):
        self.program = program
        self.first = first
        self.notes = []  # when each appeared

    def wait_for(self, minute, second):
        moment = self.first + timedelta(minutes=minute, seconds=second)
        while (left := (moment - datetime.now()).total_seconds()) > 0:
            assert self.program.code() is None, f"ended by itself with code {self.program.code()}"
            time.sleep(min(left, 0.5))

    def live(self, minute):
        """One minute; the samples are taken when it is over."""
        self.wait_for(minute, MUSIC_AT + 2)
        self.open_menu(lambda: click_at(self.program.toolbar_button("options")))
        self.dismiss_menu()
        self.wait_for(minute, RADIO_AT + 1)
        row = self.program.row(0)
        self.open_menu(lambda: click_at(row, button=3))
        if minute % 2:
            self.wait_for(minute, COMMAND_AT + 2)  # due while the menu is open
        self.dismiss_menu()
        is_away = minute % HIDDEN_EVERY == HIDDEN_EVERY - 1
        if is_away:
            self.wait_for(minute, COMMAND_AT + 2)
            self.program.hide()
            self.open_menu(lambda: click_tray_icon(3))
            # Nothing of the program has the keyboard now.
            self.dismiss_menu(lambda: click(*BESIDE))
        self.wait_for(minute, NOTE_AT)
        self.close_note()
        if is_away:
            self.program.show_again()
        # In the longest pause between two tasks: none runs while the editor is open.
        self.wait_for(minute, FAILURE_AT + 2)
        open_editor(self.program).close("close" if minute % 2 else "cancel")
        self.wait_for(minute, SAMPLE_AT)

    def open_menu(self, ask):
        def opens():
            ask()
            return happens(self.program.has_menu, 3)

        until(opens, "a menu", 20)

    def dismiss_menu(self, dismiss=lambda: press_key("Escape")):
        def is_gone():
            dismiss()
            return not self.program.has_menu()

        until(is_gone, "the end of the menu", 20)

    def close_note(self):
        until(self.program.notes, "the note", 20)
        self.notes.append(datetime.now())

        def is_closed():
            for note in self.program.notes():
                image, = (child for child in note["children"]
                          if child["class"] == "TellurvanePictureBox")
                click_at(image["rect"])
            return not self.program.notes()

        until(is_closed, "the note closed", 20)

    def sample(self):
        """The resources that the program holds while nothing happens."""
        proc = Path(f"/proc/{self.program.process.pid}")
        counts = json.loads(run("wine", BINARIES / "CountResources.exe",
                                self.program.folder.executable.name))
        return counts | {"memory": process_memory(proc)["own"] // 1024,
                         "files": len(os.listdir(proc / "fd")),
                         "threads": len(os.listdir(proc / "task"))}


def print_row(minute, *cells):
    print(f"{minute:>6}" + "".join(f"{cell:>16}" for cell in cells), flush=True)


def live(robot, minutes):
    """The samples of so many minutes."""
    samples = []
    print_row("minute", *UNITS.values())
    for minute in range(minutes):
        robot.live(minute)
        samples.append(robot.sample())
        print_row(minute + 1, *(samples[-1][name] for name in UNITS))
    return samples


def soak(folder, minutes):
    first = now() + timedelta(seconds=SECONDS_TO_START)
    plan = Plan(folder, first)
    player = FakeMediaControl(folder.path, WINDOWS)
    player.plays(plays=1)
    folder.write_settings(SETTINGS | {"TimeForm": "1"})
    program = Program(folder, environment=player.environment).started()
    assert now() < first, "the program took too long to start"
    watch = ListWatch(folder)
    watch.start()
    robot = Robot(program, first)
    samples = live(robot, minutes)
    end = now()
    watch.stop()
    assert program.exit() == 0, f"left with code {program.code()}"
    (folder.path.parent / "samples.json").write_text(json.dumps(samples, indent=1))
    return print_report(samples, outcomes(plan, watch, robot, player, end))


def outcomes(plan, watch, robot, player, end):
    """What each task did, by the list, by the started programs and by the player."""
    runs = {task.name: Runs(task.name, task.next_run, end, watch.seen.get(task.name, []))
            for task in plan.tasks if task.enabled}
    yield from runs.values()
    for name in ("command", "command-2"):
        yield Runs(f"{name} started", plan.first_due(name), end, plan.logged(name))
    yield Runs("note shown", plan.first_due("note"), end, robot.notes)
    addresses = [call.partition(" ")[2] for call in player.calls() if call.startswith("put_URL ")]
    yield Count("music played", runs["music"].due, addresses.count(plan.chime))
    yield Count("radio with tries", 2 * runs["radio"].due, addresses.count(NO_STREAM))
    yield Count("disabled", 0, len(plan.logged("disabled") + watch.seen.get("disabled", [])))
    pairs = list(zip(plan.logged("command"), plan.logged("command-2")))
    yield Count("in order", len(pairs), sum(first < second for first, second in pairs))


def main():
    path, minutes = Path(sys.argv[1]).resolve(), int(sys.argv[2])
    shutil.rmtree(path, ignore_errors=True)
    path.mkdir(parents=True)
    folder = Folder(path)
    register(FakeMediaControl.LIBRARY)
    try:
        is_good = soak(folder, minutes)
    except BaseException:
        screenshot(path / "failure.png")
        raise
    finally:
        end_all_in(folder)
    print("soak: passed" if is_good else "soak: FAILED")
    return 0 if is_good else 1


if __name__ == "__main__":
    sys.exit(main())
