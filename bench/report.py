#!/usr/bin/python3
"""Prints the figures of scripts/bench as one table. Exit code 1 when one is over its limit."""

import json
import sys
from pathlib import Path

MEGABYTE = 1_000_000


def portable_rows(folder):
    """From Google Benchmark: the medians of processor time, in nanoseconds."""
    units = {"ns": 1, "us": 1e3, "ms": 1e6}
    runs = json.loads((folder / "portable.json").read_text())["benchmarks"]
    medians = {run["run_name"]: run for run in runs if run.get("aggregate_name") == "median"}

    def time(name):
        return medians[name]["cpu_time"] * units[medians[name]["time_unit"]]

    bare = time("bare_read")
    young, old = time("catch_up/1"), time("catch_up/5256000")
    yield "tasks in a full list", medians["bare_read"]["tasks"], "tasks", None
    yield "bare read of its file", bare / 1e6, "ms", None
    yield "load", time("load") / bare, "x bare read", 12
    yield "save", time("save") / bare, "x bare read", None
    yield "tick", time("tick") / 1e6, "ms", None
    yield "catch-up, one minute late", young, "ns", None
    yield "catch-up, ten years late", old, "ns", None
    yield "ten years beside one minute", old / young, "x", None


def radio_rows(folder):
    """From Google Benchmark, in milliseconds: each parser beside a plain count of three characters in
    the same run, and the worst of all parsers."""
    runs = json.loads((folder / "radio.json").read_text())["benchmarks"]
    medians = {run["run_name"]: run["cpu_time"] for run in runs
               if run.get("aggregate_name") == "median"}
    parsers = ("ReplaceHTML", "GetShoutcast", "GetIcecast", "GetLiveDoor", "GetHinet")
    for parser in parsers:
        yield f"{parser}, 1 MB", medians[f"{parser}/1MB"] / medians["count_marks"], "x count", None
    slowest = max(medians[f"{parser}/1MB"] for parser in parsers)
    yield "slowest parser, 1 MB", slowest, "ms", 100
    growth = max(medians[f"{parser}/16MB"] / medians[f"{parser}/1MB"] for parser in parsers)
    yield "16 MB, the parser that grows most", growth, "x 1 MB", 20
    hostile = max(time for name, time in medians.items() if "/hostile/" in name)
    yield "slowest hostile page, 1 MB", hostile, "ms", 1000
    yield "the same page", hostile / slowest, "x slowest parser", None


def wine_rows(figures):
    """The same under Wine: medians of elapsed time, the wait for the disk included."""
    def time(name):
        return figures["list"][name]["median"]

    bare = time("bare_read")
    yield "tasks in a full list", time("tasks"), "tasks", None
    yield "bare read of its file", bare / 1e6, "ms", None
    yield "load", time("load") / bare, "x bare read", 12
    yield "of it waiting for the disk", time("load_flush") / bare, "x bare read", None
    yield "save", time("save") / bare, "x bare read", None
    yield "tick", time("tick") / 1e6, "ms", None


def paint_rows(figures):
    """Painting beside the platform's own plainest call over the same area."""
    def ratio(name, base):
        return figures["paint"][name]["median"] / figures["paint"][base]["median"]

    yield "slider, 240 x 18", ratio("slider", "slider_fill"), "x FillRect", None
    yield "solid fill, 330 x 40", ratio("solid_fill", "row_fill"), "x FillRect", None
    yield "simple highlight, 330 x 40", ratio("simple_highlight", "row_fill"), "x FillRect", None
    yield "rich highlight, 330 x 40", ratio("rich_highlight", "row_fill"), "x FillRect", None
    yield "themed text", ratio("themed_text", "plain_text"), "x DrawString", None
    yield "list of a million rows, repaint", ratio("repaint_many", "repaint_few"), "x ten rows", 1.5
    yield "list of a million rows, scroll", ratio("scroll_many", "scroll_few"), "x ten rows", 1.5


def program_rows(figures):
    """The program beside a window with nothing in it."""
    start = figures["start"]
    empty, program = start["empty"], start["program"]
    yield "start to window, empty window", empty["median"] / 1e6, "ms", None
    yield "start to window", program["median"] / 1e6, "ms", None
    yield "start to window, the clock before it", start["with_clock"]["median"] / 1e6, "ms", None
    yield "start over the empty window", (program["median"] - empty["median"]) / 1e6, "ms", None
    # On a busy machine the medians vary; the difference of the two rows shows how much.
    fastest = (program["minimum"] - empty["minimum"]) / 1e6
    yield "the same between the fastest starts", fastest, "ms", None
    others = {name: start[name]["median"] for name in ("Wine's notepad", "Wine's clock")}
    for name, median in others.items():
        yield f"start to window, {name}", median / 1e6, "ms", None
    slower = program["median"] / max(others.values())
    yield "start beside the slower of the two", slower, "x", 1
    idle = figures["idle"]
    limits = {"window": 0.2, "tray": 0.05}
    for name, at_rest in idle.items():
        yield f"idle, {name}", at_rest["share"] * 100, "% of a core", limits.get(name)
    # A busy host makes the processor time of an idle program longer.
    for name in ("window", "tray", "window and clock"):
        yield f"idle, {name}, steal time", idle[name]["stolen"] * 100, "% of all cores", None
    clock = idle["window and clock"]["share"] - idle["window"]["share"]
    yield "idle, what the clock adds", clock * 100, "% of a core", 0.1
    for name, at_rest in idle.items():
        for kind, size in at_rest["memory"].items():
            yield f"{kind} memory, {name}", size / MEGABYTE, "MB", None
    beyond = idle["window"]["memory"]["own"] - idle["toolkit's form"]["memory"]["own"]
    yield "own memory over the toolkit's form", beyond / MEGABYTE, "MB", 3
    yield "size of Tellurvane.exe", figures["size"] / MEGABYTE, "MB", 1.1


def shown(value):
    if value >= 1000:
        return f"{value:,.0f}"
    return f"{value:.3f}" if abs(value) < 1 else f"{value:.1f}"


def main():
    folder = Path(sys.argv[1])
    figures = json.loads((folder / "desktop.json").read_text())
    rows = [("host: " + row[0], *row[1:]) for row in (*portable_rows(folder), *radio_rows(folder))]
    rows += [("Wine: " + row[0], *row[1:]) for row in (
        *wine_rows(figures), *paint_rows(figures), *program_rows(figures))]

    print(f"{'name':44}{'value':>10} {'unit or ratio':14}{'limit':>8}")
    misses = 0
    for name, value, unit, limit in rows:
        verdict = "" if limit is None else "ok" if value <= limit else "over"
        misses += verdict == "over"
        bound = "" if limit is None else f"<= {limit:g}"
        print(f"{name:44}{shown(value):>10} {unit:14}{bound:>8} {verdict}".rstrip())
    return 1 if misses else 0


if __name__ == "__main__":
    sys.exit(main())
