"""What becomes of JobList.dbs when the program starts."""

import random
from datetime import datetime, timedelta

import pytest

from harness import LOCALE, MARK, until
from joblist import (DAYS, HOURS, MINUTES, Task, list_bytes, moment_text, now, read_tasks,
                     read_text, serial, utf16)

LIMIT = 4_194_304
NOON = datetime(2011, 2, 14, 12)


def names(data):
    return [task.name for task in read_tasks(data)]


def loaded(folder, start):
    """The bytes of the list after a start."""
    start().started()
    return folder.list.read_bytes()


def test_an_absent_list_becomes_the_mark_alone(folder, start):
    assert loaded(folder, start) == MARK
    assert folder.backups() == []


@pytest.mark.parametrize("missing", [0, 1], ids=["the limit", "one byte less"])
def test_a_list_of_the_size_limit_is_not_read(folder, start, missing):
    # In ANSI, so that every size is possible; the padding is blanks, which the rewrite drops.
    head, tail = b"0|30|1|3\tname\t", f"\t0\t{serial(now() + timedelta(days=1))}\r\n".encode()
    data = head + b" " * (LIMIT - missing - len(head) - len(tail)) + tail
    folder.list.write_bytes(data)
    after = loaded(folder, start)
    if missing:
        assert names(after) == ["name"]
        assert folder.backups() == []
    else:
        assert after == MARK
        assert [path.read_bytes() for path in folder.backups()] == [data]


def test_half_a_unit_at_the_end_loads_nothing_and_is_kept(folder, start):
    data = list_bytes(Task("一")) + b"x"
    folder.list.write_bytes(data)
    assert loaded(folder, start) == MARK
    assert [path.read_bytes() for path in folder.backups()] == [data]


def test_a_list_that_cannot_be_opened_is_loaded_once_it_can_be(folder, start):
    # A folder of the list's name can be neither opened nor copied. The link is exchanged in one step.
    folder.list.symlink_to(folder.path.parent, target_is_directory=True)
    start().started()
    assert folder.list.is_symlink()
    assert folder.backups() == []
    data = list_bytes(Task("一"), Task("二"))
    beside = folder.path / "beside"
    beside.write_bytes(data)
    beside.replace(folder.list)
    # Written back with dates as the program writes them.
    until(lambda: folder.list.read_bytes() != data, "the list that was loaded")
    assert names(folder.list.read_bytes()) == ["一", "二"]
    assert folder.backups() == []


def test_a_list_in_the_users_code_page_is_rewritten_as_utf16(folder, start):
    data = list_bytes(Task("音樂", "C:\\音樂\\a.mp3"))[2:].decode("utf-16-le").encode("big5")
    folder.list.write_bytes(data)
    task, = read_tasks(loaded(folder, start))
    western = "音樂".encode("big5").decode("cp1252")
    assert task.name == ("音樂" if LOCALE == "zh_TW" else western)
    assert folder.backups() == []


def test_an_empty_line_ends_the_list_and_the_rest_is_kept_in_a_backup(folder, start):
    data = utf16(Task("一").line() + "\r\n" + Task("二").line())
    folder.list.write_bytes(data)
    assert names(loaded(folder, start)) == ["一"]
    assert [path.read_bytes() for path in folder.backups()] == [data]


def test_a_malformed_line_is_kept_in_a_backup_and_the_others_stay(folder, start):
    data = utf16(Task("一").line() + "0|30|1|3\tno dates\r\n" + "x|1|1|3\tn\ts\t0\t0\r\n" +
                 Task("二").line())
    folder.list.write_bytes(data)
    assert names(loaded(folder, start)) == ["一", "二"]
    assert [path.read_bytes() for path in folder.backups()] == [data]


def test_a_number_is_a_date_and_is_rewritten_in_the_users_locale(folder, start):
    next_run = (now() + timedelta(days=2)).replace(hour=9, minute=5, second=7)
    folder.list.write_bytes(utf16(f"2|1|1|3\tname\ttext\t40588.5\t{serial(next_run)}\r\n"))
    line, = read_text(loaded(folder, start))
    expected = "2011/2/14 下午12:00:00" if LOCALE == "zh_TW" else "2/14/2011 12:00:00 PM"
    assert line == f"2|1|1|3\tname\ttext\t{expected}\t{moment_text(next_run, LOCALE)}"


@pytest.mark.parametrize("unit, interval, step", [
    (MINUTES, 7, timedelta(minutes=7)), (HOURS, 2, timedelta(hours=2)),
    (DAYS, 1, timedelta(days=1)),
], ids=["minutes", "hours", "days"])
def test_a_past_next_run_moves_to_the_first_step_that_is_not_past(folder, start, unit, interval,
                                                                  step):
    past = now().replace(minute=17, second=43) - timedelta(days=10)
    folder.list.write_bytes(list_bytes(Task("過去", next_run=past, last_run=NOON, unit=unit,
                                            interval=interval)))
    before = now()
    task, = read_tasks(loaded(folder, start))
    after = now()
    assert (task.next_run - past) % step == timedelta(0), "the phase is kept"
    assert before <= task.next_run < after + step
    assert task.last_run == NOON, "it was not run"


def test_a_list_keeps_its_moments_from_locale_to_locale_and_back(folder, start):
    other = "en_US" if LOCALE == "zh_TW" else "zh_TW"
    shuffled = random.Random(7)
    tasks = [Task(f"第{i}項", last_run=NOON + timedelta(seconds=shuffled.randrange(10**9)),
                  next_run=now() + timedelta(days=1, seconds=shuffled.randrange(10**8)))
             for i in range(40)]
    # Ambiguous days, noon, midnight, the zero day.
    tasks[0].last_run = datetime(2011, 2, 3, 4, 5, 6)
    tasks[1].last_run = datetime(2012, 12, 11, 0, 0, 0)
    tasks[2].last_run = datetime(1899, 12, 30)
    folder.list.write_bytes(list_bytes(*tasks))

    texts = {}
    for locale in (LOCALE, other, LOCALE):
        assert start(locale=locale).started().exit() == 0
        data = folder.list.read_bytes()
        assert read_tasks(data) == tasks
        texts[locale] = read_text(data)[0]
    assert texts[LOCALE] != texts[other], "the other locale writes other text"
    assert moment_text(tasks[0].last_run, other) in texts[other]
    assert folder.backups() == []


def test_a_kill_at_any_moment_of_the_start_leaves_the_list_whole(folder, start):
    tasks = [Task(f"第{i}項", "文字" * 20, now() + timedelta(hours=5)) for i in range(100)]
    folder.list.write_bytes(list_bytes(*tasks))
    assert start().started().exit() == 0
    for milliseconds in range(100, 900, 100):
        program = start()
        until(lambda: program.age() * 1_000 >= milliseconds, "the moment of the kill")
        program.kill()
        assert read_tasks(folder.list.read_bytes()) == tasks
    assert start().started().exit() == 0
    assert read_tasks(folder.list.read_bytes()) == tasks
    assert folder.backups() == []
    assert not (folder.path / "JobList.dbs.tmp").exists()
