#!/usr/bin/python3
"""Prints how much of each portable file the tests cover, and each branch that they do not cover.

    uncovered.py COVERAGE.json COMPILE_COMMANDS.json

Reads the export of llvm-cov. A comment "// not covered: REASON", on the line or above it, gives the
reason why one of its branches cannot be taken. Exit code 1 when a branch has no reason.
"""

import json
import re
import sys
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
MODULE = re.compile(r"(app|base|clock|cmd|mainwin|notes|radio|scheduler|ui)/[^/]+$")
REASON = re.compile(r"// not covered: (\S.*)")


def is_portable(path, compiled):
    """Whether a path is portable code. The header of a Windows source is tested there."""
    source = re.sub(r"\.h$", ".cpp", path)
    return MODULE.match(path) is not None and (source in compiled or not (ROOT / source).exists())


def relative(path):
    """The path below the root; empty outside of it."""
    path = Path(path)
    return str(path.relative_to(ROOT)) if path.is_relative_to(ROOT) else ""


def branches_of(file):
    """Each branch once: its place, and how often it was taken and not taken."""
    counts = defaultdict(lambda: [0, 0])
    for line, column, end_line, end_column, taken, not_taken, *_ in file["branches"]:
        # A template is listed once for each of its instances.
        place = (line, column, end_line, end_column)
        counts[place][0] += taken
        counts[place][1] += not_taken
    # Without a count the compiler decided the branch, or the code never runs.
    return {place: counts[place] for place in sorted(counts) if any(counts[place])}


def text_of(source, place):
    """The condition itself, or its first line."""
    line, column, end_line, end_column = place
    return source[line - 1][column - 1:end_column - 1 if line == end_line else None].strip()


def never_run(file):
    """The first lines of the passages that no test reaches."""
    return sorted({line for line, _, count, has_count, is_entry, is_gap in file["segments"]
                   if has_count and is_entry and not is_gap and count == 0})


def reason(lines, number):
    """The reason on a line or above it."""
    for text in lines[max(number - 2, 0):number]:
        found = REASON.search(text)
        if found:
            return found.group(1)
    return ""


def report(path, file):
    """Prints a file's row, and returns its complaints as (text, reason)."""
    source = (ROOT / path).read_text("utf-8").splitlines()
    branches = branches_of(file)
    missed = [(place[0], f"never {word}: {text_of(source, place)}")
              for place, counts in branches.items()
              for word, count in zip(("true", "false"), counts) if count == 0]
    touched = {line for line, _ in missed}
    sides = 2 * len(branches)
    taken = sides - len(missed)
    missed += [(line, f"never run: {REASON.sub('', source[line - 1]).strip()}")
               for line in never_run(file) if line not in touched]
    lines = file["summary"]["lines"]
    print(f"{path:34} {lines['covered']:5} of {lines['count']:5} lines {taken:5} of {sides:5} branches")
    return [(f"{path}:{line}: {text}", reason(source, line))
            for line, text in sorted(missed)], taken, sides


def main():
    exported = json.loads(Path(sys.argv[1]).read_text("utf-8"))
    files = {relative(file["filename"]): file for file in exported["data"][0]["files"]}
    compiled = {relative(entry["file"]) for entry in json.loads(Path(sys.argv[2]).read_text("utf-8"))}
    complaints, taken, sides = [], 0, 0
    for path in sorted(path for path in files if is_portable(path, compiled)):
        found, file_taken, file_sides = report(path, files[path])
        complaints += found
        taken, sides = taken + file_taken, sides + file_sides
    complaints += [(f"{path}: no test is linked with it", "")
                   for path in sorted(compiled - files.keys()) if is_portable(path, compiled)]
    print(f"all: {taken} of {sides} branches taken")
    for text, why in complaints:
        print(text + (f"  [{why}]" if why else ""))
    return 1 if any(not why for _, why in complaints) else 0


if __name__ == "__main__":
    sys.exit(main())
