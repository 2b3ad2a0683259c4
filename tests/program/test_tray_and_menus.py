"""The options menu, the menu of the tray icon, the menu of a task, and what their entries do."""

import re
import subprocess

import pytest

import menus
from editor import Editor
from harness import (LOCALE, SETTINGS, click_at, click_tray_icon, press_key, run, tray_icon, until,
                     windows_path)
from joblist import APPLICATION, Task, list_bytes, read_tasks
from menus import CHECKED, SEPARATOR, Menu
from taskbar import is_in_taskbar, skips_taskbar

CODE_PAGE = {"zh_TW": "cp950", "en_US": "cp1252"}[LOCALE]
RUN_KEY = r"HKLM\Software\Microsoft\Windows\CurrentVersion\Run"


@pytest.fixture(scope="module", autouse=True)
def watch_menus():
    menus.watch()


@pytest.fixture(autouse=True)
def no_run_value():
    run("wine", "reg", "delete", RUN_KEY, "/v", "RunTellurvane", "/f")
    yield
    run("wine", "reg", "delete", RUN_KEY, "/v", "RunTellurvane", "/f")


def run_value():
    answer = subprocess.run(["wine", "reg", "query", RUN_KEY, "/v", "RunTellurvane"], check=False,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    match = re.search(r"RunTellurvane\s+REG_SZ\s+(.*\S)", answer.decode(CODE_PAGE, "replace"))
    return match and match[1]


def task(name, **facts):
    return Task(name, "no such program", media_type=APPLICATION, **facts)


@pytest.fixture
def open_program(folder, start, tmp_path):
    """Starts the program with a list of two, or of those given, and its menus watched."""
    def open_one(*tasks, **settings):
        until(lambda: not tray_icon(), "the tray without what was killed before")
        folder.write_settings(SETTINGS | settings)
        folder.list.write_bytes(list_bytes(*(tasks or (
            task("甲 & 乙"), task("丙", enabled=False)))))
        program = start(trace=tmp_path / "trace").started()
        program.click(program.toolbar_button(3))  # out of use: only gets the keyboard here
        return program
    return open_one


def settings(folder):
    return dict(line.split("=", 1) for line in folder.settings_text().split("\r\n") if "=" in line)


def options(program):
    click_at(program.toolbar_button(4)["rect"])
    return Menu(program)


SWITCHES = {
    "SongLoop": (1, "開啟連續播放音樂", "關閉連續播放音樂"),
    "StartPlay": (2, "開啟 Windows 啟動後自動執行", "關閉 Windows 啟動後自動執行"),
    "TimeForm": (3, "顯示小時鐘", "隱藏小時鐘"),
}


def entries_for(values):
    return [(number, CHECKED, on) if values[key] == "1" else (number, 0, off)
            for key, (number, off, on) in SWITCHES.items()]


def test_the_options_are_named_by_what_they_do_and_marked_by_what_is(open_program):
    values = {"SongLoop": "0", "StartPlay": "1", "TimeForm": "2"}
    menu = options(open_program(**values))
    assert menu.entries == entries_for(values)
    assert menu.default == [0, 1], "the first, by its position"
    menu.dismiss()


@pytest.mark.parametrize("key, before, after", [
    *((key, *values) for key in SWITCHES for values in (("0", "1"), ("1", "0"))),
    ("SongLoop", "7", "1")])
def test_an_option_is_switched_and_written_at_once(open_program, folder, key, before, after):
    program = open_program(**{key: before})
    options(program).choose(SWITCHES[key][0])
    until(lambda: settings(folder) == SETTINGS | {key: after}, f"{key}={after}", 10)
    menu = options(program)
    assert menu.entries == entries_for(settings(folder))
    menu.choose(SWITCHES[key][0])
    back = "0" if after == "1" else "1"
    until(lambda: settings(folder) == SETTINGS | {key: back}, f"{key}={back}", 10)


def test_a_dismissed_menu_changes_nothing(open_program, folder):
    program = open_program()
    before = folder.settings.read_bytes()
    options(program).dismiss()
    menu = options(program)
    click_at(program.parts()["strip"])  # beside it
    menu.is_gone()
    assert options(program).entries == entries_for(SETTINGS)
    assert folder.settings.read_bytes() == before
    press_key("Escape")


def test_starting_with_windows_is_a_value_that_comes_and_goes(open_program, folder):
    program = open_program()
    assert run_value() is None
    options(program).choose(2)
    path = windows_path(folder.executable)
    # Only the system's own code page fits in; what is outside it is lost.
    written = path.encode(CODE_PAGE, "replace").decode(CODE_PAGE)
    until(lambda: run_value() is not None, "the value")
    assert run_value() == written
    options(program).choose(2)
    until(lambda: run_value() is None, "no value")
    # Switching it off where it is gone already does no harm.
    options(program).choose(2)
    until(lambda: run_value() is not None, "the value")
    run("wine", "reg", "delete", RUN_KEY, "/v", "RunTellurvane", "/f")
    options(program).choose(2)
    until(lambda: settings(folder).get("StartPlay") == "0", "the setting")
    assert run_value() is None
    assert program.exit() == 0


def tray_menu(program):
    def opens():
        # A second click right after another would be taken for half of a double click.
        click_tray_icon(3)
        try:
            return until(program.has_menu, "the menu", 2)
        except AssertionError:
            return False

    until(opens, "the menu of the tray icon")
    return Menu(program)


def test_the_tray_menu_names_its_three_entries(open_program, folder):
    program = open_program()
    program.put_away()
    menu = tray_menu(program)
    assert menu.entries == [(1, 0, "顯示主畫面"), (2, 0, "顯示小時鐘"), (3, 0, "離開本軟體")]
    assert menu.default == [0, 1]
    menu.choose(2)
    until(lambda: settings(folder).get("TimeForm") == "1", "the clock's setting")
    assert tray_menu(program).entries[1] == (2, CHECKED, "隱藏小時鐘")


def test_the_tray_menu_shows_the_window_and_keeps_the_icon(open_program):
    program = open_program()
    assert is_in_taskbar(program)
    program.put_away()
    tray_menu(program).choose(1)
    until(program.on_screen, "the window")
    assert tray_icon()
    assert skips_taskbar(program)
    # Closed and fetched by the icon itself, it has its button again and the icon is gone.
    program.put_away()
    assert tray_icon()
    click_tray_icon()
    until(program.on_screen, "the window")
    until(lambda: not tray_icon(), "no tray icon")
    until(lambda: is_in_taskbar(program), "the taskbar button")


def test_the_tray_icon_puts_a_window_that_stands_away_again(open_program):
    program = open_program()
    program.put_away()
    tray_menu(program).choose(1)
    until(program.on_screen, "the window")
    click_tray_icon()
    until(lambda: not program.on_screen(), "the window put away")
    assert tray_icon()


def test_leaving_by_the_tray_menu_writes_the_list_and_the_folder(open_program, folder):
    program = open_program()
    changed = SETTINGS | {"SavedVolume": "77", "SongLoop": "1", "FilesPath": "D:\\"}
    folder.write_settings(changed)
    folder.list.unlink()
    program.put_away()
    tray_menu(program).choose(3)
    assert program.wait() == 0
    assert settings(folder) == changed | {"FilesPath": SETTINGS["FilesPath"]}
    assert [task.name for task in read_tasks(folder.list.read_bytes())] == ["甲 & 乙", "丙"]
    until(lambda: not tray_icon(), "no tray icon")


def list_menu(program, row=None):
    parts = program.parts()
    if row is None:
        click_at(parts["list"], y=0.95, button=3)
    else:
        click_at(program.row(row))
        click_at(program.row(row), button=3)
    return Menu(program)


def task_entries(name, verb):
    quoted = f"「{name}」"
    return [(1, 0, f"執行{quoted}排程任務"), (2, 0, f"編輯{quoted}排程設定"), (0, SEPARATOR, ""),
            (3, 0, f"{verb}{quoted}排程任務")]


def test_without_a_selected_row_there_is_one_entry(open_program):
    program = open_program()
    menu = list_menu(program)
    assert menu.entries == [(1, 0, "建立新的排程任務")]
    menu.choose(1)
    opens_on_a_new_task(program)


def opens_on_a_new_task(program):
    editor = Editor(program)
    until(editor.is_editing, "the new task's fields")
    assert (editor.texts()["name"], editor.texts()["source"]) == ("新的排程專案", "")
    editor.close("cancel")


def test_the_new_button_opens_on_a_new_task_whatever_is_selected(open_program):
    program = open_program()
    click_at(program.row(0))
    program.click(program.toolbar_button(1))
    opens_on_a_new_task(program)


def test_a_selected_task_has_three_entries_and_a_separator(open_program):
    program = open_program()
    # An ampersand of the name is doubled, so that the menu shows one.
    menu = list_menu(program, 0)
    assert menu.entries == task_entries("甲 && 乙", "關閉")
    menu.dismiss()
    menu = list_menu(program, 1)
    assert menu.entries == task_entries("丙", "啟動")
    menu.dismiss()


def enabled(folder):
    return [task.enabled for task in read_tasks(folder.list.read_bytes())]


def test_the_third_entry_switches_the_task_and_its_verb_follows(open_program, folder):
    program = open_program()
    assert enabled(folder) == [True, False]
    list_menu(program, 0).choose(3)
    until(lambda: enabled(folder) == [False, False], "the first task off")
    menu = list_menu(program, 0)
    assert menu.entries == task_entries("甲 && 乙", "啟動")
    menu.choose(3)
    until(lambda: enabled(folder) == [True, False], "the first task on")
    list_menu(program, 1).choose(3)
    until(lambda: enabled(folder) == [True, True], "the second task on")


def test_the_first_entry_runs_the_task(open_program, folder):
    program = open_program()
    never = read_tasks(folder.list.read_bytes())[1].last_run
    list_menu(program, 1).choose(1)
    until(lambda: read_tasks(folder.list.read_bytes())[1].last_run != never, "the run")
    assert read_tasks(folder.list.read_bytes())[0].last_run == never
    assert enabled(folder) == [True, False], "a task that is off may be run by hand, and stays off"


@pytest.mark.parametrize("key", ["Menu", "shift+F10"])
def test_keys_open_the_menu_at_the_selected_row(open_program, key):
    program = open_program()
    run("xdotool", "mousemove", 700, 700)
    for row, name, verb in ((1, "丙", "啟動"), (0, "甲 && 乙", "關閉")):
        rect = program.row(row)
        click_at(rect)
        run("xdotool", "mousemove", 700, 700)
        press_key(key)
        menu = Menu(program)
        assert menu.entries == task_entries(name, verb)
        assert rect[0] <= menu.rect[0] <= rect[2] and rect[1] <= menu.rect[1] <= rect[3]
        menu.dismiss()


def test_a_key_without_a_selected_row_opens_the_one_entry(open_program):
    program = open_program()
    press_key("Menu")
    menu = Menu(program)
    assert menu.entries == [(1, 0, "建立新的排程任務")]
    menu.dismiss()


def test_entries_can_be_chosen_by_keys(open_program, folder):
    program = open_program()
    menu = list_menu(program, 0)
    press_key("Up", "Return")  # the last one
    menu.is_gone()
    until(lambda: enabled(folder) == [False, False], "the first task off")
