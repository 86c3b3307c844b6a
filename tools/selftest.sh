#!/usr/bin/env bash
# Tests how ./test counts and stops: what would be worst is a failure that it calls a success.
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/all.sh"

scratch=$(mktemp -d)
remove_scratch() { rm -rf "$scratch"; }
at_exit remove_scratch
KWO_LOGS=$scratch

# A stand-in for a test program: it writes the given result file where it is told to, then ends with the given code.
cat >"$scratch/program" <<'PROGRAM'
#!/usr/bin/env bash
code=$1 results=$2 target=${3#--gtest_output=json:}
if [[ -f $results ]]; then cp "$results" "$target"; fi
exit "$code"
PROGRAM
chmod +x "$scratch/program"

# results FILE FAILURES RESULT...: as GoogleTest writes them, one test for each RESULT.
results() {
    local file=$scratch/$1 failures=$2 result
    shift 2
    {
        printf '{\n  "tests": %d,\n  "failures": %d,\n  "disabled": 0,\n  "errors": 0,\n' $# "$failures"
        printf '  "testsuites": [\n    {\n      "name": "Suite",\n      "failures": %d,\n' "$failures"
        for result in "$@"; do printf '          "status": "RUN",\n          "result": "%s",\n' "$result"; done
        printf '    }\n  ]\n}\n'
    } >"$file"
}
results good.json 0 COMPLETED COMPLETED SKIPPED
results bad.json 1 COMPLETED COMPLETED
results none.json 0
results unselected.json 0 SUPPRESSED SUPPRESSED
head -n 5 "$scratch/good.json" >"$scratch/torn.json"

# gtest_counts CODE RESULTS: passed, failed, and the remark.
gtest_counts() {
    local said
    said=$(
        kwo_passed=0 kwo_failed=0
        gtest_group group "$scratch/program" realpath "$scratch/program" "$1" "$scratch/$2" >"$scratch/said"
        printf '%d %d' "$kwo_passed" "$kwo_failed"
    )
    printf '%s%s' "$said" "$(sed -n '1s/.* s\( (.*)\)$/\1/p' "$scratch/said")"
}
is 'passed and skipped tests' "$(gtest_counts 0 good.json)" '2 0 (1 skipped)'
is 'a failed test' "$(gtest_counts 1 bad.json)" '1 1'
is 'a bad exit code after good tests' "$(gtest_counts 1 good.json)" '2 1 (exit code 1; 1 skipped)'
is 'a failed test and exit code 0' "$(gtest_counts 0 bad.json)" '1 1'
is 'no test' "$(gtest_counts 0 none.json)" '0 1 (not one test ran)'
is 'only tests that were not selected' "$(gtest_counts 0 unselected.json)" '0 1 (not one test ran)'
is 'exit code 0 without results' "$(gtest_counts 0 missing)" '0 1 (no results; exit code 0)'
is 'a crash' "$(gtest_counts 139 missing)" '0 1 (no results; exit code 139)'
is 'a torn result file' "$(gtest_counts 0 torn.json)" '0 1 (no results; exit code 0)'
cp "$scratch/good.json" "$scratch/selftest-group.json"
is 'the results of an earlier run' "$(gtest_counts 0 missing)" '0 1 (no results; exit code 0)'
is 'a program that is not there' "$(
    kwo_passed=0 kwo_failed=0
    gtest_group group "$scratch/absent" realpath "$scratch/absent" >"$scratch/said"
    printf '%d %d' "$kwo_passed" "$kwo_failed"
)" '0 1'

# counts COMMAND [WORD...]: of a command that counts itself; the words start it.
counts() {
    local said
    said=$(
        kwo_passed=0 kwo_failed=0
        counted_group group "${@:2}" bash -c "$1" >"$scratch/said"
        printf '%d %d' "$kwo_passed" "$kwo_failed"
    )
    printf '%s%s' "$said" "$(sed -n '1s/.* s\( (.*)\)$/\1/p' "$scratch/said")"
}
is 'counted, all passed' "$(counts 'echo 12 passed, 0 failed')" '12 0'
is 'counted with a carriage return' "$(counts 'printf "12 passed, 0 failed\r\n"')" '12 0'
is 'counted, some failed' "$(counts 'echo 12 passed, 3 failed; exit 1')" '12 3'
is 'counted, some failed, exit code 0' "$(counts 'echo 12 passed, 3 failed')" '12 3'
is 'counted, all passed, bad exit code' "$(counts 'echo 12 passed, 0 failed; exit 3')" '12 1 (exit code 3)'
is 'counted, nothing ran' "$(counts 'echo 0 passed, 0 failed')" '0 1 (not one test ran)'
is 'words after the count' "$(counts 'echo 12 passed, 0 failed; echo Segmentation fault')" \
    '0 1 (no results; exit code 0)'
