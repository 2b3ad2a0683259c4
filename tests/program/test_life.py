"""Start, single instance, closing, leaving."""

import pytest

from harness import BINARIES, MARK, SETTINGS, run, until, windows_path
from joblist import Task, list_bytes


def box_of(program):
    """The one window of a program that cannot start, once it stands."""
    until(program.on_screen, "a message box")
    windows = program.windows()
    assert [window["text"] for window in windows] == ["Tellurvane"]
    assert windows[0]["class"] == "#32770"
    return windows[0]


def text_of(box):
    return "".join(child["text"] for child in box["children"] if child["class"] == "Static")


@pytest.mark.parametrize("values, key", [
    (SETTINGS | {"SongLoop": ""}, "SongLoop"),
    (SETTINGS | {"StartPlay": "abc"}, "StartPlay"),
    (None, "SavedVolume"),
], ids=["empty", "no number", "no file"])
def test_an_unsound_settings_file_stops_the_program_with_one_box(folder, start, values, key):
    if values is None:
        folder.settings.unlink()
    else:
        folder.write_settings(values)
    before = folder.names()
    program = start()
    box = box_of(program)
    assert f"「{key}」" in text_of(box)
    assert "設定檔" in text_of(box)
    ok, = [child for child in box["children"] if child["class"] == "Button" and child["visible"]]
    program.click(ok)
    assert program.wait() == 1
    assert folder.names() == before, "nothing may be written"


def test_a_second_copy_ends_without_a_window_and_leaves_the_first_alone(folder, start):
    folder.list.write_bytes(list_bytes(Task("一"), Task("二")))
    first = start().started()
    files = {path.name: (path.read_bytes(), path.stat().st_mtime_ns)
             for path in folder.path.iterdir()}
    window = first.on_screen()

    second = start()
    seen = []
    until(lambda: seen.extend(second.on_screen()) or second.code() is not None, "its end")
    assert second.wait() == 0
    assert seen == []
    assert first.on_screen() == window
    assert {path.name: (path.read_bytes(), path.stat().st_mtime_ns)
            for path in folder.path.iterdir()} == files
    assert first.exit() == 0


def test_after_the_first_copy_has_left_another_may_start(start):
    assert start().started().exit() == 0
    assert start().started().exit() == 0


def test_a_copy_that_was_killed_hinders_nobody(start):
    start().started().kill()
    assert start().started().exit() == 0


@pytest.mark.parametrize("close", ["click_close_box", "press_alt_f4"])
def test_closing_the_window_only_puts_it_away(start, close):
    program = start().started()
    program.put_away(lambda: program.press("alt+F4") if close == "press_alt_f4"
                     else program.click_close_box())
    assert program.code() is None
    # It still keeps its instance: another copy gives way at once.
    assert start().wait() == 0
    assert program.exit() == 0


def test_the_exit_command_ends_it_with_code_0_and_nothing_stays_behind(folder, start):
    assert start().started().exit() == 0
    assert folder.names() == ["JobList.dbs", "Setting.ini", "Tellurvane.exe"]
    assert run("wine", BINARIES / "ListWindows.exe", windows_path(folder.path)) == ""


def test_its_files_stand_beside_it_wherever_it_is_started_from(folder, start, tmp_path):
    elsewhere = tmp_path / "elsewhere"
    elsewhere.mkdir()
    program = start(cwd=elsewhere).started()
    assert folder.list.read_bytes() == MARK
    assert program.exit() == 0
    assert list(elsewhere.iterdir()) == []


def test_leaving_writes_the_folder_and_no_other_setting(folder, start):
    program = start().started()
    # Somebody else's change, made while the program runs, and the folder's line gone.
    changed = SETTINGS | {"SavedVolume": "77", "TimeForm": "1", "SongLoop": "2", "StartPlay": "5"}
    folder.write_settings({key: value for key, value in changed.items() if key != "FilesPath"})
    assert program.exit() == 0
    lines = folder.settings_text().split("\r\n")
    assert sorted(filter(None, lines)) == sorted(
        ["[Setting]"] + [f"{key}={value}" for key, value in changed.items()])


def test_leaving_without_a_change_leaves_the_settings_file_as_it_was(folder, start):
    before = folder.settings.read_bytes()
    assert start().started().exit() == 0
    assert folder.settings.read_bytes() == before
