"""Windows dragged by the mouse."""

from harness import run, until

BESIDE = (640, 880)  # a place of the screen where no window is


def drag(place, grip, to, ends_at=None):
    """Takes a window at a point inside it and carries it to a place of the screen, or to where it
    has to end when that place is beyond the edge. `place` tells where its left upper corner is.

    A system that is slow to notice the press sees only the rest of the way, or none of it; the
    user would go on until the window is there.
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

    until(is_there, "the window where it was carried")
