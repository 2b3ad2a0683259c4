"""The clock that a program is made to see, which is set without touching the machine's."""

import os
from datetime import timedelta

from joblist import now


class ShiftedClock:
    """Goes as the machine's clock does, at a distance that may change while the program runs."""

    def __init__(self, folder):
        self._file = folder / "clock"
        self._distance = timedelta()
        self._write()
        # The timers go by the monotonic clock, which nobody can set; nor does a file's age change.
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
