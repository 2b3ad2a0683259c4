"""Packages that are made once, and an installation that begins and ends on a clean machine."""

import os
import subprocess
from pathlib import Path

import pytest

from packages import (PREFIX, Installation, Installed, Wizard, harness, make_packages, version)


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
    assert PREFIX.name.startswith("package"), "it is cleared: not another's prefix"
    made = Installation()
    made.clear()
    yield made
    made.end_all()
    made.clear()


@pytest.fixture
def installation(machine, setup):
    """The program just installed without a window."""
    assert machine.install(setup) == 0
    return machine


@pytest.fixture
def wizard(setup):
    """Starts the installer as a user does."""
    wizards = []

    def begin(locale="zh_TW"):
        process = subprocess.Popen(
            ["wine", str(setup)], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, env=os.environ | {"LC_ALL": f"{locale}.UTF-8"})
        wizards.append(Wizard(harness.windows_path(setup.parent), process))
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


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    outcome = yield
    kept = os.environ.get("TELLURVANE_FAILURES")
    if kept and call.when == "call" and outcome.get_result().failed:
        harness.screenshot(Path(kept) / f"package-{item.name}.png")
