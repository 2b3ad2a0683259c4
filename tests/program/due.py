"""Tasks that fall due soon after the start, and programs that report their start."""

from datetime import datetime, timedelta

from desktop import until, windows_path
from harness import end_all_in
from task_list import APPLICATION, MINUTES, Task, now

NEVER_RUN = datetime(2011, 2, 14, 12)
FIVE_MINUTES = timedelta(minutes=5)


class Reports:
    """What StartReporter.exe reports of its own start, in the program's folder or another place."""

    def __init__(self, folder, place=None):
        self.folder = place or folder.path
        self.executable = folder.add("StartReporter.exe").rename(self.folder / "probe.exe")

    def command(self, name, arguments=""):
        return (f'"{windows_path(self.executable)}" "{windows_path(self.folder / name)}"'
                f"{arguments}")

    def task(self, name, moment=None, arguments="", **facts):
        """An application task that makes the report of its own name."""
        return due_task(name, self.command(name, arguments), moment, **facts)

    def exists(self, name):
        return (self.folder / name).exists()

    def read(self, name):
        """The facts of a report, once it is there."""
        until(lambda: self.exists(name), f"the report {name}")
        lines = (self.folder / name).read_text("utf-8").splitlines()
        return [tuple(line.split("=", 1)) for line in lines]

    def started_at(self, name):
        """The local moment at which the process was created."""
        return datetime.fromtimestamp(float(dict(self.read(name))["created"]))


def due_task(name, source, moment=None, **facts):
    facts = {"last_run": NEVER_RUN, "unit": MINUTES, "interval": 5,
             "media_type": APPLICATION} | facts
    return Task(name, source, moment, **facts)


def start_with(folder, start, tasks_at, ahead=6):
    """Starts the program with the tasks for a moment some seconds ahead, and returns it and that
    moment. On a busy machine the moment may come before the window; the next try has more time."""
    existing = folder.names()
    for times in (1, 2, 4, 8):
        moment = now() + times * timedelta(seconds=ahead)
        folder.write_list(*tasks_at(moment))
        program = start().started()
        if now() < moment:
            return program, moment
        program.kill()
        end_all_in(folder)
        for name in set(folder.names()) - {*existing, folder.list.name}:
            (folder.path / name).unlink()
    raise AssertionError("the program took too long to start")


def has_run(folder, name):
    return folder.task(name).last_run != NEVER_RUN


def check_record(folder, name, moment, latest=timedelta(seconds=2)):
    """Waits until a run is recorded; it began at the moment and is due again in five minutes."""
    until(lambda: has_run(folder, name), f"the record of {name}")
    record = folder.task(name)
    assert moment <= record.last_run <= moment + latest, name
    assert record.next_run == moment + FIVE_MINUTES, name
