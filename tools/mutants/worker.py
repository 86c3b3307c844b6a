"""Compiles, links and judges one fault after another, in a folder of its own."""

import os
import subprocess
import sys

import building
import judging


class Worker:
    def __init__(self, number, part, times):
        self.folder = os.path.join(part.work, str(number))
        os.makedirs(os.path.join(self.folder, "run"), exist_ok=True)
        self.part, self.times = part, times
        self.links = {}
        part.begin(self)

    def succeeds(self, words):
        with open(os.path.join(self.folder, "build.log"), "ab") as log:
            return subprocess.run(words, cwd=self.part.build, stdout=log, stderr=log, check=False).returncode == 0

    def compile(self, fault):
        """True if what comes out can be linked."""
        copy = os.path.join(self.folder, os.path.basename(fault.path))
        with open(copy, "wb") as file:
            file.write(fault.source())
        source = self.part.sources[fault.path]
        beside = os.path.dirname(os.path.join(building.ROOT, fault.path))
        end = ["-w", "-iquote", beside, "-c", copy, "-o", os.path.join(self.folder, "fault.o")]
        compiled = self.succeeds([source.compiler, *self.part.options_to_compile(fault.path), *end])
        # The precompiled headers may not suit this source.
        compiled = compiled or self.succeeds([source.compiler, *source.options, *end])
        os.remove(copy)
        return compiled

    def link(self, target, fault):
        """The path of a target with the fault that was compiled last, or without any; nothing if it cannot be linked."""
        if target not in self.links:
            self.links[target] = building.link_words(self.part.build, target)
        output = os.path.join(self.folder, os.path.basename(target))
        words = building.with_output(self.links[target], output)
        if fault is not None:
            changed = os.path.join(self.folder, "fault.o")
            words = building.with_object(words, self.part.sources[fault.path].object, changed)
        return output if self.succeeds(words) else None

    def run(self, program, linked, tests, limits, options=()):
        """Whether all tests passed, whether the time was up, and the log. A program that begins no test is started once
        more: Wine itself may have failed."""
        words = [*self.part.command(self, program, linked), f"--gtest_filter={tests}", *options]
        for _ in range(2):
            run = judging.Run(words, self.folder, self.part.environment(self), self.part.limits)
            code, log = run.until_end(*limits), run.text()
            if "[ RUN " in log:
                break
        # The exit code alone proves nothing: a fault may end the program.
        return code == 0 and "[  PASSED  ]" in log, code is None, log

    def times_of(self, program):
        """How long each test takes without a fault."""
        target = os.path.join(self.part.build, self.part.target_of(program))
        built = " ".join(str(os.path.getmtime(path)) for path in (os.path.join(self.part.build, program), target))
        return self.times.of(program, built, lambda: self.measure(program))

    def measure(self, program):
        linked = self.link(self.part.target_of(program), None)
        if linked is None:
            sys.exit(f"{program} cannot be linked: see {self.folder}/build.log")
        results = os.path.join(self.folder, "results.json")
        tests = judging.all_but(self.part.excluded(program))
        output = f"--gtest_output=json:{self.part.file_name(results)}"
        passed, _, _ = self.run(program, linked, tests, (300, 900), [output])
        if not passed:
            sys.exit(f"{program} fails without a fault: see {self.folder}/log")
        return judging.read_times(results)

    def failure(self, program, linked, tests):
        """The test that fails; nothing if none does."""
        limits = judging.limits_of(self.times_of(program), tests, self.part.patience)
        passed, late, log = self.run(program, linked, tests, limits, ["--gtest_fail_fast"])
        if passed:
            return ""
        self.part.clean()
        return (judging.failed_test(log) or "a crash") + (" (time limit)" if late else "")

    def lasting_failure(self, program, linked, tests):
        """The same, but a failure that does not come again is none."""
        for _ in range(3):
            found = self.failure(program, linked, tests)
            if not found or not self.part.repeats:
                return found
            name = found.split(" ")[0]
            if self.failure(program, linked, name if "." in name else tests):
                return found
        return ""

    def noticed_by(self, fault):
        """The test that notices; '' if none does, None if the fault cannot be built."""
        judges = self.part.judges_of(fault.path, self.times_of)
        if not self.compile(fault):
            return None
        linked = {}
        for program, tests in judges:
            target = self.part.target_of(program)
            linked[target] = linked.get(target) or self.link(target, fault)
            if linked[target] is None:
                return None
            found = self.lasting_failure(program, linked[target], tests)
            if found:
                return found
        return ""
