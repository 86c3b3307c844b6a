"""Plants small faults, one at a time, and tells which of them no test notices.

    mutants.py [--shell] [--seed SEED] [--jobs JOBS] [--only TEXT] [--list] N

N faults are spread evenly over all places of the sources whose path contains TEXT; SEED moves the choice on. A fault that
does not compile is replaced by the next one. Nothing of the sources or of the build is changed: a changed copy of one source
is compiled and linked in the place of the other, in build/mutants.
"""

import argparse
import concurrent.futures
import queue
import sys
import threading
import time

from faults import faults_of, known_equivalents, miscounted, spread
from judging import Times
from logic import Logic
from shell import Shell
from worker import Worker


class Tally:
    """What became of the faults so far."""

    def __init__(self):
        self.guard = threading.Lock()
        self.noticed = self.equivalent = self.unbuilt = 0
        self.survived = []
        self.begun = time.monotonic()

    def count_equivalent(self):
        with self.guard:
            self.equivalent += 1

    def count_unbuilt(self):
        with self.guard:
            self.unbuilt += 1

    def count(self, fault, test, seconds):
        with self.guard:
            if test:
                self.noticed += 1
            else:
                self.survived.append(fault)
            said = f"noticed by {test}" if test else "SURVIVED"
            print(f"{fault.where()}: {fault.change()}: {said}, {seconds:.0f} s", flush=True)

    def report(self, seed):
        """True if no fault survived."""
        survived = sorted(self.survived, key=lambda fault: (fault.path, fault.line))
        for fault in survived:
            print(f"survived: {fault.path} | {fault.context} | {fault.change()}    (line {fault.line})")
        counted = self.noticed + len(survived)
        rate = 100.0 * self.noticed / counted if counted else 0.0
        print(
            f"{counted} faults planted (seed {seed}) in {time.monotonic() - self.begun:.0f} s, {len(survived)} survived, "
            f"{rate:.1f} % noticed; {self.equivalent} more are known to change nothing, {self.unbuilt} did not compile"
        )
        return counted > 0 and not survived


def read_options():
    parser = argparse.ArgumentParser(prog="./test mutants")
    parser.add_argument("--shell", action="store_true")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2, choices=(1, 2))
    parser.add_argument("--only", default="")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("count", type=int, nargs="?", default=100)
    return parser.parse_args()


def plant(faults, candidates, workers, known, tally):
    """Plants the first of these faults that compiles."""
    worker = workers.get()
    try:
        for number in candidates:
            fault = faults[number % len(faults)]
            if (fault.path, fault.context, fault.change()) in known:
                tally.count_equivalent()
                return
            begun = time.monotonic()
            test = worker.noticed_by(fault)
            if test is not None:
                tally.count(fault, test, time.monotonic() - begun)
                return
            tally.count_unbuilt()
    finally:
        workers.put(worker)


def main():
    options = read_options()
    part = Shell() if options.shell else Logic()
    of_sources = faults_of(part, options.only.split(":")[0])
    known = known_equivalents()
    wrong = miscounted(known, of_sources)
    if wrong:
        sys.exit("equivalent.txt: " + "\nequivalent.txt: ".join(wrong))
    faults = [fault for fault in of_sources if options.only in fault.where() + ":"]
    if not faults:
        sys.exit(f"no place is called {options.only}")
    if options.list:
        for fault in faults:
            print(f"{fault.where()}: {fault.change()}")
        return 0
    print(f"seed {options.seed}: {options.count} of {len(faults)} places", flush=True)
    # Programs under Wine share a registry and a screen.
    jobs = 1 if options.shell else options.jobs
    times = Times(part.work)
    workers = queue.Queue()
    for number in range(jobs):
        workers.put(Worker(number, part, times))
    tally = Tally()
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        choices = spread(len(faults), options.count, options.seed)
        for _ in pool.map(lambda candidates: plant(faults, candidates, workers, known, tally), choices):
            pass
    return 0 if tally.report(options.seed) else 1


if __name__ == "__main__":
    sys.exit(main())
