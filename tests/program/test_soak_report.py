"""Growth, missed runs and double runs in the report of a soak."""

from datetime import datetime, timedelta

import pytest

from soak_report import UNITS, Count, Growth, Runs, print_report

NOON = datetime(2011, 2, 14, 12)
END = NOON + timedelta(minutes=3)
EACH = (0, 60, 120, 180)
SAMPLE = {"memory": 20_000, "files": 15, "kernel": 40, "gdi": 360, "windows": 36, "threads": 1}


def at(*seconds):
    return [NOON + timedelta(seconds=second) for second in seconds]


@pytest.mark.parametrize("ran, missed, doubled, undue, is_good", [
    (EACH, 0, 0, 0, True),
    ((1, 61, 122, 180), 0, 0, 0, True),
    ((0, 60, 180), 1, 0, 0, False),
    ((0, 60, 60, 120, 180), 0, 1, 0, False),
    ((0, 60, 75, 180), 1, 1, 0, False),
    ((-1, *EACH), 0, 0, 1, False),
    ((*EACH, 240), 0, 0, 1, False),
    ((0, 60, 131, 180), 0, 0, 0, False),
])
def test_each_due_moment_wants_one_run_in_time(ran, missed, doubled, undue, is_good):
    runs = Runs("task", NOON, END, at(*ran))
    assert (runs.due, runs.missed, runs.doubled, runs.undue, runs.is_good) == (
        4, missed, doubled, undue, is_good)


def test_without_a_due_moment_any_run_is_undue():
    runs = Runs("task", END, NOON, at(1))
    assert (runs.due, runs.undue, runs.is_good) == (0, 1, False)


@pytest.mark.parametrize("samples, is_good", [
    ([40] * 45, True),
    ([*range(0, 200, 20), *[200] * 35], True),  # the warm-up
    ([*[40] * 44, 90], True),  # one odd sample
    (range(45), False),  # one a minute
    ([minute // 3 for minute in range(45)], False),  # one every third minute
])
def test_growth_is_what_goes_on_after_the_warm_up(samples, is_good):
    assert Growth("kernel", list(samples)).is_good == is_good


@pytest.mark.parametrize("name", UNITS)
def test_one_figure_that_grows_is_enough(name):
    steady = [SAMPLE] * 45
    rising = [SAMPLE | {name: SAMPLE[name] + 100 * minute} for minute in range(45)]
    assert print_report(steady, [])
    assert not print_report(rising, [])


def test_one_task_that_went_wrong_is_enough():
    good, bad = Count("task", 3, 3), Count("task", 3, 4)
    assert print_report([SAMPLE] * 45, [good, Runs("task", NOON, END, at(*EACH))])
    assert not print_report([SAMPLE] * 45, [good, bad])
