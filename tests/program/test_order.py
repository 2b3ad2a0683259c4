"""The order of the calls at start and end, seen from outside."""

import re

import pytest

from desktop import run, windows_path

WATCHED = {
    "kernel32.SetCurrentDirectoryW": lambda texts: texts[0],
    "kernel32.CreateMutexW": lambda texts: texts[0],
    "gdiplus.GdiplusStartup": lambda texts: "",
    "kernel32.GetPrivateProfileStringW": lambda texts: texts[1],
    "user32.CreateWindowExW": lambda texts: texts[0],
    "kernel32.MoveFileExW": lambda texts: texts[1].rpartition("\\")[2],
    "kernel32.WritePrivateProfileStringW": lambda texts: texts[1],
    "gdiplus.GdiplusShutdown": lambda texts: "",
    "kernel32.ReleaseMutex": lambda texts: "",
}
_CALL = re.compile(rb"Call (\w+\.\w+)\((.*)\) ret=")
_TEXT = re.compile(rb'L"((?:[^"\\]|\\.)*)"')


@pytest.fixture(scope="module", autouse=True)
def watch_few_calls():
    key = r"HKCU\Software\Wine\Debug"
    run("wine", "reg", "add", key, "/v", "RelayInclude", "/t", "REG_SZ", "/d", ";".join(WATCHED),
        "/f")


def plain(text):
    """A text of the trace, where a backslash and four digits are a character outside ASCII."""
    escape = re.compile(rb"\\([0-9a-f]{4}|.)")
    return escape.sub(lambda match: chr(int(match[1], 16)).encode() if len(match[1]) == 4
                      else match[1], text).decode()


def calls(trace):
    """The watched calls in their order, each with the argument that identifies it."""
    names = {name.lower(): name for name in WATCHED}
    for line in trace.read_bytes().splitlines():
        match = _CALL.search(line)
        name = match and names.get(match[1].decode().lower())
        if name:
            texts = [plain(text) for text in _TEXT.findall(match[2])]
            yield name.partition(".")[2], WATCHED[name](texts + [""])


def own_calls(trace):
    """Without the mutexes and windows of the system's libraries and the controls of the window."""
    return [(name, what) for name, what in calls(trace)
            if name not in ("CreateMutexW", "CreateWindowExW") or what in ("Tellurvane", "TellurvaneForm")]


START = [
    ("CreateMutexW", "Tellurvane"),
    ("GdiplusStartup", ""),
    ("GetPrivateProfileStringW", "SavedVolume"),
    ("GetPrivateProfileStringW", "TimeForm"),
    ("GetPrivateProfileStringW", "SongLoop"),
    ("GetPrivateProfileStringW", "StartPlay"),
    ("GetPrivateProfileStringW", "FilesPath"),
    ("GetPrivateProfileStringW", "HinetUrl"),
    ("CreateWindowExW", "TellurvaneForm"),  # what owns the main window, never shown
    ("CreateWindowExW", "TellurvaneForm"),
    ("MoveFileExW", "JobList.dbs"),
]
END = [
    ("MoveFileExW", "JobList.dbs"),
    ("WritePrivateProfileStringW", "FilesPath"),
    ("GdiplusShutdown", ""),
    ("ReleaseMutex", ""),
]


def test_start_and_end_keep_their_order(folder, start, tmp_path):
    trace = tmp_path / "trace"
    assert start(trace=trace, cwd=tmp_path).started().exit() == 0
    directory = ("SetCurrentDirectoryW", windows_path(folder.path))
    assert own_calls(trace) == [directory, *START, *END]


def test_a_second_copy_goes_no_further_than_the_mutex(folder, start, tmp_path):
    first = start().started()
    trace = tmp_path / "trace"
    assert start(trace=trace).wait() == 0
    assert own_calls(trace) == [
        ("SetCurrentDirectoryW", windows_path(folder.path)),
        ("CreateMutexW", "Tellurvane"),
        ("ReleaseMutex", ""),
    ]
    assert "CreateWindowExW" not in [name for name, _ in calls(trace)]
    assert first.exit() == 0
