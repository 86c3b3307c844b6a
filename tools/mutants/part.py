"""A part of the component that faults are planted in: its sources, and the programs of tests that judge it."""

import os
import resource

import building
import judging
from building import ROOT


class Part:
    """What holds for programs that run on this machine. JUDGES names the programs for the sources of a folder, the
    quickest first."""

    build = work = ""  # the folder of the unchanged build, the folder of the changed one
    judges = {}
    headers = ()  # of the system; they are precompiled
    level = "-O1"
    repeats = False  # whether a failure counts only when it comes again
    patience = 10  # seconds that a program may say nothing, and five times its longest test
    limits = {resource.RLIMIT_AS: judging.MEMORY, resource.RLIMIT_FSIZE: judging.OUTPUT, resource.RLIMIT_CORE: 0}

    def __init__(self):
        self.sources = building.sources_of(self.build, self.has)
        if not self.sources:
            raise SystemExit(f"{self.build} compiles no source alone")
        for source in self.sources.values():
            source.options = building.optimised(source.options, self.level)
        some = next(iter(self.sources.values()))
        self.precompiled = building.precompile(some, self.headers, os.path.join(self.work, "headers"))

    def has(self, path):
        """Whether a source of that path belongs to the part."""
        return path.startswith(tuple(self.judges))

    def options_to_parse(self, path):
        """For clang."""
        return self.options_to_compile(path)

    def options_to_compile(self, path):
        return [*self.precompiled, *self.sources[path].options]

    def judges_of(self, path, times):
        """Pairs of a program and the filter of its tests: those that are near the source, all others, the slow ones.
        TIMES tells how long each test of a program takes."""
        programs = next(programs for folder, programs in self.judges.items() if path.startswith(folder))
        slow = {program: judging.slow_tests(times(program)) for program in programs}
        near = [(program, judging.of_suites(suites, slow[program])) for program, suites in self.near(path, programs)]
        quick = [(program, judging.all_but(slow[program], self.excluded(program))) for program in programs]
        return near + quick + [(program, tests) for program, tests in slow.items() if tests]

    def near(self, path, programs):
        """Pairs of a program and the suites that are likely to notice a fault in the source, the likeliest first."""
        raise NotImplementedError

    def excluded(self, _program):
        """The filter of tests that never run; nothing if all do."""
        return ""

    def target_of(self, program):
        """What is linked with the fault for a program."""
        return program

    def begin(self, worker):
        """Before the first program runs."""

    def command(self, _worker, _program, linked):
        return [linked]

    def file_name(self, path):
        """As the programs know a file."""
        return path

    def environment(self, worker):
        return dict(os.environ, LLVM_PROFILE_FILE="/dev/null", TMPDIR=os.path.join(worker.folder, "run"))

    def clean(self):
        """After a failure."""


def tests_beside(path):
    """The files of tests in the folder of a source."""
    return building.files(os.path.join(os.path.dirname(path), "*_test.cpp"))


def test_of(path):
    return os.path.join(ROOT, os.path.splitext(path)[0] + "_test.cpp")
