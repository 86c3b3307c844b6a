"""Plants small faults in the logic, one at a time, and tells which of them no test notices.

    mutants.py [--seed SEED] [--jobs JOBS] [--only TEXT] [--list] N

N faults are spread evenly over all places of the sources whose path contains TEXT; SEED moves the choice on. A fault that
does not compile is replaced by the next one. Nothing of the sources or of the build is changed: a changed copy of one source
is compiled and linked in front of the libraries in build/mutants.
"""

import argparse
import concurrent.futures
import glob
import json
import os
import re
import resource
import shlex
import shutil
import subprocess
import sys
import threading
import time

import places

ROOT = os.path.realpath(os.path.join(os.path.dirname(__file__), "..", ".."))
BUILD = os.path.join(ROOT, "build", "clang")
WORK = os.path.join(ROOT, "build", "mutants")
EQUIVALENT = os.path.join(os.path.dirname(os.path.realpath(__file__)), "equivalent.txt")

UNIT, MESSAGES = "src/unit_tests", "companion/kwoinit/kwoinit_tests"
FAULTS, CONTRACT, FUZZ = "tests/faults/fault_tests", "tests/contract/contract_tests", "fuzzers/fuzz_replay"
CHECK = "kwocheck/kwocheck_tests"
# Who notices a fault in the sources of a folder, the quickest first.
SLOW = "TimerModel.*:TimerYear.*:TraceSplit*:Reentered*:SaveErrorTest.ErrorsThatNobody*:*MoreThan64MiB*:SpinButtons.TheUsual*"
JUDGES = {
    "companion/kwoinit": [(MESSAGES, "*"), (FAULTS, "*"), (FUZZ, "*")],
    "kwocheck": [(CHECK, "*")],
    "src": [(UNIT, "-" + SLOW), (CONTRACT, "*"), (FAULTS, "*"), (UNIT, SLOW), (FUZZ, "*")],
}
MEMORY = 4 << 30  # bytes that a program with a fault may take


def suites_of(tests):
    """The filter for the suites of these files, without the slow ones; nothing if there are none."""
    suites = set()
    for path in tests:
        with open(path, encoding="utf-8") as file:
            suites.update(re.findall(r"^TEST(?:_F|_P)?\((\w+),", file.read(), re.MULTILINE))
    return ":".join(f"{suite}.*" for suite in sorted(suites)) + "-" + SLOW if suites else ""


def judges_of(path):
    """Pairs of a program and the filter of its tests: of the source, of its folder, all of them."""
    judges = next(judges for folder, judges in JUDGES.items() if path.startswith(folder + "/"))
    base = os.path.join(ROOT, os.path.splitext(path)[0])
    beside = glob.glob(glob.escape(os.path.dirname(base)) + "/*_test.cpp")
    nearest = [suites_of([test for test in beside if test == base + "_test.cpp"]), suites_of(beside)]
    return [(judges[0][0], tests) for tests in nearest if tests] + judges


def compile_commands():
    """The options of each source of the logic, of the companion and of kwocheck, without what counts coverage or forbids warnings."""
    commands = {}
    with open(os.path.join(BUILD, "compile_commands.json"), encoding="utf-8") as file:
        entries = json.load(file)
    for entry in entries:
        path = os.path.relpath(entry["file"], ROOT)
        if not path.startswith(("src/", "companion/", "kwocheck/")) or path.endswith("_test.cpp"):
            continue
        words = shlex.split(entry["command"])
        compiler = words.index(next(word for word in words if os.path.basename(word).startswith("clang")))
        options = words[compiler + 1 :]
        del options[options.index("-o") : options.index("-o") + 2]
        unwanted = {"-c", entry["file"], "-Werror", "-fcoverage-mapping"}
        commands[path] = [o for o in options if o not in unwanted and not o.startswith("-fprofile-instr-generate")]
    return commands


def link_words(program):
    """The command that links a program; the first object and the output are found by their names."""
    said = subprocess.run(["ninja", "-C", BUILD, "-t", "commands", program], stdout=subprocess.PIPE, check=True, text=True)
    words = shlex.split(said.stdout.strip().split("\n")[-1])
    begin = next(i for i, word in enumerate(words) if os.path.basename(word).startswith("clang"))
    end = words.index("&&", begin)
    return words[begin:end]


