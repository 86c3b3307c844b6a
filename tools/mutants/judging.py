"""Runs programs of tests, and tells which test fails."""

import fnmatch
import json
import os
import re
import resource
import signal
import subprocess
import threading
import time

MEMORY = 4 << 30  # bytes that a program with a fault may take
OUTPUT = 256 << 20  # bytes that it may write
SLOW = 1.0  # seconds; a test that takes longer runs last


def matches(tests, name):
    """As GoogleTest's filter has it."""
    wanted, _, unwanted = tests.partition("-")
    any_of = lambda patterns: any(fnmatch.fnmatchcase(name, pattern) for pattern in patterns.split(":"))
    return (not wanted or any_of(wanted)) and not (unwanted and any_of(unwanted))


def of_suites(suites, unwanted):
    """The filter for these suites, also for those that are instantiated, without the tests of another filter."""
    return ":".join(f"{suite}.*:*/{suite}.*" for suite in suites) + ("-" + unwanted if unwanted else "")


def all_but(*unwanted):
    left_out = ":".join(tests for tests in unwanted if tests)
    return "-" + left_out if left_out else "*"


def read_times(path):
    """Seconds of each test that passed, from GoogleTest's result file."""
    with open(path, encoding="utf-8") as file:
        suites = json.load(file)["testsuites"]
    return {
        f"{suite['name']}.{test['name']}": float(test["time"].rstrip("s"))
        for suite in suites
        for test in suite["testsuite"]
        if test["result"] == "COMPLETED" and "failures" not in test
    }


def failed_test(log):
    """The first test that failed, or that a crash ended; nothing if the log names none."""
    text = re.sub(r"\r", "", log)
    failed = re.search(r"^\[  FAILED  \] ([^\s,]+)", text, re.MULTILINE)
    if failed and "." in failed[1]:
        return failed[1]
    begun = re.findall(r"^\[ RUN      \] (\S+)", text, re.MULTILINE)
    return begun[-1] if begun else ""


class Run:
    """One program that runs until it ends, or until it has said nothing for too long."""

    def __init__(self, words, folder, environment, limits):
        self.log = os.path.join(folder, "log")
        self.process = None
        self.words = ["setpriv", "--pdeathsig", "KILL", "--", *words]
        self.folder, self.environment, self.limits = folder, environment, limits

    def limit(self):
        for kind, most in self.limits.items():
            resource.setrlimit(kind, (most, most))

    def until_end(self, quiet_seconds, all_seconds):
        """The exit code; None if the time was up."""
        with open(self.log, "wb") as log:
            self.process = subprocess.Popen(
                self.words,
                cwd=os.path.join(self.folder, "run"),
                env=self.environment,
                stdin=subprocess.DEVNULL,
                stdout=log,
                stderr=log,
                start_new_session=True,
                preexec_fn=self.limit,
            )
        begun = heard = time.monotonic()
        size = 0
        while True:
            try:
                return self.process.wait(0.5)
            except subprocess.TimeoutExpired:
                now = time.monotonic()
                if os.path.getsize(self.log) != size:
                    size, heard = os.path.getsize(self.log), now
                if now - heard > quiet_seconds or now - begun > all_seconds:
                    os.killpg(self.process.pid, signal.SIGKILL)
                    self.process.wait()
                    return None

    def text(self):
        with open(self.log, "rb") as file:
            return file.read().decode(errors="replace")


class Times:
    """How long each test takes without a fault. Kept until its program is built anew."""

    def __init__(self, work):
        self.cache = os.path.join(work, "times.json")
        self.guard = threading.Lock()
        self.known = {}
        if os.path.exists(self.cache):
            with open(self.cache, encoding="utf-8") as file:
                self.known = json.load(file)

    def of(self, program, built, measure):
        """`built` tells one build of a program from another; `measure` runs it."""
        with self.guard:
            if self.known.get(program, {}).get("built") != built:
                self.known[program] = {"built": built, "tests": measure()}
                with open(self.cache, "w", encoding="utf-8") as file:
                    json.dump(self.known, file)
            return self.known[program]["tests"]


def slow_tests(times):
    return ":".join(name for name, seconds in times.items() if seconds > SLOW)


def limits_of(times, tests, patience):
    """How long a program may say nothing, and how long it may run."""
    chosen = [seconds for name, seconds in times.items() if matches(tests, name)]
    return patience + 5 * max(chosen, default=0), 3 * patience + 5 * sum(chosen)