is 'silent' "$(counts true)" '0 1 (no results; exit code 0)'
is 'a number that looks octal' "$(counts 'echo 09 passed, 0 failed')" '9 0'
KWO_GROUP_SECONDS=1
is 'hanging' "$(counts 'echo 5 passed, 0 failed; sleep 30')" '5 1 (stopped after 1 s)'
is 'hanging, with a child of its own' "$(counts "sleep 30 & echo \$! >'$scratch/child'; wait")" \
    '0 1 (no results; stopped after 1 s)'

# is_running PID: one that has ended may stay listed until it is asked for its exit code.
is_running() { grep -qs '^State:[[:space:]]*[^[:space:]ZX]' "/proc/$1/status"; }
is 'the child is stopped too' "$(is_running "$(<"$scratch/child")" || echo gone)" gone

# A stand-in for a Wine that ends as often as it is told to before it starts its program, with nothing in the log but what
# is in the file "excuse".
cat >"$scratch/wine" <<'WINE'
#!/usr/bin/env bash
left=$(<"$1")
shift
((left == 0)) && exec "$@"
printf '%d\n' "$((left - 1))" >"$(dirname "$0")/left"
cat "$(dirname "$0")/excuse"
exit 1
WINE
: >"$scratch/excuse"
chmod +x "$scratch/wine"
kwo_prefix=$scratch/no-prefix
KWO_GROUP_SECONDS=600
# counts_in_wine FAILURES COMMAND
counts_in_wine() {
    printf '%d\n' "$1" >"$scratch/left"
    counts "$2" "$scratch/wine" "$scratch/left"
}
kwo_wine=("$scratch/wine")
is 'a Wine that starts' "$(counts_in_wine 0 'echo 12 passed, 0 failed')" '12 0'
is 'a Wine that starts at the second time' "$(counts_in_wine 1 'echo 12 passed, 0 failed')" \
    '12 0 (Wine was started again after exit code 1)'
is 'a Wine that does not start' "$(counts_in_wine 2 'echo 12 passed, 0 failed')" \
    '0 1 (no results; exit code 1; Wine was started again after exit code 1)'
printf 'Application could not be started, or no application associated with the specified file.\r
ShellExecuteEx failed: Internal error.\r\n' >"$scratch/excuse"
is 'a Wine that says that it could not start the program' "$(counts_in_wine 1 'echo 12 passed, 0 failed')" \
    '12 0 (Wine was started again after exit code 1)'
printf 'Application could not be started, or no application associated with the specified file.\r
ShellExecuteEx failed: File not found.\r\n' >"$scratch/excuse"
is 'a Wine that says that there is no such program' "$(counts_in_wine 1 'echo 12 passed, 0 failed')" \
    '0 1 (no results; exit code 1)'
: >"$scratch/excuse"
# A script of tests starts many programs; the line of its group tells of each that needed a second start.
cat >"$scratch/script" <<SCRIPT
source '$KWO_ROOT/tools/lib/base.sh'
source '$KWO_ROOT/tools/lib/results.sh'
KWO_LOGS=$scratch
runner=('$scratch/wine' '$scratch/left')
runs() { run_windows '$scratch/told' '$scratch/errors' "\$@"; }
check 'it starts' runs echo hello
check 'it fails, and says so' runs bash -c 'echo >>$scratch/runs; echo no; exit 1'
print_total
SCRIPT
counts_in_script() {
    : >"$scratch/runs"
    printf '%d\n' "$1" >"$scratch/left"
    counts "bash '$scratch/script' 2>/dev/null"
}
is 'a program that starts at the second time' "$(counts_in_script 1)" \
    '1 1 (Wine was started again after exit code 1)'
