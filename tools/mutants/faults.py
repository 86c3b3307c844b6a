"""The faults that can be planted, and those that are known to change nothing."""

import collections
import hashlib
import json
import os
import re

import places
from building import ROOT

EQUIVALENT = os.path.join(os.path.dirname(os.path.realpath(__file__)), "equivalent.txt")


class Fault:
    """One change of one place. `before` and `after` are the texts, `context` is the line without its blanks."""

    def __init__(self, path, place, lines):
        self.path = path
        self.line, self.start, self.end, self.after, self.before = place
        self.context = lines[self.line - 1].strip()

    def where(self):
        return f"{self.path}:{self.line}"

    def change(self):
        return " ".join(f"{self.before} -> {self.after or 'nothing'}".split())

    def source(self):
        """The whole source with this fault."""
        with open(os.path.join(ROOT, self.path), "rb") as file:
            content = file.read()
        return content[: self.start] + self.after.encode() + content[self.end :]


def read(path):
    with open(path, "rb") as file:
        return file.read()


def places_of(path, options, folder):
    """Parsing takes a while, so what was found is kept until the source changes."""
    full = os.path.join(ROOT, path)
    key = hashlib.sha256(read(full) + read(places.__file__)).hexdigest()
    cache = os.path.join(folder, path.replace("/", "+") + ".json")
    if os.path.exists(cache):
        known = json.loads(read(cache))
        if known["key"] == key:
            return known["places"]
    found = places.places_of(full, options)
    with open(cache, "w", encoding="utf-8") as file:
        json.dump({"key": key, "places": found}, file)
    return found


def faults_of(part, path_part):
    """Of the sources whose path has that part, in their order."""
    folder = os.path.join(part.work, "places")
    os.makedirs(folder, exist_ok=True)
    found = []
    for path in sorted(path for path in part.sources if path_part in path):
        lines = read(os.path.join(ROOT, path)).decode().split("\n")
        found += [Fault(path, place, lines) for place in places_of(path, part.options_to_parse(path), folder)]
    return found


def known_equivalents(path=EQUIVALENT):
    """How many places each entry of `FILE | TEXT OF THE LINE | CHANGE | REASON` stands for. It says so at the end of its
    reason if there are several: `(2 places)`."""
    known = {}
    with open(path, encoding="utf-8") as file:
        for line in file:
            if line.strip() and not line.startswith("#"):
                path, context, rest = line.strip().split(" | ", 2)
                # The change may be one of `|`.
                change, reason = rest.rsplit(" | ", 1)
                assert reason, f"{path}: {change}: no reason"
                count = re.search(r" \((\d+) places\)$", reason)
                known[path, context, change] = int(count[1]) if count else 1
    return known


def miscounted(known, faults):
    """The entries for the sources of these faults, which must be all of theirs, that stand for more or fewer places than
    they say: the same text may have got into another place, where it does make a difference."""
    sources = {fault.path for fault in faults}
    found = collections.Counter((fault.path, fault.context, fault.change()) for fault in faults)
    return [
        f"{' | '.join(entry)}: {found[entry]} places instead of {count}"
        for entry, count in known.items()
        if entry[0] in sources and found[entry] != count
    ]


def spread(total, count, seed):
    """The numbers of the first choice, evenly apart; those behind each of them are its replacements."""
    count = min(count, total)
    step = total / count
    shift = (seed * 0.6180339887) % 1.0
    chosen = [int((i + shift) * step) % total for i in range(count)]
    following = {first: second for first, second in zip(chosen, chosen[1:] + [chosen[0] + total])}
    return [list(range(first, max(first + 1, min(following[first], first + total)))) for first in chosen]
