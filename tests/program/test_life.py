"""Start, single instance, closing, leaving."""

import pytest

from desktop import BINARIES, BOX_CLASS, button_of, run, until, windows_path
from due import Reports, start_with
from harness import SETTINGS
from task_list import MARK, Task


@pytest.mark.parametrize("values, key", [
    (SETTINGS | {"SongLoop": ""}, "SongLoop"),
    (SETTINGS | {"StartPlay": "abc"}, "StartPlay"),
    (None, "SavedVolume"),
], ids=["empty", "no number", "no file"])
def test_a_wrong_settings_file_stops_the_program_with_one_box(folder, start, values, key):
    if values is None:
        folder.settings.unlink()
    else:
        folder.write_settings(values)
    before = folder.names()
    program = start()
    until(program.on_screen, "a message box")
    box, = program.windows()
    assert (box["text"], box["class"]) == ("Tellurvane", BOX_CLASS)
    text = "".join(child["text"] for child in box["children"] if child["class"] == "Static")
    assert f"「{key}」" in text and "設定檔" in text
    program.click(button_of(box, 0)["rect"])
    assert program.wait() == 1
    assert folder.names() == before, "nothing may be written"


def files(folder):
    return {path.name: (path.read_bytes(), path.stat().st_mtime_ns)
            for path in folder.path.iterdir()}


def ends_unseen(program):
    seen = []
    until(lambda: seen.extend(program.on_screen()) or program.code() is not None, "its end")
    assert program.wait() == 0
    assert seen == []


def test_without_gdi_plus_it_ends_without_a_message_before_it_reads_its_settings(folder, start):
    folder.settings.unlink()
    before = folder.names()
    ends_unseen(start(environment={"WINEDLLOVERRIDES": "mscoree,mshtml,gdiplus="}))
    assert folder.names() == before


def test_a_second_copy_ends_without_a_window_and_leaves_the_first_alone(folder, start):
    folder.write_list(Task("一"), Task("二"))
    first = start().started()
    before, window = files(folder), first.on_screen()
    # It ends before it reads its settings.
    away = folder.settings.rename(folder.path / "away")
    ends_unseen(start())
    away.rename(folder.settings)
    assert first.on_screen() == window
    assert files(folder) == before
    first.hide()
    assert start().wait() == 0
    assert first.exit() == 0
    # After it another copy may start, also one that follows a killed one.
    start().started().kill()
    assert start().started().exit() == 0


def test_its_files_lie_beside_it_and_the_exit_button_leaves_nothing_running(folder, start, tmp_path):
    elsewhere = tmp_path / "elsewhere"
    elsewhere.mkdir()
    settings = folder.settings.read_bytes()
    program = start(cwd=elsewhere).started()
    assert folder.list.read_bytes() == MARK
    assert program.exit() == 0
    assert list(elsewhere.iterdir()) == []
    assert folder.names() == ["JobList.dbs", "Setting.ini", "Tellurvane.exe"]
    assert folder.settings.read_bytes() == settings
    assert run("wine", BINARIES / "ListWindows.exe", windows_path(folder.path)) == ""


def test_its_current_folder_is_its_own(folder, start, tmp_path):
    reports = Reports(folder)
    start_with(folder, lambda: start(cwd=tmp_path),
               lambda moment: [reports.task("where", moment)])
    assert ("folder", windows_path(folder.path)) in reports.read("where")


def test_leaving_writes_the_folder_and_no_other_setting(folder, start):
    program = start().started()
    # Changed from outside while the program runs, and the folder's line removed.
    changed = SETTINGS | {"SavedVolume": "77", "TimeForm": "1", "SongLoop": "2", "StartPlay": "5"}
    folder.write_settings({key: value for key, value in changed.items() if key != "FilesPath"})
    assert program.exit() == 0
    lines = folder.settings_text().split("\r\n")
    assert sorted(filter(None, lines)) == sorted(
        ["[Setting]"] + [f"{key}={value}" for key, value in changed.items()])