is 'a program that fails aloud is not run again' "$(wc -l <"$scratch/runs")" 1
is 'programs that start' "$(counts_in_script 0)" '1 1'
# runs_in_script COMMAND: how often such a script starts a program that says nothing, and with which code it ends.
runs_in_script() {
    local rc=0 runner=("$scratch/wine" "$scratch/left") KWO_LOGS=$scratch/again
    mkdir -p "$KWO_LOGS"
    : >"$scratch/runs"
    printf '0\n' >"$scratch/left"
    run_windows "$scratch/told" "$scratch/errors" bash -c "echo >>'$scratch/runs'; $1" || rc=$?
    printf '%d, exit %d' "$(wc -l <"$scratch/runs")" "$rc"
}
is 'a program that may not have started' "$(runs_in_script 'exit 3')" '2, exit 3'
KWO_PROGRAM_SECONDS=1
is 'a program that hangs in silence is not run again' "$(runs_in_script 'exec sleep 30')" '1, exit 124'
is 'a program that is killed is not run again' "$(runs_in_script 'kill -KILL $$')" '1, exit 137'
KWO_PROGRAM_SECONDS=60 KWO_START_SECONDS=0
is 'a program that fails late and in silence is not run again' "$(runs_in_script 'sleep 1.1; exit 3')" '1, exit 3'
KWO_START_SECONDS=10
# runs COMMAND: how often it is started; it notes that it was.
runs() {
    : >"$scratch/runs"
    counts_in_wine 0 "echo >>'$scratch/runs'; $1" >"$scratch/counted"
    wc -l <"$scratch/runs"
}
is 'a test that fails is not run again' "$(runs 'echo 3 passed, 1 failed; exit 1')" 1
is 'a program that crashes is not run again' "$(runs 'echo begun; kill -SEGV $$')" 1
is 'a program that says nothing, but ends well, is not run again' "$(runs true)" 1
KWO_GROUP_SECONDS=1
is 'a program that hangs and says nothing is not run again' "$(runs 'sleep 30')" 1
KWO_GROUP_SECONDS=600 KWO_START_SECONDS=0
is 'a program that fails late and says nothing is not run again' "$(runs 'sleep 1.1; exit 1')" 1
KWO_START_SECONDS=10
kwo_wine=(another wine)
is 'what is not Wine is not run again' "$(counts_in_wine 1 'echo 12 passed, 0 failed')" '0 1 (no results; exit code 1)'

# What ended well is not done again as long as it stays the same.
KWO_KEPT=$scratch/kept
is 'nothing was kept' "$(kept one abc || echo no)" no
keep one abc '12 3'
is 'what was kept' "$(kept one abc)" '12 3'
is 'it was kept under another name' "$(kept two abc || echo no)" no
is 'something else was kept' "$(kept one abd || echo no)" no
is 'nothing is kept while it is done again' "$(kept one abc || echo no)" no
keep one abc '12 3'
is 'what cannot be read has no hash' "$(kept one '' || echo no)" no
keep one abc '12 3'
is 'it is to be done again' "$(KWO_AGAIN=yes kept one abc || echo no)" no
is 'nothing is kept while it is to be done again' "$(kept one abc || echo no)" no
# hash_with FILES [SETTING]: of one file of its own and of a repository whose files these words make.
hash_with() {
    local KWO_ROOT=$scratch/repository
    rm -rf "$KWO_ROOT"
    mkdir "$KWO_ROOT"
    git -C "$KWO_ROOT" init -q
    (cd "$KWO_ROOT" && eval "$1")
    env "${2:-A=B}" bash -c "$(declare -f hash_of_data); set -o pipefail; KWO_ROOT=$KWO_ROOT hash_of_data '$scratch/program'" 2>/dev/null ||
        echo none
}
plain=$(hash_with 'echo 1 >data')
is 'a hash' "${#plain}" 64
is 'the same files' "$(hash_with 'echo 1 >data')" "$plain"
is 'a source and a page are not read' "$(hash_with 'echo 1 >data; echo 2 >a.cpp; echo 2 >a.h; echo 2 >a.md')" "$plain"
differs() { if [[ $1 != "$plain" ]]; then echo "${#1}"; else echo 'the same'; fi; }
is 'another content' "$(differs "$(hash_with 'echo 2 >data')")" 64
is 'another name' "$(differs "$(hash_with 'echo 1 >date')")" 64
is 'one file more' "$(differs "$(hash_with 'echo 1 >data; echo 1 >more')")" 64
is 'more is asked for' "$(differs "$(hash_with 'echo 1 >data' KWO_ALL_FAULTS=1)")" 64
is 'a filter' "$(differs "$(hash_with 'echo 1 >data' GTEST_FILTER=A*)")" 64
is 'a file that is gone' "$(hash_with 'echo 1 >data; git add data; rm data; echo 1 >last' | tail -n 1)" none
is 'no repository' "$(hash_with 'rm -rf .git' | tail -n 1)" none

# A program of tests that counts what it runs.
printf '%s\n' '#!/bin/sh' "cp $scratch/answer.json \"\${1#*json:}\"" "echo run >>\"\$LLVM_PROFILE_FILE\"" >"$scratch/counter"
chmod +x "$scratch/counter"
hash_with 'echo 1 >data' >/dev/null
# counting RESULTS: what it passed and failed, the remark, and how often it was run into its counts.
counting() {
    local KWO_ROOT=$scratch/repository kwo_passed=0 kwo_failed=0
    cp "$scratch/$1" "$scratch/answer.json"
    counting_group group "$scratch/counter" "$scratch/counts/of" >"$scratch/said"
    printf '%d %d%s %s' "$kwo_passed" "$kwo_failed" "$(sed -n '1s/.* s\( (.*)\)$/\1/p' "$scratch/said")" "$(cat "$scratch/counts/of" || echo not run)"
}
is 'a program that was not run before' "$(counting good.json)" '2 0 (1 skipped) run'
printf 'kept\n' >"$scratch/counts/of"
is 'a program that has passed' "$(counting bad.json)" '2 0 (the same program has passed before) kept'
rm "$scratch/counts/of"
is 'a program without its counts' "$(counting good.json)" '2 0 (1 skipped) run'
echo 2 >"$scratch/repository/data"
is 'a program with other data' "$(counting bad.json)" '1 1 run'
is 'a program that has failed' "$(counting good.json)" '2 0 (1 skipped) run'
echo '# changed' >>"$scratch/counter"
is 'a program that has changed' "$(counting good.json)" '2 0 (1 skipped) run'
is 'a program that is to be run again' "$(KWO_AGAIN=yes counting good.json)" '2 0 (1 skipped) run'
rm "$scratch/counter"
is 'a program that is gone' "$(counting good.json 2>/dev/null)" "0 1 (there is no $scratch/counter) not run"

