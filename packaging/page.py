#!/usr/bin/python3
"""Makes a page of a document: its headings, paragraphs, lists, **bold** and `code`.

    page.py DOCUMENT OUTPUT
"""

import html
import re
import sys
from pathlib import Path

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


def inline(text):
    text = html.escape(text, quote=False)
    text = re.sub(r"\*\*(.+?)\*\*", r"<b>\1</b>", text)
    return re.sub(r"`(.+?)`", r"<code>\1</code>", text)


def element(block):
    """The element of a block, which is text without an empty line."""
    joined = re.sub(r"\n\s*", " ", block)
    if heading := re.match(r"(#+) (.*)", joined):
        level = len(heading[1])
        return f"<h{level}>{inline(heading[2])}</h{level}>"
    for mark, tag in ((r"\d+\. ", "ol"), (r"- ", "ul")):
        if re.match(mark, block):
            items = re.split(rf"\n(?={mark})", block)
            first = re.match(r"\d*", block)[0]
            start = f' start="{first}"' if first not in ("", "1") else ""
            lines = [inline(re.sub(mark, "", re.sub(r"\n\s*", " ", item), count=1))
                     for item in items]
            return "\n".join([f"<{tag}{start}>", *(f"<li>{line}</li>" for line in lines),
                              f"</{tag}>"])
    return f"<p>{inline(joined)}</p>"


def main():
    document, output = Path(sys.argv[1]), Path(sys.argv[2])
    blocks = re.split(r"\n{2,}", document.read_text("utf-8").strip())
    title = html.escape(blocks[0].lstrip("# "))
    output.write_text(PAGE.format(title=title, body="\n".join(map(element, blocks))), "utf-8")


if __name__ == "__main__":
    main()
