"""The packages as they are handed out, made from the built program, and an installation of one."""

import json
import os
import re
import shutil
import signal
import subprocess
import sys
from pathlib import Path, PureWindowsPath

SOURCE = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(SOURCE / "tests" / "program"))
import harness  # noqa: E402

# A commit's time that does not change when somebody commits during the tests.
COMMITTED = 1_234_567_890
os.environ["SOURCE_DATE_EPOCH"] = str(COMMITTED)
# Links would otherwise be handed on to the desktop of the machine itself.
os.environ["WINEDLLOVERRIDES"] = "mscoree,mshtml,winemenubuilder.exe="

PREFIX = Path(os.environ["WINEPREFIX"])
UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Tellurvane"
RUN_KEYS = tuple(root + r"\Software\Microsoft\Windows\CurrentVersion\Run" for root in ("HKLM", "HKCU"))
RUN_VALUE = "RunTellurvane"
GUIDE = "使用說明.html"
PROGRAM_FILES = {"Tellurvane.exe", "Setting.ini", GUIDE, "licenses/README.txt", "licenses/gcc.txt",
                 "licenses/mingw-w64.txt"}


def version():
    text = (SOURCE / "CMakeLists.txt").read_text("utf-8")
    return re.search(r"project\(Tellurvane VERSION (\S+)", text)[1]


def make_packages(output, **options):
    """Packs what has been built."""
    made = subprocess.run(
        [str(SOURCE / "scripts" / "package"), "--binaries", str(harness.BINARIES),
         "--output", str(output)],
        check=False, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
        text=True, timeout=harness.DEADLINE, **options)
    assert made.returncode == 0, made.stdout
    return output


def registry(key):
    """The values of a registry key by their names; none without the key."""
    # It prints in the locale's own code page.
    text = subprocess.run(["wine", "reg", "query", key], check=False, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, encoding="cp950",
                          errors="replace", timeout=harness.DEADLINE).stdout
    return dict(re.findall(r"^ {4}(\S+) {4}REG_\w+ {4}(.*?)\r?$", text, re.MULTILINE))


class Installation:
    """A folder of the user's with the program, and what the installer leaves elsewhere."""

    # Where it puts the program unless told otherwise.
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

    def in_windows(self, path):
        return str(PureWindowsPath("C:/") / path.relative_to(PREFIX / "drive_c"))

    def end_all(self):
        """Ends what was started from it, by whomever, and an uninstaller that still asks."""
        for process in processes_in(self.path, self.in_windows(self.path),
                                    self.in_windows(self.user / "Temp")):
            try:
                os.kill(process, signal.SIGKILL)
            except ProcessLookupError:
                pass

    def clear(self):
        """As on a machine that has never seen the program."""
        shutil.rmtree(self.path, ignore_errors=True)
        self.start_menu_link.unlink(missing_ok=True)
        # A desktop of its own: Wine makes it a link to the user's home.
        if self.desktop.is_symlink():
            self.desktop.unlink()
        self.desktop.mkdir(exist_ok=True)
        self.desktop_link.unlink(missing_ok=True)
        harness.run("wine", "reg", "delete", UNINSTALL_KEY, "/f")
        for key in RUN_KEYS:
            harness.run("wine", "reg", "delete", key, "/v", RUN_VALUE, "/f")

    def install(self, setup, *options):
        """Installs without a window, and returns the exit code."""
        return subprocess.run(["wine", str(setup), "/S", *options], check=False, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=harness.DEADLINE).returncode

    def uninstall(self):
        """Removes it without a window, by the command that it left for that."""
        command = registry(UNINSTALL_KEY)["QuietUninstallString"]
        assert command == f'"{self.in_windows(self.uninstaller)}" /S'
        self.begin_to_uninstall("/S")
        self.until_uninstalled()

    def until_uninstalled(self):
        """It goes on in a copy of itself, which takes the folder away last."""
        wizard = self.uninstall_wizard()
        harness.until(lambda: not self.uninstaller.exists() and not registry(UNINSTALL_KEY)
                      and not wizard.is_running(), "the end of the uninstaller")

    def begin_to_uninstall(self, *options):
        """Starts the uninstaller as a user does. Its copy goes on after it has ended."""
        subprocess.Popen(["wine", str(self.uninstaller), *options], stdin=subprocess.DEVNULL,
                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).wait()
        return self.uninstall_wizard()

    def uninstall_wizard(self):
        return Wizard(self.in_windows(self.user / "Temp"))


class Installed(harness.Program):
    """The program that was installed."""

    def windows(self):
        return windows_in(self.folder.in_windows(self.folder.path))


def processes_in(*places):
    """The ids of the processes whose command names one of these folders."""
    found = []
    for entry in Path("/proc").iterdir():
        try:
            command = (entry / "cmdline").read_bytes().decode(errors="replace")
        except OSError:
            continue
        if entry.name.isdigit() and any(str(place) in command for place in places):
            found.append(int(entry.name))
    return found


def windows_in(place):
    """The visible windows of what was started from a folder."""
    lines = harness.run("wine", harness.BINARIES / "ListWindows.exe", place).splitlines()
    return [window for window in map(json.loads, lines) if window["visible"]]


class Wizard:
    """The windows of the installer or the uninstaller, used by clicks."""

    def __init__(self, place, process=None):
        self.place = place  # the Windows folder that it was started from
        self.process = process

    def is_running(self):
        return self.process.poll() is None if self.process else bool(processes_in(self.place))

    def controls(self):
        return [control for window in windows_in(self.place) for control in window["children"]
                if control["visible"]]

    def has_text(self, text):
        return any(text in control["text"] for control in self.controls())

    def wait_for(self, text):
        harness.until(lambda: self.has_text(text), f"the text {text}")

    def press(self, caption, until_shown):
        """Clicks a button until the next thing is shown, or whatever else is asked for."""
        shown = until_shown if callable(until_shown) else lambda: self.has_text(until_shown)

        def has_worked():
            # Without its access key: 「下一步(&N) >」.
            for control in self.controls():
                plain = re.sub(r"\(?&(\w)\)?", "" if "(&" in control["text"] else r"\1",
                               control["text"])
                if caption == plain.strip(" <>") and control["enabled"]:
                    harness.click_at(control["rect"])
                    break
            try:
                harness.until(shown, f"{caption} pressed", 5)
            except AssertionError:
                return False
            return True

        harness.until(has_worked, f"what {caption} leads to")
