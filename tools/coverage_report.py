#!/usr/bin/env python3
"""Tells what the tests reach, from what llvm-cov exported.

    coverage_report.py ROOT FOLDER... <EXPORTED

Reads one or more exported JSON documents, one of each test program. Prints a line for each of the folders, which are named
from ROOT, and then each place that no program reaches. A line is reached when everything that begins on it has run, a branch
when its condition was true and when it was false. A source line with the mark `// uncovered: REASON` need not be reached; such
a mark without a reason is an error, and so is one on a line that is reached. A source file counts for the longest folder that
it is in. Tests and their fixtures do not count.

The last line is `N passed, M failed`: the folders without and with such places.
"""

import json
import os
import re
import sys

MARK = re.compile(r"// uncovered:(.*)")


class Source:
    """What is known of one file: how often its regions, the rest of its lines and its branches have run."""

    def __init__(self, path):
        self.path = path
        with open(path, "rb") as file:
            self.bytes = file.read().split(b"\n")
        self.regions = {}  # (line, column) -> times
        self.rests = {}  # a line on which a region goes on -> times
        self.skipped = set()  # lines that begin with what the compiler does not read
        self.outcomes = {}  # (line, column, end line, end column) -> [times true, times false]

    def add_segments(self, segments):
        """A segment goes on to where the next one begins: [line, column, count, has a count, begins a region, is a gap]."""
        begun = {}
        for segment, following in zip(segments, segments[1:] + [[0, 0]]):
            begun.setdefault(segment[0], []).append(segment)
            # The brace of a branch that `if constexpr` leaves out is a region of its own.
            left_out = following[0] == segment[0] and self.slice(segment[0], segment[1], following[1]) in ("{", "")
            if segment[3] and segment[4] and not segment[5] and not left_out:
                place = (segment[0], segment[1])
                self.regions[place] = self.regions.get(place, 0) + segment[2]
            if segment[4] and not segment[3]:
                self.skipped.add(segment[0])
        before = None
        for number in range(1, len(self.bytes) + 1):
            here = begun.get(number, [])
            # A gap between two regions is no code.
            if before and before[3] and not before[5]:
                self.rests[number] = self.rests.get(number, 0) + before[2]
            before = here[-1] if here else before

    def add_branches(self, branches):
        """[line, column, end line, end column, times true, times false, ...]; several times for templates."""
        for branch in branches:
            if "= default;" not in self.line(branch[0]):
                outcomes = self.outcomes.setdefault(tuple(branch[:4]), [0, 0])
                outcomes[0] += branch[4]
                outcomes[1] += branch[5]

    def line(self, number):
        return self.bytes[number - 1].decode()

    def slice(self, number, column, end):
        """Columns count bytes."""
        return self.bytes[number - 1][column - 1 : end - 1].decode().strip()

    def lines(self):
        """The numbers of the lines with code, and whether each is reached. Of a function that a program does not use, it
        knows only where it begins and ends: what another program knows of a line counts more."""
        lines = {}
        for (number, _), times in self.regions.items():
            lines[number] = lines.get(number, True) and times > 0
        for number, times in self.rests.items():
            if number not in self.skipped:
                lines.setdefault(number, times > 0)
        return lines

    def branches(self):
        """Those that were decided at all: of the others the compiler knows the outcome, or their line is not reached."""
        return {place: outcomes for place, outcomes in self.outcomes.items() if any(outcomes)}

    def condition(self, place):
        line, column, end_line, end_column = place
        return self.slice(line, column, end_column) if line == end_line else self.line(line)[column - 1 :] + " ..."

    def marks(self):
        matches = ((number, MARK.search(self.line(number))) for number in range(1, len(self.bytes) + 1))
        return {number: match.group(1).strip() for number, match in matches if match}


def problems_of(source):
    """The places that are not reached, in the order of lines, without those that are marked."""
    missed = {}
    for number, reached in source.lines().items():
        if not reached:
            missed.setdefault(number, []).append("not reached: " + source.line(number).strip())
    for place, (true, false) in source.branches().items():
        for count, value in ((true, "true"), (false, "false")):
            if count == 0:
                missed.setdefault(place[0], []).append(f"never {value}: {source.condition(place)}")
    for number, reason in source.marks().items():
        if not reason:
            missed.setdefault(number, []).append("a mark without a reason")
        elif number in missed:
            del missed[number]
        else:
            missed[number] = ["marked as uncovered, but reached"]
    return [(number, what) for number in sorted(missed) for what in missed[number]]


def figure(reached, total):
    return f"{reached:5d} of {total:5d} {100.0 if total == 0 else 100.0 * reached / total:6.2f} %"


def report(root, folders, exported):
    sources = {}
    for file in (file for document in exported for part in document["data"] for file in part["files"]):
        path = os.path.realpath(file["filename"])
        inside = [folder for folder in folders if path.startswith(os.path.join(root, folder) + os.sep)]
        if inside and not path.endswith(("_test.cpp", "_fixture.h")):
            source = sources.setdefault(path, (max(inside, key=len), Source(path)))[1]
            source.add_segments(file["segments"])
            source.add_branches(file["branches"])
    failed = 0
    complaints = []
    total = [0, 0, 0, 0]
    for folder in folders:
        mine = [source for home, source in sources.values() if home == folder]
        lines = [reached for source in mine for reached in source.lines().values()]
        branches = [taken > 0 for source in mine for both in source.branches().values() for taken in both]
        figures = [sum(lines), len(lines), sum(branches), len(branches)]
        total = [a + b for a, b in zip(total, figures)]
        print(f"{folder:24s} lines {figure(*figures[:2])}   branches {figure(*figures[2:])}")
        found = [
            f"{os.path.relpath(source.path, root)}:{number}: {what}"
            for source in sorted(mine, key=lambda source: source.path)
            for number, what in problems_of(source)
        ]
        known = {source.path for source in mine}
        found += [
            f"{folder}/{name}: in no program"
            for name in sorted(os.listdir(os.path.join(root, folder)))
            if name.endswith(".cpp") and not name.endswith("_test.cpp") and os.path.join(root, folder, name) not in known
        ]
        if not mine:
            found.append(f"{folder}: no source is counted")
        failed += bool(found)
        complaints += found
    print(f"{'all':24s} lines {figure(*total[:2])}   branches {figure(*total[2:])}")
    for complaint in complaints:
        print(complaint)
    print(f"{len(folders) - failed} passed, {failed} failed")
    return failed == 0


def documents(text):
    decoder = json.JSONDecoder()
    while text.strip():
        document, end = decoder.raw_decode(text.lstrip())
        yield document
        text = text.lstrip()[end:]


if __name__ == "__main__":
    sys.exit(0 if report(os.path.realpath(sys.argv[1]), sys.argv[2:], documents(sys.stdin.read())) else 1)
