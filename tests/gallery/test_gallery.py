"""Drives the gallery by real clicks and keys: each control hears them and tells its form."""

import subprocess
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "program"))
import harness  # noqa: E402

TITLE = "Tellurvane 控制項展示"


# A place on each toolbar button, whichever font the locale writes the captions in.
BUTTONS = {1: 30, 2: 85, 3: 140, 4: 195, 5: 248}


class Gallery:
    """The running gallery. Places are pixels of its inside, on a screen of 96 dpi."""

    def __init__(self):
        self.process = subprocess.Popen(
            ["wine", str(harness.BINARIES / "gallery.exe")], stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.window = harness.until(self.find_window, "the gallery's window")

    def find_window(self):
        assert self.process.poll() is None, "the gallery ended"
        found = harness.run("xdotool", "search", "--onlyvisible", "--name", f"^{TITLE}").split()
        return found[0] if found else None

    def windows(self):
        """How many windows it shows, those that drop down or pop up included."""
        return len(harness.run("xdotool", "search", "--all", "--onlyvisible", "--pid",
                               self.process.pid, "--name", "").split())

    def opens(self, opening):
        """Does what opens a list or a menu, and waits until it stands."""
        before = self.windows()
        opening()
        harness.until(lambda: self.windows() > before, "the window that opens", 20)

    def told(self):
        """What the user did last, by the window's caption."""
        caption = harness.run("xdotool", "getwindowname", self.window).strip()
        return caption.removeprefix(TITLE).removeprefix("：")

    def point(self, x, y):
        harness.run("xdotool", "mousemove", "--window", self.window, x, y)

    def click(self, x, y, times=1):
        self.point(x, y)
        harness.run("xdotool", "click", "--repeat", times, "--delay", 60, "1")

    def key(self, *names):
        harness.run("xdotool", "key", "--delay", 60, *names)

    def tells(self, what):
        try:
            harness.until(lambda: self.told() == what, what, 20)
        except AssertionError as error:
            raise AssertionError(f"{error}, but {self.told()}") from None


@pytest.fixture(scope="module")
def gallery():
    shown = Gallery()
    yield shown
    if shown.process.poll() is None:
        shown.process.kill()
    shown.process.wait()


def test_a_press_sets_the_slider_and_keys_move_it(gallery):
    gallery.click(480 + 35, 52)
    gallery.tells("滑桿：50")
    gallery.key("Right", "Right")
    gallery.tells("滑桿：54")
    gallery.key("End")
    gallery.tells("滑桿：100")


def test_a_drag_drives_the_slider_until_the_release(gallery):
    gallery.point(558 + 33, 52)
    harness.run("xdotool", "mousedown", "1")
    gallery.tells("滑桿：10")
    gallery.point(558 + 165, 52)
    gallery.tells("滑桿：50")
    # Far beside the bar the value follows still.
    gallery.point(558 + 66, 300)
    gallery.tells("滑桿：20")
    harness.run("xdotool", "mouseup", "1")
    gallery.point(558 + 300, 52)
    gallery.click(17, 79)
    gallery.tells("按了「儲存後立即啟動音樂排程」")


def test_the_wheel_turns_the_slider_that_was_pressed(gallery):
    gallery.click(480 + 35, 52)
    gallery.tells("滑桿：50")
    harness.run("xdotool", "click", "4")
    gallery.tells("滑桿：52")
    harness.run("xdotool", "click", "5")
    gallery.tells("滑桿：50")


def test_a_disabled_slider_and_a_disabled_check_box_tell_nothing(gallery):
    gallery.click(BUTTONS[2], 18)
    gallery.tells("按了工具列的第 2 個按鈕")
    gallery.click(558 + 33, 78)
    gallery.click(247, 79)
    # Had they told, it would stand here; the next click is heard after theirs.
    before = gallery.told()
    gallery.click(97, 135)
    gallery.tells("按了「確 定」")
    assert before == "按了工具列的第 2 個按鈕"


def test_toolbar_buttons_tell_their_number(gallery):
    gallery.click(BUTTONS[1], 18)
    gallery.tells("按了工具列的第 1 個按鈕")
    gallery.click(BUTTONS[2], 18)
    gallery.tells("按了工具列的第 2 個按鈕")
    # The third one is disabled.
    gallery.click(BUTTONS[3], 18)
    gallery.click(97, 105)
    gallery.tells("按了「依照類型搜尋電台」")


def test_a_menu_answers_with_the_chosen_item(gallery):
    gallery.opens(lambda: gallery.click(BUTTONS[4], 18))
    gallery.tells("按了工具列的第 4 個按鈕")
    gallery.key("Down", "Down", "Return")
    gallery.tells("選了選單的第 2 項")


def test_a_drop_down_list_gives_the_chosen_entry(gallery):
    before = gallery.windows()
    gallery.opens(lambda: gallery.click(218, 227))
    gallery.key("Down")
    gallery.tells("按了「應用程式」")
    gallery.key("Return")
    harness.until(lambda: gallery.windows() == before, "the end of the list")
    # Elsewhere than before, lest it be the second half of a double click.
    gallery.opens(lambda: gallery.click(100, 227))
    # The second row below the field.
    gallery.click(60, 240 + 21)
    gallery.tells("按了「本地音樂」")


def test_list_boxes_give_the_clicked_entry(gallery):
    for left in (10, 101, 192):
        gallery.click(left + 30, 250 + 9)
        gallery.tells("按了「古典音樂」")
        gallery.click(left + 30, 250 + 22)
        gallery.tells("按了「爵士音樂」")


def test_a_double_click_or_enter_activates_a_row(gallery):
    gallery.click(600, 451, times=2)
    gallery.tells("啟動「第 5 個排程專案：每天早上播放新聞」")
    gallery.key("Down", "Return")
    gallery.tells("啟動「第 6 個排程專案：每天早上播放新聞」")
    gallery.key("End", "Return")
    gallery.tells("啟動「第 1000 個排程專案：每天早上播放新聞」")


def test_the_last_button_ends_the_gallery(gallery):
    gallery.click(BUTTONS[5], 18)
    assert gallery.process.wait(timeout=harness.DEADLINE) == 0
