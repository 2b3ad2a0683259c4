"""The order of start and end, seen in a trace of the program's calls."""

import re

from desktop import run

WATCHED = ["kernel32.SetCurrentDirectoryW", "kernel32.CreateMutexW", "gdiplus.GdiplusStartup", "kernel32.GetPrivateProfileStringW",
           "kernel32.FindResourceW", "user32.CreateWindowExW", "kernel32.MoveFileExW", "kernel32.WritePrivateProfileStringW",
           "gdiplus.GdiplusShutdown", "kernel32.ReleaseMutex"]
_CALL = re.compile(rb"Call \w+\.(\w+)\((.*)\) ret=")
_KNOWN = re.compile(rb'L"(Tellurvane|TellurvaneForm)"|(JobList\.dbs)"|L"Setting",\w+ L"(\w+)"'
                    rb'|L"(CUSTOM)"')
START = [
    "SetCurrentDirectoryW", "CreateMutexW Tellurvane", "GdiplusStartup",
    *[f"GetPrivateProfileStringW {key}" for key in
      ("SavedVolume", "TimeForm", "SongLoop", "StartPlay", "FilesPath", "HinetUrl")],
    *["FindResourceW CUSTOM"] * 7,  # the icons
    "CreateWindowExW TellurvaneForm",  # the owner of the main window, never shown
    "CreateWindowExW TellurvaneForm", "MoveFileExW JobList.dbs"]
END = ["MoveFileExW JobList.dbs", "WritePrivateProfileStringW FilesPath", "GdiplusShutdown",
       "ReleaseMutex"]


def calls(trace):
    """The watched calls in their order, each with the text that identifies it."""
    for line in trace.read_bytes().splitlines():
        if call := _CALL.search(line):
            known = _KNOWN.search(call[2])
            yield " ".join(part.decode() for part in (call[1], known and known[known.lastindex])
                           if part)


def test_start_and_end_keep_their_order(start, tmp_path):
    run("wine", "reg", "add", r"HKCU\Software\Wine\Debug", "/v", "RelayInclude", "/t", "REG_SZ",
        "/d", ";".join(WATCHED), "/f")
    assert start(trace=tmp_path / "trace").started().exit() == 0
    # Mutexes, resources and windows of the system's libraries have other names.
    assert [call for call in calls(tmp_path / "trace")
            if call not in ("CreateMutexW", "FindResourceW", "CreateWindowExW")] == START + END
