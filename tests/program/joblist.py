"""The task list as bytes, written and read without any help of the program."""

import datetime
import re
from dataclasses import dataclass
from datetime import timedelta

from harness import MARK

ZERO_DAY = datetime.datetime(1899, 12, 30)
MINUTES, HOURS, DAYS = 0, 1, 2
RADIO, MUSIC, APPLICATION, NOTE = 0, 1, 2, 3

_HALVES = "上午|下午|AM|PM"
_MOMENT = re.compile(
    rf"(?:(\d+)/(\d+)/(\d+))?\s*({_HALVES})?(?:\s*(\d+):(\d\d):(\d\d))?\s*({_HALVES})?")


def now():
    return datetime.datetime.now().replace(microsecond=0)


def serial(moment):
    """A moment as the number that every locale reads."""
    seconds = round((moment - ZERO_DAY).total_seconds())
    return f"{seconds / 86400:.8f}"


def moment_text(moment, locale):
    """A moment as the program writes it in one of the two locales of the tests."""
    taiwanese = locale == "zh_TW"
    date = (f"{moment.year}/{moment.month}/{moment.day}" if taiwanese
            else f"{moment.month}/{moment.day}/{moment.year}")
    if moment.time() == datetime.time():
        return date
    clock = f"{moment.hour % 12 or 12}:{moment:%M:%S}"
    morning = moment.hour < 12
    if taiwanese:
        return f"{date} {'上午' if morning else '下午'}{clock}"
    return f"{date} {clock} {'AM' if morning else 'PM'}"


def read_moment(text):
    """The moment of a text in either locale."""
    match = _MOMENT.fullmatch(text)
    assert match and text, f"no date: {text!r}"
    first, second, third, before, hour, minute, seconds, behind = match.groups()
    moment = ZERO_DAY
    if first:
        numbers = [int(first), int(second), int(third)]
        year, month, day = numbers if len(first) == 4 else (numbers[2], numbers[0], numbers[1])
        moment = datetime.datetime(year, month, day)
    if hour:
        afternoon = (before or behind) in ("下午", "PM")
        moment += timedelta(hours=int(hour) % 12 + 12 * afternoon, minutes=int(minute),
                            seconds=int(seconds))
    return moment


@dataclass
class Task:
    """One line of the list."""

    name: str
    source: str = "text"
    next_run: datetime.datetime = None
    last_run: datetime.datetime = ZERO_DAY
    unit: int = DAYS
    interval: int = 1
    enabled: bool = True
    media_type: int = NOTE

    def line(self):
        next_run = self.next_run or now() + timedelta(hours=5)
        return (f"{self.unit}|{self.interval}|{int(self.enabled)}|{self.media_type}\t{self.name}\t"
                f"{self.source}\t{serial(self.last_run)}\t{serial(next_run)}\r\n")


def utf16(text):
    return MARK + text.encode("utf-16-le")


def list_bytes(*tasks):
    return utf16("".join(task.line() for task in tasks))


def read_text(data):
    """The tasks in the bytes of a list, which has to be whole and well formed."""
    assert data[:2] == MARK and len(data) % 2 == 0, data[:80]
    text = data[2:].decode("utf-16-le")
    assert text == "" or text.endswith("\r\n"), f"cut off: {text[-80:]!r}"
    return text.split("\r\n")[:-1]


def read_tasks(data):
    tasks = []
    for line in read_text(data):
        compound, name, source, last_run, next_run = line.split("\t")
        unit, interval, enabled, media_type = map(int, compound.split("|"))
        tasks.append(Task(name, source, read_moment(next_run), read_moment(last_run), unit,
                          interval, bool(enabled), media_type))
    return tasks
