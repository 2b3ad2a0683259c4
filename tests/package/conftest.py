"""Packages that are made once, and an installation that begins and ends on a clean machine."""

import os

import pytest

from desktop import open_in_background, windows_path
from packages import PREFIX, Installation, Installed, Wizard, make_packages, version


@pytest.fixture(scope="session")
def packages(tmp_path_factory):
    return make_packages(tmp_path_factory.mktemp("packages"))


@pytest.fixture(scope="session")
def archive(packages):
    return packages / f"Tellurvane-{version()}-x64.zip"


@pytest.fixture(scope="session")
def setup(packages):
    return packages / f"Tellurvane-{version()}-setup.exe"


@pytest.fixture
def machine():
    """A machine without the program."""
    assert PREFIX.name.startswith("package"), "this prefix is cleared: no other one"
    made = Installation()
    made.clear()
    yield made
    made.end_all()
    made.clear()


@pytest.fixture
def installation(machine, setup):
    """The program, just installed without a window."""
    assert machine.install(setup) == 0
    return machine


@pytest.fixture
def wizard(setup):
    """Starts the installer with its windows."""
    wizards = []

    def begin(locale="zh_TW"):
        process = open_in_background("wine", setup, env=os.environ | {"LC_ALL": f"{locale}.UTF-8"})
        wizards.append(Wizard(windows_path(setup.parent), process))
        return wizards[-1]

    yield begin
    for one in wizards:
        if one.is_running():
            one.process.kill()
            one.process.wait()


@pytest.fixture
def start(machine):
    """Starts the installed program; it ends with the test."""
    programs = []

    def start_one():
        programs.append(Installed(machine))
        return programs[-1].started()

    yield start_one
    for program in programs:
        if program.code() is None:
            program.kill()
