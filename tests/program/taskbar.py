"""The taskbar button of the main window, as the window manager's lists have it."""

from desktop import is_managed, run


def skips_taskbar(program):
    """Whether the main window is on the screen without a taskbar button."""
    window = program.main_on_screen()
    return bool(window) and is_managed(window[0]) and (
        "_NET_WM_STATE_SKIP_TASKBAR" in run("xprop", "-id", window[0], "_NET_WM_STATE"))


def is_in_taskbar(program):
    """Whether the main window is on the screen with a taskbar button."""
    window = program.main_on_screen()
    return bool(window) and is_managed(window[0]) and not skips_taskbar(program)
