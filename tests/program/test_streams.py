"""A stream that is lost is tried again, and rows say how their last run went. The fake control has
the program's clock, so that a minute takes no time."""

import pytest

from desk import APPLICATION_TASK, STREAM, FakeDesk
from desktop import happens, picture, press_key, until
from editor import open_editor
from player import WINDOWS, FakeMediaControl
from task_list import NOTE, Task

NEVER = 1_000_000
NEVER_OPENS = 31  # seconds until a start that does not open is lost
NOTE_TASK = Task("記事", "起來走走", media_type=NOTE)
A_TRY = [f"put_URL {STREAM}", "play"]
PLAYS = "電台，網路電台，正在播放，已啟動，"
LOST = "電台，網路電台，無法連線，將再次嘗試，已啟動，"
NOT_STARTED = "程式，應用程式，無法啟動程式："


class StreamDesk(FakeDesk):
    """The desk with a control that behaves as on Windows."""

    def __init__(self, folder, start, third=APPLICATION_TASK, **facts):
        player = FakeMediaControl(folder.path, WINDOWS)
        player.plays(currentPosition=0, **facts)
        super().__init__(folder, start, player, third)

    def has_text(self, beginning, row=0):
        until(lambda: self.program.row_texts()[row].startswith(beginning), f"the text {beginning}")

    def is_tried_after(self, seconds):
        made = self.player.calls()
        self.player.passes(seconds)
        self.calls_become(A_TRY, made, 10)

    def is_not_tried_within(self, seconds):
        made = self.player.calls()
        self.player.passes(seconds)
        # The watch over the stream asks once a second, also while the window is hidden.
        asked = self.player.all_calls().count("playState")
        until(lambda: self.player.all_calls().count("playState") >= asked + 6, "some ticks")
        assert self.player.calls(made) == []

    def is_lost_after(self, seconds):
        """The loss is noticed so much later, and no try is made before."""
        self.is_not_tried_within(seconds)
        self.has_text(LOST)

    def is_awake(self):
        wishes = [call for call in self.player.all_calls() if call.startswith("awake ")]
        return bool(wishes) and wishes[-1] == "awake 1"


@pytest.fixture
def open_desk(folder, start, fake_player):
    def open_one(**facts):
        return StreamDesk(folder, start, **facts)
    return open_one


def test_a_refused_stream_is_tried_later_and_later_and_nothing_else_changes(open_desk):
    desk = open_desk(refuses=NEVER)
    desk.run(0)
    made = desk.player.calls()
    desk.is_lost_after(NEVER_OPENS)
    toolbar, stamp = picture(desk.parts["toolbar"]), desk.folder.list.stat().st_mtime_ns
    for delay in (5, 15, 30, 60, 60):
        if delay > 5:
            desk.is_not_tried_within(delay - 9)
        desk.is_tried_after(9)
        desk.is_lost_after(NEVER_OPENS)
    assert desk.player.calls(made) == 5 * A_TRY, "no stop"
    assert picture(desk.parts["toolbar"]) == toolbar
    assert desk.folder.list.stat().st_mtime_ns == stamp
    assert not desk.program.position_is_enabled()
    desk.player.plays(refuses=0)
    desk.is_tried_after(60)
    desk.has_text(PLAYS)
    desk.is_not_tried_within(3_600)


def test_a_stream_that_comes_back_at_the_third_try_plays_on(open_desk):
    desk = open_desk(refuses=3)
    desk.run(0)
    before = picture(desk.rows[0])
    for delay in (5, 15, 30):
        desk.is_lost_after(NEVER_OPENS)
        desk.is_tried_after(delay)
    desk.has_text(PLAYS)
    until(lambda: picture(desk.rows[0]) != before, "the mark of playing")
    desk.is_not_tried_within(3_600)


def test_a_stream_that_plays_for_a_minute_is_tried_after_five_seconds_each_time(open_desk):
    desk = open_desk(plays=90)
    desk.run(0)
    for _ in range(3):
        desk.has_text(PLAYS)
        desk.is_not_tried_within(61)
        desk.player.passes(29)
        desk.has_text(LOST)
        desk.is_tried_after(5)


@pytest.mark.parametrize("opening, delays", [(25, []), (50, [5, 15]), (NEVER, [5, 15, 30, 60, 60])],
                         ids=["in time", "late", "never"])