# total PASSED FAILED: the last line and whether the run was a success.
total() {
    local rc=0 kwo_passed=$1 kwo_failed=$2
    print_total || rc=$?
    printf 'exit %d' "$rc"
}
is 'a good run' "$(total 3 0)" $'3 passed, 0 failed\nexit 0'
is 'a bad run' "$(total 3 1)" $'3 passed, 1 failed\nexit 1'
is 'an empty run' "$(total 0 0)" $'0 passed, 0 failed\nexit 1'

is 'a path' "$(wine_path '/a b/c.vbs')" 'Z:\a b\c.vbs'
is 'a path that goes up' "$(wine_path '/a/../b/./c')" 'Z:\b\c'
is 'an argument that is a path' "$(translated "$scratch/program")" "$(wine_path "$scratch/program")"
is 'a switch' "$(translated /regserver)" /regserver
is 'a word' "$(translated tools)" tools
# A prefix whose tests have not passed is made anew.
is 'prefixes that are left' "$(
    stop_wine() { printf 'stopped %s\n' "${kwo_prefix##*/}"; }
    mkdir -p "$scratch/prefixes/new"
    for kwo_prefix in "$scratch"/prefixes/{passed,failed}; do
        mkdir -p "$kwo_prefix"
        mark_prefix
    done
    kwo_prefix=$scratch/prefixes/passed
    unmark_prefix
    remove_marked 64 '' "$scratch"/prefixes/*
    ls "$scratch/prefixes"
)" $'stopped failed\nnew\npassed'
# A stand-in for Wine in French: its messages are not even in the encoding of the shell.
in_wine() {
    local value file=${4-}
    file=${file#Z:}
    case $3 in
        *'KWORegistry\CLSID') value='{11111111-2222-3333-4444-555555555555}' ;;
        *'{11111111-2222-3333-4444-555555555555}\InprocServer32') value='Z:\dépôt\KWOUtil.dll' ;;
        *)
            printf 'reg: impossible de trouver la cl\x82 de registre sp\x82cifi\x82e.\r\n'
            return 1
            ;;
    esac
    if [[ $2 == query ]]; then
        printf '\r\n%s\r\n    (par d\x82faut)    REG_SZ    %s\r\n\r\n' "$3" "$value"
    else
        printf 'Windows Registry Editor Version 5.00\r\n\r\n[%s]\r\n@="%s"\r\n"ThreadingModel"="Apartment"\r\n' \
            "$3" "${value//\\/\\\\}" | iconv -f UTF-8 -t UTF-16 >"${file//\\//}"
        printf 'L\x27op\x82ration s\x27est termin\x82e correctement.\r\n'
    fi
}
is 'a registered component, in French' "$(registered_dll /d/KWOUtil.dll)" 'Z:\dépôt\KWOUtil.dll'
is 'a component that is not registered, in French' "$(registered_dll /d/KWOInit.dll)" ''

is 'a log name' "$(slug 'COM tests (64-bit)')" com-tests-64-bit
is 'missing packages' "$(missing_packages 'one no-such-command' 'two bash' 'three /no/such/file')" $'one\nthree'

# Assertions that name the expected value first.
cat >"$scratch/assertions.cpp" <<'ASSERTIONS'
EXPECT_EQ(got, 5);
EXPECT_EQ(
    5, got);
ASSERT_STREQ(
    L"a \" b"
    L"c",
    Got(1));
EXPECT_EQ(Got("x", 5), 7);
EXPECT_NE(Hex(
    E_FAIL), Hex(got));
EXPECT_EQ((std::vector<int>{1}), got);
EXPECT_EQ(true ? a : b, got);
EXPECT_EQ(
    u'x', got);
ASSERTIONS
is 'expected values in front' "$(perl "$KWO_ROOT/tools/lib/expected_first.pl" "$scratch/assertions.cpp" | cut -d: -f2-)" \
    '2: EXPECT_EQ( 5,
4: ASSERT_STREQ( L"a \" b" L"c",
9: EXPECT_NE(Hex( E_FAIL),
11: EXPECT_EQ((std::vector<int>{
13: EXPECT_EQ( u'"'x',"

# checks COMMAND...: what it says and counts.
checks() {
    local kwo_passed=0 kwo_failed=0 KWO_COMMAND=checks
    check 'a check' "$@" 2>/dev/null
    printf '%d passed, %d failed\n' "$kwo_passed" "$kwo_failed"
}
is 'a check that passes' "$(checks echo fine)" '1 passed, 0 failed'
is 'a check that fails' "$(checks bash -c 'echo wrong; exit 3')" "not ok: a check
    wrong
    (all of it: $scratch/checks-a-check.log)
0 passed, 1 failed"

# Scripts of tests: shell scripts stand in for them.
mkdir -p "$scratch/scripts" "$scratch/host"
touch "$scratch/host/kwohost.exe"
printf '#!/bin/sh\nshift\nexec sh "$@"\n' >"$scratch/stand_in"
chmod +x "$scratch/stand_in"
# script_of LINE...: what becomes of a script of these lines.
script_of() {
    printf '%s\n' "$@" >"$scratch/scripts/one.js"
    "$KWO_ROOT/tests/scripts/run_script_tests" --in "$scratch/scripts" "$scratch/host" "$scratch/stand_in" || true
}
is 'a script that passes' "$(script_of 'echo ok a' 'echo done 1')" '1 passed, 0 failed'
is 'a script that fails' "$(script_of 'echo not ok a' 'echo done 1')" $'not ok one.js: a\n0 passed, 1 failed'
is 'a script that stops early' "$(script_of 'echo ok a')" \
    $'not ok one.js: no line \'done <number of checks>\' at the end\n1 passed, 1 failed'
is 'a script with another exit code' "$(script_of 'echo ok a' 'echo done 1' 'exit 3')" \
    $'not ok one.js: exit code 3 instead of 0\n1 passed, 1 failed'
is 'a script that complains' "$(script_of 'echo ok a' 'echo done 1' 'echo oops >&2')" \
    $'one.js: standard error: oops\nnot ok one.js: unexpected standard error\n1 passed, 1 failed'
is 'a script during which Wine complains' "$(script_of 'echo ok a' 'echo done 1' 'echo 0024:err:ole:Release x >&2')" \
    $'one.js: standard error: 0024:err:ole:Release x\n1 passed, 0 failed'

# script_in_wine FAILURES LINE...: the same, with the stand-in for a Wine that does not start as often as that.
script_in_wine() {
    printf '%d\n' "$1" >"$scratch/left"
    printf '%s\n' "${@:2}" >"$scratch/scripts/one.js"
    "$KWO_ROOT/tests/scripts/run_script_tests" --in "$scratch/scripts" "$scratch/host" "$scratch/wine" "$scratch/left" \
        "$scratch/stand_in" || true
}
is 'a script whose Wine starts at the second time' "$(script_in_wine 1 'echo ok a' 'echo done 1')" \
    $'Wine was started again after exit code 1\n1 passed, 0 failed'
is 'a script whose Wine does not start' "$(script_in_wine 2 'echo ok a' 'echo done 1')" \
    $'not ok one.js: no line \'done <number of checks>\' at the end\nnot ok one.js: exit code 1 instead of 0
Wine was started again after exit code 1\n0 passed, 2 failed'

# Examples of pages: one that nobody runs, or that has lost its script, must not go unnoticed.
mkdir -p "$scratch/pages" "$scratch/examples"
cp "$KWO_ROOT/tests/pages/extract_examples" "$scratch/pages"
printf "Prepare\n'@example\nCheck\n" >"$scratch/pages/good.vbs"
# extracted LINE...: what becomes of a page of these lines; paths in the answer are those from the page's folder.
extracted() {
    local rc=0
    printf '%s\n' "$@" >"$scratch/page.md"
    (cd "$scratch" && pages/extract_examples examples page.md) || rc=$?
    printf 'exit %d' "$rc"
}
mark='<!-- run by tests/pages/good.vbs -->'
fence='```vbs'
end='```'
is 'an example with its script' "$(extracted "$mark" "$fence" 'one & "\two"' '' "$end")" $'run good.vbs\nexit 0'
is 'the filled script' "$(<"$scratch/examples/good.vbs")" $'Prepare\none & "\\two"\n\nCheck'
mkdir -p "$scratch/pages/parts"
printf 'Count\nShow\n' >"$scratch/pages/parts/shared.vbs"
printf "'@include shared.vbs\n'@example\nCheck\n" >"$scratch/pages/shares.vbs"
shares='<!-- run by tests/pages/shares.vbs -->'
is 'a script with a part of its own and one that others share' \
    "$(extracted "$mark" "$fence" "$end" "$shares" "$fence" 'one' "$end")" $'run good.vbs\nrun shares.vbs\nexit 0'
is 'the part in its place' "$(<"$scratch/examples/shares.vbs")" $'Count\nShow\none\nCheck'
rm "$scratch/pages/parts/shared.vbs"
is 'a part that is missing' "$(extracted "$mark" "$fence" "$end" "$shares" "$fence" "$end")" \
    $'run good.vbs\nwrong: page.md:5: a part of tests/pages/shares.vbs is missing\nexit 1'
rm "$scratch/pages/shares.vbs"
is 'an example that is not run' "$(extracted "$mark" "$fence" "$end" '<!-- not run: why -->' "$fence" "$end")" \
    $'run good.vbs\nnot run: page.md:5: why\nexit 0'
is 'an example without a line before it' "$(extracted "$mark" "$fence" "$end" '' "$fence" "$end")" \
    $'run good.vbs\nwrong: page.md:5: the line before the example does not say how it is run\nexit 1'
is 'a line too far before it' "$(extracted "$mark" "$fence" "$end" '<!-- not run: why -->' '' "$fence" "$end")" \
    $'run good.vbs\nwrong: page.md:6: the line before the example does not say how it is run\nexit 1'
is 'no reason' "$(extracted "$mark" "$fence" "$end" '<!-- not run:  -->' "$fence" "$end" | tail -n 1)" 'exit 1'
is 'a script that is not there' "$(extracted "$mark" "$fence" "$end" '<!-- run by tests/pages/bad.vbs -->' "$fence" "$end")" \
    $'run good.vbs\nwrong: page.md:5: tests/pages/bad.vbs is no script with a line @example\nexit 1'
is 'one script for two examples' "$(extracted "$mark" "$fence" "$end" "$mark" "$fence" "$end")" \
    $'run good.vbs\nwrong: page.md:5: tests/pages/good.vbs drives another example already\nexit 1'
is 'an example outside a fence' "$(extracted "$mark" "$fence" "$end" '    Set a = CreateObject("b")')" \
    $'run good.vbs\nwrong: page.md:4: an example outside a fence\nexit 1'
is 'a script that no example uses' "$(extracted 'text')" $'wrong: tests/pages/good.vbs drives no example\nexit 1'

# What clang-tidy reads: a finding must not be lost because the source was read before.
mkdir -p "$scratch/tidied/build" "$scratch/bin"
touch "$scratch/tidied/.clang-tidy" "$scratch/tidied/a.h"
printf '#include "a.h"\n' >"$scratch/tidied/a.cpp"
printf '[{"directory": "%s", "command": "c++ -I.. -o a.o -c %s", "file": "%s"}]' "$scratch/tidied/build" \
    "$scratch/tidied/a.cpp" "$scratch/tidied/a.cpp" >"$scratch/tidied/build/compile_commands.json"
cat >"$scratch/bin/clang-tidy" <<'TIDY'
#!/usr/bin/env bash
echo >>../reads
! grep -q wrong "${@: -1}" ../a.h
TIDY
chmod +x "$scratch/bin/clang-tidy"
# tidied: how often the source has been read so far, and what came of it.
tidied() {
    local rc=0 build=$scratch/tidied/build
    "$KWO_ROOT/tools/lib/tidy_build.py" "$scratch/tidied" "$build" >"$build/tidy.ninja"
    PATH=$scratch/bin:$PATH ninja -C "$build" -f tidy.ninja tidy/a.cpp >/dev/null || rc=$?
    printf '%d read, exit %d' "$(wc -l <"$scratch/tidied/reads")" "$rc"
}
is 'a source is read' "$(tidied)" '1 read, exit 0'
is 'an unchanged source is not read again' "$(tidied)" '1 read, exit 0'
sleep 0.01
echo 'wrong' >"$scratch/tidied/a.h"
is 'a finding in a header' "$(tidied)" '2 read, exit 1'
is 'a finding that stays' "$(tidied)" '3 read, exit 1'
: >"$scratch/tidied/a.h"
is 'a finding that was mended' "$(tidied)" '4 read, exit 0'
sleep 0.01
touch "$scratch/tidied/.clang-tidy"
is 'other checks' "$(tidied)" '5 read, exit 0'
# compiles: whether the source does, with the headers that it includes.
compiles() { if ninja -C "$scratch/tidied/build" -f tidy.ninja syntax/a.cpp >/dev/null; then echo yes; else echo no; fi; }
is 'a source that compiles' "$(compiles)" yes
sleep 0.01
echo '#error' >"$scratch/tidied/a.h"
is 'a source whose header does not compile' "$(compiles)" no
: >"$scratch/tidied/a.h"
is 'a source whose header was mended' "$(compiles)" yes

# What the tests reach: an unreached place must not be called reached.
mkdir -p "$scratch/code/part" "$scratch/code/rest"
# covered THIRD FOURTH: the report on a source with these lines; the condition of the third was never false, and the
# fourth not reached.
covered() {
    printf '%s\n' 'int f(bool a) {' '    int b = 0;' "$1" "$2" '    return b;' '}' >"$scratch/code/part/f.cpp"
    printf '%s' '{"data": [{"files": [{"filename": "'"$scratch"'/code/part/f.cpp", "segments": [
        [1, 15, 3, true, true, false], [3, 9, 3, true, true, false], [3, 10, 3, true, false, true],
        [4, 5, 0, true, true, false], [4, 15, 3, true, false, false], [6, 2, 0, false, false, false]],
        "branches": [[3, 9, 3, 10, 3, 0, 0, 0, 4]]}]}]}' >"$scratch/code/exported"
    report_on part
}
report_on() { (cd "$scratch" && "$KWO_ROOT/tools/coverage_report.py" code "$1" <code/exported) | sed 's/  */ /g'; }
is 'unreached places' "$(covered '    if (a)' '        b = 1;')" 'part lines 5 of 6 83.33 % branches 1 of 2 50.00 %
all lines 5 of 6 83.33 % branches 1 of 2 50.00 %
part/f.cpp:3: never false: a
part/f.cpp:4: not reached: b = 1;
0 passed, 1 failed'
is 'marked places' "$(covered '    if (a)  // uncovered: why' '        b = 1;  // uncovered: why' | tail -n 2)" \
    'all lines 5 of 6 83.33 % branches 1 of 2 50.00 %
