#!/usr/bin/env bash
# Tells for each folder of the logic, of the companion and of kwocheck how many lines and branches the native tests reach, and which
# they do not. The last line is `N passed, M failed`: test programs and folders.
#   coverage.sh [--counted]     the programs have just been run, and their counts are there
# A line that no test can reach is marked with `// uncovered: REASON`.
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/base.sh"

build=$KWO_ROOT/build/clang
work=$build/coverage
programs=(src/unit_tests companion/kwoinit/kwoinit_tests kwocheck/kwocheck_tests tests/faults/fault_tests
    tests/contract/contract_tests fuzzers/fuzz_replay)
folders=(src/platform src/platform/simulated src/frame src/messages src/timers src/component src/registry src/sysinfo
    src/tray src/timer src/controls companion/kwoinit kwocheck)
# These take long and reach nothing that the others do not.
filter='-TimerModel.*:TimerYear.*:ReenteredMonthView.*:SaveErrorTest.ErrorsThatNobody*'

# llvm TOOL ARGUMENT...: of the same version as the compiler.
llvm() { "$(clang++ -print-prog-name="$1")" "${@:2}"; }

# run PROGRAM: counts what it runs, in a file named after it. One that fails counts nothing.
run() {
    local name=${1##*/}
    LLVM_PROFILE_FILE=$work/$name.profraw run_job "$work/$name.log" "$build/$1" "--gtest_filter=$filter" ||
        rm -f "$work/$name.profraw"
}

# read_counts PROGRAM: what each line of each source did in it, in a file named after it.
read_counts() {
    local name=${1##*/}
    llvm llvm-profdata merge -sparse -o "$work/$name.counts" "$work/$name.profraw" &&
        llvm llvm-cov export -instr-profile "$work/$name.counts" "$build/$1" >"$work/$name.part" &&
        mv "$work/$name.part" "$work/$name.json"
}

# each STEP: of every program, two at a time.
each() { printf '%s\n' "${programs[@]}" | xargs -P 2 -n 1 "$KWO_ROOT/tools/coverage.sh" --step "$1" || true; }

if [[ ${1:-} == --step ]]; then
    "$2" "$3"
    exit
fi
if [[ ${1:-} != --counted ]]; then
    step 'building the tests with clang' "$KWO_ROOT/tools/build.sh" --strict clang || exit 1
    rm -rf "$work"
    mkdir -p "$work"
    each run
fi
rm -f "$work"/*.json
each read_counts

passed=0
failed=0
for program in "${programs[@]}"; do
    name=${program##*/}
    if [[ -f $work/$name.json ]]; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        printf 'no counts of %s\n' "$name"
        [[ ! -f $work/$name.log ]] || show_tail "$work/$name.log"
    fi
done
cat "$work"/*.json | "$KWO_ROOT/tools/coverage_report.py" "$KWO_ROOT" "${folders[@]}" >"$work/report" || true
grep -E '^[a-z/]+ +lines ' "$work/report" >"$work/table" || true
head -n -1 "$work/report"
if [[ $(tail -n 1 "$work/report") =~ ^([0-9]+)\ passed,\ ([0-9]+)\ failed$ ]]; then
    passed=$((passed + BASH_REMATCH[1])) failed=$((failed + BASH_REMATCH[2]))
else
    failed=$((failed + 1))
fi
printf '%d passed, %d failed\n' "$passed" "$failed"
((failed == 0))
