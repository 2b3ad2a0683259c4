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
        picture = base64.b64encode((page.parent / match[2]).read_bytes()).decode()
        return f"{match[1]}data:image/png;base64,{picture}"

    # src="image.png" and srcset="image.png 1.5x".
    text = re.sub(r'(src(?:set)?=")([^" ]+\.png)', inlined, page.read_text("utf-8"))
    output.write_text(text, "utf-8")


if __name__ == "__main__":
    main()