1 passed, 0 failed'
is 'a mark without a reason' "$(covered '    if (a)  // uncovered:' '        b = 1;  // uncovered: why' | tail -n 3)" \
    'part/f.cpp:3: never false: a
part/f.cpp:3: a mark without a reason
0 passed, 1 failed'
sed -i '5s/$/  \/\/ uncovered: why/' "$scratch/code/part/f.cpp"
is 'a mark on a reached line' "$(report_on part | tail -n 2)" 'part/f.cpp:5: marked as uncovered, but reached
0 passed, 1 failed'
touch "$scratch/code/rest/g.cpp" "$scratch/code/rest/g_test.cpp"
is 'a source in no program' "$(report_on rest | tail -n 3)" 'rest/g.cpp: in no program
rest: no source is counted
0 passed, 1 failed'
# Another program reaches what this one does not.
covered '    if (a)' '        b = 1;' >/dev/null || true
sed 's/\[4, 5, 0,/[4, 5, 1,/; s/3, 10, 3, 0, 0, 0, 4/3, 10, 3, 2, 0, 0, 4/' "$scratch/code/exported" >"$scratch/code/second"
cat "$scratch/code/second" >>"$scratch/code/exported"
is 'two programs' "$(report_on part)" 'part lines 6 of 6 100.00 % branches 2 of 2 100.00 %
all lines 6 of 6 100.00 % branches 2 of 2 100.00 %
1 passed, 0 failed'

