"""The clock is set, or has gone on during a sleep, while the program runs."""

import signal
from datetime import timedelta

import pytest

from desktop import picture, press_key, until, windows_path
from due import NEVER_RUN, due_task
from shifted_clock import ShiftedClock
from task_list import DAYS, HOURS, MINUTES, NOTE, now

STEPS = {MINUTES: timedelta(minutes=1), HOURS: timedelta(hours=1), DAYS: timedelta(days=1)}
A_TICK_LATE = timedelta(seconds=3)  # the timer's second, and the time that the starts take


class Day:
    """The running program, its clock, and tasks that log when they are started."""

    def __init__(self, folder, start):
        self.folder, self._start = folder, start
        self.clock = ShiftedClock(folder.path.parent)
        self.begun = now()
        self.log = folder.path / "runs.log"
        self.logger = windows_path(folder.add("RunLog.exe"))
        self.tasks = []

    def add(self, name, after, unit, interval, **facts):
        """A task that is due some time after the beginning."""
        source = facts.pop("source", f'"{self.logger}" "{windows_path(self.log)}" {name}')
        self.tasks.append(due_task(name, source, self.begun + after, unit=unit, interval=interval,
                                   **facts))

    def opens(self):
        self.folder.write_list(*self.tasks)
        self.program = self._start(environment=self.clock.environment).started()
        self.strip = self.program.parts()["strip"]
        assert self.saved() == {task.name: task for task in self.tasks}, "nothing is due yet"

    def saved(self):
        """The tasks of the file by their names."""
        return {task.name: task for task in self.folder.tasks()}

    def logged(self):
        """The names of the started programs in their order. The second of two may write first, and
        their moments may or may not be shifted, by which process was the first to start Wine."""
        lines = self.log.read_text("ascii").splitlines() if self.log.exists() else []
        return [name for name, _ in sorted((line.split("\t") for line in lines),
                                           key=lambda line: line[1])]

    def has_logged(self, *names, since):
        """Waits for the last one's start and its record. There are no others."""
        until(lambda: len(self.logged()) >= len(names), f"the start of {names[-1]}", 20)
        until(lambda: self.saved()[names[-1]].last_run >= since, "the record of the run", 20)
        assert sorted(self.logged()) == sorted(names)

    def ticks(self):
        """Waits for some ticks: each second the strip looks different."""
        looks = set()
        until(lambda: looks.add(picture(self.strip).tobytes()) or len(looks) == 4, "three seconds")


@pytest.fixture
def day(folder, start):
    return Day(folder, start)


def first_after(task, moment):
    """The first of a task's moments that comes after another moment."""
    step = task.interval * STEPS[task.unit]
    steps = (moment - task.next_run) // step + 1
    return task.next_run + steps * step


def sets(day, moment):
    """By hand, or by daylight saving."""
    day.clock.goes_to(moment)


def sleeps(day, moment):
    """Nothing of the program runs before the clock has gone on."""
    day.program.process.send_signal(signal.SIGSTOP)
    day.clock.goes_to(moment)
    day.program.process.send_signal(signal.SIGCONT)


@pytest.mark.flaky(reruns=0)  # it makes no input
@pytest.mark.parametrize("goes_on, gap", [(sets, timedelta(hours=1)), (sleeps, timedelta(days=1))],
                         ids=["set forward by an hour", "asleep for a day"])
def test_what_fell_due_in_a_gap_runs_once_and_in_the_order_of_the_list(day, goes_on, gap):
    day.add("second-due", timedelta(minutes=22), MINUTES, 5)
    day.add("first-due", timedelta(minutes=10), HOURS, 1)
    day.add("disabled", timedelta(minutes=15), MINUTES, 7, enabled=False)
    day.add("note", timedelta(minutes=5), MINUTES, 25, media_type=NOTE, source="起來走一走")
    day.add("daily", timedelta(minutes=30), DAYS, 1)
    day.add("ahead", gap + timedelta(hours=1), DAYS, 1)
    day.add("after", gap + timedelta(seconds=6), HOURS, 3)
    day.opens()
    overdue = ["second-due", "first-due", "note", "daily"]

    woken = day.begun + gap
    goes_on(day, woken)
    # The last one is due a few ticks later: nothing else has been started again by then.
    day.has_logged("second-due", "first-due", "daily", "after", since=woken)
    assert day.logged() == ["second-due", "first-due", "daily", "after"]
    assert len(day.program.notes()) == 1

    saved = day.saved()
    assert list(saved) == [task.name for task in day.tasks]
    for task in day.tasks:
        record = saved[task.name]
        if task.name in overdue:
            assert woken <= record.last_run <= woken + A_TICK_LATE, task.name
            assert record.next_run == first_after(task, record.last_run), task.name
    assert saved["disabled"].last_run == saved["ahead"].last_run == NEVER_RUN
    disabled, ahead, after = (task for task in day.tasks if task.name not in overdue)
    assert saved["disabled"].next_run == first_after(disabled, woken)
    assert saved["ahead"] == ahead
    assert after.next_run <= saved["after"].last_run <= after.next_run + A_TICK_LATE
    assert saved["after"].next_run == after.next_run + timedelta(hours=3)


def test_when_the_clock_goes_back_nothing_runs_again_before_its_next_run(day):
    day.add("hourly", timedelta(minutes=5), HOURS, 1)
    day.add("other", timedelta(minutes=65), MINUTES, 30)
    day.opens()
    hourly, other = day.tasks
    day.clock.goes_to(hourly.next_run - timedelta(seconds=1))
    day.has_logged("hourly", since=hourly.next_run)
    run = day.saved()

    written = day.folder.list.stat().st_mtime_ns
    back = hourly.next_run - timedelta(hours=1)
    day.clock.goes_to(back)
    day.ticks()
    assert day.logged() == ["hourly"]
    assert day.folder.list.stat().st_mtime_ns == written, "nothing is recorded either"

    # By hand it runs all the same, at the moment that the clock shows; the next run stays.
    day.program.click(day.program.row(1))
    press_key("Return")
    day.has_logged("hourly", "other", since=back)
    record = day.saved()["other"]
    assert back <= record.last_run <= day.clock.now()
    assert record.next_run == other.next_run
    assert day.saved()["hourly"] == run["hourly"]

    # Both are due at one moment now.
    day.clock.goes_to(other.next_run - timedelta(seconds=2))
    day.has_logged("hourly", "other", "hourly", "other", since=other.next_run)
    for task in (hourly, other):
        record = day.saved()[task.name]
        assert other.next_run <= record.last_run <= other.next_run + A_TICK_LATE
        assert record.next_run == first_after(task, other.next_run)
