"""Compiles what runs on Windows alone once more, so that it counts what runs, and links it in the place of the build's own.

    shell_coverage.py FOLDER

FOLDER then holds the contract tests, the unit tests of the shell, and in `dist` what a user installs.
"""

import concurrent.futures
import os
import subprocess
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.realpath(__file__)), "mutants"))

import building
from building import ROOT
from shell import CONTRACT, DLLS, UNIT, Shell, lay_out

COUNT = "--coverage"


def main(folder):
    part = Shell()
    objects = {path: os.path.join(folder, "objects", path.replace("/", "+") + ".o") for path in part.sources}

    def compile_one(path):
        source = part.sources[path]
        words = [source.compiler, *part.options_to_compile(path), COUNT, "-w"]
        subprocess.run([*words, "-c", os.path.join(ROOT, path), "-o", objects[path]], cwd=part.build, check=True)

    def link(target, output):
        words = building.with_output(building.link_words(part.build, target), os.path.join(folder, output))
        for path, counting in objects.items():
            if building.links(words, part.sources[path].object):
                words = building.with_object(words, part.sources[path].object, counting)
        subprocess.run([*words, COUNT], cwd=part.build, check=True)

    os.makedirs(os.path.join(folder, "objects"))
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        for _ in pool.map(compile_one, part.sources):
            pass
    lay_out(folder)
    link(CONTRACT, os.path.basename(CONTRACT))
    link(UNIT, os.path.basename(UNIT))
    for dll in DLLS.values():
        link(dll, os.path.join("dist", os.path.basename(dll)))


if __name__ == "__main__":
    main(os.path.abspath(sys.argv[1]))
