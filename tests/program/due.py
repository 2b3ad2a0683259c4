"""A program with tasks that fall due soon after its start."""

from datetime import datetime, timedelta

from harness import end_all_in
from joblist import list_bytes, now, read_tasks

NEVER_RUN = datetime(2011, 2, 14, 12)


def start_with(folder, start, tasks_at, ahead=6):
    """Starts the program with the tasks for a moment so many seconds ahead, and returns it and that
    moment. Where the machine was so busy that the moment came before the window, the next try has
    more time."""
    existing = folder.names()
    for times in (1, 2, 4, 8):
        moment = now() + times * timedelta(seconds=ahead)
        folder.list.write_bytes(list_bytes(*tasks_at(moment)))
        program = start().started()
        if now() < moment:
            return program, moment
        program.kill()
        end_all_in(folder)
        for name in set(folder.names()) - {*existing, folder.list.name}:
            (folder.path / name).unlink()
    raise AssertionError("the program took too long to start")


def saved(folder):
    """The tasks of the list by their names."""
    return {task.name: task for task in read_tasks(folder.list.read_bytes())}


def has_run(folder, name):
    return saved(folder)[name].last_run != NEVER_RUN
