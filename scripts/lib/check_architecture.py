#!/usr/bin/python3
"""Draws the modules and their arrows from the build's link graph into docs/architecture.md.

    check_architecture.py GRAPH.dot [--check]    --check writes nothing and only compares

It also checks that each module includes only modules that it is linked with. The compiler would not
notice, because every header can be found from every module.
"""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
DOCUMENT = ROOT / "docs" / "architecture.md"
BEGIN, END = "<!-- arrows: written by scripts/architecture -->\n", "<!-- end of arrows -->\n"
PROGRAM = "Tellurvane"


def modules():
    """The folders whose CMakeLists.txt declares a module."""
    return {path.parent.name for path in ROOT.glob("*/CMakeLists.txt")
            if f"tellurvane_module({path.parent.name}" in path.read_text("utf-8")}


def arrows(graph, nodes):
    """The links among these targets."""
    found = {node: set() for node in nodes}
    for source, target in re.findall(r"// (\S+) -> (\S+)$", graph, re.MULTILINE):
        if source in nodes and target in nodes:
            found[source].add(target)
    return found


def reachable(found, node):
    """All targets that a target is linked with, directly or through others."""
    seen, open_nodes = set(), [node]
    while open_nodes:
        for target in found[open_nodes.pop()] - seen:
            seen.add(target)
            open_nodes.append(target)
    return seen


def shortest(found):
    """The arrows without those that follow from others."""
    return {node: {target for target in targets
                   if not any(target in reachable(found, other) for other in targets - {target})}
            for node, targets in found.items()}


def diagram(found):
    """The picture, the highest modules first."""
    order = sorted(found, key=lambda node: (-len(reachable(found, node)), node))
    lines = ["```mermaid", "graph TD"]
    for node in order:
        lines.append(f"  {node}([{node}.exe])" if node == PROGRAM else f"  {node}[{node}/]")
    for node in order:
        lines += [f"  {node} --> {target}" for target in order if target in shortest(found)[node]]
    return "\n".join(lines + ["```", ""])


def forbidden_includes(found, names):
    """The includes of modules that a module is not linked with."""
    for module in sorted(names):
        allowed = reachable(found, module) | {module}
        for path in sorted((ROOT / module).glob("*")):
            # The entry routine is the executable's, not the module's.
            if path.suffix not in (".h", ".cpp") or (module, path.name) == ("app", "Main.cpp"):
                continue
            for folder in re.findall(r'^#include "(\w+)/', path.read_text("utf-8"), re.MULTILINE):
                if folder not in allowed:
                    yield (f"{path.relative_to(ROOT)} includes {folder}/, which {module} is not "
                           "linked with")


def main():
    names = modules()
    found = arrows(Path(sys.argv[1]).read_text("utf-8"), names | {PROGRAM})
    faults = [f"{node} can be reached from itself" for node in found
              if node in reachable(found, node)]
    faults += forbidden_includes(found, names)
    text = DOCUMENT.read_text("utf-8")
    before, _, rest = text.partition(BEGIN)
    _, _, after = rest.partition(END)
    drawn = before + BEGIN + diagram(found) + END + after
    if "--check" not in sys.argv:
        DOCUMENT.write_text(drawn, "utf-8")
    elif drawn != text:
        faults.append("the arrows in docs/architecture.md differ from the build: "
                      "run scripts/architecture")
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
