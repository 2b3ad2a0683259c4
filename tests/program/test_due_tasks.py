"""Tasks that fall due while the program runs."""

from datetime import timedelta

from desktop import until, windows_path
from due import FIVE_MINUTES, NEVER_RUN, Reports, check_record, due_task, has_run, start_with

TWO_SECONDS = timedelta(seconds=2)


def test_due_tasks_run_in_list_order_and_disabled_and_missed_ones_are_only_moved(folder, start):
    reports = Reports(folder)
    missed_by = timedelta(minutes=7)
    _, moment = start_with(folder, start, lambda moment: [
        reports.task("missed", moment - missed_by),
        reports.task("disabled", moment, enabled=False),
        reports.task("first", moment), reports.task("second", moment)])
    first, second = (reports.started_at(name) for name in ("first", "second"))
    assert moment <= first < second <= moment + TWO_SECONDS
    check_record(folder, "first", moment)
    check_record(folder, "second", moment)
    for name, next_run in (("missed", moment - missed_by + 2 * FIVE_MINUTES),
                           ("disabled", moment + FIVE_MINUTES)):
        record = folder.task(name)
        assert (record.last_run, record.next_run) == (NEVER_RUN, next_run), name
        assert record.enabled == (name == "missed")
        assert not reports.exists(name)


def test_commands_get_their_arguments_and_failing_ones_are_recorded(folder, start):
    reports = Reports(folder)
    document = folder.path / "文件.txt"
    document.write_text("text")
    arguments = ' 播放 "兩個 字" a\\b 100%'
    program, moment = start_with(folder, start, lambda moment: [
        due_task("document", windows_path(document), moment),
        due_task("nowhere", windows_path(folder.path / "none.exe"), moment),
        reports.task("noisy", moment, " write=1000000"),
        reports.task("arguments", moment, arguments)])
    for name in ("document", "nowhere", "noisy", "arguments"):
        check_record(folder, name, moment, timedelta(seconds=3))
    # Neither an editor for the document nor a message for the user.
    assert [window["text"] for window in program.windows()] == ["Tellurvane"]
    report = reports.read("arguments")
    assert ("command", reports.command("arguments", arguments)) in report
    assert [value for key, value in report if key == "argument"] == [
        "播放", "兩個 字", "a\\b", "100%"]
    # It starts visibly, in the program's own folder.
    assert ("show", "5") in report
    assert ("folder", windows_path(folder.path)) in report
    # Output goes nowhere, and the program is not blocked by it.
    noisy = reports.read("noisy")
    assert ("output", "pipe") in noisy and ("error", "pipe") in noisy
    assert dict(noisy)["write"][-1].isdigit(), "an error number"
    assert program.exit() == 0


def test_a_kill_while_tasks_run_leaves_the_list_complete(folder, start):
    reports = Reports(folder)
    names = [f"第{i}項" for i in range(10)]
    for _ in range(3):
        program, _ = start_with(folder, start, lambda moment: [
            reports.task(name, moment) for name in names])
        # There are ten saves in a row now.
        until(lambda: has_run(folder, names[0]), "the first save of the runs")
        program.kill()
        assert folder.task_names() == names
    assert start().started().exit() == 0
    assert folder.task_names() == names
