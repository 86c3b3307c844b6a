#!/usr/bin/env bash
# Checks the sources without running them; the last line is `N passed, M failed`.
#   lint.sh [--all]     clang-tidy reads what the last commit and the working tree change, or every source
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/base.sh"
source "$KWO_ROOT/tools/lib/results.sh"

everything=no
case ${1:-} in
    '') ;;
    --all) everything=yes KWO_AGAIN=yes ;;
    *) die 'usage: lint.sh [--all]' ;;
esac
cd "$KWO_ROOT"

# of_kind PATTERN...: the files of the working tree, new ones included, that are not deleted.
of_kind() {
    local file
    git ls-files --cached --others --exclude-standard -- "$@" | while read -r file; do
        [[ ! -f $file ]] || printf '%s\n' "$file"
    done
}
cpp_files() { of_kind '*.cpp' '*.h' '*.c'; }

is_formatted() { cpp_files | xargs -P 2 -n 64 clang-format --dry-run -Werror; }

# scripts: those of the shell, by their first lines.
scripts() { of_kind | xargs awk 'FNR == 1 && /^#!.*sh$/ { print FILENAME } { nextfile }'; }

# What is sourced sets variables for others and reads theirs. The same scripts are not read twice, because that takes
# long.
scripts_are_clean() {
    local -a all
    local hash
    mapfile -t all < <(scripts && of_kind 'tools/lib/*.sh')
    hash=$({ shellcheck --version && tail -n +1 "${all[@]}"; } | sha256sum | cut -d ' ' -f 1) || return
    kept scripts "$hash" ||
        { scripts | xargs shellcheck -x && of_kind 'tools/lib/*.sh' | xargs shellcheck -e SC2034,SC2154 &&
            keep scripts "$hash" 'clean'; }
}

# lines_with PATTERN: the lines of the files named on standard input that match, with their places. Fails only if it cannot
# read them.
lines_with() {
    # shellcheck disable=SC2016
    xargs -r perl -ne 'BEGIN { $pattern = shift; $SIG{__WARN__} = sub { die @_ } }
        print "$ARGV:$.:$_" if /$pattern/; close ARGV if eof' "$1"
}

# What the link between floors cannot see: the logic has no header of Windows, and no test double outside the tests; no
# include goes past the floors by a relative path.
includes_stay_on_their_side() {
    local hits
    hits=$(cpp_files | grep '^src/' | grep -vE '^src/(com|com_support|platform/windows)/|_test\.cpp$|_fixture\.h$|^src/platform/simulated/' |
        lines_with '#include (<(windows|ole[a-z0-9]*|oaidl|ocidl|wrl/.*|comdef|shl[a-z]*)\.h>|"platform/(simulated|windows)/)') || return
    hits+=$(cpp_files | lines_with '#include "\.\./') || return
    [[ -z $hits ]] || { printf '%s\n' "$hits" && return 1; }
}

# Every header begins with `#pragma once`.
headers_are_guarded() {
    local file bare=0
    while read -r file; do
        [[ $(head -n 1 "$file") == '#pragma once' ]] || { printf '%s\n' "$file" && bare=1; }
    done < <(of_kind 'src/*.h' 'companion/*.h' 'kwohost/*.h' 'kwocheck/*.h' 'tests/*.h' 'benchmarks/*.h' 'fuzzers/*.h')
    return "$bare"
}

# Assertions name what they got first and what they expect second.
expected_stands_second() {
    local hits
    hits=$(cpp_files | xargs perl "$KWO_ROOT/tools/lib/expected_first.pl") || return
    [[ -z $hits ]] || { printf '%s\n' "$hits" && return 1; }
}

texts_are_tidy() {
    local hits
    hits=$(of_kind '*.cpp' '*.h' '*.md' '*.sh' '*.cmake' '*CMakeLists.txt' '*.idl' '*.vbs' '*.js' '*.py' '*.pl' '*.txt' '*.cmd' test run bench fuzz package soak |
        lines_with '[ \t]+$') || return
    [[ -z $hits ]] || { printf 'blanks at the end of the line:\n%s\n' "$hits" && return 1; }
}

# snake_case NAME: `SystemMetrics` as its files are named.
snake_case() { sed 's/\([a-z]\)\([A-Z]\)/\1_\L\2/g; s/.*/\L&/' <<<"$1"; }

