"""The fake of the media player control, and its registration."""

import os
import re
from contextlib import contextmanager

from desktop import BINARIES, run, until, windows_path

CLASS = r"HKCR\CLSID\{6BF52A52-394A-11D3-B153-00C04F79FAA6}\InprocServer32"
E_NOTIMPL, E_FAIL, NOTHING = "80004001", "80004005", "null"

# The control also has the program's monotonic clock, see FakeMediaControl.passes.
#
# SCRIPTED: the control answers what the test tells it, and stays at the end of its media.
# WINDOWS: it goes on by itself and back to the start at the end, as documented for Windows.
SCRIPTED, WINDOWS = "scripted", "windows"

# Asked again and again while something plays.
QUESTIONS = {"playState", "status", "currentPosition", "currentPositionString", "currentMedia",
             "duration", "durationString"}


def registered():
    """The library that is registered as the media player control."""
    answer = run("wine", "reg", "query", CLASS, "/ve")
    return re.search(r"REG_\w+\s+(.*\S)", answer)[1]


def register(library):
    run("wine", "reg", "add", CLASS, "/ve", "/t", "REG_SZ", "/d", library, "/f")
    assert registered() == library


@contextmanager
def registered_fake():
    real = registered()
    register(FakeMediaControl.LIBRARY)
    yield
    register(r"C:\windows\system32\wmp.dll" if real == FakeMediaControl.LIBRARY else real)


class FakeMediaControl:
    """The fake control of one program: what it plays and which members were called."""

    LIBRARY = windows_path(BINARIES / "FakeMediaControl.dll")

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
        """From now on the members of these names answer so."""
        self.facts |= facts
        self._write()

    def passes(self, seconds):
        """The program's monotonic clock goes on by so much."""
        self.plays(clock=self.facts.get("clock", 0) + seconds)

    def comes_to_its_end(self):
        if self.mode == WINDOWS:
            self.plays(currentPosition=float(self.facts["duration"]) - 0.3)
        else:
            # The same whole second is the end, whatever fraction is left.
            self.plays(currentPosition=204.6, duration=205.4)

    def fails(self, *members, result=E_FAIL):
        """From now on these members fail, and the others do not."""
        self.facts = {key: value for key, value in self.facts.items() if "." not in key}
        self.plays(**{f"fail.{member}": result for member in members})

    def _write(self):
        text = "".join(f"{key}={value}\n" for key, value in self.facts.items())
        fresh = self.path / "player.script.new"
        fresh.write_text(text, "utf-8")
        os.replace(fresh, self.path / "player.script")

    def all_calls(self):
        path = self.path / "player.calls"
        return path.read_text("utf-8").splitlines() if path.exists() else []

    def calls(self, since=()):
        """The calls after some others, without questions, events and the wish to stay awake."""
        calls = [call for call in self.all_calls()
                 if call not in QUESTIONS and not call.startswith(("event ", "awake "))]
        return calls[len(since):]

    def arguments(self, member):
        """The arguments of each call of a member."""
        return [call.partition(" ")[2] for call in self.calls() if call.split()[0] == member]

    def after_ticks(self, count):
        """Waits for some more ticks of the timer of the status strip. In each, the strip asks for
        the state, and so does the watch over what plays."""
        def ticks():
            return self.all_calls().count("playState")

        wanted = ticks() + 2 * count + 1
        until(lambda: ticks() >= wanted, "the status strip's question")
