"""The packages, made from the built program, and an installation of one."""

import os
import re
import shutil
import subprocess
from pathlib import Path, PureWindowsPath

import harness
from desktop import (BINARIES, DEADLINE, click_at, end_processes_in, happens, open_in_background,
                     processes_in, run, until, windows_of)

SOURCE = Path(__file__).resolve().parents[2]
# A fixed time, so that a commit during the tests changes nothing.
os.environ["SOURCE_DATE_EPOCH"] = "1234567890"
# Wine would put links onto the desktop of the machine itself.
os.environ["WINEDLLOVERRIDES"] = "mscoree,mshtml,winemenubuilder.exe="

PREFIX = Path(os.environ["WINEPREFIX"])
UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Tellurvane"
RUN_KEYS = tuple(root + r"\Software\Microsoft\Windows\CurrentVersion\Run" for root in ("HKLM", "HKCU"))
RUN_VALUE = "RunTellurvane"
GUIDE = "使用說明.html"
PROGRAM_FILES = {"Tellurvane.exe", "Setting.ini", GUIDE, "LICENSE.txt", "licenses/README.txt",
                 "licenses/gcc.txt", "licenses/mingw-w64.txt"}


def version():
    text = (SOURCE / "CMakeLists.txt").read_text("utf-8")
    return re.search(r"project\(Tellurvane VERSION (\S+)", text)[1]


def notices_named_in(licences):
    """The files of notices that the text of licenses/README.txt names."""
    return set(re.findall(r"[a-z][\w-]+\.txt", licences.decode("utf-8"), re.ASCII))


def make_packages(output, *kind, source=SOURCE, binaries=BINARIES, **options):
    """Packs the built program."""
    made = subprocess.run(
        [str(source / "scripts" / "package"), *kind, "--binaries", str(binaries), "--output",
         str(output)],
        check=False, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
        text=True, timeout=DEADLINE, **options)
    assert made.returncode == 0, made.stdout
    return output


def make_older_packages(place, older_version):
    """Packs a program with other bytes under another version."""
    source, binaries = place / "source", place / "binaries"
    for folder in ("scripts", "packaging", "resources", "docs"):
        shutil.copytree(SOURCE / folder, source / folder)
    shutil.copy(SOURCE / "LICENSE", source)
    project = (SOURCE / "CMakeLists.txt").read_text("utf-8")
    (source / "CMakeLists.txt").write_text(project.replace(
        f"VERSION {version()}", f"VERSION {older_version}"), "utf-8")
    binaries.mkdir()
    program = (BINARIES / "Tellurvane.exe").read_bytes()
    # The loader ignores bytes after the image.
    (binaries / "Tellurvane.exe").write_bytes(program + older_version.encode())
    return make_packages(place / "dist", source=source, binaries=binaries)


def registry(key):
    """The values of a registry key by their names; none without the key."""
    # It prints in the locale's own code page.
    text = subprocess.run(["wine", "reg", "query", key], check=False, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, encoding="cp950",
                          errors="replace", timeout=DEADLINE).stdout
    return dict(re.findall(r"^ {4}(\S+) {4}REG_\w+ {4}(.*?)\r?$", text, re.MULTILINE))


class Installation(harness.Folder):
    """The program in a folder of the user's, and the other traces of the installer."""

    # The default folder of the installer.
    def __init__(self, folder="AppData/Local/Programs/Tellurvane"):
        self.user = next(path for path in (PREFIX / "drive_c/users").iterdir()
                         if path.name != "Public")
        self.path = self.user / folder
        self.executable = self.path / "Tellurvane.exe"
        self.settings = self.path / "Setting.ini"
        self.list = self.path / "JobList.dbs"
        self.uninstaller = self.path / "Uninstall.exe"
        self.start_menu_link = (self.user / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
                                / "Tellurvane.lnk")
        self.desktop = self.user / "Desktop"
        self.desktop_link = self.desktop / "Tellurvane.lnk"

    def names(self):
        return {str(path.relative_to(self.path)) for path in self.path.rglob("*") if path.is_file()}

    def state(self):
        return self.settings.read_bytes(), self.list.read_bytes()

    def in_windows(self, path):
        return str(PureWindowsPath("C:/") / path.relative_to(PREFIX / "drive_c"))

    def end_all(self):
        """Ends the program and an uninstaller that still asks."""
        end_processes_in(self.path, self.in_windows(self.path), self.in_windows(self.user / "Temp"))

    def clear(self):
        """As on a machine that never had the program."""
        shutil.rmtree(self.path, ignore_errors=True)
        self.start_menu_link.unlink(missing_ok=True)
        # A desktop of its own: Wine makes it a link to the user's home.
        if self.desktop.is_symlink():
            self.desktop.unlink()
        self.desktop.mkdir(exist_ok=True)
        self.desktop_link.unlink(missing_ok=True)
        run("wine", "reg", "delete", UNINSTALL_KEY, "/f")
        for key in RUN_KEYS:
            run("wine", "reg", "delete", key, "/v", RUN_VALUE, "/f")

    def install(self, setup, *options):
        """Installs without a window, and returns the exit code."""
        return open_in_background("wine", setup, "/S", *options).wait(DEADLINE)

    def uninstall(self):
        """Removes it without a window, by the command in the registry."""
        command = registry(UNINSTALL_KEY)["QuietUninstallString"]
        assert command == f'"{self.in_windows(self.uninstaller)}" /S'
        self.begin_to_uninstall("/S")
        self.until_uninstalled()

    def until_uninstalled(self):
        """A copy of the uninstaller goes on, which removes the folder at last."""
        until(lambda: not self.uninstaller.exists() and not registry(UNINSTALL_KEY)
              and not self.uninstall_wizard().is_running(), "the end of the uninstaller")

    def begin_to_uninstall(self, *options):
        """Starts the uninstaller. Its copy goes on after it has ended."""
        open_in_background("wine", self.uninstaller, *options).wait()
        return self.uninstall_wizard()

    def uninstall_wizard(self):
        return Wizard(self.in_windows(self.user / "Temp"))


class Installed(harness.Program):
    """The installed program."""

    def windows(self):
        return windows_of(self.folder.in_windows(self.folder.path))


class Wizard:
    """The windows of the installer or the uninstaller, used by clicks."""

    def __init__(self, place, process=None):
        self.place = place  # the Windows folder of its program
        self.process = process

    def is_running(self):
        return self.process.poll() is None if self.process else bool(processes_in(self.place))

    def controls(self):
        return [control for window in windows_of(self.place) for control in window["children"]
                if control["visible"]]

    def has_text(self, text):
        return any(text in control["text"] for control in self.controls())

    def press(self, caption, until_shown):
        """Clicks a button until a text is shown, or a condition holds."""
        shown = until_shown if callable(until_shown) else lambda: self.has_text(until_shown)

        def has_worked():
            # Without its access key: 「下一步(&N) >」.
            for control in self.controls():
                plain = re.sub(r"\(?&(\w)\)?", "" if "(&" in control["text"] else r"\1",
                               control["text"])
                if caption == plain.strip(" <>") and control["enabled"]:
                    click_at(control["rect"])
                    break
            return happens(shown, 5)

        until(has_worked, f"the effect of {caption}")
