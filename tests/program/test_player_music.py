"""Music from its start to its end, with both controls that stand in for the media player's: the one
that says what the test tells it and stays where it is at the end, and the one that goes by itself
and goes back to the start, as Windows' own does."""

import pytest

from desk import STREAM, Desk
from harness import SETTINGS, click_at, picture, press_key, until
from joblist import now
from player import E_FAIL, SCRIPTED, WINDOWS, StandIn, in_place_of_the_real_control


@pytest.fixture(scope="module", autouse=True)
def stand_in():
    yield from in_place_of_the_real_control()


@pytest.fixture(params=[SCRIPTED, WINDOWS])
def player(folder, request):
    return StandIn(folder.path, request.param)


@pytest.fixture
def desk(folder, start, player):
    return Desk(folder, start, player)


def is_over(desk, made):
    return lambda: desk.player.calls()[len(made):] == ["close", "stop"]


def test_the_control_is_made_once_and_each_start_stops_first(desk):
    assert desk.player.calls() == [], "nothing was to be played yet"
    desk.run(1)
    made = desk.player.calls()
    assert made[0] == "CreateInstance"
    assert made.index("put_autoStart 0") < made.index(f"put_URL {desk.url}")
    assert made.index("put_volume 50") < made.index(f"put_URL {desk.url}")
    assert made.index("setMode autoRewind 0") < made.index(f"put_URL {desk.url}")
    assert made[-2:] == [f"put_URL {desk.url}", "play"]
    desk.run(0)
    desk.run(2)
    assert desk.player.calls()[len(made):] == [
        "close", "stop", f"put_URL {STREAM}", "play", "close", "stop"]


def test_the_stop_button_closes_and_stops(desk):
    desk.run(1)
    until(desk.program.position_is_enabled, "the music")
    made = desk.player.calls()
    desk.press(3)
    until(is_over(desk, made), "the end of the music")
    until(lambda: not desk.program.position_is_enabled(), "the slider out of use")
    desk.press(3)
    desk.press(2)
    until(lambda: len(desk.player.calls()) >= len(made) + 6, "music again")
    assert desk.player.calls()[len(made) + 2:] == ["close", "stop", f"put_URL {desk.url}", "play"]


def test_leaving_stops_first_and_lets_go_of_the_control(desk):
    desk.run(1)
    made = desk.player.calls()
    assert desk.program.exit() == 0
    assert desk.player.calls()[len(made):] == ["close", "stop", "Unadvise 7", "the end"]


def test_music_that_has_ended_stops(desk):
    desk.run(1)
    made = desk.player.calls()
    until(desk.program.position_is_enabled, "the music")
    desk.player.comes_to_its_end()
    until(is_over(desk, made), "the end of the music")
    until(lambda: not desk.program.position_is_enabled(), "the slider out of use")
    # Closed, it is asked no more; the strip has the time of day again.
    look = desk.strip()
    until(lambda: desk.strip() != look, "another second")


def test_nothing_is_called_from_inside_an_event(desk):
    desk.player.plays(playState=9)
    desk.run(1)
    made = desk.player.calls()
    if desk.player.mode == SCRIPTED:
        desk.shows(playState=3)
        desk.player.plays(playState=8)
    else:
        desk.player.plays(lateTick=1)
        desk.player.comes_to_its_end()
    until(is_over(desk, made), "the end of the music")
    calls = desk.player.all_calls()
    assert "event 5101 8" in calls
    assert [call for call in calls if call.startswith("(in event)")] == []


def test_continuous_play_begins_again_with_the_address(folder, start, player):
    folder.write_settings(SETTINGS | {"SongLoop": "1"})
    desk = Desk(folder, start, player)
    desk.run(1)
    made = desk.player.calls()
    stamp = desk.folder.list.stat().st_mtime_ns
    desk.player.comes_to_its_end()
    until(lambda: len(desk.player.calls()) >= len(made) + 4, "music again")
    desk.player.plays(currentPosition=1)
    desk.player.after_ticks(3)
    again = desk.player.calls()[len(made):]
    round_trip = ["close", "stop", f"put_URL {desk.url}", "play"]
    assert again == round_trip * (len(again) // 4)
    assert desk.folder.list.stat().st_mtime_ns != stamp, "each run is recorded"
    until(desk.program.position_is_enabled, "the music")


def test_continuous_play_goes_on_with_what_is_selected_at_the_end(folder, start, player):
    folder.write_settings(SETTINGS | {"SongLoop": "1"})
    desk = Desk(folder, start, player)
    # A stream, and then a program: neither is the music that has ended.
    for row, again in ((0, [f"put_URL {STREAM}", "play"]), (2, [])):
        desk.player.plays(currentPosition=65)
        desk.run(1)
        made, begun, of_the_music = desk.player.calls(), now(), desk.last_run(1)
        click_at(desk.rows[row], y=0.2)
        desk.player.comes_to_its_end()
        until(lambda: desk.last_run(row) >= begun, "the run of what is selected")
        # The stream stands at another moment each time that it is asked, the program tells the day.
        for moment in ("02:05", "02:06"):
            look = desk.strip()
            desk.player.plays(currentPositionString=moment)
            until(lambda: desk.strip() != look, "another second")
        assert desk.player.calls()[len(made):] == ["close", "stop", *again]
        assert desk.last_run(1) == of_the_music, "the ended one was not run again"
        assert not desk.program.position_is_enabled()


def seeks(player):
    return [float(call.split()[1]) for call in player.calls()
            if call.startswith("put_currentPosition ")]


def test_the_position_slider_seeks_and_follows(desk):
    click_at(desk.parts["position"], 0.9)
    desk.run(1)
    until(desk.program.position_is_enabled, "the music")
    assert seeks(desk.player) == [], "out of use before something plays"
    left, _, right, _ = desk.parts["position"]
    width = right - left
    before = picture(desk.parts["position"])
    click_at(desk.parts["position"], 0.5)
    until(lambda: seeks(desk.player), "the seek")
    assert seeks(desk.player) == [pytest.approx(
        int(width * 0.5) * desk.player.facts["duration"] / width, abs=0.001)]
    # It goes where the music goes, not where it was put.
    desk.player.plays(currentPosition=150)
    until(lambda: picture(desk.parts["position"]) != before, "the slider in motion")
    # A whole second: the picture may have changed by the seek alone.
    desk.player.after_ticks(2)
    press_key("Left")
    until(lambda: len(seeks(desk.player)) == 2, "the seek by key")
    goes_on = 20 if desk.player.mode == WINDOWS else 0
    assert 148 <= seeks(desk.player)[1] <= 148 + goes_on
    press_key("Home")
    until(lambda: len(seeks(desk.player)) == 3, "the seek to the start")
    assert seeks(desk.player)[2] == 0
    desk.press(3)
    until(lambda: not desk.program.position_is_enabled(), "the slider out of use")


def test_a_control_that_could_not_be_made_is_tried_again_at_the_next_play(folder, start, player):
    player.refuses("CreateInstance", E_FAIL)
    desk = Desk(folder, start, player)
    desk.run(1)
    assert desk.player.calls() == ["CreateInstance"], "once for each start"
    desk.player.refuses(None, None)
    desk.run(1)
    made = desk.player.calls()
    assert made[:2] == ["CreateInstance"] * 2
    assert made[-2:] == [f"put_URL {desk.url}", "play"]
    until(desk.program.position_is_enabled, "the music")
    # The words that there is no player have gone.
    desk.player.after_ticks(1)
