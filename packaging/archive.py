#!/usr/bin/python3
"""Packs a folder into a zip archive that depends on nothing but the files' names and bytes.

    archive.py ARCHIVE FOLDER SECONDS    SECONDS since 1970 is the time that each entry gets
"""

import sys
import time
import zipfile
from pathlib import Path


def main():
    archive, folder, seconds = Path(sys.argv[1]), Path(sys.argv[2]), int(sys.argv[3])
    moment = time.gmtime(seconds)[:6]
    with zipfile.ZipFile(archive, "w") as packed:
        for path in sorted(entry for entry in folder.rglob("*") if entry.is_file()):
            entry = zipfile.ZipInfo(str(path.relative_to(folder.parent)), moment)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0  # without the permissions on this machine
            entry.external_attr = 0
            packed.writestr(entry, path.read_bytes(), compresslevel=9)


if __name__ == "__main__":
    main()
