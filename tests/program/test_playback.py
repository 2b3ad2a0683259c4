"""Music as it is heard: files played by the system's own control into a sound sink."""

from datetime import timedelta

import pytest

from harness import SETTINGS, click_at, picture, press_key, until, windows_path
from joblist import MUSIC, RADIO, Task, list_bytes, now, read_tasks
from sound import HIGH, LOW, Ear, make_mp3, make_wav

LENGTH = 12  # seconds of each of the two tones


@pytest.fixture(scope="module")
def music(tmp_path_factory):
    """The same two tones as files of two kinds, and a short one."""
    made = tmp_path_factory.mktemp("music")
    wav = make_wav(made / "tones.wav", LENGTH, LOW, HIGH)
    return {"wav": wav, "mp3": make_mp3(made / "tones.mp3", wav),
            "short": make_wav(made / "short.wav", 2, LOW, HIGH)}


@pytest.fixture(scope="module")
def ear(tmp_path_factory):
    made = Ear(tmp_path_factory.mktemp("ear") / "heard.raw")
    yield made
    made.close()


class Player:
    """The running program, its list one task a source."""

    def __init__(self, folder, start, *sources, media_type=MUSIC, **settings):
        self.folder = folder
        folder.write_settings(SETTINGS | {"SavedVolume": "100"} | settings)
        folder.list.write_bytes(list_bytes(*(
            Task(f"曲{number}", source, media_type=media_type)
            for number, source in enumerate(sources))))
        self.program = start().started()
        self.parts = self.program.parts()
        self.rows = [self.program.row(index) for index in range(len(sources))]
        self.program.click({"rect": self.rows[0]})

    def press(self, button):
        click_at(self.parts["toolbar"], (button - 0.5) / 5)

    def run(self, row=0):
        begun = now()
        stamp = self.folder.list.stat().st_mtime_ns
        click_at(self.rows[row], y=0.2)
        press_key("Return")
        until(lambda: self.folder.list.stat().st_mtime_ns != stamp, "the record of the run")
        record = read_tasks(self.folder.list.read_bytes())[row]
        assert begun <= record.last_run <= now() + timedelta(seconds=1)


@pytest.mark.parametrize("kind", ["wav", "mp3"])
def test_music_sounds_until_it_is_stopped_and_can_be_sought(folder, start, music, ear, kind):
    assert ear.hears_nothing()
    player = Player(folder, start, windows_path(music[kind]))
    assert ear.hears_nothing(), "nothing was to be played yet"
    player.run()
    until(lambda: ear.hears(LOW), "the first tone", 15)
    slider = player.parts["position"]
    before = picture(slider)
    click_at(slider, 0.8)
    until(lambda: ear.hears(HIGH), "the second tone", 5)
    assert picture(slider) != before
    click_at(slider, 0.1)
    until(lambda: ear.hears(LOW), "the first tone again", 5)
    player.press(3)
    until(ear.hears_nothing, "silence", 5)
    player.press(2)
    until(lambda: ear.hears(LOW), "the first tone from the start", 15)
    assert player.program.exit() == 0
    until(ear.hears_nothing, "silence", 5)


def test_the_volume_slider_makes_it_softer_and_louder(folder, start, music, ear):
    player = Player(folder, start, windows_path(music["wav"]))
    player.run()
    until(lambda: ear.hears(LOW), "the first tone", 15)
    loud = ear.level(LOW)
    click_at(player.parts["volume"], 0.6)
    until(lambda: ear.level(LOW) < loud / 2, "a softer tone", 5)
    soft = ear.level(LOW)
    press_key("Home")
    until(lambda: ear.level(LOW) < soft / 10, "nearly nothing", 5)
    press_key("End")
    until(lambda: ear.level(LOW) > loud * 0.9, "the tone as loud as before", 5)


def test_the_saved_volume_is_there_from_the_first_sound(folder, start, music, ear):
    player = Player(folder, start, windows_path(music["wav"]), SavedVolume="0")
    player.run()
    until(player.program.position_is_enabled, "the music")
    assert max(ear.levels(LOW, HIGH, seconds=1)) < 0.01
    click_at(player.parts["volume"], 0.95)
    until(lambda: ear.hears(LOW), "the tone", 5)


def test_music_ends_in_silence(folder, start, music, ear):
    player = Player(folder, start, windows_path(music["short"]))
    player.run()
    until(lambda: ear.hears(LOW), "the first tone", 15)
    until(lambda: ear.hears(HIGH), "the second tone", 5)
    until(ear.hears_nothing, "silence", 10)
    assert not player.program.position_is_enabled()
    assert max(ear.levels(LOW, HIGH, seconds=2)) < 0.001


def test_continuous_play_begins_again(folder, start, music, ear):
    player = Player(folder, start, windows_path(music["short"]), SongLoop="1")
    player.run()
    for _ in range(3):
        until(lambda: ear.hears(LOW), "the first tone", 15)
        until(lambda: ear.hears(HIGH), "the second tone", 10)
    player.press(3)
    until(ear.hears_nothing, "silence", 5)


SOURCES = {
    "missing": lambda folder: windows_path(folder.path / "missing.wav"),
    "broken": lambda folder: windows_path(folder.path / "broken.wav"),
    "empty": lambda folder: windows_path(folder.path / "empty.mp3"),
    "folder": lambda folder: windows_path(folder.path),
    "address": lambda folder: "http://127.0.0.1:9/stream",
    "nothing": lambda folder: "",
}


@pytest.mark.parametrize("media_type, source", [
    *((MUSIC, source) for source in SOURCES), (RADIO, "broken"), (RADIO, "address")])
def test_what_cannot_be_played_is_recorded_and_ends_nothing(folder, start, music, ear, media_type,
                                                            source):
    (folder.path / "broken.wav").write_bytes(bytes(range(256)) * 40)
    (folder.path / "empty.mp3").write_bytes(b"")
    player = Player(folder, start, windows_path(music["wav"]), SOURCES[source](folder),
                    media_type=media_type)
    player.run(1)
    player.run(1)
    assert player.program.code() is None
    assert ear.hears_nothing()
    # What can be played still can.
    player.run(0)
    until(lambda: ear.hears(LOW), "the tone", 15)
    player.run(1)
    until(ear.hears_nothing, "silence", 10)
    assert player.program.exit() == 0
