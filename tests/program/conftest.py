"""What every test of the whole program starts with, and what is kept when one fails."""

import os
import shutil
from pathlib import Path

import pytest

import harness
from directories import Directories, Proxy


@pytest.fixture(scope="session")
def warm_up(tmp_path_factory):
    """The first start after the system's is slow and would tell nothing about the others."""
    for name in ("cold", "warm"):
        made = harness.Folder(tmp_path_factory.mktemp(name))
        harness.Program(made).started().kill()


@pytest.fixture
def folder(tmp_path, warm_up):
    """A fresh folder with the program in it. Whatever was started from it ends with the test."""
    made = harness.Folder(tmp_path)
    yield made
    harness.end_all_in(made)
    shutil.rmtree(tmp_path, ignore_errors=True)


@pytest.fixture
def start(folder):
    """Starts the program in the folder; one that ends unnoticed by the test fails it."""
    programs = []

    def start_one(**options):
        programs.append(harness.Program(folder, **options))
        return programs[-1]

    yield start_one
    surprises = [program.code() for program in programs
                 if not program.concluded and program.code() is not None]
    for program in programs:
        if program.code() is None:
            program.kill()
    assert not surprises, f"ended by itself with code {surprises}"


@pytest.fixture(scope="module")
def directory_server():
    """The radio directories, to which everything that the program asks for goes."""
    made = Directories()
    with Proxy(f"127.0.0.1:{made.port}"):
        yield made
    made.close()


@pytest.fixture
def directories(directory_server):
    """The same without the pages and the requests of the test before."""
    directory_server.forget()
    return directory_server


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    outcome = yield
    kept = os.environ.get("TELLURVANE_FAILURES")
    if kept and call.when == "call" and outcome.get_result().failed:
        name = "".join(c if c.isalnum() else "-" for c in item.nodeid.rpartition("/")[2])
        harness.screenshot(Path(kept) / f"{name}-{harness.LOCALE}.png")
