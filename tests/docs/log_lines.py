#!/usr/bin/env python3
"""Holds that docs/log_lines.md and the library's sources name the same log lines.

    log_lines.py ROOT

Compared are, for each line, the file that writes it, its priority, its format byte by byte and, where it has one, its
fixed number; and the page's table of fixed numbers. The operations that the page names must be declared in the public
headers. A call whose format is not spelt out is a fault: neither this check nor its reader could follow it.
"""

import re
import sys
from collections import Counter
from pathlib import Path

ROOMS = ("yaml", "manifest", "parser", "depend", "include/startplan")
TEXT = r'"(?:[^"\\\n]|\\.)*"'
COMMENT = re.compile(rf"({TEXT}|'(?:[^'\\\n]|\\.)+')|//[^\n]*|/\*.*?\*/", re.DOTALL)
CALL = re.compile(rf"\bsyslog\s*\(\s*(LOG_\w+)\s*,\s*({TEXT}(?:\s*{TEXT})*)([^;]*);")
CONSTANT = re.compile(rf"\bconstexpr\s+(?:char|int)\s+(\w+)(?:\[\])?\s*=\s*({TEXT}|\d+)\s*;")
TAG = " [%s][%s %d] "
BLOCK = re.compile(r"^```\n(LOG_\w+) (.*?)\n```\n(.*?)\n\n", re.DOTALL | re.MULTILINE)
ROW = re.compile(r"^\| (\d+) \| `(\w+)` \|", re.MULTILINE)


def join(literals):
    return "".join(literal[1:-1] for literal in re.findall(TEXT, literals))


def lines_of_sources(root, faults):
    lines = []
    files = sorted(f for room in ROOMS for f in (root / room).iterdir() if f.suffix in (".h", ".cpp"))
    codes = {f: COMMENT.sub(lambda match: match.group(1) or " ", f.read_text()) for f in files}
    shared = dict(CONSTANT.findall("\n".join(code for f, code in codes.items() if f.suffix == ".h")))
    for file, code in codes.items():
        place = str(file.relative_to(root))
        constants = {**shared, **dict(CONSTANT.findall(code))}
        calls = CALL.findall(code)
        if len(calls) != len(re.findall(r"\b\w*syslog\w*\s*\(", code)):
            faults.append(f"{place}: a log call whose priority and format are not spelt out in place")
        for priority, literals, rest in calls:
            number = None
            if join(literals).startswith(TAG):
                arguments = (argument.strip(") \n") for argument in rest.split(",")[1:4])
                number = tuple(constants.get(argument, argument).strip('"') for argument in arguments)
            lines.append((place, priority, join(literals), number))
    return lines


def lines_of_page(page, headers, faults):
    lines = []
    numbers = {number: operation for number, operation in ROW.findall(page)}
    blocks = BLOCK.findall(page)
    if len(blocks) != len(re.findall(r"^LOG_", page, re.MULTILINE)):
        faults.append("log_lines.md: a line that is no block of its own with its writer below it")
    for priority, literals, writer in blocks:
        place = re.search(r"`(\w+/\w+\.(?:cpp|h))`", writer)
        found = re.search(r"\bnumber (\d+)", writer)
        operations = re.findall(r"::(\w+)\(\)", writer)
        if place is None or not operations:
            faults.append(f"log_lines.md: no file or no operation below {literals}")
        for operation in operations:
            if not re.search(rf"\b{operation}\(", headers):
                faults.append(f"log_lines.md: no public header declares {operation}()")
        number = None
        if found:
            number = ("YAMLPARSE", numbers.pop(found.group(1), "no row"), found.group(1))
            if number[1] not in operations:
                faults.append(f"log_lines.md: number {number[2]} belongs to {number[1]} in the table")
        lines.append((place.group(1) if place else "?", priority, join(literals), number))
    for number in numbers:
        faults.append(f"log_lines.md: the table has number {number}, and no line has it")
    return lines


def main():
    root = Path(sys.argv[1])
    faults = []
    headers = "\n".join(file.read_text() for file in sorted((root / "include/startplan").iterdir()))
    in_sources = Counter(lines_of_sources(root, faults))
    in_page = Counter(lines_of_page((root / "docs/log_lines.md").read_text(), headers, faults))
    for line in sorted((in_sources - in_page).elements(), key=str):
        faults.append(f"log_lines.md lacks {line}")
    for line in sorted((in_page - in_sources).elements(), key=str):
        faults.append(f"no source writes {line}")
    print("\n".join(faults + [f"{in_sources.total()} lines in the sources, {in_page.total()} in log_lines.md"]))
    return 1 if faults or not in_sources else 0


if __name__ == "__main__":
    sys.exit(main())
