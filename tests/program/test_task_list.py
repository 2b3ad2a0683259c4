"""JobList.dbs after the program has started."""

import random
from datetime import datetime, timedelta

import pytest

from desktop import LOCALE, until
from task_list import (MARK, Task, list_bytes, moment_text, now, read_lines, read_tasks, serial,
                       utf16)

LIMIT = 4_194_304
NOON = datetime(2011, 2, 14, 12)


def loaded(folder, start):
    """The bytes of the list after a start."""
    start().started()
    return folder.list.read_bytes()


ONE = list_bytes(Task("一"))
TWO_LINES = Task("一").line(), Task("二").line()


# Its names after the start, and whether a backup holds the bytes of before.
@pytest.mark.parametrize("data, names, is_kept", [
    (None, [], False),
    (ONE + b"x", [], True),
    (utf16("\r\n".join(TWO_LINES)), ["一"], True),
    (utf16("0|30|1|3\tno dates\r\nx|1|1|3\tn\ts\t0\t0\r\n".join(TWO_LINES)), ["一", "二"], True),
], ids=["absent", "half a unit at the end", "an empty line", "malformed lines"])
def test_a_damaged_list_is_loaded_as_far_as_possible(folder, start, data, names, is_kept):
    if data is not None:
        folder.list.write_bytes(data)
    after = loaded(folder, start)
    assert [task.name for task in read_tasks(after)] == names
    assert names or after == MARK
    assert [path.read_bytes() for path in folder.backups()] == [data] * is_kept


@pytest.mark.parametrize("missing", [0, 1], ids=["the limit", "one byte less"])
def test_a_list_of_the_size_limit_is_not_read(folder, start, missing):
    # In ANSI, so that every size is possible, padded with blanks, which the rewrite drops.
    head, tail = b"0|30|1|3\tname\t", f"\t0\t{serial(now() + timedelta(days=1))}\r\n".encode()
    data = head + b" " * (LIMIT - missing - len(head) - len(tail)) + tail
    folder.list.write_bytes(data)
    after = loaded(folder, start)
    if missing:
        assert folder.task_names() == ["name"]
        assert folder.backups() == []
    else:
        assert after == MARK
        assert [path.read_bytes() for path in folder.backups()] == [data]


def test_a_list_that_cannot_be_opened_is_loaded_once_it_can_be(folder, start):
    # A folder of the list's name cannot be opened. The link is replaced in one step.
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
    assert folder.task_names() == ["一", "二"]
    assert folder.backups() == []


def test_a_list_in_the_users_code_page_is_rewritten_as_utf16(folder, start):
    data = list_bytes(Task("音樂", "C:\\音樂\\a.mp3"))[2:].decode("utf-16-le").encode("big5")
    folder.list.write_bytes(data)
    task, = read_tasks(loaded(folder, start))
    western = "音樂".encode("big5").decode("cp1252")
    assert task.name == ("音樂" if LOCALE == "zh_TW" else western)
    assert folder.backups() == []


def test_a_number_is_a_date_and_is_rewritten_in_the_users_locale(folder, start):
    next_run = (now() + timedelta(days=2)).replace(hour=9, minute=5, second=7)
    folder.list.write_bytes(utf16(f"2|1|1|3\tname\ttext\t40588.5\t{serial(next_run)}\r\n"))
    line, = read_lines(loaded(folder, start))
    expected = "2011/2/14 下午12:00:00" if LOCALE == "zh_TW" else "2/14/2011 12:00:00 PM"
    assert line == f"2|1|1|3\tname\ttext\t{expected}\t{moment_text(next_run, LOCALE)}"


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
    folder.write_list(*tasks)

    texts = {}
    for locale in (LOCALE, other, LOCALE):
        assert start(locale=locale).started().exit() == 0
        data = folder.list.read_bytes()
        assert read_tasks(data) == tasks
        texts[locale] = read_lines(data)[0]
    assert texts[LOCALE] != texts[other], "the other locale writes other text"
    assert moment_text(tasks[0].last_run, other) in texts[other]
    assert folder.backups() == []


def test_a_kill_at_any_moment_of_the_start_leaves_the_list_whole(folder, start):
    tasks = [Task(f"第{i}項", "文字" * 20, now() + timedelta(hours=5)) for i in range(100)]
    folder.write_list(*tasks)
    assert start().started().exit() == 0
    for milliseconds in range(100, 900, 100):
        program = start()
        until(lambda: program.age() * 1_000 >= milliseconds, "the moment of the kill")
        program.kill()
        assert folder.tasks() == tasks
    assert start().started().exit() == 0
    assert folder.tasks() == tasks
    assert folder.backups() == []
    assert not (folder.path / "JobList.dbs.tmp").exists()
