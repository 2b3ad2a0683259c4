"""JobList.dbs as the scripts see it: enough to seed a list and to see tasks run."""

import datetime
import re
from pathlib import Path

MARK = b"\xff\xfe"
NEVER = datetime.datetime(1899, 12, 30)


class Task:
    """One line of the list."""

    def __init__(self, line):
        compound, self.name, self.source, last_run, next_run = line.split("\t")[:5]
        unit, interval, enabled, media_type = compound.split("|")
        self.unit, self.interval, self.media_type = int(unit), int(interval), int(media_type)
        self.enabled = enabled == "1"
        self.last_run, self.next_run = read_moment(last_run), read_moment(next_run)


def read_moment(text):
    """A moment as the program writes it under zh-TW, e.g. 2026/11/21 下午1:05:09."""
    match = re.fullmatch(
        r"(?:(\d+)/(\d+)/(\d+))?\s*(?:(上午|下午)\s*(\d+):(\d+):(\d+))?", text.strip())
    if not match or not text.strip():
        return NEVER
    year, month, day, half, hour, minute, second = match.groups()
    moment = datetime.datetime(int(year), int(month), int(day)) if year else NEVER
    if half:
        moment += datetime.timedelta(
            hours=int(hour) % 12 + (12 if half == "下午" else 0),
            minutes=int(minute), seconds=int(second))
    return moment


def read(path: Path):
    """The tasks in the file; none when it is not there."""
    try:
        data = path.read_bytes()
    except FileNotFoundError:
        return []
    text = data.removeprefix(MARK).decode("utf-16-le")
    return [Task(line) for line in text.split("\r\n") if line]


def write(path: Path, lines):
    """Lines as tuples: unit, interval, enabled, media type, name, source, next run."""
    text = "".join(
        f"{unit}|{interval}|{int(enabled)}|{media_type}\t{name}\t{source}\t\t"
        f"{next_run:%Y/%m/%d %H:%M:%S}\r\n"
        for unit, interval, enabled, media_type, name, source, next_run in lines)
    path.write_bytes(MARK + text.encode("utf-16-le"))
