"""The control that stands in for the media player, and the registration of either."""

import os
import re

from harness import BINARIES, run, until, windows_path

CLASS = r"HKCR\CLSID\{6BF52A52-394A-11D3-B153-00C04F79FAA6}\InprocServer32"
E_NOTIMPL, E_FAIL, NOTHING = "80004001", "80004005", "null"

# What the stand-in can be: one that says what the test tells it, moment by moment, and stays where it
# is at the end, or one that goes by itself and goes back to the start, as Windows' own does.
SCRIPTED, WINDOWS = "scripted", "windows"

# What is asked again and again while something plays.
QUESTIONS = {"playState", "status", "currentPosition", "currentPositionString", "currentMedia",
             "duration", "durationString"}


def registered():
    """The library that is registered as the media player control."""
    answer = run("wine", "reg", "query", CLASS, "/ve")
    return re.search(r"REG_\w+\s+(.*\S)", answer)[1]


def register(library):
    run("wine", "reg", "add", CLASS, "/ve", "/t", "REG_SZ", "/d", library, "/f")
    assert registered() == library


def in_place_of_the_real_control():
    """Registers the stand-in while it is used."""
    real = registered()
    register(StandIn.LIBRARY)
    yield
    register(r"C:\windows\system32\wmp.dll" if real == StandIn.LIBRARY else real)


class StandIn:
    """The stand-in of one program: what it plays and what was asked of it."""

    LIBRARY = windows_path(BINARIES / "PlayerStandIn.dll")

    def __init__(self, folder, mode=SCRIPTED):
        self.path = folder
        self.mode = mode
        self.environment = {"TELLURVANE_PLAYER": windows_path(folder)}
        self.facts = {"mode": mode}
        # Position and length are equal for a moment only, which most ticks miss.
        duration = 205.52 if mode == WINDOWS else 205
        self.plays(playState=3, currentPosition=65, duration=duration, status="甲乙丙",
                   currentPositionString="01:05", durationString="03:25")

    def plays(self, **facts):
        """From now on its members of these names answer so."""
        self.facts |= facts
        self._write()

    def comes_to_its_end(self):
        if self.mode == WINDOWS:
            self.plays(currentPosition=float(self.facts["duration"]) - 0.3)
        else:
            # A fraction that is left does not keep the end away.
            self.plays(currentPosition=204.6, duration=205.4)

    def refuses(self, member, result):
        """From now on one member refuses, and the others do not."""
        self.facts = {key: value for key, value in self.facts.items() if "." not in key}
        if member:
            self.facts[f"fail.{member}"] = result
        self._write()

    def _write(self):
        text = "".join(f"{key}={value}\n" for key, value in self.facts.items())
        fresh = self.path / "player.script.new"
        fresh.write_text(text, "utf-8")
        os.replace(fresh, self.path / "player.script")

    def all_calls(self):
        path = self.path / "player.calls"
        return path.read_text("utf-8").splitlines() if path.exists() else []

    def calls(self):
        """Without the questions and the events."""
        return [call for call in self.all_calls()
                if call not in QUESTIONS and not call.startswith("event ")]

    def ticks(self):
        """How often the status strip has asked it."""
        return self.all_calls().count("playState")

    def after_ticks(self, count):
        """Waits until the status strip has asked so often again."""
        wanted = self.ticks() + count
        until(lambda: self.ticks() >= wanted, "the status strip's question")
