"""Keeps a picture of the screen when a test fails."""

import os
from pathlib import Path

import pytest


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    outcome = yield
    kept = os.environ.get("TELLURVANE_FAILURES")
    if kept and "DISPLAY" in os.environ and call.when == "call" and outcome.get_result().failed:
        from desktop import LOCALE, screenshot  # which a test without Wine does not import
        name = "".join(c if c.isalnum() else "-" for c in item.nodeid.rpartition("/")[2])
        screenshot(Path(kept) / f"{name}-{LOCALE}.png")
