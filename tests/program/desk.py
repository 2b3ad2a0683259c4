"""A running program with a list of things to play, and what its status strip shows."""

from datetime import timedelta

from desktop import click_at, picture, point_at, press_key, until, windows_path
from task_list import APPLICATION, MUSIC, RADIO, Task, now

STREAM = "http://radio.example/台 北?x=1&y=2"
APPLICATION_TASK = Task("程式", "no such program", media_type=APPLICATION)


class Desk:
    """The running program with these tasks."""

    def __init__(self, folder, start, *tasks, **options):
        self.folder = folder
        folder.write_list(*tasks)
        self.program = start(**options).started()
        self.parts = self.program.parts()
        self.rows = [self.program.row(index) for index in range(len(tasks))]
        self.program.click(self.rows[0])  # has the window and the pointer ready

    def press(self, button):
        click_at(self.program.toolbar_button(button))

    def last_run(self, row):
        return self.folder.tasks()[row].last_run

    def run(self, row=0):
        """Runs a row's task and waits until the run is recorded."""
        stamp = self.folder.list.stat().st_mtime_ns
        begun = now()
        # The third row is only half inside; it scrolls in when it is chosen.
        click_at(self.rows[row], y=0.2)
        press_key("Return")
        # Over the row of a failed run a tip would cover the strip.
        point_at(self.parts["volume"])
        until(lambda: self.folder.list.stat().st_mtime_ns != stamp, "the record of the run")
        assert begun <= self.last_run(row) <= now() + timedelta(seconds=1)

    def plays(self):
        until(self.program.position_is_enabled, "the music")

    def plays_nothing(self):
        until(lambda: not self.program.position_is_enabled(), "the disabled slider", 10)


class FakeDesk(Desk):
    """The same with the fake control: a stream, a piece of music, and an application or another
    task."""

    def __init__(self, folder, start, player, third=APPLICATION_TASK):
        self.player = player
        self.music = folder.path / "曲 子.wav"
        self.music.write_bytes(b"any")
        self.url = windows_path(self.music)
        super().__init__(
            folder, start, Task("電台", STREAM, media_type=RADIO),
            Task("音樂", self.url, media_type=MUSIC),
            third,
            environment=player.environment)

    def calls_become(self, calls, since, deadline=60):
        """Waits for these calls of the control after some others."""
        until(lambda: len(self.player.calls(since)) >= len(calls), f"the calls {calls}", deadline)
        assert self.player.calls(since) == calls

    def strip(self):
        return picture(self.parts["strip"])

    def look_of(self, text):
        """What the strip shows for a text: in state 6 it shows the control's status and no more."""
        before = self.player.facts
        self.player.facts = {"playState": 6, "status": text, "currentPosition": 65, "duration": 205}
        look = self.shows()
        self.player.facts = before
        self.player.plays()
        return look

    def shows(self, **facts):
        """What the strip shows for what the control plays."""
        self.player.plays(**facts)
        self.player.after_ticks(1)
        # It is drawn at once, but reaches the screen a little later.
        looks = [self.strip()]
        until(lambda: looks.append(self.strip()) or looks[-4:] == looks[-1:] * 4, "a picture")
        return looks[-1]
