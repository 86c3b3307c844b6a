#!/usr/bin/env python3
"""Prints a build for Ninja that reads sources with clang-tidy, or with their compiler, by the commands in FOLDER that
compile each of them alone.

    tidy_build.py ROOT FOLDER [CHECKS]

The targets tidy/PATH and syntax/PATH stand for the source at PATH, seen from ROOT. It is read again only if it, a header
that it includes, or .clang-tidy has changed. CHECKS are added to those of .clang-tidy; with - before them, they are left out.
"""

import json
import os
import re
import sys

RULE = """builddir = tidy
rule tidy
  command = clang-tidy --quiet --checks='{checks}' -p . $in 2>$out.log && $headers && touch $out
  depfile = $out.d
  deps = gcc
  description = $in
rule syntax
  command = $compile && touch $out
  depfile = $out.d
  deps = gcc
  description = $in
"""


def print_build(root, folder, checks=""):
    with open(os.path.join(folder, "compile_commands.json"), encoding="utf-8") as file:
        entries = json.load(file)
    print(RULE.format(checks=checks))
    # A source of several programs is compiled alike for each.
    for source, command in {entry["file"]: entry["command"] for entry in entries}.items():
        path = os.path.relpath(source, root)
        if path.startswith(("..", "build/")) or not path.endswith(".cpp"):
            continue
        out = f"tidy/{path}"
        print(f"build {out}: tidy {quoted(source)} | {quoted(root)}/.clang-tidy")
        print(f"  headers = {with_dependencies(command, '-MM', out)}")
        out = f"syntax/{path}"
        print(f"build {out}: syntax {quoted(source)}")
        print(f"  compile = {with_dependencies(command, '-fsyntax-only -MD', out)}")


def with_dependencies(command, options, out):
    """The command with these options in place of its output; it writes down which headers the source includes."""
    return re.sub(r" -o \S+ -c ", f" {options} -MT {out} -MF {out}.d ", command).replace("$", "$$")


def quoted(path):
    return re.sub(r"([$ :])", r"$\1", path)


print_build(*sys.argv[1:])
