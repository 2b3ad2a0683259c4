"""The options menu, the menu of the tray icon, the menu of a task, and what their entries do."""

import re
import subprocess

import pytest

from desktop import (LOCALE, click_at, click_tray_icon, happens, press_key, run, tray_icon, until,
                     until_the_tray_is_empty, windows_path)
from due import due_task, has_run
from editor import Editor
from harness import SETTINGS
from menus import CHECKED, SEPARATOR, Menu
from taskbar import is_in_taskbar, skips_taskbar

CODE_PAGE = {"zh_TW": "cp950", "en_US": "cp1252"}[LOCALE]
RUN_KEY = r"HKLM\Software\Microsoft\Windows\CurrentVersion\Run"
TASKS = [due_task("甲 & 乙", "no such program"), due_task("丙", "no such program", enabled=False)]
# Of the options menu: number, and text while off and while on.
SWITCHES = {
    "SongLoop": (1, "開啟連續播放音樂", "關閉連續播放音樂"),
    "StartPlay": (2, "開啟 Windows 啟動後自動執行", "關閉 Windows 啟動後自動執行"),
    "TimeForm": (3, "顯示小時鐘", "隱藏小時鐘"),
}
START_WITH_WINDOWS = 2
NEW_TASK = [(1, 0, "建立新的排程任務")]


def delete_run_value():
    run("wine", "reg", "delete", RUN_KEY, "/v", "RunTellurvane", "/f")


