"""JobList.dbs read and written without the program's help."""

import datetime
import re
from dataclasses import dataclass
from datetime import timedelta

MARK = b"\xff\xfe"
ZERO_DAY = datetime.datetime(1899, 12, 30)
MINUTES, HOURS, DAYS = 0, 1, 2
RADIO, MUSIC, APPLICATION, NOTE = 0, 1, 2, 3

_HALVES = "上午|下午|AM|PM"
_MOMENT = re.compile(
    rf"(?:(\d+)/(\d+)/(\d+))?\s*({_HALVES})?(?:\s*(\d+):(\d\d):(\d\d))?\s*({_HALVES})?")


def now():
    return datetime.datetime.now().replace(microsecond=0)


def serial(moment):
    """A moment as a number, which the program reads in every locale."""
    seconds = round((moment - ZERO_DAY).total_seconds())
    return f"{seconds / 86400:.8f}"


def moment_text(moment, locale):
    """A moment as the program writes it under zh_TW or en_US."""
    is_taiwanese = locale == "zh_TW"
    date = (f"{moment.year}/{moment.month}/{moment.day}" if is_taiwanese
            else f"{moment.month}/{moment.day}/{moment.year}")
    if moment.time() == datetime.time():
        return date
    clock = f"{moment.hour % 12 or 12}:{moment:%M:%S}"
    is_morning = moment.hour < 12
    if is_taiwanese:
        return f"{date} {'上午' if is_morning else '下午'}{clock}"
    return f"{date} {clock} {'AM' if is_morning else 'PM'}"


def read_moment(text):
    """The moment of a text in either locale."""
    match = _MOMENT.fullmatch(text)
    assert match and text, f"no date: {text!r}"
    first, second, third, prefix, hour, minute, seconds, suffix = match.groups()
    moment = ZERO_DAY
    if first:
        numbers = [int(first), int(second), int(third)]
        year, month, day = numbers if len(first) == 4 else (numbers[2], numbers[0], numbers[1])
        moment = datetime.datetime(year, month, day)
    if hour:
        is_afternoon = (prefix or suffix) in ("下午", "PM")
        moment += timedelta(hours=int(hour) % 12 + 12 * is_afternoon, minutes=int(minute),
                            seconds=int(seconds))
    return moment


@dataclass
class Task:
    """One line of the list. Without a next run the task is due in five hours."""

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


def read_lines(data):
    """The lines of a list, which must be complete and well formed."""
    assert data[:2] == MARK and len(data) % 2 == 0, data[:80]
    text = data[2:].decode("utf-16-le")
    assert text == "" or text.endswith("\r\n"), f"cut off: {text[-80:]!r}"
    return text.split("\r\n")[:-1]


def read_tasks(data):
    tasks = []
    for line in read_lines(data):
        compound, name, source, last_run, next_run = line.split("\t")
        unit, interval, enabled, media_type = map(int, compound.split("|"))
        tasks.append(Task(name, source, read_moment(next_run), read_moment(last_run), unit,
                          interval, bool(enabled), media_type))
    return tasks
