"""Installing, running the installed program, upgrading and removing it."""

from datetime import timedelta

import pytest

from desktop import BINARIES, press_key, run, until, windows_path
from due import due_task, has_run
from packages import (PROGRAM_FILES, RUN_KEYS, RUN_VALUE, UNINSTALL_KEY, Installation, registry,
                      version)
from task_list import NOTE, now

STATE = {"Setting.ini", "JobList.dbs"}


def write_state(installation):
    """Settings and a list as after some use."""
    installation.settings.write_bytes(
        installation.settings.read_bytes().replace("=50".encode("utf-16-le"),
                                                   "=77".encode("utf-16-le")))
    installation.write_list(due_task("喝水", "起來走一走", media_type=NOTE))
    return installation.state()


def test_a_silent_installation_is_complete_and_runs_a_due_task(installation, start, tmp_path):
    assert installation.names() == PROGRAM_FILES | {"Uninstall.exe"}
    assert installation.executable.read_bytes() == (BINARIES / "Tellurvane.exe").read_bytes()
    link = installation.start_menu_link.read_bytes()
    assert installation.in_windows(installation.executable).encode() in link
    assert not installation.desktop_link.exists()
    facts = registry(UNINSTALL_KEY)
    assert (facts["DisplayName"], facts["DisplayVersion"]) == ("Tellurvane", version())
    assert facts["InstallLocation"] == installation.in_windows(installation.path)
    report = tmp_path / "report.txt"
    command = f'"{windows_path(BINARIES / "StartReporter.exe")}" "{windows_path(report)}"'
    installation.write_list(due_task("due", command, now() + timedelta(seconds=5)))
    program = start()
    until(report.exists, "the report of the started program")
    until(lambda: has_run(installation, "due"), "its record")
    assert program.exit() == 0


def test_an_upgrade_replaces_the_program_in_its_folder_and_keeps_both_state_files(machine, setup):
    # Without a blank: the installer reads it without quotes, and Wine would add some.
    chosen = Installation("我的程式/Tellurvane")
    chosen.clear()
    assert machine.install(setup, f"/D={chosen.in_windows(chosen.path)}") == 0
    before = write_state(chosen)
    current = chosen.executable.read_bytes()
    chosen.executable.write_bytes(b"an older one")
    assert machine.install(setup) == 0
    assert chosen.executable.read_bytes() == current
    assert chosen.state() == before
    assert not machine.path.exists()
    chosen.uninstall()
    assert chosen.names() == STATE
    chosen.clear()


def test_while_the_program_runs_nothing_is_installed_or_removed(installation, setup, start):
    guide = installation.path / "licenses/README.txt"
    guide.write_text("an older one")
    program = start()
    until(installation.list.exists, "its list, the last of its files")
    before = installation.names()
    assert installation.install(setup) == 2
    assert guide.read_text() == "an older one"
    uninstaller = installation.begin_to_uninstall("/S")
    until(lambda: not uninstaller.is_running(), "the end of the uninstaller")
    assert installation.names() == before
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
    # The program makes it at its start.
    until(installation.list.exists, "the program started by the last page")


def test_the_wizard_uses_the_language_of_the_user(machine, wizard):
    window = wizard("en_US")
    until(lambda: window.has_text("Choose Components"), "the English text")
    assert not machine.path.exists(), "nothing is installed yet"


def test_a_link_on_the_desktop_is_made_on_demand_and_removed_again(machine, wizard):
    window = wizard()
    until(lambda: window.has_text("選擇元件"), "the first page")
    # The second of the two components.
    press_key("Down", "space")
    window.press("下一步", "目標資料夾")
    window.press("安裝", "Tellurvane 安裝完成")
    assert machine.desktop_link.exists()
    machine.uninstall()
    assert not machine.desktop_link.exists()


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


@pytest.mark.parametrize("is_ours", [True, False], ids=["this copy", "another copy"])
def test_a_silent_removal_keeps_the_state_and_what_belongs_to_others(installation, is_ours):
    path = (installation.in_windows(installation.executable) if is_ours
            else r"C:\other\Tellurvane.exe")
    machine, user = RUN_KEYS
    values = {machine: path, user: f'"{path}"'}
    for key, value in values.items():
        run("wine", "reg", "add", key, "/v", RUN_VALUE, "/d", value, "/f")
    assert {key: registry(key)[RUN_VALUE] for key in RUN_KEYS} == values
    before = write_state(installation)
    (installation.path / "我的音樂.mp3").write_bytes(b"mine")
    installation.uninstall()
    assert installation.names() == STATE | {"我的音樂.mp3"}
    assert installation.state() == before
    assert not installation.start_menu_link.exists()
    assert registry(UNINSTALL_KEY) == {}
    for key, value in values.items():
        assert registry(key).get(RUN_VALUE) == (None if is_ours else value)
