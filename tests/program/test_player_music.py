"""Music from its start to its end, played by both kinds of the fake media player control."""

import time

import pytest

from desk import STREAM, FakeDesk
from desktop import click_at, happens, picture, press_key, until
from editor import open_editor
from harness import SETTINGS
from player import E_NOTIMPL, SCRIPTED, WINDOWS, FakeMediaControl


@pytest.fixture
def open_desk(folder, start, fake_player):
    def open_one(mode=SCRIPTED, song_loop="0", **facts):
        folder.write_settings(SETTINGS | {"SongLoop": song_loop})
        player = FakeMediaControl(folder.path, mode)
        player.plays(**facts)
        return FakeDesk(folder, start, player)
    return open_one


@pytest.mark.parametrize("mode", [SCRIPTED, WINDOWS])
def test_the_control_is_made_once_and_each_start_and_the_end_stop_first(open_desk, mode):
    desk = open_desk(mode)
    assert desk.player.calls() == [], "nothing was to be played yet"
    desk.run(1)
    made = desk.player.calls()
    assert made[0] == "CreateInstance"
    for earlier in ("put_autoStart 0", "put_volume 50", "setMode autoRewind 0"):
        assert made.index(earlier) < made.index(f"put_URL {desk.url}")
    assert made[-2:] == [f"put_URL {desk.url}", "play"]
    desk.run(0)
    desk.run(2)
    assert desk.player.calls(made) == [
        "close", "stop", f"put_URL {STREAM}", "play", "close", "stop"]
    press_key("Home")  # the third row had scrolled the list
    desk.run(1)
    desk.plays()
    made = desk.player.calls()
    desk.press("stop")
    desk.calls_become(["close", "stop"], made)
    desk.plays_nothing()
    desk.press("stop")
    desk.press("play")
    again = ["close", "stop"] * 2 + [f"put_URL {desk.url}", "play"]
    until(lambda: desk.player.calls(made) == again, "music again")
    desk.plays()
    assert desk.program.exit() == 0
    assert desk.player.calls(made) == [*again, "close", "stop", "Unadvise 7", "the end"]


NEAR_THE_END = {"currentPosition": 203.5}
REWINDS = {"fail.setMode": E_NOTIMPL}
# The control's mode, what it is at its start, and what brings it to its end.
ENDINGS = {
    "in the same whole second": (SCRIPTED, {}, {"currentPosition": 204.6, "duration": 205.4}),
    "reported by an event": (SCRIPTED, {}, {"playState": 8}),
    "at once": (WINDOWS, {}, NEAR_THE_END),
    "between two ticks": (WINDOWS, {"lateTick": 1}, NEAR_THE_END),
    "rewinding": (WINDOWS, REWINDS, NEAR_THE_END),
    "rewinding between two ticks": (WINDOWS, REWINDS | {"lateTick": 1}, NEAR_THE_END),
    "before the stated length": (WINDOWS, {"duration": 207.5, "ends": 205}, NEAR_THE_END),
}


@pytest.mark.parametrize("ending, song_loop", [
    *((ending, "0") for ending in ENDINGS),
    *((ending, "1") for ending in ("in the same whole second", "between two ticks", "rewinding")),
    ("in the same whole second", "2")])
def test_the_end_stops_the_music_or_plays_it_again(open_desk, ending, song_loop):
    mode, at_first, at_last = ENDINGS[ending]
    desk = open_desk(mode, song_loop, **at_first)
    desk.run(1)
    desk.plays()
    made, stamp = desk.player.calls(), desk.folder.list.stat().st_mtime_ns
    desk.player.plays(**at_last)
    wanted = ["close", "stop"] + [f"put_URL {desk.url}", "play"] * (song_loop == "1")
    until(lambda: len(desk.player.calls(made)) >= len(wanted), "the end", 15)
    desk.player.plays(playState=3, currentPosition=1)
    assert desk.player.calls(made)[:len(wanted)] == wanted
    assert [call for call in desk.player.all_calls() if call.startswith("(in event)")] == []
    if song_loop == "1":
        desk.plays()
        assert desk.folder.list.stat().st_mtime_ns != stamp, "each run is recorded"
    else:
        desk.plays_nothing()
        assert desk.player.calls(made) == wanted, "once"
        # Closed, it is asked no more; the strip shows the time of day again.
        look = desk.strip()
        until(lambda: desk.strip() != look, "another second")


