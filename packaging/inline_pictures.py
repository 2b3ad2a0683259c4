#!/usr/bin/python3
"""Writes a page with its pictures inside it, so that it is one file.

    inline_pictures.py PAGE OUTPUT
"""

import base64
import re
import sys
from pathlib import Path


def main():
    page, output = Path(sys.argv[1]), Path(sys.argv[2])

    def inlined(match):
        picture = base64.b64encode((page.parent / match[1]).read_bytes()).decode()
        return f'src="data:image/png;base64,{picture}"'

    output.write_text(re.sub(r'src="([^"]+\.png)"', inlined, page.read_text("utf-8")), "utf-8")


if __name__ == "__main__":
    main()