def test_a_stream_that_opens_is_lost_after_half_a_minute(open_desk, opening, delays):
    desk = open_desk(opening=opening)
    desk.run(0)
    desk.is_not_tried_within(20)
    desk.is_not_tried_within(11)
    for delay in delays:
        desk.has_text(LOST)
        desk.is_tried_after(delay)
        desk.is_lost_after(NEVER_OPENS)
    if opening != NEVER:
        # It opens although it counts as lost, before the next try.
        desk.player.passes(20)
        desk.has_text(PLAYS)
        desk.is_not_tried_within(600)


@pytest.mark.parametrize("row, third", [(None, APPLICATION_TASK), (1, APPLICATION_TASK),
                                        (2, APPLICATION_TASK), (2, NOTE_TASK)],
                         ids=["the stop button", "music", "a program", "a note"])
def test_a_stop_or_another_task_ends_the_tries(open_desk, row, third):
    desk = open_desk(refuses=NEVER, third=third)
    desk.run(0)
    desk.is_lost_after(NEVER_OPENS)
    made = desk.player.calls()
    if row is None:
        desk.press("stop")
    else:
        desk.run(row)
    calls = ["close", "stop"] + [f"put_URL {desk.url}", "play"] * (row == 1)
    desk.calls_become(calls, made)
    desk.has_text("電台，網路電台，無法播放，已啟動，")
    desk.player.passes(600)
    assert not happens(lambda: f"put_URL {STREAM}" in desk.player.calls(made), 3)


def test_tries_go_on_while_the_editor_is_open_and_while_the_window_is_hidden(open_desk):
    desk = open_desk(refuses=NEVER)
    desk.run(0)
    editor = open_editor(desk.program)
    desk.is_lost_after(NEVER_OPENS)
    desk.is_tried_after(5)
    editor.close("cancel")
    desk.has_text(LOST)
    desk.program.hide()
    desk.is_not_tried_within(NEVER_OPENS)
    desk.is_tried_after(15)
    desk.is_not_tried_within(NEVER_OPENS)
    desk.is_not_tried_within(10)
    desk.is_tried_after(20)
    desk.program.show_again()
    desk.has_text(LOST)


def test_the_computer_stays_awake_while_a_stream_plays_and_for_ten_minutes_of_trying(open_desk):
    desk = open_desk()
    desk.run(0)
    until(desk.is_awake, "the wish to stay awake")
    desk.player.passes(7_200)
    desk.player.after_ticks(2)
    assert desk.is_awake()
    desk.player.plays(plays=1, refuses=NEVER)
    desk.has_text(LOST)
    desk.player.passes(590)
    desk.player.after_ticks(2)
    assert desk.is_awake()
    desk.player.passes(10)
    until(lambda: not desk.is_awake(), "the end of the wish")
    desk.player.plays(plays=0, refuses=0)
    desk.player.passes(NEVER_OPENS)
    desk.player.after_ticks(2)
    desk.player.passes(60)
    until(desk.is_awake, "the wish again")
    desk.press("stop")
    until(lambda: not desk.is_awake(), "the end of the wish")


def test_rows_say_why_their_last_run_failed_until_one_goes_well(open_desk):
    desk = open_desk(opening=0)
    desk.music.unlink()
    desk.run(1)
    desk.has_text("音樂，本地音樂，找不到檔案，已啟動，", 1)
    desk.run(2)
    desk.has_text(NOT_STARTED, 2)
    desk.has_text("音樂，本地音樂，找不到檔案，已啟動，", 1)
    desk.has_text("電台，網路電台，已啟動，")
    press_key("Home")  # the third row had scrolled the list
    # Broken music is there, but has no length.
    desk.music.write_bytes(b"any")
    desk.player.plays(refuses=NEVER)
    desk.run(1)
    desk.player.passes(31)
    desk.has_text("音樂，本地音樂，無法播放，已啟動，", 1)
    desk.player.plays(refuses=0)
    desk.run(1)
    desk.plays()
    desk.has_text("音樂，本地音樂，正在播放，已啟動，", 1)
    # It is nothing that the files keep, and nothing that an edit loses.
    editor = open_editor(desk.program)
    editor.close("close")
    desk.has_text(NOT_STARTED, 2)
    assert [task.name for task in desk.folder.tasks()] == ["電台", "音樂", "程式"]