# Each service of the platform has a suite of its own in tests/contract, or is named in another one.
every_service_has_a_contract() {
    local service suites bare=0
    mapfile -t suites < <(of_kind 'tests/contract/*_contract_test.cpp')
    while read -r service; do
        [[ -f tests/contract/$(snake_case "$service")_contract_test.cpp ]] || grep -qw "platform::$service" "${suites[@]}" ||
            { printf '%s has no suite in tests/contract\n' "$service" && bare=1; }
    done < <(sed -n 's/^SERVICE(\([A-Za-z]*\),.*/\1/p' src/platform/services.def)
    return "$bare"
}

# Subjects of this branch's newest commits.
subjects_are_short() {
    local subject long=0
    while read -r subject; do
        if ((${#subject} > 72)) || [[ $subject == 'Merge branch'* ]]; then printf '%s\n' "$subject" && long=1; fi
    done < <(git log --max-count=20 --format=%s 2>/dev/null)
    return "$long"
}

# clang-tidy reads sources by the commands that build each of them alone. So it also says what a source uses and does not
# include: in ./test, which compiles several as one, another may include it. The native build knows the logic, the one for
# Windows the rest. Tests for Windows are not read: they look on purpose at what was moved, copied or measured.
tidy_folders=("$KWO_ROOT/build/alone" "$KWO_ROOT/build/x64-alone")
# What proves nothing there: the system's handles are names of pointers, its messages carry pointers as numbers, its long
# has 32 bits like the numbers that are cast to it, and the vectors that it is handed have a few elements.
windows_checks=-misc-misplaced-const,-performance-no-int-to-ptr,-bugprone-misplaced-widening-cast
windows_checks+=,-performance-inefficient-vector-operation

# The two builds know every source, and the headers that the interface definitions give are there.
can_be_read() {
    "$KWO_ROOT/tools/build.sh" alone build.ninja &&
        "$KWO_ROOT/tools/build.sh" x64-alone kwoutil_idl kwoinit_idl &&
        "$KWO_ROOT/tools/lib/tidy_build.py" "$KWO_ROOT" "${tidy_folders[0]}" >"${tidy_folders[0]}/tidy.ninja" &&
        "$KWO_ROOT/tools/lib/tidy_build.py" "$KWO_ROOT" "${tidy_folders[1]}" "$windows_checks" \
            >"${tidy_folders[1]}/tidy.ninja"
}

# sources_to_read: the changed ones, or all.
sources_to_read() {
    if [[ $everything == yes ]] || ! git rev-parse -q --verify HEAD~1 >/dev/null; then
        of_kind '*.cpp'
    else
        changed_files | grep '\.cpp$'
    fi
}

is_tidy() {
    local -A read=()
    local file folder targets known
    for folder in "${tidy_folders[@]}"; do
        targets=()
        known=$(sed -n 's/^build tidy\/\([^:]*\): .*/\1/p' "$folder/tidy.ninja")
        [[ $folder != */x64-alone ]] || known=$(grep -vE '^tests/|/tests/|_test\.cpp$' <<<"$known")
        while read -r file; do
            [[ -z ${read[$file]:-} && $'\n'$known$'\n' == *$'\n'$file$'\n'* ]] || continue
            read[$file]=yes
            targets+=("tidy/$file")
        done < <(sources_to_read)
        ((${#targets[@]} == 0)) || ninja -C "$folder" -f tidy.ninja -j 2 -k 0 "${targets[@]}" || return
    done
}

# Nothing else in ./test builds them.
benchmarks_compile() {
    local folder targets
    for folder in "${tidy_folders[@]}"; do
        mapfile -t targets < <(sed -n 's/^build \(syntax\/benchmarks\/[^:]*\): .*/\1/p' "$folder/tidy.ninja")
        ((${#targets[@]} > 0)) || return
        ninja -C "$folder" -f tidy.ninja -j 2 "${targets[@]}" || return
    done
}

check 'the sources are formatted (clang-format)' is_formatted
check 'shell scripts are clean (shellcheck)' scripts_are_clean
check 'includes stay on their side' includes_stay_on_their_side
check 'headers are guarded' headers_are_guarded
check 'assertions name the expected value second' expected_stands_second
check 'no blanks at the end of a line' texts_are_tidy
check 'every service of the platform has a contract' every_service_has_a_contract
check 'the reference is what the sources say' "$KWO_ROOT/tools/make_reference.py" --check
check 'subjects of commits are short' subjects_are_short
if can_be_read >"$(log_of configure)" 2>&1; then
    check 'nothing that clang-tidy finds' is_tidy
    check 'the benchmarks compile' benchmarks_compile
else
    check 'clang can be configured' false
fi
print_total
