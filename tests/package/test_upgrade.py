"""An upgrade from version 0.1 after some use."""

from datetime import datetime, timedelta

import pytest

from desktop import BINARIES, press_key, run, until
from harness import SETTINGS
from packages import (PROGRAM_FILES, RUN_KEYS, RUN_VALUE, UNINSTALL_KEY, make_older_packages,
                      registry, version)
from task_list import moment_text, now, utf16

OLDER = "0.1.0"
USED_SETTINGS = SETTINGS | {
    "SavedVolume": "77", "TimeForm": "1", "SongLoop": "1", "StartPlay": "1",
    "FilesPath": "C:\\音樂\\𠮷\\", "Genre": "13", "SearchName": "台北 jazz", "SearchType": "1"}
BACKUP = "JobList.dbs.20261120-213000.bak"
MUSIC = "我的音樂.mp3"
MACHINE, USER = RUN_KEYS


@pytest.fixture(scope="session")
def older_setup(tmp_path_factory):
    packages = make_older_packages(tmp_path_factory.mktemp("older"), OLDER)
    return packages / f"Tellurvane-{OLDER}-setup.exe"


def used_list():
    """One task of each kind, as the program writes them under zh_TW."""
    last = moment_text(datetime(2026, 11, 20, 21, 30), "zh_TW")
    tomorrow = moment_text(now() + timedelta(days=1), "zh_TW")
    return utf16("".join(line + f"\t{tomorrow}\r\n" for line in (
        f"1|12|1|0\t早晨新聞\thttp://radio.example.org:8000/live\t{last}",
        f"0|60|1|1\t鐘聲 ♪\tC:\\音樂\\鐘.wav\t{last}",
        "2|7|0|2\t備份𠮷\txcopy C:\\文件 D:\\備份 /E /Y\t上午12:00:00",
        f"0|45|1|3\t喝水\t起來走一走\\r\\n順便喝杯水\t{last}")))


class RunValues:
    """The Run keys with a value of another program each, which shows that they could be read."""

    OTHER = {"Other": "other.exe"}

    def write(self, values):
        for key, value in values.items():
            for name, text in (self.OTHER | ({RUN_VALUE: value} if value else {})).items():
                run("wine", "reg", "add", key, "/v", name, "/d", text, "/f")
        assert self.are(values)

    def are(self, values):
        return all(registry(key) == self.OTHER | ({RUN_VALUE: value} if value else {})
                   for key, value in values.items())

    def clear(self):
        for key in RUN_KEYS:
            for name in self.OTHER:
                run("wine", "reg", "delete", key, "/v", name, "/f")


@pytest.fixture
def run_values():
    values = RunValues()
    yield values
    values.clear()


@pytest.mark.parametrize("has_user_value", [False, True], ids=["machine", "machine and user"])
def test_an_upgrade_from_0_1_keeps_all_that_the_user_has(machine, older_setup, setup, start,
                                                         run_values, has_user_value):
    assert machine.install(older_setup) == 0
    assert registry(UNINSTALL_KEY)["DisplayVersion"] == OLDER
    older = machine.executable.read_bytes()
    machine.write_settings(USED_SETTINGS)
    machine.list.write_bytes(used_list())
    for name in (BACKUP, MUSIC):
        (machine.path / name).write_bytes(b"mine")
    executable = machine.in_windows(machine.executable)
    # Version 0.1 wrote the machine's value only, without quotes.
    values = {MACHINE: executable, USER: f'"{executable}"' if has_user_value else None}
    run_values.write(values)
    state = machine.state()

    assert machine.install(setup) == 0
    assert machine.executable.read_bytes() == (BINARIES / "Tellurvane.exe").read_bytes() != older
    assert registry(UNINSTALL_KEY)["DisplayVersion"] == version()
    assert machine.names() == PROGRAM_FILES | {"Uninstall.exe", "JobList.dbs", BACKUP, MUSIC}
    assert machine.state() == state
    assert run_values.are(values)

    # The new program reads both files and writes them again as they were.
    written = machine.list.stat().st_mtime_ns
    program = start()
    until(lambda: machine.list.stat().st_mtime_ns != written, "the list that was written back")
    assert program.exit() == 0
    assert machine.state() == state
    assert run_values.are(values)

    machine.uninstall()
    assert machine.names() == {"Setting.ini", "JobList.dbs", BACKUP, MUSIC}
    assert machine.state() == state
    assert run_values.are({MACHINE: None, USER: None})


def test_the_option_of_an_upgraded_program_removes_the_value_of_0_1(machine, older_setup, setup,
                                                                    start, run_values):
    assert machine.install(older_setup) == 0
    machine.write_settings(SETTINGS | {"StartPlay": "1"})
    run_values.write({MACHINE: machine.in_windows(machine.executable), USER: None})
    assert machine.install(setup) == 0
    program = start()
    program.click(program.toolbar_button("options"))
    program.menu()
    press_key("Down", "Down", "Return")
    until(lambda: machine.read_settings()["StartPlay"] == "0", "the setting")
    until(lambda: run_values.are({MACHINE: None, USER: None}), "the removed value")
    assert program.exit() == 0
