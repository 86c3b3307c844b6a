"""The automation shell and the implementation of the platform on Windows: programs that run under Wine are the judges.

The environment says how Wine is started (KWO_WINE), how its server is (KWO_WINESERVER) and where its prefix is
(KWO_PREFIX); tools/mutants.sh sets it.
"""

import functools
import glob
import os
import resource
import shlex
import shutil
import subprocess

import building
import judging
from building import ROOT
from part import Part

# There each source is compiled and linked by itself.
PRESET = "x64-apart"
CONTRACT, UNIT, COM = "tests/contract/contract_tests.exe", "src/com/com_unit_tests.exe", "tests/com/com_tests.exe"
COMPANION = "tests/com/kwoinit/kwoinit_com_tests.exe"
# The programs that use a DLL from outside.
DLLS = {COM: "src/com/KWOUtil.dll", COMPANION: "companion/kwoinit/dll/KWOInit.dll"}
# Where the tests of a program are.
TESTS = {
    CONTRACT: ("tests/contract/*_test.cpp", "tests/contract/windows/*_test.cpp"),
    UNIT: ("src/com/*_test.cpp", "src/com_support/*_test.cpp"),
    COM: ("tests/com/*_test.cpp",),
    COMPANION: ("tests/com/kwoinit/*_test.cpp",),
}
# What stands there and is no part of the component: the start of the trace for support, a listener for tests and kwohost.
OTHERS = ("src/com/diagnostic/start_trace.cpp", "src/com_support/annotation_service.cpp")


def subject(path):
    """`month_view` of the source month_view_object.cpp and of the tests month_view_test.cpp."""
    name = os.path.splitext(os.path.basename(path))[0]
    for end in ("_contract_test", "_test", "_object"):
        name = name.removesuffix(end)
    return name.removeprefix("windows_")


def is_about(test, source):
    one, other = subject(test) + "_", subject(source) + "_"
    return one.startswith(other) or other.startswith(one)


def lay_out(folder):
    """Puts what a user installs into a folder, for a changed DLL to take the place of the other. A test looks for the
    manifest beside its program."""
    shutil.copytree(os.path.join(ROOT, "dist", PRESET), os.path.join(folder, "dist"), dirs_exist_ok=True)
    shutil.copy(os.path.join(folder, "dist", "KWOUtil.X.manifest"), folder)


class Shell(Part):
    build = os.path.join(ROOT, "build", PRESET)
    work = os.path.join(ROOT, "build", "mutants", "shell")
    judges = {
        "src/platform/windows/": (CONTRACT, COM, UNIT),
        "src/com_support/": (UNIT, CONTRACT, COM, COMPANION),
        "src/com/server/": (UNIT, COM, COMPANION),
        "src/com/": (UNIT, COM),
        "companion/kwoinit/dll/": (COMPANION,),
    }
    headers = ("windows.h", "oleauto.h", "ocidl.h", "algorithm", "memory", "string", "utility", "vector")
    level = "-O0"
    # Other programs of the machine can hold up a test under Wine.
    repeats = True
    patience = 30
    last = None  # the program that ran last
    limits = {resource.RLIMIT_DATA: judging.MEMORY, resource.RLIMIT_FSIZE: judging.OUTPUT, resource.RLIMIT_CORE: 0}

    @functools.cached_property
    def clang(self):
        """The options to read what GCC compiles, with its library and clang's own headers."""
        gcc = next(iter(self.sources.values())).compiler
        said = [
            subprocess.run(words, stdout=subprocess.PIPE, check=True, text=True).stdout.strip()
            for words in ([gcc, "-print-file-name=include/c++"], ["clang++", "-print-resource-dir"])
        ]
        options = ["--target=x86_64-w64-mingw32", "-resource-dir", said[1]]
        for folder in ("", "x86_64-w64-mingw32", "backward"):
            options += ["-isystem", os.path.join(said[0], folder)]
        return options

    def has(self, path):
        """What the component itself is made of."""
        return super().has(path) and path not in OTHERS

    def options_to_parse(self, path):
        return self.clang + self.sources[path].options

    def options_to_compile(self, path):
        """A source that undefines a macro of windows.h reads that header in a place of its own choice."""
        with open(os.path.join(ROOT, path), encoding="utf-8") as file:
            text = file.read()
        has_its_own_order = "#undef" in text or "initguid.h" in text
        return self.sources[path].options if has_its_own_order else super().options_to_compile(path)

    def near(self, path, programs):
        """The tests whose name is that of the source."""
        near = []
        for program in programs:
            about = [test for pattern in TESTS[program] for test in building.files(pattern) if is_about(test, path)]
            if about:
                near.append((program, building.suites_of(about)))
        return near

    def excluded(self, program):
        """What takes long, or wants the companion away, which the tests of the DLL need."""
        return {COM: "Endurance*", CONTRACT: "ShippedMessages.WithoutACompanion*"}.get(program, "")

    def target_of(self, program):
        """The tests of a DLL use it from outside."""
        return DLLS.get(program, program)

    def begin(self, worker):
        lay_out(worker.folder)
        self.keep_registry()

    def command(self, worker, program, linked):
        # The companion's tests take its registration away.
        if self.last == COMPANION:
            self.clean()
        self.last = program
        wine = shlex.split(os.environ["KWO_WINE"])
        if program not in DLLS:
            return [*wine, linked]
        # The one that was changed before is unchanged now.
        lay_out(worker.folder)
        shutil.copyfile(linked, os.path.join(worker.folder, "dist", os.path.basename(DLLS[program])))
        return [*wine, os.path.join(self.build, program)]

    def file_name(self, path):
        return "Z:" + path.replace("/", "\\")

    def environment(self, worker):
        return dict(os.environ, KWO_DIST=self.file_name(os.path.join(worker.folder, "dist")))

    @staticmethod
    def stop_wine():
        server = shlex.split(os.environ["KWO_WINESERVER"])
        for option in ("-k", "-w"):
            subprocess.run([*server, option], check=False, capture_output=True, timeout=60)

    def keep_registry(self):
        self.stop_wine()
        kept = os.path.join(self.work, "registry")
        os.makedirs(kept, exist_ok=True)
        for file in glob.glob(os.path.join(os.environ["KWO_PREFIX"], "*.reg")):
            shutil.copy(file, kept)

    def clean(self):
        """What a fault has left in the registry or on the screen must not fail the tests of the next one."""
        self.stop_wine()
        for file in glob.glob(os.path.join(self.work, "registry", "*.reg")):
            shutil.copy(file, os.environ["KWO_PREFIX"])
