"""How the build compiles a source and links a target, and how to do the same with a changed source."""

import glob
import json
import os
import re
import shlex
import shutil
import subprocess

ROOT = os.path.realpath(os.path.join(os.path.dirname(__file__), "..", ".."))


def is_compiler(word):
    return re.search(r"(clang|g)\+\+(-win32|-\d+)?$", word) is not None


class Source:
    """The compiler and the options without the files, and the object as the commands that link name it."""

    def __init__(self, words, path):
        begin = next(number for number, word in enumerate(words) if is_compiler(word))
        self.compiler = words[begin]
        options = words[begin + 1 :]
        output = options.index("-o")
        self.object = options[output + 1]
        del options[output : output + 2]
        # Warnings do not matter to a fault; headers that a target has precompiled are not at hand.
        if "-include" in options:
            del options[options.index("-include") : options.index("-include") + 2]
        unwanted = {"-c", path}
        self.options = [option for option in options if option not in unwanted and not option.startswith(("-W", "-g"))]


def sources_of(build, is_wanted):
    """What compiles each source whose path is wanted. The first target counts of those that share a source."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        entries = json.load(file)
    sources = {}
    for entry in entries:
        path = os.path.relpath(entry["file"], ROOT)
        is_source = path.endswith(".cpp") and not path.endswith("_test.cpp")
        if is_source and is_wanted(path) and path not in sources:
            sources[path] = Source(shlex.split(entry["command"]), entry["file"])
    return sources


def link_words(build, target):
    """The command that links a target, with lld if it is there: it is much quicker."""
    said = subprocess.run(["ninja", "-C", build, "-t", "commands", target], stdout=subprocess.PIPE, check=True, text=True)
    words = shlex.split(said.stdout.strip().split("\n")[-1])
    begin = next(number for number, word in enumerate(words) if is_compiler(word))
    # What else the command writes would change the build.
    words = [word for word in words[begin : words.index("&&", begin)] if not word.startswith("-Wl,--out-implib,")]
    if shutil.which("ld.lld"):
        if "mingw" not in words[0]:
            words.insert(1, "-fuse-ld=lld")
        elif "-wrapper" not in words:
            words[1:1] = ["-wrapper", os.path.join(ROOT, "cmake", "link_with_lld.sh")]
    return words


def links(words, name):
    """Whether a command links an object, by its own name or in its library."""
    library = "lib" + re.search(r"CMakeFiles/(\w+)[.]dir/", name)[1] + ".a"
    return any(word == name or word.endswith("/" + library) for word in words)


def with_object(words, original, changed):
    """The command that links CHANGED for ORIGINAL. Of a static library the linker takes only what is missing: what stands
    in front of it comes instead."""
    if original in words:
        return [changed if word == original else word for word in words]
    output = words.index("-o")
    return words[:output] + [changed] + words[output:]


def with_output(words, path):
    output = words.index("-o")
    return words[: output + 1] + [path] + words[output + 2 :]


def optimised(options, level):
    """The options with another level of optimisation."""
    return [option for option in options if not re.fullmatch(r"-O\w*", option)] + [level]


def includes_removed(options):
    """Without the folders of headers: precompiled headers of the system serve all sources."""
    left, following = [], iter(options)
    for option in following:
        if option == "-isystem":
            next(following)
        elif not option.startswith("-I"):
            left.append(option)
    return left


def precompile(source, headers, folder):
    """Compiles these headers of the system once and returns the options that use them; none if that fails."""
    header = os.path.join(folder, "system.h")
    gcc = "clang" not in source.compiler
    output = header + (".gch" if gcc else ".pch")
    words = [source.compiler, *includes_removed(source.options), "-w", "-x", "c++-header", header, "-o", output]
    text = f"// {shlex.join(words)}\n" + "".join(f"#include <{name}>\n" for name in headers)
    if not os.path.exists(output) or read(header) != text:
        os.makedirs(folder, exist_ok=True)
        with open(header, "w", encoding="utf-8") as file:
            file.write(text)
        if subprocess.run(words, check=False, capture_output=True).returncode != 0:
            return []
    return ["-include", header] if gcc else ["-include-pch", output]


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def suites_of(tests):
    """The names of the suites in these files of tests."""
    suites = set()
    for path in tests:
        with open(path, encoding="utf-8") as file:
            suites.update(re.findall(r"^TEST(?:_F|_P)?\((\w+),", file.read(), re.MULTILINE))
    return sorted(suites)


def files(pattern):
    """The files of the repository that match."""
    return sorted(glob.glob(os.path.join(ROOT, pattern)))