# A program of tests that fails has counted nothing, however much it has reached.
mkdir -p "$scratch/coverage/tools" "$scratch/coverage/build/clang/coverage" "$scratch/coverage/build/clang/src"
cp -r "$KWO_ROOT/tools/lib" "$KWO_ROOT/tools/coverage.sh" "$scratch/coverage/tools"
# counted_by CODE: whether the counts of a program that ends with this code are kept.
counted_by() {
    local kept=$scratch/coverage/build/clang/coverage/unit_tests.profraw program=$scratch/coverage/build/clang/src/unit_tests
    # shellcheck disable=SC2016
    printf '#!/bin/sh\ntouch "$LLVM_PROFILE_FILE"\nexit %d\n' "$1" >"$program"
    chmod +x "$program"
    "$scratch/coverage/tools/coverage.sh" --step run src/unit_tests || true
    if [[ -f $kept ]]; then echo kept; else echo dropped; fi
}
is 'the counts of a program that passes' "$(counted_by 0)" kept
is 'the counts of a program that fails' "$(counted_by 1)" dropped

# The faults that can be planted.
printf '%s\n' 'int g(int, int);' 'int f(int a, bool b) {' '    if (a < 2 && !b) return g(a, 7);' \
    '    while (b) g(1, 2);' '    return a;' '}' >"$scratch/f.cpp"