def run_value():
    answer = subprocess.run(["wine", "reg", "query", RUN_KEY, "/v", "RunTellurvane"], check=False,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    match = re.search(r"RunTellurvane\s+REG_SZ\s+(.*\S)", answer.decode(CODE_PAGE, "replace"))
    return match and match[1]


@pytest.fixture
def open_with(open_program):
    """Starts the program with two tasks and these settings, and gives it the keyboard."""
    def open_one(**settings):
        delete_run_value()
        program = open_program(*TASKS, **settings)
        program.click(program.toolbar_button("stop"))  # disabled: the click does nothing else
        return program
    yield open_one
    delete_run_value()


def options(program):
    click_at(program.toolbar_button("options"))
    return Menu(program)


def option_entries(values):
    return [(number, CHECKED, on) if values[key] == "1" else (number, 0, off)
            for key, (number, off, on) in SWITCHES.items()]


def test_each_option_is_switched_and_written_at_once_and_a_dismissed_menu_does_nothing(
        open_with, folder):
    settings = SETTINGS | {"SongLoop": "2", "TimeForm": "1"}
    program = open_with(SongLoop="2", TimeForm="1")
    menu = options(program)
    assert menu.entries == option_entries(settings)
    assert menu.default == [0, 1], "the first, by its position"
    menu.dismiss()
    menu = options(program)
    click_at(program.parts()["strip"])  # beside the menu
    menu.is_gone()
    assert folder.read_settings() == settings
    for key, (number, _, _) in SWITCHES.items():
        for _ in range(2):
            options(program).choose(number)
            settings[key] = "0" if settings[key] == "1" else "1"
            until(lambda: folder.read_settings() == settings, f"{key}={settings[key]}", 10)
            menu = options(program)
            assert menu.entries == option_entries(settings)
            menu.dismiss()


def test_starting_with_windows_is_a_value_that_comes_and_goes(open_with, folder):
    program = open_with()
    assert run_value() is None
    options(program).choose(START_WITH_WINDOWS)
    until(lambda: run_value() is not None, "the value")
    # Only the system's own code page fits in; characters outside it are lost.
    path = windows_path(folder.executable)
    assert run_value() == path.encode(CODE_PAGE, "replace").decode(CODE_PAGE)
    options(program).choose(START_WITH_WINDOWS)
    until(lambda: run_value() is None, "no value")
    # Switching it off where the value is missing does no harm.
    options(program).choose(START_WITH_WINDOWS)
    until(lambda: run_value() is not None, "the value")
    delete_run_value()
    options(program).choose(START_WITH_WINDOWS)
    until(lambda: folder.read_settings().get("StartPlay") == "0", "the setting")
    assert run_value() is None
    assert program.exit() == 0


def tray_menu(program):
    def opens():
        # A second click soon after would be part of a double click.
        click_tray_icon(3)
        return happens(program.has_menu, 2)

    until(opens, "the menu of the tray icon")
    return Menu(program)


def test_the_tray_menu_shows_the_window_and_keeps_the_icon(open_with):
    program = open_with()
    assert is_in_taskbar(program)
    program.hide()
    menu = tray_menu(program)
    assert menu.entries == [(1, 0, "顯示主畫面"), (2, 0, "顯示小時鐘"), (3, 0, "離開本軟體")]
    assert menu.default == [0, 1]
    menu.choose(1)
    until(program.main_on_screen, "the window")
    assert tray_icon()
    assert skips_taskbar(program)
    # A click on the icon hides it again.
    click_tray_icon()
    until(lambda: not program.main_on_screen(), "the hidden window")
    assert tray_icon()
    tray_menu(program).choose(1)
    until(program.main_on_screen, "the window")
    # Hidden by its close box and shown by the icon it has its button, and the icon goes.
    program.hide()
    click_tray_icon()
    until(program.main_on_screen, "the window")
    until_the_tray_is_empty()
    until(lambda: is_in_taskbar(program), "the taskbar button")


def test_leaving_by_the_tray_menu_writes_the_list_and_the_folder(open_with, folder):
    program = open_with()
    changed = SETTINGS | {"SavedVolume": "77", "SongLoop": "1", "FilesPath": "D:\\"}
    folder.write_settings(changed)
    folder.list.unlink()
    program.hide()
    tray_menu(program).choose(3)
    assert program.wait() == 0
    assert folder.read_settings() == changed | {"FilesPath": SETTINGS["FilesPath"]}
    assert folder.task_names() == [task.name for task in TASKS]
    until_the_tray_is_empty()


def list_menu(program, row=None):
    if row is None:
        click_at(program.parts()["list"], y=0.95, button=3)
    else:
        click_at(program.row(row))
        click_at(program.row(row), button=3)
    return Menu(program)


def task_entries(name, verb):
    quoted = f"「{name}」"
    return [(1, 0, f"執行{quoted}排程任務"), (2, 0, f"編輯{quoted}排程設定"), (0, SEPARATOR, ""),
            (3, 0, f"{verb}{quoted}排程任務")]


# An ampersand of the name is doubled, so that the menu shows one.
ENTRIES = [task_entries("甲 && 乙", "關閉"), task_entries("丙", "啟動")]


def opens_on_a_new_task(program):
    editor = Editor(program)
    until(editor.is_editing, "the new task's fields")
    assert (editor.texts()["name"], editor.texts()["source"]) == ("新的排程專案", "")
    editor.close("cancel")


def test_without_a_selected_row_the_menu_has_one_entry_which_makes_a_task(open_with):
    program = open_with()
    menu = list_menu(program)
    assert menu.entries == NEW_TASK
    menu.choose(1)
    opens_on_a_new_task(program)
    # The key takes the row with the focus.
    press_key("Menu")
    menu = Menu(program)
    assert menu.entries == ENTRIES[0]
    menu.dismiss()
    # The new button makes one whatever is selected.
    click_at(program.row(0))
    program.click(program.toolbar_button("new"))
    opens_on_a_new_task(program)


def test_mouse_and_keys_open_the_menu_of_the_selected_task(open_with):
    program = open_with()
    for row in (1, 0):
        menu = list_menu(program, row)
        assert menu.entries == ENTRIES[row]
        menu.dismiss()
        left, top, right, bottom = program.row(row)
        for key in ("Menu", "shift+F10"):
            run("xdotool", "mousemove", 700, 700)
            press_key(key)
            menu = Menu(program)
            assert menu.entries == ENTRIES[row]
            assert left <= menu.rect[0] <= right and top <= menu.rect[1] <= bottom
            menu.dismiss()


def test_the_entries_run_the_task_and_switch_it_on_and_off(open_with, folder):
    program = open_with()

    def are_enabled(*wanted):
        until(lambda: tuple(task.enabled for task in folder.tasks()) == wanted, f"{wanted}")

    are_enabled(True, False)
    list_menu(program, 0).choose(3)
    are_enabled(False, False)
    menu = list_menu(program, 0)
    assert menu.entries == task_entries("甲 && 乙", "啟動")
    press_key("Up", "Return")  # the last entry, by keys
    menu.is_gone()
    are_enabled(True, False)
    list_menu(program, 1).choose(1)
    until(lambda: has_run(folder, "丙"), "the run")
    assert not has_run(folder, "甲 & 乙")
    are_enabled(True, False)  # a disabled task may be run by hand, and stays disabled
    list_menu(program, 1).choose(3)
    are_enabled(True, True)
