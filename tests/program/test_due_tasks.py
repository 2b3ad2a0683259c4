"""Tasks that fall due while the program runs."""

from datetime import datetime, timedelta

from due import NEVER_RUN, has_run, saved, start_with
from harness import until, windows_path
from joblist import APPLICATION, MINUTES, Task, read_tasks


class Probes:
    """Programs that report how they were started."""

    def __init__(self, folder):
        self.folder = folder
        self.executable = folder.add("CommandProbe.exe", "探針 probe.exe")

    def command(self, name, arguments=""):
        return (f'"{windows_path(self.executable)}" "{windows_path(self.folder.path / name)}"'
                f"{arguments}")

    def has_reported(self, name):
        return (self.folder.path / name).exists()

    def report(self, name):
        """The facts of a probe's report, once it is there."""
        path = self.folder.path / name
        until(path.exists, f"the report {name}")
        lines = path.read_text("utf-8").splitlines()
        return [tuple(line.split("=", 1)) for line in lines]


def task(name, source, moment, **facts):
    return Task(name, source, moment, NEVER_RUN, MINUTES, 5, media_type=APPLICATION, **facts)


def started_at(report):
    """The local moment at which the process was created."""
    return datetime.fromtimestamp(float(dict(report)["created"]))


def test_two_due_tasks_start_in_list_order_within_two_seconds(folder, start):
    probes = Probes(folder)
    _, moment = start_with(folder, start, lambda moment: [
        task("一", probes.command("first"), moment), task("二", probes.command("second"), moment)])
    first, second = (started_at(probes.report(name)) for name in ("first", "second"))
    assert moment <= first < second <= moment + timedelta(seconds=2)

    until(lambda: has_run(folder, "二"), "the record of the run")
    for name in ("一", "二"):
        record = saved(folder)[name]
        assert moment <= record.last_run <= moment + timedelta(seconds=2)
        assert record.next_run == moment + timedelta(minutes=5)


def test_a_disabled_due_task_is_only_moved(folder, start):
    probes = Probes(folder)
    _, moment = start_with(folder, start, lambda moment: [
        task("停用", probes.command("disabled"), moment, enabled=False),
        task("啟用", probes.command("enabled"), moment)])
    probes.report("enabled")
    until(lambda: has_run(folder, "啟用"), "the record of the run")
    record = saved(folder)["停用"]
    assert record.next_run == moment + timedelta(minutes=5)
    assert record.last_run == NEVER_RUN
    assert not record.enabled
    assert not probes.has_reported("disabled")


def test_a_task_that_was_missed_is_moved_and_not_run_late(folder, start):
    probes = Probes(folder)
    missed_by = timedelta(minutes=7)
    _, moment = start_with(folder, start, lambda moment: [
        task("錯過", probes.command("missed"), moment - missed_by),
        task("到期", probes.command("due"), moment)])
    probes.report("due")
    until(lambda: has_run(folder, "到期"), "the record of the run")
    record = saved(folder)["錯過"]
    assert record.next_run == moment - missed_by + timedelta(minutes=10)
    assert record.last_run == NEVER_RUN
    assert not probes.has_reported("missed")


def test_a_command_gets_its_arguments_chinese_and_quoted_ones_included(folder, start):
    probes = Probes(folder)
    command = probes.command("report", ' 播放 "兩個 字" a\\b 100%')
    start_with(folder, start, lambda moment: [task("命令", command, moment)])
    report = probes.report("report")
    assert ("command", command) in report
    assert [value for key, value in report if key == "argument"] == [
        "播放", "兩個 字", "a\\b", "100%"]
    # It starts visibly, in the program's own folder.
    assert ("show", "5") in report
    assert ("folder", windows_path(folder.path)) in report


def test_a_document_starts_nothing_and_the_run_is_recorded(folder, start):
    probes = Probes(folder)
    document = folder.path / "文件.txt"
    document.write_text("text")
    program, moment = start_with(folder, start, lambda moment: [
        task("文件", windows_path(document), moment),
        task("不存在", windows_path(folder.path / "none.exe"), moment),
        task("最後", probes.command("last"), moment)])
    probes.report("last")
    until(lambda: has_run(folder, "最後"), "the record of the run")
    for name in ("文件", "不存在"):
        record = saved(folder)[name]
        assert moment <= record.last_run <= moment + timedelta(seconds=3)
        assert record.next_run == moment + timedelta(minutes=5)
    # Neither an editor for the document nor a message for the user.
    assert [window["text"] for window in program.windows()] == ["Tellurvane"]


def test_what_a_console_program_writes_goes_nowhere_and_harms_nobody(folder, start):
    probes = Probes(folder)
    program, _ = start_with(folder, start, lambda moment: [
        task("話多", probes.command("noisy", " write=1000000"), moment),
        task("之後", probes.command("after"), moment + timedelta(seconds=2))])
    noisy = probes.report("noisy")
    assert ("output", "pipe") in noisy and ("error", "pipe") in noisy
    assert dict(noisy)["write"].startswith("refused")
    probes.report("after")
    assert program.exit() == 0


def test_a_kill_while_tasks_run_leaves_the_list_whole(folder, start):
    probes = Probes(folder)
    names = [f"第{i}項" for i in range(10)]
    for _ in range(3):
        program, _ = start_with(folder, start, lambda moment: [
            task(name, probes.command(name), moment) for name in names])
        # There are ten saves in a row now.
        until(lambda: has_run(folder, names[0]), "the first save of the runs")
        program.kill()
        assert [record.name for record in read_tasks(folder.list.read_bytes())] == names
    assert start().started().exit() == 0
    assert len(read_tasks(folder.list.read_bytes())) == 10
