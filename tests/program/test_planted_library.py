"""A library beside the program with the name of a system library is not loaded."""

import os
from pathlib import Path

from desktop import run

# Libraries that are loaded while the program runs, by itself or by another library.
NAMES = ["gdiplus", "dwmapi", "riched20", "wmp", "winmm", "windowscodecs", "propsys",
         "msxml3", "comdlg32", "textshaping"]
PLANTED = "PlantedLibrary.dll"


def like_windows(*names):
    """Wine prefers its own library of a name, Windows the first that it finds."""
    return {"WINEDLLOVERRIDES": f"{','.join(names)}=n,b;mscoree,mshtml="}


def is_loaded(library):
    return Path(f"{library}.loaded").exists()


def test_no_library_beside_the_program_is_loaded(folder, start):
    libraries = [folder.add(PLANTED, f"{name}.dll") for name in NAMES]
    assert start(environment=like_windows(*NAMES)).started().exit() == 0
    assert [library.name for library in libraries if is_loaded(library)] == []


def test_a_planted_library_reports_when_it_is_loaded(folder):
    library = folder.add(PLANTED, "gdiplus.dll")
    # By a program that looks in its own folder first, as any does by default.
    host = folder.add("LoadLibrary.exe")
    run("wine", host, library.name, env=os.environ | like_windows("gdiplus"))
    assert is_loaded(library)
