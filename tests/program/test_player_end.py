"""How music opens and ends where the control goes by itself, as Windows' own is documented to."""

import time
from datetime import timedelta

import pytest

from desk import STREAM, Desk
from due import NEVER_RUN, has_run, saved, start_with
from editor import open_editor
from harness import SETTINGS, click_at, picture, press_key, until, windows_path
from joblist import APPLICATION, MINUTES, MUSIC, Task
from player import E_FAIL, E_NOTIMPL, SCRIPTED, WINDOWS, StandIn, in_place_of_the_real_control

LIMIT = 30  # seconds for opening


@pytest.fixture(scope="module", autouse=True)
def stand_in():
    yield from in_place_of_the_real_control()


@pytest.fixture
def player(folder):
    return StandIn(folder.path, WINDOWS)


@pytest.fixture
def desk(folder, start, player):
    return Desk(folder, start, player)


REWINDS = {"fail.setMode": E_NOTIMPL}
ENDINGS = {
    "at once": {},
    "between two ticks": {"lateTick": 1},
    "rewinding": REWINDS,
    "rewinding between two ticks": REWINDS | {"lateTick": 1},
    "before the stated length": {"duration": 207.5, "ends": 205},
}


@pytest.mark.parametrize("song_loop", ["0", "1"], ids=["once", "again and again"])
@pytest.mark.parametrize("ending", ENDINGS)
def test_the_end_is_noticed(folder, start, player, ending, song_loop):
    folder.write_settings(SETTINGS | {"SongLoop": song_loop})
    player.plays(**ENDINGS[ending])
    desk = Desk(folder, start, player)
    desk.run(1)
    until(desk.program.position_is_enabled, "the music")
    made = desk.player.calls()
    # Away from the second before the end, in which the thread may stand still.
    desk.player.plays(currentPosition=203.5)
    again = [f"put_URL {desk.url}", "play"] if song_loop == "1" else []
    wanted = ["close", "stop", *again]
    until(lambda: len(desk.player.calls()) >= len(made) + len(wanted), "the end", 15)
    desk.player.plays(currentPosition=1)
    assert desk.player.calls()[len(made):][:len(wanted)] == wanted
    if song_loop == "1":
        until(desk.program.position_is_enabled, "the music again")
    else:
        desk.player.plays(currentPosition=203.5)
        until(lambda: not desk.program.position_is_enabled(), "the slider out of use")
        assert desk.player.calls()[len(made):] == wanted, "once"


def test_music_that_opens_slowly_is_played_and_nobody_has_to_wait(desk):
    desk.player.plays(opening=8, currentPosition=0)
    begun = time.monotonic()
    desk.run(1)
    made = desk.player.calls()
    assert not desk.program.position_is_enabled()
    editor = open_editor(desk.program)
    editor.fill("name", "get up")
    until(lambda: editor.texts()["name"] == "get up", "what was typed", 3)
    assert time.monotonic() < begun + 8, "it is open already: too late for this test"
    editor.close("cancel")
    until(desk.program.position_is_enabled, "the music")
    assert desk.player.calls() == made, "it has not ended"


def test_music_that_never_opens_has_ended_after_half_a_minute(desk):
    desk.player.plays(opening=1_000)
    desk.run(1)
    made, begun = desk.player.calls(), time.monotonic()
    until(lambda: len(desk.player.calls()) > len(made), "the end of the music")
    assert time.monotonic() > begun + LIMIT - 3
    until(lambda: desk.player.calls()[len(made):] == ["close", "stop"], "the end of the music", 5)


@pytest.mark.parametrize("row", [None, 0, 2], ids=["stopped", "a stream", "a program"])
def test_what_ends_the_opening_ends_it_for_good(desk, row):
    desk.player.plays(opening=4)
    desk.run(1)
    made = desk.player.calls()
    if row is None:
        desk.press(3)
    else:
        desk.run(row)
    calls = ["close", "stop"] + ([f"put_URL {STREAM}", "play"] if row == 0 else [])
    until(lambda: desk.player.calls()[len(made):] == calls, "the end of the opening")
    begun = time.monotonic()
    while time.monotonic() < begun + 6:
        assert not desk.program.position_is_enabled()
        assert desk.player.calls()[len(made):] == calls


@pytest.mark.parametrize("why", ["state 0", "play refused", "no file", "no control"])
def test_what_cannot_open_has_ended_without_delay(folder, start, why):
    player = StandIn(folder.path, SCRIPTED)
    player.plays(playState=9, currentPosition=0, duration=0)
    desk = Desk(folder, start, player)
    if why == "state 0":
        player.plays(playState=0)
    elif why == "play refused":
        player.refuses("play", E_FAIL)
    elif why == "no file":
        desk.run(0)
        desk.press(3)
        until(lambda: player.calls()[-1] == "stop", "the end of the stream")
        desk.music.unlink()
    else:
        player.refuses("CreateInstance", E_FAIL)
    before, buttons = len(player.calls()), picture(desk.parts["toolbar"])
    desk.run(1)
    expected = {
        "state 0": ["play", "close", "stop"], "play refused": ["play", "close", "stop"],
        # Stopped by the run, and then because it has ended.
        "no file": ["close", "stop"] * 2, "no control": ["CreateInstance"]}[why]
    until(lambda: player.calls()[before:][-len(expected):] == expected, "the end", 10)
    until(lambda: not desk.program.position_is_enabled(), "the slider out of use", 10)
    until(lambda: picture(desk.parts["toolbar"]) == buttons, "the buttons as before", 10)


def test_a_sound_of_one_second_keeps_no_task_from_running(folder, start, player):
    folder.write_settings(SETTINGS | {"SongLoop": "1"})
    player.plays(currentPosition=0, duration=1)
    sound = folder.path / "sound.wav"
    sound.write_bytes(b"any")

    def tasks_at(moment):
        return [Task("音樂", windows_path(sound), last_run=NEVER_RUN, media_type=MUSIC),
                Task("程式", "no such program", moment, NEVER_RUN, MINUTES, 1,
                     media_type=APPLICATION)]

    program, moment = start_with(
        folder, lambda: start(environment=player.environment), tasks_at, ahead=15)
    row = program.row(0)
    program.click({"rect": row})
    click_at(row, y=0.2)
    press_key("Return")
    until(lambda: has_run(folder, "音樂"), "the first sound")
    assert not has_run(folder, "程式"), "too late for this test"
    until(lambda: has_run(folder, "程式"), "the task", 60)
    assert saved(folder)["程式"].last_run < moment + timedelta(seconds=5)
    assert player.calls().count("play") > 2, "the sound was played again and again"
