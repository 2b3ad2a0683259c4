"""Windows dragged by the mouse."""

from desktop import run, until

BESIDE = (640, 880)  # a place of the screen where no window is


def drag(place, grip, to, ends_at=None):
    """Drags a window by a point inside it, until its left upper corner is at a place of the screen,
    or at `ends_at` where that place is beyond the edge. `place` gives the corner.

    A busy system may see only a part of the way, or none of it; then this tries again.
    """
    def is_there():
        left, top = place()
        x, y = left + grip[0], top + grip[1]
        # At the pace of a hand: a press and a release in the same instant are no drag.
        way = []
        for tenths in range(1, 11):
            way += ["mousemove", x + (to[0] - left) * tenths // 10,
                    y + (to[1] - top) * tenths // 10, "sleep", "0.03"]
        run("xdotool", "mousemove", x, y, "sleep", "0.05", "mousedown", 1, "sleep", "0.15",
            *way, "mouseup", 1)
        if place() == (ends_at or to):
            return True
        # The window manager may have taken the window over after the release: a click beside it
        # ends that, and the next try does not begin in the middle of this one.
        run("xdotool", "mousemove", *BESIDE, "click", 1)
        return False

    until(is_there, "the dragged window")