class Mutant:
    def __init__(self, path, place, text):
        self.path = path
        self.line, self.start, self.end, self.new, self.old = place
        self.line_text = text

    def where(self):
        return f"{self.path}:{self.line}"

    def change(self):
        return " ".join(f"{self.old} -> {self.new or 'nothing'}".split())

    def source(self):
        with open(os.path.join(ROOT, self.path), "rb") as file:
            content = file.read()
        return content[: self.start] + self.new.encode() + content[self.end :]


def all_mutants(commands, only):
    """In the order of the sources. Parsing takes a while, so what was found is kept until a source changes."""
    os.makedirs(os.path.join(WORK, "places"), exist_ok=True)
    found = []
    for path in sorted(path for path in commands if only in path):
        full = os.path.join(ROOT, path)
        cache = os.path.join(WORK, "places", path.replace("/", "+") + ".json")
        newest = max(os.path.getmtime(full), os.path.getmtime(places.__file__))
        if os.path.exists(cache) and os.path.getmtime(cache) > newest:
            with open(cache, encoding="utf-8") as file:
                here = json.load(file)
        else:
            here = places.places_of(full, commands[path])
            with open(cache, "w", encoding="utf-8") as file:
                json.dump(here, file)
        with open(full, encoding="utf-8") as file:
            lines = file.read().split("\n")
        found += [Mutant(path, place, lines[place[0] - 1].strip()) for place in here]
    return found


def known_equivalents():
    """Lines of `FILE | TEXT OF THE LINE | CHANGE | REASON`."""
    known = set()
    with open(EQUIVALENT, encoding="utf-8") as file:
        for line in file:
            if line.strip() and not line.startswith("#"):
                path, text, change, reason = (part.strip() for part in line.split(" | "))
                assert reason, f"{path}: {change}: no reason"
                known.add((path, text, change))
    return known


def spread(total, count, seed):
    """The numbers of the first choice, evenly apart; those behind each of them are its replacements."""
    count = min(count, total)
    step = total / count
    shift = (seed * 0.6180339887) % 1.0
    chosen = [int((i + shift) * step) % total for i in range(count)]
    following = {first: second for first, second in zip(chosen, chosen[1:] + [chosen[0] + total])}
    return [list(range(first, max(first + 1, min(following[first], first + total)))) for first in chosen]


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


class Worker:
    """Compiles, links and runs in a folder of its own."""

    def __init__(self, number, commands, links, limits):
        self.folder = os.path.join(WORK, str(number))
        os.makedirs(os.path.join(self.folder, "run"), exist_ok=True)
        self.commands, self.links, self.limits = commands, links, limits

    def run(self, words, seconds, cwd=BUILD, limited=False):
        """The exit code; None if the time was up."""
        environment = dict(os.environ, LLVM_PROFILE_FILE="/dev/null", TMPDIR=os.path.join(self.folder, "run"))
        with open(os.path.join(self.folder, "log"), "wb") as log:
            process = subprocess.Popen(
                words,
                cwd=cwd,
                env=environment,
                stdin=subprocess.DEVNULL,
                stdout=log,
                stderr=log,
                start_new_session=True,
                preexec_fn=limit_memory if limited else None,
            )
            try:
                return process.wait(seconds)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, 9)
                process.wait()
                return None

    def run_tests(self, program, tests, seconds):
        words = [program, "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={tests}"]
        return self.run(words, seconds, self.folder + "/run", limited=True)

    def compile(self, mutant):
        source = os.path.join(self.folder, os.path.basename(mutant.path))
        self.object = os.path.join(self.folder, "mutant.o")
        with open(source, "wb") as file:
            file.write(mutant.source())
        beside = os.path.dirname(os.path.join(ROOT, mutant.path))
        words = ["clang++", *self.commands[mutant.path], "-w", "-iquote", beside, "-c", source, "-o", self.object]
        return self.run(words, 120) == 0

    def link(self, program):
        """Of a static library the linker takes only what is missing: what stands in front of it comes instead."""
        words = list(self.links[program])
        output = os.path.join(self.folder, os.path.basename(program))
        words[words.index("-o") + 1] = output
        if shutil.which("ld.lld"):
            words.insert(1, "-fuse-ld=lld")  # much quicker
        words.insert(words.index("-o"), self.object)
        return output if self.run(words, 120) == 0 else None

    def noticed_by(self, mutant):
        """The program that notices; '' if none does, None if it cannot be built."""
        if not self.compile(mutant):
            return None
        linked = {}
        for program, tests in judges_of(mutant.path):
            output = linked[program] = linked.get(program) or self.link(program)
            if output is None:
                return None
            code = self.run_tests(output, tests, self.limits.of(self, program, tests))
            if code != 0:
                return os.path.basename(program) + (" (time limit)" if code is None else "")
        return ""


