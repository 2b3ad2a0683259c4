"""A clock for one program, which can be set without changing the machine's."""

import os
from datetime import timedelta

from task_list import now


class ShiftedClock:
    """The machine's clock plus a distance, which may change while the program runs."""

    def __init__(self, folder):
        self._file = folder / "clock"
        self._distance = timedelta()
        self._write()
        # Timers use the monotonic clock, and a file's age stays.
        self.environment = {
            "LD_PRELOAD": "/usr/$LIB/faketime/libfaketimeMT.so.1",
            "FAKETIME_TIMESTAMP_FILE": str(self._file), "FAKETIME_NO_CACHE": "1",
            "FAKETIME_DONT_FAKE_MONOTONIC": "1", "NO_FAKE_STAT": "1"}

    def now(self):
        return now() + self._distance

    def goes_to(self, moment):
        self._distance += moment - self.now()
        self._write()

    def _write(self):
        fresh = self._file.with_suffix(".new")
        fresh.write_text(f"{self._distance.total_seconds():+.0f}")
        os.replace(fresh, self._file)
