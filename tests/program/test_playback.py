"""Music as it is heard: files played by the system's own control into a sound sink."""

import pytest

from desk import Desk
from desktop import click_at, picture, press_key, until, windows_path
from harness import SETTINGS
from sound import HIGH, LOW, Ear, make_mp3, make_wav
from task_list import MUSIC, RADIO, Task

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


@pytest.fixture
def open_desk(folder, start, music, ear):
    """Opens the program with one task for each source: a name of the music or a Windows path."""
    def open_one(*sources, media_type=MUSIC, **settings):
        folder.write_settings(SETTINGS | {"SavedVolume": "100"} | settings)
        return Desk(folder, start, *(
            Task(f"曲{number}", windows_path(music[source]) if source in music else source,
                 media_type=media_type)
            for number, source in enumerate(sources)))
    return open_one


@pytest.mark.parametrize("kind", ["wav", "mp3"])
def test_music_sounds_until_it_is_stopped_and_can_be_sought(open_desk, ear, kind):
    assert ear.hears_nothing()
    desk = open_desk(kind)
    assert ear.hears_nothing(), "nothing was to be played yet"
    desk.run()
    until(lambda: ear.hears(LOW), "the first tone", 15)
    slider = desk.parts["position"]
    before = picture(slider)
    click_at(slider, 0.8)
    until(lambda: ear.hears(HIGH), "the second tone", 5)
    assert picture(slider) != before
    click_at(slider, 0.1)
    until(lambda: ear.hears(LOW), "the first tone again", 5)
    desk.press("stop")
    until(ear.hears_nothing, "silence", 5)
    desk.press("play")
    until(lambda: ear.hears(LOW), "the first tone from the start", 15)
    assert desk.program.exit() == 0
    until(ear.hears_nothing, "silence", 5)


def test_the_saved_volume_counts_from_the_start_and_the_slider_changes_it(open_desk, ear):
    desk = open_desk("wav", SavedVolume="0")
    desk.run()
    desk.plays()
    assert max(ear.levels(LOW, HIGH, seconds=1)) < 0.01
    click_at(desk.parts["volume"], 0.95)
    until(lambda: ear.hears(LOW), "the tone", 5)
    press_key("End")
    loud = until(lambda: ear.hears(LOW) and ear.level(LOW), "the tone at its loudest", 5)
    click_at(desk.parts["volume"], 0.6)
    until(lambda: ear.level(LOW) < loud / 2, "a softer tone", 5)
    soft = ear.level(LOW)
    press_key("Home")
    until(lambda: ear.level(LOW) < soft / 10, "nearly nothing", 5)


@pytest.mark.parametrize("song_loop", ["0", "1"])
def test_music_ends_in_silence_or_begins_again(open_desk, ear, song_loop):
    desk = open_desk("short", SongLoop=song_loop)
    desk.run()
    for _ in range(1 + int(song_loop)):
        until(lambda: ear.hears(LOW), "the first tone", 15)
        until(lambda: ear.hears(HIGH), "the second tone", 10)
    if song_loop == "1":
        until(lambda: ear.hears(LOW), "the first tone again", 15)
        desk.press("stop")
    until(ear.hears_nothing, "silence", 10)
    desk.plays_nothing()
    assert max(ear.levels(LOW, HIGH, seconds=2)) < 0.001


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
def test_a_source_that_cannot_be_played_is_recorded_and_ends_nothing(folder, open_desk, ear,
                                                                     media_type, source):
    (folder.path / "broken.wav").write_bytes(bytes(range(256)) * 40)
    (folder.path / "empty.mp3").write_bytes(b"")
    desk = open_desk("wav", SOURCES[source](folder), media_type=media_type)
    desk.run(1)
    desk.run(1)
    assert desk.program.code() is None
    assert ear.hears_nothing()
    # The other task can still be played.
    desk.run(0)
    until(lambda: ear.hears(LOW), "the tone", 15)
    desk.run(1)
    until(ear.hears_nothing, "silence", 10)
    assert desk.program.exit() == 0