def test_the_position_slider_seeks_and_follows(open_desk):
    desk = open_desk()
    slider = desk.parts["position"]
    click_at(slider, 0.9)
    desk.run(1)
    desk.plays()

    def seeks():
        return [float(seconds) for seconds in desk.player.arguments("put_currentPosition")]

    assert seeks() == [], "out of use before something plays"
    width = slider[2] - slider[0]
    before = picture(slider)
    click_at(slider, 0.5)
    until(seeks, "the seek")
    assert seeks() == [pytest.approx(int(width * 0.5) * 205 / width, abs=0.001)]
    # It follows the music, and does not stay where it was put.
    desk.player.plays(currentPosition=150)
    until(lambda: picture(slider) != before, "the slider in motion")
    # A whole second: the picture may have changed by the seek alone.
    desk.player.after_ticks(2)
    for key, wanted in (("Left", 148), ("Home", 0)):
        count = len(seeks())
        press_key(key)
        until(lambda: len(seeks()) > count, f"the seek by {key}")
        assert seeks()[-1] == pytest.approx(wanted, abs=0.5)
    desk.press("stop")
    desk.plays_nothing()


def test_music_that_opens_slowly_is_played_and_the_user_need_not_wait(open_desk):
    desk = open_desk(WINDOWS, opening=8, currentPosition=0)
    begun = time.monotonic()
    desk.run(1)
    made = desk.player.calls()
    assert not desk.program.position_is_enabled()
    editor = open_editor(desk.program)
    editor.fill("name", "get up")
    editor.shows("name", "get up")
    assert time.monotonic() < begun + 8, "it is open already: too late for this test"
    editor.close("cancel")
    desk.plays()
    assert desk.player.calls() == made, "it has not ended"


@pytest.mark.parametrize("row, calls", [
    (None, []), (0, [f"put_URL {STREAM}", "play"])], ids=["stopped", "a stream"])
def test_what_ends_the_opening_ends_it_for_good(open_desk, row, calls):
    desk = open_desk(WINDOWS, opening=4)
    desk.run(1)
    made = desk.player.calls()
    if row is None:
        desk.press("stop")
    else:
        desk.run(row)
    calls = ["close", "stop", *calls]
    desk.calls_become(calls, made)
    assert not happens(lambda: desk.program.position_is_enabled()
                       or desk.player.calls(made) != calls, 6)


@pytest.mark.parametrize("why", ["state 0", "play fails", "no file", "no control"])
def test_what_cannot_open_has_ended_without_delay(open_desk, why):
    desk = open_desk(playState=9, currentPosition=0, duration=0)
    expected = ["play", "close", "stop"]
    if why == "state 0":
        desk.player.plays(playState=0)
    elif why == "play fails":
        desk.player.fails("play")
    elif why == "no file":
        desk.music.unlink()
        expected = []  # no control is made for it
    else:
        desk.player.fails("CreateInstance")
        expected = ["CreateInstance"]
    buttons = picture(desk.parts["toolbar"])
    desk.run(1)
    until(lambda: desk.player.calls()[-3:] == expected, "the end", 10)
    desk.plays_nothing()
    until(lambda: picture(desk.parts["toolbar"]) == buttons, "the buttons as before", 10)
    if why == "no control":
        # The next run tries again.
        desk.player.fails()
        desk.run(1)
        made = desk.player.calls()
        assert made[:2] == ["CreateInstance"] * 2
        assert made[-2:] == [f"put_URL {desk.url}", "play"]
