"""What the tests of playing share: the running program with a list of three, and what it shows."""

from datetime import timedelta

from harness import click_at, picture, press_key, until, windows_path
from joblist import APPLICATION, MUSIC, RADIO, Task, list_bytes, now, read_tasks

STREAM = "http://radio.example/台 北?x=1&y=2"


class Desk:
    """The running program with a list of three: a stream, a piece of music, an application."""

    def __init__(self, folder, start, player, **options):
        self.folder, self.player = folder, player
        self.music = folder.path / "曲 子.wav"
        self.music.write_bytes(b"any")
        self.url = windows_path(self.music)
        folder.list.write_bytes(list_bytes(
            Task("電台", STREAM, media_type=RADIO), Task("音樂", self.url, media_type=MUSIC),
            Task("程式", "no such program", media_type=APPLICATION)))
        self.program = start(environment=player.environment, **options).started()
        self.parts = self.program.parts()
        self.rows = [self.program.row(index) for index in range(3)]
        self.program.click({"rect": self.rows[0]})  # has the window and the pointer ready

    def press(self, button):
        click_at(self.parts["toolbar"], (button - 0.5) / 5)

    def last_run(self, row):
        return read_tasks(self.folder.list.read_bytes())[row].last_run

    def run(self, row):
        """Runs a row's task and waits until the run is recorded."""
        stamp = self.folder.list.stat().st_mtime_ns
        begun = now()
        # The third row is only half inside; it scrolls in when it is chosen.
        click_at(self.rows[row], y=0.2)
        press_key("Return")
        until(lambda: self.folder.list.stat().st_mtime_ns != stamp, "the record of the run")
        assert begun <= self.last_run(row) <= now() + timedelta(seconds=1)

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
        # What was asked for is drawn at once, but stands on the screen a little later.
        looks = [self.strip()]
        until(lambda: looks.append(self.strip()) or looks[-4:] == looks[-1:] * 4, "a picture")
        return looks[-1]


def date_text(moment):
    half = "上午" if moment.hour < 12 else "下午"
    return (f"{moment.year:04} 年 {moment.month:02} 月 {moment.day:02} 日 - {half} "
            f"{moment.hour % 12 or 12:02} 時 {moment.minute:02} 分 {moment.second:02} 秒")


class Dates:
    """Tells the strip that shows date and time by all of its text that stands for an hour."""

    def __init__(self, desk):
        moment = now().replace(minute=11, second=11)
        first = desk.look_of(date_text(moment))
        second = desk.look_of(date_text(moment.replace(minute=44, second=44)))
        width = next(x for x in range(first.width) if first.crop((x, 0, x + 1, first.height))
                     != second.crop((x, 0, x + 1, second.height)))
        assert width > first.width // 3, "the part before the minutes"
        self.area = (0, 0, width, first.height)
        self.look = first.crop(self.area)

    def are(self, look):
        return look.crop(self.area) == self.look
