"""The program with a control in place of the media player's that plays what the test tells it."""

import re
import time
from datetime import timedelta
from itertools import pairwise

import pytest

from desk import STREAM, Dates, Desk, date_text
from harness import SETTINGS, click_at, picture, press_key, run, until
from joblist import now
from player import E_FAIL, E_NOTIMPL, NOTHING, StandIn, in_place_of_the_real_control, register


@pytest.fixture(scope="module", autouse=True)
def stand_in():
    yield from in_place_of_the_real_control()


@pytest.fixture
def player(folder):
    return StandIn(folder.path)


@pytest.fixture
def desk(folder, start, player):
    return Desk(folder, start, player)


def away_from_the_next_hour():
    """Waits where the hour is about to change: a look would be of the old one."""
    until(lambda: (now() + timedelta(seconds=90)).hour == now().hour, "the next hour", 120)


def test_the_strip_shows_for_each_state_what_is_agreed(desk):
    away_from_the_next_hour()
    desk.player.plays(playState=9)
    desk.run(1)
    status = desk.look_of("甲乙丙")
    playing = desk.look_of("01:05 / 03:25 * 甲乙丙")
    dates = Dates(desk)
    assert len({look.tobytes() for look in (status, playing, dates.look)}) == 3
    expected = {1: status, 3: playing, 6: status, 9: status}
    # What has played ends when it says that it has ended or stopped: playing comes last.
    states = sorted(range(14), key=lambda state: state == 3)
    shown = {state: desk.shows(playState=state) for state in states}
    # Each is another one than the one before, the time of day by its seconds.
    assert all(shown[state] != shown[before] for before, state in pairwise(states))
    for state, look in shown.items():
        if state in expected:
            assert look == expected[state], f"state {state}"
        else:
            assert dates.are(look), f"state {state}"
    assert not any(dates.are(shown[state]) for state in expected)


def test_while_paused_the_strip_shows_the_time_of_day(desk):
    desk.run(1)
    before = now()
    look = desk.shows(playState=2)
    seconds = int((now() - before).total_seconds()) + 1
    texts = [date_text(before + timedelta(seconds=second)) for second in range(seconds + 1)]
    assert [text for text in texts if desk.look_of(text) == look], texts


def test_a_stream_shows_no_length_and_never_ends(desk):
    desk.run(0)
    playing = desk.look_of("01:05 * 甲乙丙")
    assert desk.shows(playState=3, currentPosition=0, duration=0) == playing
    assert not desk.program.position_is_enabled()
    assert desk.player.calls()[-2:] == [f"put_URL {STREAM}", "play"], "it goes on"
    assert desk.shows(playState=6) == desk.look_of("甲乙丙")
    # Music after it has its length again.
    desk.player.plays(playState=3, currentPosition=65, duration=205)
    desk.run(1)
    with_length = desk.look_of("01:05 / 03:25 * 甲乙丙")
    assert with_length != playing
    assert desk.shows(playState=3) == with_length


def test_what_the_control_keeps_to_itself_is_told_all_the_same(desk):
    desk.run(1)
    told = desk.look_of("01:05 / 1:03:25 * 正在播放")
    desk.player.facts |= {f"fail.{member}": E_NOTIMPL for member in (
        "playState", "status", "currentPositionString", "durationString")}
    assert desk.shows(playState=3, duration=3805) == told
    assert "event 5101 3" in desk.player.all_calls()
    # The state comes by event only, also the next one.
    until(lambda: desk.shows(playState=6) != told, "another state")
    desk.player.refuses(None, None)
    assert desk.strip() == desk.look_of("正在緩衝")


def saved_volume(folder):
    """None at the moment in which the system writes the file anew."""
    match = re.search(r"SavedVolume=(\d+)", folder.settings_text())
    return match and int(match[1])


def volumes(player):
    return [int(call.split()[1]) for call in player.calls() if call.startswith("put_volume ")]


@pytest.mark.parametrize("saved, given", [("0", 0), ("37", 37), ("100", 100), ("150", 100)])
def test_the_control_gets_the_saved_volume_before_it_plays(folder, start, player, saved, given):
    folder.write_settings(SETTINGS | {"SavedVolume": saved})
    desk = Desk(folder, start, player)
    desk.run(0)
    calls = desk.player.calls()
    assert volumes(desk.player)[0] == given
    assert calls.index(f"put_volume {given}") < calls.index("play")
    assert saved_volume(folder) == int(saved), "what was only read is not written"