is 'the faults of a source' "$(/usr/bin/python3 -B -c 'import sys
sys.path.insert(0, sys.argv[1] + "/tools/mutants")
import places
for place in places.places_of(sys.argv[2], ["-std=c++20"]):
    print(place[0], place[4], "->", place[3] or "nothing")' "$KWO_ROOT" "$scratch/f.cpp")" '3 < -> <=
3 < -> >=
3 2 -> (2 + 1)
3 && -> ||
3 ! -> nothing
3 a, 7 -> 7, a
3 7 -> (7 + 1)
4 b -> !(b)
4 g(1, 2) -> (void)0
4 1 -> 0
4 1, 2 -> 2, 1
4 2 -> (2 + 1)'

# planting CODE: what Python says that knows how faults are planted.
planting() { /usr/bin/python3 -B -c 'import sys; sys.path.insert(0, sys.argv[1] + "/tools/mutants"); import building, judging, shell
'"$1" "$KWO_ROOT" | tr -d '\n'; }
is 'a changed object of a library of objects' \
    "$(planting 'print(*building.with_object(["g++", "-o", "x", "a.o", "b.a"], "a.o", "new.o"))')" 'g++ -o x new.o b.a'
is 'a changed object of a static library' \
    "$(planting 'print(*building.with_object(["g++", "-o", "x", "a.o", "b.a"], "c.o", "new.o"))')" 'g++ new.o -o x a.o b.a'
is 'an object of a library that is not linked' \
    "$(planting 'for name in ("src/CMakeFiles/kwo_b.dir/c.obj", "src/CMakeFiles/kwo_d.dir/c.obj"):
    print(int(building.links(["g++", "-o", "x", "src/libkwo_b.a"], name)))')" 10
is 'a source as the build compiles it' \
    "$(planting 'source = building.Source("ccache /b/clang++ -Ia -g1 -Werror -O1 -o a.o -c /a.cpp".split(), "/a.cpp")
print(source.compiler, source.object, *building.optimised(source.options, "-O0"))')" '/b/clang++ a.o -Ia -O0'
is 'faults are planted where each source is compiled alone' "$(planting 'import json, os, logic
presets = {preset["name"]: preset for preset in json.load(open(sys.argv[1] + "/CMakePresets.json"))["configurePresets"]}
print(presets[os.path.basename(logic.Logic.build)]["cacheVariables"]["KWO_JOIN"])')" OFF
is 'chosen tests' "$(planting 'for name in ("A.x", "A.y", "B.x"): print(int(judging.matches("A.*:C.*-*.y", name)))')" 100
is 'the test that failed' \
    "$(planting 'print(judging.failed_test("[ RUN      ] A.x\r\n[  FAILED  ] A.x (3 ms)\r\n[ RUN      ] A.y\r\n"))')" A.x
is 'the test that crashed' "$(planting 'print(judging.failed_test("[ RUN      ] A.x\n[       OK ] A.x\n[ RUN      ] A.y\n"))')" A.y
is 'a failure before any test' "$(planting 'print(judging.failed_test("[  FAILED  ] at the start"))')" ''
is 'tests that are about a source' "$(planting 'for test in "timer_sinks", "timers", "sys_tray":
    print(int(shell.is_about(f"tests/com/{test}_test.cpp", "src/com/timer_object.cpp")))')" 100
printf '%s\n' '# a comment' 'a.cpp | x + 1; | 1 -> 0 | why' 'a.cpp | f(x, y); | , -> | | why (2 places)' \
    'b.cpp | g(); | g() -> nothing | elsewhere' >"$scratch/equivalent.txt"
# miscounted LINE...: what is said of these entries when the source has these lines, each with its one change.
miscounted() {
    planting 'from types import SimpleNamespace
from faults import known_equivalents, miscounted
lines = {"sum": ("x + 1;", "1 -> 0"), "call": ("f(x, y);", ", -> |")}
faults = [SimpleNamespace(path="a.cpp", context=lines[name][0], change=lambda name=name: lines[name][1])
          for name in "'"$*"'".split()]
print(*miscounted(known_equivalents("'"$scratch/equivalent.txt"'"), faults), sep="; ")'
}
is 'known faults in their places' "$(miscounted sum call call)" ''
is 'a known fault in another place, too' "$(miscounted sum call call sum)" \
    'a.cpp | x + 1; | 1 -> 0: 2 places instead of 1'
is 'a known fault whose place is gone' "$(miscounted sum call)" \
    'a.cpp | f(x, y); | , -> |: 1 places instead of 2'
is 'what counts the reach of the shell' \
    "$(/usr/bin/python3 -B -c 'import sys; sys.path.insert(0, sys.argv[1]); import shell_coverage' "$KWO_ROOT/tools" 2>&1)" ''
# A program that says nothing for a second is stopped; one that goes on speaking is not.
mkdir -p "$scratch/run"
limited() { planting 'print(judging.Run(["bash", "-c", "'"$1"'"], "'"$scratch"'", None, {}).until_end(1, 3))'; }
is 'a program that hangs' "$(limited 'sleep 30')" None
is 'a program that takes its time' "$(limited 'for i in 1 2 3; do date; sleep 0.6; done; exit 7')" 7
is 'a program that never ends' "$(limited 'while :; do echo 1; sleep 0.2; done')" None

# The page about the architecture shows the floors as they are built.
is 'the picture of the floors' "$("$KWO_ROOT/tools/draw_floors.sh" --check 2>&1)" ''

print_total