class Limits:
    """How long tests may take: they pass without a fault, and get five times as long with one. Kept until the program is
    built anew."""

    def __init__(self):
        self.cache = os.path.join(WORK, "limits.json")
        self.guard = threading.Lock()
        self.known = {}
        if os.path.exists(self.cache):
            with open(self.cache, encoding="utf-8") as file:
                self.known = json.load(file)

    def of(self, worker, program, tests):
        path = os.path.join(BUILD, program)
        key = f"{program} {os.path.getmtime(path)} {tests}"
        with self.guard:
            if key not in self.known:
                begun = time.monotonic()
                if worker.run_tests(path, tests, 300) != 0:
                    sys.exit(f"{program} fails without a fault: see {worker.folder}/log")
                self.known[key] = 10 + 5 * (time.monotonic() - begun)
                with open(self.cache, "w", encoding="utf-8") as file:
                    json.dump(self.known, file)
            return self.known[key]


def main():
    parser = argparse.ArgumentParser(prog="./test mutants")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2, choices=(1, 2))
    parser.add_argument("--only", default="")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("count", type=int, nargs="?", default=100)
    options = parser.parse_args()

    commands = compile_commands()
    mutants = all_mutants(commands, options.only)
    if not mutants:
        sys.exit(f"no source of the logic is called {options.only}")
    if options.list:
        for mutant in mutants:
            print(f"{mutant.where()}: {mutant.change()}")
        return 0
    known = known_equivalents()
    programs = sorted({program for path in {mutant.path for mutant in mutants} for program, _ in judges_of(path)})
    links = {program: link_words(program) for program in programs}
    print(f"seed {options.seed}: {options.count} of {len(mutants)} places", flush=True)
    limits = Limits()
    workers = [Worker(number, commands, links, limits) for number in range(options.jobs)]

    free = list(workers)
    guard = threading.Lock()
    results = {"noticed": 0, "equivalent": 0, "survived": []}

    def try_one(candidates):
        with guard:
            worker = free.pop()
        try:
            for number in candidates:
                mutant = mutants[number % len(mutants)]
                if (mutant.path, mutant.line_text, mutant.change()) in known:
                    with guard:
                        results["equivalent"] += 1
                    return
                by = worker.noticed_by(mutant)
                if by is None:
                    continue
                with guard:
                    if by:
                        results["noticed"] += 1
                    else:
                        results["survived"].append(mutant)
                    said = f"noticed by {by}" if by else "SURVIVED"
                    print(f"{mutant.where()}: {mutant.change()}: {said}", flush=True)
                return
        finally:
            with guard:
                free.append(worker)

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for _ in pool.map(try_one, spread(len(mutants), options.count, options.seed)):
            pass
    survived = sorted(results["survived"], key=lambda mutant: (mutant.path, mutant.line))
    for mutant in survived:
        print(f"survived: {mutant.where()}: {mutant.change()}    [{mutant.line_text}]")
    counted = results["noticed"] + len(survived)
    rate = 100.0 * results["noticed"] / counted if counted else 0.0
    print(
        f"{counted} faults planted (seed {options.seed}), {len(survived)} survived, {rate:.1f} % noticed; "
        f"{results['equivalent']} more are known to change nothing"
    )
    return 1 if survived or counted == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