def test_the_volume_slider_tells_the_control_and_the_file(desk):
    desk.run(0)
    width = desk.parts["volume"][2] - desk.parts["volume"][0]
    before = picture(desk.parts["volume"])
    for share in (0.25, 0.8):
        click_at(desk.parts["volume"], share)
        # The column that the pointer stands on is counted, and halves go to the even number.
        wanted = round(int(width * share) * 100 / width)
        until(lambda: volumes(desk.player)[-1] == wanted, f"volume {wanted}", 10)
        until(lambda: saved_volume(desk.folder) == wanted, f"volume {wanted} in the file", 10)
        assert picture(desk.parts["volume"]) != before
    for key, wanted in (("Right", 82), ("Left", 80), ("Home", 0), ("Up", 2), ("Down", 0),
                        ("End", 100), ("Right", 100)):
        press_key(key)
        until(lambda: saved_volume(desk.folder) == wanted, f"{wanted} after {key}", 10)
        assert volumes(desk.player)[-1] == wanted
    left, top, right, bottom = desk.parts["volume"]
    middle = (top + bottom) // 2
    run("xdotool", "mousemove", left + 60, middle, "mousedown", 1, "mousemove", left + 40, middle,
        "mousemove", left + 14, middle, "mouseup", 1)
    until(lambda: saved_volume(desk.folder) == 20, "the volume where it was dragged to", 10)
    assert volumes(desk.player)[-1] == 20


STREAMING = ["put_volume", "playState", "status"]
FOLLOWING = ["put_URL", "play", "stop", "close", "currentPosition", "put_currentPosition",
             "currentPositionString", "currentMedia", "duration", "durationString"]


def called(player, member):
    """How often a member was called."""
    return [call.split()[0] for call in player.all_calls()].count(member)


@pytest.mark.parametrize("result, members", [
    (E_NOTIMPL, STREAMING + FOLLOWING), (E_FAIL, STREAMING + FOLLOWING),
    (NOTHING, ["status", "currentMedia", "currentPositionString", "durationString"])],
    ids=["not implemented", "failed", "nothing given"])
def test_no_refusal_ends_the_program_or_hides_the_run(desk, result, members):
    desk.run(1)
    for member in members:
        desk.player.refuses(member, result)
        before = called(desk.player, member)
        desk.run(0 if member in STREAMING else 1)
        click_at(desk.parts["volume"], 0.3)
        click_at(desk.parts["position"], 0.3)
        if member in ("stop", "close"):
            desk.press(3)
        until(lambda: called(desk.player, member) > before, f"a call of {member}", 10)
        assert desk.program.code() is None, member
    desk.player.refuses(None, None)
    desk.run(1)
    assert desk.player.calls()[-2:] == [f"put_URL {desk.url}", "play"]
    assert desk.program.exit() == 0


@pytest.mark.parametrize("member, result", [
    ("put_autoStart", E_FAIL), ("put_enableErrorDialogs", E_NOTIMPL), ("put_volume", E_FAIL),
    ("setMode", E_NOTIMPL),
    ("ConnectionPointContainer", E_FAIL), ("FindConnectionPoint", E_FAIL),
    ("FindConnectionPoint", NOTHING), ("Advise", E_FAIL)])
def test_a_control_that_refuses_at_first_plays_all_the_same(folder, start, player, member, result):
    player.refuses(member, result)
    desk = Desk(folder, start, player)
    desk.run(1)
    assert [call for call in desk.player.calls() if call.startswith(member)]
    assert desk.player.calls()[-2:] == [f"put_URL {desk.url}", "play"]
    assert desk.shows() == desk.look_of("01:05 / 03:25 * 甲乙丙")
    assert desk.program.exit() == 0


def stands_still(desk):
    """Whether the strip shows the same for longer than the time of day ever does."""
    begun, look = time.monotonic(), desk.strip()
    while time.monotonic() < begun + 2.2:
        if desk.strip() != look:
            return False
        time.sleep(0.05)
    return True


def runs_without_a_control(desk):
    """Runs all tasks, and returns what the strip shows in place of the time of day."""
    assert not stands_still(desk)
    desk.run(0)
    until(lambda: stands_still(desk), "the words that there is no player", 10)
    words = desk.strip()
    desk.run(1)
    desk.run(2)
    assert desk.program.code() is None
    assert "play" not in desk.player.calls()
    return words


@pytest.mark.parametrize("member, result", [
    ("CreateInstance", E_FAIL), ("controls", E_FAIL), ("controls", NOTHING), ("settings", E_FAIL)])
def test_a_control_that_cannot_be_made_is_none(folder, start, player, member, result):
    player.refuses(member, result)
    desk = Desk(folder, start, player)
    runs_without_a_control(desk)
    assert member in player.calls()
    assert desk.program.exit() == 0


def test_without_a_control_the_strip_says_so_and_all_else_goes_on(folder, start, player):
    register(r"C:\windows\system32\no such player.dll")
    try:
        desk = Desk(folder, start, player)
        words = runs_without_a_control(desk)
        # In time they make room again.
        until(lambda: desk.strip() != words, "the time of day", 30)
        assert not stands_still(desk)
        click_at(desk.parts["volume"], 0.3)
        until(lambda: saved_volume(folder) not in (None, 50), "the volume in the file")
        desk.press(3)
        assert desk.program.exit() == 0
    finally:
        register(StandIn.LIBRARY)
    assert player.all_calls() == []
    desk = Desk(folder, start, player)
    desk.run(1)
    assert desk.look_of("找不到媒體播放程式") == words
