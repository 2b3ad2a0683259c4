"""What a taskbar would show, told by the window manager's own lists."""

from harness import run


def _main_window(program):
    windows = [window for window in program.on_screen()
               if "Tellurvane" in run("xdotool", "getwindowname", window)]
    return windows[0] if windows else None


def _is_managed(window):
    managed = run("xprop", "-root", "_NET_CLIENT_LIST").partition("#")[2]
    return int(window) in [int(number, 16) for number in managed.split(",")]


def skips_taskbar(program):
    """Whether the main window stands on the screen without a taskbar button."""
    window = _main_window(program)
    if not window or not _is_managed(window):
        return False
    return "_NET_WM_STATE_SKIP_TASKBAR" in run("xprop", "-id", window, "_NET_WM_STATE")


def is_in_taskbar(program):
    """Whether the main window stands on the screen with a taskbar button."""
    window = _main_window(program)
    return bool(window) and _is_managed(window) and not skips_taskbar(program)
