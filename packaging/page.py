#!/usr/bin/python3
"""Makes a page of a document in Markdown.

    page.py DOCUMENT OUTPUT
"""

import html
import sys
from pathlib import Path

import markdown

PAGE = """<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<title>{title}</title>
<style>
  body {{ max-width: 45em; margin: 2em auto; padding: 0 1em; line-height: 1.5;
         font-family: "Segoe UI", "Microsoft JhengHei", sans-serif; }}
  li {{ margin-bottom: .7em; }}
</style>
{body}
</html>
"""


def main():
    document, output = Path(sys.argv[1]), Path(sys.argv[2])
    text = document.read_text("utf-8")
    title = html.escape(text.partition("\n")[0].lstrip("# "))
    # sane_lists: a list keeps the number of its first item.
    body = markdown.markdown(text, extensions=["sane_lists"])
    output.write_text(PAGE.format(title=title, body=body), "utf-8")


if __name__ == "__main__":
    main()
