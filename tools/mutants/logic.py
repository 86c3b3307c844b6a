"""The logic, the companion's reader of message files and the conclusions of kwocheck: native programs are the judges."""

import os

import building
from building import ROOT
from part import Part, test_of, tests_beside

UNIT, MESSAGES = "src/unit_tests", "companion/kwoinit/kwoinit_tests"
FAULTS, CONTRACT, FUZZ = "tests/faults/fault_tests", "tests/contract/contract_tests", "fuzzers/fuzz_replay"


class Logic(Part):
    build = os.path.join(ROOT, "build", "alone")
    work = os.path.join(ROOT, "build", "mutants", "logic")
    judges = {
        "companion/kwoinit/": (MESSAGES, FAULTS, FUZZ),
        "kwocheck/": ("kwocheck/kwocheck_tests",),
        "src/": (UNIT, CONTRACT, FAULTS, FUZZ),
    }
    headers = (
        *("algorithm", "array", "cmath", "cstdint", "functional", "map", "memory", "optional", "span", "string"),
        *("string_view", "utility", "vector"),
    )

    def has(self, path):
        """The simulated desktop is a part of the tests."""
        return super().has(path) and not path.startswith("src/platform/simulated/")

    def near(self, path, programs):
        """The tests of the source, and those of its folder."""
        beside = tests_beside(path)
        groups = [building.suites_of(test for test in beside if test == test_of(path)), building.suites_of(beside)]
        return [(programs[0], suites) for suites in groups if suites]
