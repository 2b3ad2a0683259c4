"""A library beside the program that has the name of one of the system's is not loaded."""

import os
from pathlib import Path

from harness import run

# What the program, or a library that it uses, loads while it runs. (What is loaded before its
# first line, it has no say in.)
NAMES = ["gdiplus", "dwmapi", "riched20", "wmp", "winmm", "windowscodecs", "propsys",
         "msxml3", "comdlg32", "textshaping"]
PLANTED = "PlantedLibrary.dll"


def like_windows(*names):
    """Wine prefers its own library of a name; Windows takes the first that it finds."""
    return {"WINEDLLOVERRIDES": f"{','.join(names)}=n,b;mscoree,mshtml="}


def is_loaded(library):
    return Path(f"{library}.loaded").exists()


def test_no_library_beside_the_program_is_loaded(folder, start):
    libraries = [folder.add(PLANTED, f"{name}.dll") for name in NAMES]
    assert start(environment=like_windows(*NAMES)).started().exit() == 0
    assert [library.name for library in libraries if is_loaded(library)] == []


def test_a_planted_library_that_is_loaded_tells(folder):
    library = folder.add(PLANTED, "gdiplus.dll")
    # By a program that looks in its own folder first, as any does by default.
    host = folder.add("LoadLibrary.exe")
    run("wine", host, library.name, env=os.environ | like_windows("gdiplus"))
    assert is_loaded(library)
