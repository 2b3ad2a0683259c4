"""Fixtures for tests of the whole program."""

import shutil

import pytest

import harness
import menus
from certificates import NO_ROOT, Root, can_add_root
from desktop import until, until_the_tray_is_empty
from directories import Directories, Proxy
from player import FakeMediaControl, registered_fake
from radio_servers import DOMAIN, NAMES, RadioServers


@pytest.fixture(scope="session")
def warm_up(tmp_path_factory):
    """The first start after the system's is slow."""
    for name in ("cold", "warm"):
        made = harness.Folder(tmp_path_factory.mktemp(name))
        harness.Program(made).started().kill()


@pytest.fixture
def folder(tmp_path, warm_up):
    """A fresh folder with the program in it. All processes started from it end with the test."""
    made = harness.Folder(tmp_path)
    yield made
    harness.end_all_in(made)
    shutil.rmtree(tmp_path, ignore_errors=True)


@pytest.fixture
def start(folder):
    """Starts the program in the folder. The test fails where the program ends unnoticed."""
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
def watched_menus():
    menus.watch("DisableProcessWindowsGhosting")


@pytest.fixture
def open_program(folder, start, tmp_path, watched_menus):
    """Starts the program with these tasks and settings, its menus watched."""
    def open_one(*tasks, environment=None, **settings):
        until_the_tray_is_empty()
        folder.write_settings(harness.SETTINGS | settings)
        folder.write_list(*tasks)
        program = start(trace=tmp_path / "trace", environment=environment).started()
        until(program.main_window, "the main window")
        return program
    return open_one


@pytest.fixture(scope="module")
def fake_player():
    with registered_fake():
        yield


@pytest.fixture
def player(folder, fake_player):
    return FakeMediaControl(folder.path)


@pytest.fixture(scope="module")
def directory_server():
    """The radio directories, which receive every request of the program."""
    made = Directories()
    with Proxy(f"127.0.0.1:{made.port}"):
        yield made
    made.close()


@pytest.fixture
def directories(directory_server):
    """The same without the pages and the requests of the test before."""
    directory_server.forget()
    return directory_server


@pytest.fixture(scope="module")
def root(tmp_path_factory):
    """Signs certificates that the prefix trusts. The test is skipped where it cannot trust one."""
    if not can_add_root():
        pytest.skip(NO_ROOT)
    with Root(tmp_path_factory.mktemp("root")) as made:
        yield made


@pytest.fixture(scope="module")
def foreign_root(tmp_path_factory):
    """Signs certificates that nobody trusts."""
    return Root(tmp_path_factory.mktemp("foreign_root"))


@pytest.fixture(scope="module")
def radio_server_machine(root):
    made = RadioServers(root.sign(*[name + DOMAIN for name in NAMES]))
    with Proxy(f"127.0.0.1:{made.port}"):
        yield made
    made.close()


@pytest.fixture
def radio_servers(radio_server_machine):
    """The servers of Radio Browser, without the requests of the test before."""
    radio_server_machine.forget()
    return radio_server_machine
