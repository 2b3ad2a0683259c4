"""What the built file is made of, seen without running it."""

import re
import struct
import subprocess
from xml.etree import ElementTree

import pytest

from desktop import BINARIES

EXECUTABLE = BINARIES / "Tellurvane.exe"
# On every Windows, and looked for in the system's folder first, because the system itself has
# them loaded. Anything else has to wait until the search has been confined to that folder.
SYSTEM_LIBRARIES = {
    "advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll",
    "ole32.dll", "oleaut32.dll", "shlwapi.dll", "user32.dll",
}
WRITE, EXECUTE = 0x80000000, 0x20000000
HIGH_ENTROPY_VA, DYNAMIC_BASE, NX_COMPAT = 0x20, 0x40, 0x100
ICON, GROUP_ICON, VERSION, MANIFEST = 3, 14, 16, 24


def output(*command):
    return subprocess.run([str(part) for part in command], check=True, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL).stdout


class Image:
    """The headers of a 64-bit executable."""

    def __init__(self, data):
        self.data = data
        start = struct.unpack_from("<I", data, 0x3C)[0]
        assert data[start:start + 4] == b"PE\0\0"
        self.machine, count = struct.unpack_from("<HH", data, start + 4)
        self.symbols = struct.unpack_from("<II", data, start + 12)
        optional = start + 24
        size = struct.unpack_from("<H", data, start + 20)[0]
        self.magic = struct.unpack_from("<H", data, optional)[0]
        self.subsystem, self.characteristics = struct.unpack_from("<HH", data, optional + 68)
        self.sections, self.section_starts = {}, []
        for offset in range(optional + size, optional + size + 40 * count, 40):
            name = data[offset:offset + 8].rstrip(b"\0").decode()
            self.sections[name] = struct.unpack_from("<I", data, offset + 36)[0]
            self.section_starts.append(struct.unpack_from("<I", data, offset + 20)[0])


@pytest.fixture(scope="module")
def image():
    return Image(EXECUTABLE.read_bytes())


@pytest.fixture(scope="module")
def manifest():
    return ElementTree.fromstring(output("wrestool", "-x", "--raw", "-t", MANIFEST, EXECUTABLE))


def resources():
    """The kinds and names of the resources, as pairs of texts."""
    lines = output("wrestool", "-l", EXECUTABLE).decode()
    return re.findall(r"--type='?(\w+)'? --name='?(\w+)'?", lines)


def value_of(manifest, name):
    return [element.text for element in manifest.iter() if element.tag.rpartition("}")[2] == name]


def test_it_is_a_64_bit_program_with_windows_that_the_loader_may_protect(image):
    assert (image.machine, image.magic, image.subsystem) == (0x8664, 0x20B, 2)
    for flag in (DYNAMIC_BASE, HIGH_ENTROPY_VA, NX_COMPAT):
        assert image.characteristics & flag, hex(flag)
    assert ".reloc" in image.sections, "it can be moved in memory"
    both = WRITE | EXECUTE
    assert [name for name, flags in image.sections.items() if flags & both == both] == []
    assert any(flags & EXECUTE for flags in image.sections.values())


def test_its_sections_begin_at_pages_of_the_file(image):
    assert image.section_starts and not [start for start in image.section_starts if start % 4096]


def test_it_needs_only_libraries_of_the_system():
    names = re.findall(r"DLL Name: (\S+)", output("objdump", "-p", EXECUTABLE).decode())
    assert {name.lower() for name in names} <= SYSTEM_LIBRARIES
    assert "kernel32.dll" in {name.lower() for name in names}


def test_it_takes_only_the_registry_from_advapi32():
    """Windows loads other libraries for some others, and looks into the program's folder first."""
    listing = output("objdump", "-p", EXECUTABLE).decode()
    names = listing.partition("DLL Name: ADVAPI32.dll")[2].partition("DLL Name:")[0]
    functions = re.findall(r"^\s+[0-9a-f]+\s+\d+\s+(\w+)$", names, re.MULTILINE)
    assert functions
    assert [name for name in functions if not name.startswith("Reg")] == []


def test_gdi_plus_is_bound_only_at_its_first_use(image):
    assert b"gdiplus.dll" in image.data
    assert b"GdiplusStartup" in image.data
    names = output("objdump", "-p", EXECUTABLE).decode().lower()
    assert "dll name: gdiplus.dll" not in names


def test_it_is_protected_stripped_and_small(image):
    overrun = bytes.fromhex("b9 02 00 00 00 cd 29")  # a fast failure for an overrun array
    assert overrun in image.data
    assert image.symbols == (0, 0)
    assert not [name for name in image.sections if name.startswith((".debug", "/"))]
    assert len(image.data) <= 1_100_000


def test_the_manifest_asks_for_themed_controls_and_no_rights(manifest):
    controls, = [element.attrib for element in manifest.iter()
                 if element.attrib.get("name") == "Microsoft.Windows.Common-Controls"]
    assert controls["version"] == "6.0.0.0"
    level, = [element.attrib for element in manifest.iter()
              if element.tag.endswith("}requestedExecutionLevel")]
    assert level == {"level": "asInvoker", "uiAccess": "false"}


def test_the_manifest_knows_the_screen_and_the_systems(manifest):
    assert value_of(manifest, "dpiAware") == ["true"]
    systems = [element.attrib["Id"] for element in manifest.iter()
               if element.tag.endswith("}supportedOS")]
    assert "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}" in systems  # Windows 10 and 11
    # The user's code page has to stay what it is: lists may be written in it.
    assert value_of(manifest, "activeCodePage") == []


def test_the_icon_and_the_version_are_in_it():
    kinds = resources()
    assert (str(GROUP_ICON), "AAA") in kinds
    assert str(VERSION) in [kind for kind, _ in kinds]
    icons = [name for kind, name in kinds if kind == str(ICON)]
    assert len(icons) == 14 + 4 * 8, "the window's, a note's two, and two marks of rows"
    version = output("wrestool", "-x", "--raw", "-t", VERSION, EXECUTABLE)
    for text in ("Tellurvane", "Copyright 2026 The Tellurvane authors"):
        assert text.encode("utf-16-le") in version
