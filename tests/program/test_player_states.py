"""The program with a fake media player control that answers what the test tells it."""

import re

import pytest

from desk import STREAM, FakeDesk
from desktop import click_at, happens, picture, press_key, run, until
from harness import SETTINGS
from player import E_NOTIMPL, NOTHING, FakeMediaControl, register


@pytest.fixture
def desk(folder, start, player):
    return FakeDesk(folder, start, player)


def test_a_stream_shows_no_length_and_never_ends(desk):
    desk.run(0)
    playing = desk.look_of("01:05 * 甲乙丙")
    assert desk.shows(playState=3, currentPosition=0, duration=0) == playing
    assert not desk.program.position_is_enabled()
    assert desk.player.calls()[-2:] == [f"put_URL {STREAM}", "play"], "it goes on"
    # Music after it shows its length again.
    desk.player.plays(playState=3, currentPosition=65, duration=205)
    desk.run(1)
    with_length = desk.look_of("01:05 / 03:25 * 甲乙丙")
    assert with_length != playing
    assert desk.shows(playState=3) == with_length


def test_the_strip_does_without_members_that_are_not_implemented(desk):
    desk.run(1)
    expected = desk.look_of("01:05 / 1:03:25 * 正在播放")
    desk.player.fails("playState", "status", "currentPositionString", "durationString",
                      result=E_NOTIMPL)
    assert desk.shows(playState=3, duration=3805) == expected
    assert "event 5101 3" in desk.player.all_calls()
    # The state comes by event only, also the next one.
    until(lambda: desk.shows(playState=6) != expected, "another state")
    desk.player.fails()
    assert desk.strip() == desk.look_of("正在緩衝")


def saved_volume(folder):
    """None at the moment in which the system writes the file again."""
    match = re.search(r"SavedVolume=(\d+)", folder.settings_text())
    return match and int(match[1])


def volumes(player):
    return [int(volume) for volume in player.arguments("put_volume")]


@pytest.mark.parametrize("saved, given", [("37", 37), ("150", 100)])
def test_the_control_gets_the_saved_volume_before_it_plays(folder, start, player, saved, given):
    folder.write_settings(SETTINGS | {"SavedVolume": saved})
    FakeDesk(folder, start, player).run(0)
    calls = player.calls()
    assert volumes(player)[0] == given
    assert calls.index(f"put_volume {given}") < calls.index("play")
    assert saved_volume(folder) == int(saved), "it was only read"


def test_the_volume_slider_sets_the_control_and_the_file(desk):
    desk.run(0)
    slider = desk.parts["volume"]
    left, top, right, bottom = slider
    width, middle = right - left, (top + bottom) // 2
    before = picture(slider)

    def is_set(wanted, after):
        until(lambda: volumes(desk.player)[-1] == wanted == saved_volume(desk.folder),
              f"volume {wanted} after {after}", 10)

    for share in (0.25, 0.8):
        click_at(slider, share)
        # The column under the pointer is counted, and halves go to the even number.
        is_set(round(int(width * share) * 100 / width), f"a click at {share}")
        assert picture(slider) != before
    for key, wanted in (("Right", 82), ("Left", 80), ("Home", 0), ("Up", 2), ("Down", 0),
                        ("End", 100), ("Right", 100)):
        press_key(key)
        is_set(wanted, key)
    run("xdotool", "mousemove", left + 60, middle, "mousedown", 1, "mousemove", left + 40, middle,
        "mousemove", left + 14, middle, "mouseup", 1)
    is_set(20, "a drag")


STREAMING = ["put_volume", "playState", "status"]
FOLLOWING = ["put_URL", "play", "stop", "close", "currentPosition", "put_currentPosition",
             "currentPositionString", "currentMedia", "duration", "durationString"]


@pytest.mark.parametrize("result, members", [
    (E_NOTIMPL, STREAMING + FOLLOWING),
    (NOTHING, ["status", "currentMedia", "currentPositionString", "durationString"])],
    ids=["not implemented", "nothing given"])
def test_no_failing_member_ends_the_program_or_hides_the_run(desk, result, members):
    def count(member):
        return [call.split()[0] for call in desk.player.all_calls()].count(member)

    desk.run(1)
    for member in members:
        desk.player.fails(member, result=result)
        before = count(member)
        desk.run(0 if member in STREAMING else 1)
        click_at(desk.parts["volume"], 0.3)
        click_at(desk.parts["position"], 0.3)
        if member in ("stop", "close"):
            desk.press("stop")
        until(lambda: count(member) > before, f"a call of {member}", 10)
        assert desk.program.code() is None, member
    desk.player.fails()
    desk.run(1)
    assert desk.player.calls()[-2:] == [f"put_URL {desk.url}", "play"]
    assert desk.program.exit() == 0


@pytest.mark.parametrize("result, members", [
    (E_NOTIMPL, ["put_autoStart", "put_enableErrorDialogs", "put_volume", "setMode", "Advise"]),
    (E_NOTIMPL, ["FindConnectionPoint"]), (NOTHING, ["FindConnectionPoint"]),
    (E_NOTIMPL, ["ConnectionPointContainer"])])
def test_a_control_that_fails_at_first_plays_all_the_same(folder, start, player, result, members):
    player.fails(*members, result=result)
    desk = FakeDesk(folder, start, player)
    desk.run(1)
    assert set(members) <= {call.split()[0] for call in player.calls()}
    assert player.calls()[-2:] == [f"put_URL {desk.url}", "play"]
    assert desk.shows() == desk.look_of("01:05 / 03:25 * 甲乙丙")


def is_still(desk):
    """Whether the strip shows the same for longer than the time of day ever does."""
    look = desk.strip()
    return not happens(lambda: desk.strip() != look, 2.2)


def runs_without_a_control(desk):
    """Runs all tasks, and returns what the strip shows instead of the time of day."""
    assert not is_still(desk)
    desk.run(0)
    until(lambda: is_still(desk), "the text that there is no player", 10)
    text = desk.strip()
    desk.run(1)
    desk.run(2)
    assert desk.program.code() is None
    assert "play" not in desk.player.calls()
    return text


@pytest.mark.parametrize("member, result", [
    ("CreateInstance", E_NOTIMPL), ("controls", NOTHING), ("settings", E_NOTIMPL)])
def test_without_its_parts_the_control_is_not_used(folder, start, player, member, result):
    player.fails(member, result=result)
    runs_without_a_control(FakeDesk(folder, start, player))
    assert member in player.calls()


def test_without_a_control_the_strip_says_so_and_all_else_works(folder, start, player):
    register(r"C:\windows\system32\no such player.dll")
    try:
        desk = FakeDesk(folder, start, player)
        text = runs_without_a_control(desk)
        # The text goes in time.
        until(lambda: desk.strip() != text, "the time of day", 30)
        assert not is_still(desk)
        click_at(desk.parts["volume"], 0.3)
        until(lambda: saved_volume(folder) not in (None, 50), "the volume in the file")
        desk.press("stop")
        assert desk.program.exit() == 0
    finally:
        register(FakeMediaControl.LIBRARY)
    assert player.all_calls() == []
    desk = FakeDesk(folder, start, player)
    desk.run(1)
    assert desk.look_of("找不到媒體播放程式") == text
