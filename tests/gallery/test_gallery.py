"""Drives the gallery by real clicks and keys: each control reports them to its form."""

import pytest

from desktop import BINARIES, DEADLINE, open_in_background, press_key, run, until

TITLE = "Tellurvane 控制項展示"
# A place on each toolbar button, in every font.
BUTTONS = {1: 30, 2: 85, 3: 140, 4: 195, 5: 248}
SHORT_SLIDER, LONG_SLIDER = 480, 558
OK_BUTTON = (97, 135)


class Gallery:
    """The running gallery. Places are pixels of its inside, on a screen of 96 dpi."""

    def __init__(self):
        self.process = open_in_background("wine", BINARIES / "gallery.exe")
        self.window = until(self.find_window, "the gallery's window")

    def find_window(self):
        assert self.process.poll() is None, "the gallery ended"
        found = run("xdotool", "search", "--onlyvisible", "--name", f"^{TITLE}").split()
        return found[0] if found else None

    def window_count(self):
        """Its visible windows, with open lists and menus."""
        return len(run("xdotool", "search", "--all", "--onlyvisible", "--pid", self.process.pid,
                       "--name", "").split())

    def opens(self, x, y):
        """Clicks, and waits for the list or menu that opens."""
        # A tooltip under the pointer would be counted, and would go when the menu comes.
        run("xdotool", "mousemove", 0, 0)
        until(lambda: self.window_count() == 1, "the window alone")
        self.click(x, y)
        until(lambda: self.window_count() > 1, "the window that opens", 20)

    def report(self):
        """The last action, which is in the window's caption."""
        caption = run("xdotool", "getwindowname", self.window).strip()
        return caption.removeprefix(TITLE).removeprefix("：")

    def reports(self, what):
        try:
            until(lambda: self.report() == what, what, 20)
        except AssertionError as error:
            raise AssertionError(f"{error}, but {self.report()}") from None

    def point(self, x, y):
        run("xdotool", "mousemove", "--window", self.window, x, y)

    def mouse(self, action, button=1):
        run("xdotool", action, button)

    def click(self, x, y, times=1):
        self.point(x, y)
        run("xdotool", "click", "--repeat", times, "--delay", 60, "1")


@pytest.fixture(scope="module")
def gallery():
    shown = Gallery()
    yield shown
    if shown.process.poll() is None:
        shown.process.kill()
    shown.process.wait()


def test_presses_keys_and_the_wheel_move_a_slider(gallery):
    gallery.click(SHORT_SLIDER + 35, 52)
    gallery.reports("滑桿：50")
    press_key("Right", "Right")
    gallery.reports("滑桿：54")
    gallery.mouse("click", 4)
    gallery.reports("滑桿：56")
    press_key("End")
    gallery.reports("滑桿：100")


def test_a_drag_moves_the_slider_until_the_release(gallery):
    gallery.point(LONG_SLIDER + 33, 52)
    gallery.mouse("mousedown")
    gallery.reports("滑桿：10")
    # Also far away from the bar.
    for x, y, percent in ((165, 52, 50), (66, 300, 20)):
        gallery.point(LONG_SLIDER + x, y)
        gallery.reports(f"滑桿：{percent}")
    gallery.mouse("mouseup")
    gallery.point(LONG_SLIDER + 300, 52)
    gallery.click(17, 79)
    gallery.reports("按了「儲存後立即啟動音樂排程」")


def test_buttons_report_and_disabled_controls_do_not(gallery):
    for number in (1, 2):
        gallery.click(BUTTONS[number], 18)
        gallery.reports(f"按了工具列的第 {number} 個按鈕")
    # A slider, a check box and a toolbar button.
    for x, y in ((LONG_SLIDER + 33, 78), (247, 79), (BUTTONS[3], 18)):
        gallery.click(x, y)
    before = gallery.report()
    # Reported after all clicks before it.
    gallery.click(*OK_BUTTON)
    gallery.reports("按了「確 定」")
    assert before == "按了工具列的第 2 個按鈕"


def test_a_menu_reports_the_chosen_entry(gallery):
    gallery.opens(BUTTONS[4], 18)
    gallery.reports("按了工具列的第 4 個按鈕")
    press_key("Down", "Down", "Return")
    gallery.reports("選了選單的第 2 項")


def test_lists_report_the_chosen_entry(gallery):
    before = gallery.window_count()
    gallery.opens(218, 227)
    press_key("Down")
    gallery.reports("按了「應用程式」")
    press_key("Return")
    until(lambda: gallery.window_count() == before, "the end of the list")
    # At another place than before, or it would be the second half of a double click.
    gallery.opens(100, 227)
    gallery.click(60, 240 + 21)  # the second row below the field
    gallery.reports("按了「本地音樂」")
    for left in (10, 101, 192):
        for y, text in ((9, "古典音樂"), (22, "爵士音樂")):
            gallery.click(left + 30, 250 + y)
            gallery.reports(f"按了「{text}」")


def test_a_double_click_or_enter_activates_a_row(gallery):
    gallery.click(600, 451, times=2)
    gallery.reports("啟動「第 5 個排程專案：每天早上播放新聞」")
    for key, row in (("Down", 6), ("End", 1000)):
        press_key(key, "Return")
        gallery.reports(f"啟動「第 {row} 個排程專案：每天早上播放新聞」")


def test_the_last_button_ends_the_gallery(gallery):
    gallery.click(BUTTONS[5], 18)
    assert gallery.process.wait(timeout=DEADLINE) == 0
