"""Installing, running what was installed, upgrading and removing it."""

from datetime import datetime, timedelta

import pytest

from packages import (PROGRAM_FILES, RUN_KEYS, RUN_VALUE, UNINSTALL_KEY, Installation, harness,
                      registry, version)
from harness import press_key, run, until, windows_path
from joblist import APPLICATION, MINUTES, NOTE, Task, list_bytes, now, read_tasks

NEVER_RUN = datetime(2011, 2, 14, 12)
STATE = {"Setting.ini", "JobList.dbs"}


def state(installation):
    return installation.settings.read_bytes(), installation.list.read_bytes()


def write_state(installation):
    """Settings and a list as somebody has used them for a while."""
    installation.settings.write_bytes(
        installation.settings.read_bytes().replace("=50".encode("utf-16-le"),
                                                   "=77".encode("utf-16-le")))
    installation.list.write_bytes(list_bytes(Task("喝水", "起來走一走", media_type=NOTE)))
    return state(installation)


def test_a_silent_installation_is_complete_and_stands_in_the_start_menu(installation):
    assert installation.names() == PROGRAM_FILES | {"Uninstall.exe"}
    assert (installation.executable.read_bytes()
            == (harness.BINARIES / "Tellurvane.exe").read_bytes())
    link = installation.start_menu_link.read_bytes()
    assert installation.in_windows(installation.executable).encode() in link
    assert not installation.desktop_link.exists()
    facts = registry(UNINSTALL_KEY)
    assert facts["DisplayName"] == "Tellurvane"
    assert facts["DisplayVersion"] == version()
    assert facts["InstallLocation"] == installation.in_windows(installation.path)


def test_the_installed_program_runs_a_task_that_falls_due(installation, start, tmp_path):
    probe = windows_path(harness.BINARIES / "CommandProbe.exe")
    report = tmp_path / "report.txt"
    due = now() + timedelta(seconds=5)
    installation.list.write_bytes(list_bytes(
        Task("探針", f'"{probe}" "{windows_path(report)}"', due, NEVER_RUN, MINUTES, 5,
             media_type=APPLICATION)))
    program = start()
    until(report.exists, "the report of the program that the task starts")
    until(lambda: read_tasks(installation.list.read_bytes())[0].last_run != NEVER_RUN, "its record")
    assert program.exit() == 0


def test_an_upgrade_replaces_the_program_and_keeps_both_state_files(installation, setup):
    before = write_state(installation)
    current = installation.executable.read_bytes()
    installation.executable.write_bytes(current + b"an older one")
    assert installation.install(setup) == 0
    assert installation.executable.read_bytes() == current
    assert state(installation) == before


def test_an_upgrade_goes_where_the_program_was_put(machine, setup):
    # Without a blank: the installer reads it without quotes, and Wine would add some.
    chosen = Installation("我的程式/Tellurvane")
    chosen.clear()
    assert machine.install(setup, f"/D={chosen.in_windows(chosen.path)}") == 0
    assert chosen.names() == PROGRAM_FILES | {"Uninstall.exe"}
    chosen.executable.write_bytes(b"an older one")
    assert machine.install(setup) == 0
    assert chosen.executable.read_bytes() != b"an older one"
    assert not machine.path.exists()
    chosen.uninstall()
    assert chosen.names() == {"Setting.ini"}
    chosen.clear()


def test_while_the_program_runs_a_silent_installation_changes_nothing(installation, setup, start):
    guide = installation.path / "licenses/README.txt"
    guide.write_text("an older one")
    program = start()
    assert installation.install(setup) == 2
    assert guide.read_text() == "an older one"
    assert program.code() is None


def test_while_the_program_runs_a_silent_removal_changes_nothing(installation, start):
    program = start()
    until(installation.list.exists, "its list, the last of its files")
    before = installation.names()
    uninstaller = installation.begin_to_uninstall("/S")
    until(lambda: not uninstaller.is_running(), "the end of the uninstaller")
    assert installation.names() == before
    assert registry(UNINSTALL_KEY)["DisplayName"] == "Tellurvane"
    assert program.code() is None


def test_the_wizard_asks_to_leave_the_program_and_starts_it_again_at_the_end(
        installation, wizard, start):
    program = start()
    window = wizard()
    window.press("下一步", "目標資料夾")
    window.press("安裝", "Tellurvane 正在執行")
    assert program.exit() == 0
    installation.list.unlink()
    window.press("重試", "Tellurvane 安裝完成")
    window.press("完成", lambda: not window.is_running())
    # Made by the program when it starts.
    until(installation.list.exists, "the program started by the last page")


@pytest.mark.parametrize("locale, caption", [("zh_TW", "選擇元件"), ("en_US", "Choose Components")])
def test_the_wizard_speaks_the_language_of_the_user(machine, wizard, locale, caption):
    window = wizard(locale)
    window.wait_for(caption)
    assert not machine.path.exists(), "nothing is installed yet"


def test_a_link_on_the_desktop_is_made_when_it_is_ticked_and_removed_again(machine, wizard):
    window = wizard()
    window.wait_for("選擇元件")
    # The second of the two components.
    press_key("Down", "space")
    window.press("下一步", "目標資料夾")
    window.press("安裝", "Tellurvane 安裝完成")
    assert machine.desktop_link.exists()
    machine.uninstall()
    assert not machine.desktop_link.exists()


def test_a_silent_removal_leaves_the_two_state_files_and_nothing_else(installation):
    before = write_state(installation)
    installation.uninstall()
    assert installation.names() == STATE
    assert state(installation) == before
    assert not installation.start_menu_link.exists()
    assert registry(UNINSTALL_KEY) == {}


@pytest.mark.parametrize("answer, left", [("否", STATE | {"JobList.dbs.20260101-000000.bak"}),
                                          ("是", None)])
def test_a_removal_by_hand_asks_for_the_state_files(installation, answer, left):
    write_state(installation)
    (installation.path / "JobList.dbs.20260101-000000.bak").write_bytes(b"kept")
    window = installation.begin_to_uninstall()
    window.press("解除安裝", "是否一併刪除您的設定（Setting.ini）、排程清單（JobList.dbs）與清單的備份？")
    window.press(answer, "解除安裝已完成")
    window.press("關閉", lambda: not window.is_running())
    installation.until_uninstalled()
    assert (installation.names() if installation.path.exists() else None) == left


def test_a_removal_keeps_what_others_put_into_the_folder(installation):
    (installation.path / "我的音樂.mp3").write_bytes(b"mine")
    installation.uninstall()
    assert installation.names() == {"Setting.ini", "我的音樂.mp3"}


@pytest.mark.parametrize("is_ours", [True, False], ids=["this copy", "another copy"])
def test_a_removal_takes_back_the_start_with_windows_of_this_copy_only(installation, is_ours):
    path = r"C:\other\Tellurvane.exe"
    if is_ours:
        path = installation.in_windows(installation.executable)
    machine, user = RUN_KEYS
    values = {machine: path, user: f'"{path}"'}
    for key, value in values.items():
        run("wine", "reg", "add", key, "/v", RUN_VALUE, "/d", value, "/f")
    assert {key: registry(key)[RUN_VALUE] for key in RUN_KEYS} == values
    installation.uninstall()
    for key, value in values.items():
        assert registry(key).get(RUN_VALUE) == (None if is_ours else value)
