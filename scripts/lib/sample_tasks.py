#!/usr/bin/python3
"""Seeds an application folder with the settings file and one task of each kind.

Files that are there already stay as they are: they are the user's.
"""

import datetime
import shutil
import sys
from pathlib import Path

from task_list import (APPLICATION, HOURS, MINUTES, MUSIC, NOTE, RADIO, Task, list_bytes)


def main():
    folder = Path(sys.argv[1]).resolve()
    resources = Path(__file__).resolve().parents[2] / "resources"
    folder.mkdir(parents=True, exist_ok=True)
    if not (folder / "Setting.ini").exists():
        shutil.copyfile(resources / "Setting.ini", folder / "Setting.ini")
    if not (folder / "chime.wav").exists():
        shutil.copyfile(resources / "chime.wav", folder / "chime.wav")
    if (folder / "JobList.dbs").exists():
        return
    now = datetime.datetime.now()

    def after(seconds):
        return now + datetime.timedelta(seconds=seconds)

    chime = "Z:" + str(folder / "chime.wav").replace("/", "\\")
    # The program works in its own folder, so the command names no other. It has no window, which
    # would cover the program's.
    (folder / "JobList.dbs").write_bytes(list_bytes(
        Task("範例：每分鐘鐘聲", chime, after(20), unit=MINUTES, interval=1, media_type=MUSIC),
        Task("範例：備份設定檔", r"xcopy.exe Setting.ini backup\ /I /Y", after(40), unit=HOURS,
             interval=12, media_type=APPLICATION),
        # Not longer than a run on a virtual screen: its last picture is to show a note.
        Task("範例：休息一下", r"起來走一走\r\n順便喝杯水", after(60), unit=MINUTES, interval=2),
        Task("範例：網路電台", "http://radio.example.org:8000/live", after(3600), unit=HOURS,
             interval=1, enabled=False, media_type=RADIO)))
    print(f"seeded {folder.name}/ with four sample tasks; the first is due in 20 seconds")


if __name__ == "__main__":
    main()
