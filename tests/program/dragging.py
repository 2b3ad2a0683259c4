"""Windows dragged by the mouse."""

from harness import run, until


def drag(place, grip, to, ends_at=None):
    """Takes a window at a point inside it and carries it to a place of the screen, or to where it
    has to end when that place is beyond the edge. `place` tells where its left upper corner is.

    A system that is slow to notice the press sees only the rest of the way, or none of it; the
    user would go on until the window is there.
    """
    def is_there():
        left, top = place()
        x, y = left + grip[0], top + grip[1]
        run("xdotool", "mousemove", x, y)
        run("xdotool", "mousedown", 1)
        for tenths in range(1, 11):
            run("xdotool", "mousemove", x + (to[0] - left) * tenths // 10,
                y + (to[1] - top) * tenths // 10)
        run("xdotool", "mouseup", 1)
        return place() == (ends_at or to)

    until(is_there, "the window where it was carried")
