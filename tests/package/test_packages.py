"""The contents of the packages. Packing again gives the same bytes."""

import base64
import hashlib
import os
import re
import zipfile

from desktop import BINARIES
from packages import GUIDE, PROGRAM_FILES, SOURCE, make_packages, notices_named_in, version
from task_list import MARK


def members(archive):
    """The bytes of each file in an archive, by its name in the one folder at the top."""
    with zipfile.ZipFile(archive) as packed:
        assert packed.testzip() is None
        return {name.removeprefix("Tellurvane/"): packed.read(name) for name in packed.namelist()}


def test_the_archive_holds_the_program_with_its_settings_guide_and_licences(archive):
    files = members(archive)
    assert set(files) == PROGRAM_FILES
    assert files["Tellurvane.exe"] == (BINARIES / "Tellurvane.exe").read_bytes()
    assert files["Setting.ini"] == (SOURCE / "resources/Setting.ini").read_bytes()
    assert files["Setting.ini"].startswith(MARK)
    licence = files["LICENSE.txt"].decode()
    assert licence == (SOURCE / "LICENSE").read_text().replace("\n", "\r\n")
    assert licence.startswith("MIT License") and "2026 The Tellurvane authors" in licence
    for library in ("libstdc++", "libgcc", "mingw-w64", "winpthreads"):
        assert library.encode() in files["licenses/README.txt"]
    assert notices_named_in(files["licenses/README.txt"]) == {"gcc.txt", "mingw-w64.txt"}
    assert b"GCC RUNTIME LIBRARY EXCEPTION" in files["licenses/gcc.txt"]
    for terms in (b"winpthreads", b"License: expat", b"License: BSD-3-clause-Lockless",
                  b"License: ZPL-2.1"):
        assert terms in files["licenses/mingw-w64.txt"]


def test_the_guide_is_one_file_with_its_pictures_inside(archive):
    guide = members(archive)[GUIDE].decode("utf-8")
    pictures = re.findall(r'src(?:set)?="data:image/png;base64,([^" ]+)(?: 1.5x)?"', guide)
    source = (SOURCE / "docs/guide/guide.html").read_text("utf-8")
    names = re.findall(r"[^ \"]+\.png", source)
    assert len(names) > 6
    assert [base64.b64decode(picture) for picture in pictures] == [
        (SOURCE / "docs/guide" / name).read_bytes() for name in names]
    assert 'lang="zh-Hant-TW"' in guide
    # Nothing is fetched, and each link has its target.
    assert not re.findall(r'(?:src|srcset|href)="(?!data:|#)[^"]*"', guide)
    assert set(re.findall(r'href="#(\w+)"', guide)) <= set(re.findall(r'id="(\w+)"', guide))


def test_the_sums_are_those_of_the_packages(packages, archive, setup):
    lines = (packages / f"Tellurvane-{version()}-sha256.txt").read_text().splitlines()
    assert [line.split() for line in lines] == [
        [hashlib.sha256(package.read_bytes()).hexdigest(), package.name]
        for package in (archive, setup)]


def test_packing_again_in_other_surroundings_gives_the_same_bytes(packages, tmp_path):
    environment = os.environ | {"TZ": "Pacific/Auckland", "LC_ALL": "C"}
    again = make_packages(tmp_path / "packed again", cwd=tmp_path, env=environment, umask=0o077)
    files = {path.name for path in packages.iterdir()}
    assert {name.removeprefix(f"Tellurvane-{version()}-") for name in files} == {
        "x64.zip", "setup.exe", "sha256.txt"}
    for name in files:
        assert (again / name).read_bytes() == (packages / name).read_bytes(), name
