# shellcheck shell=bash
# Checks of a script, and groups of tests: each group runs under a time limit, and counts only by what it wrote down
# about itself.

kwo_passed=0
kwo_failed=0
kwo_trouble=''
kwo_started_again=''
KWO_GROUP_SECONDS=${KWO_GROUP_SECONDS:-1200}
KWO_PROGRAM_SECONDS=${KWO_PROGRAM_SECONDS:-60}
KWO_START_SECONDS=${KWO_START_SECONDS:-10}

# check NAME COMMAND...: counts one. What the command says is shown when it fails; how long it takes, always.
check() {
    local name=$1 log begun=$SECONDS
    shift
    log=$(log_of "$name")
    printf '%s ... ' "$name" >&2
    if ("$@") >"$log" 2>&1; then
        kwo_passed=$((kwo_passed + 1))
        printf '%d s\n' "$((SECONDS - begun))" >&2
    else
        kwo_failed=$((kwo_failed + 1))
        printf 'failed after %d s\n' "$((SECONDS - begun))" >&2
        printf 'not ok: %s\n' "$name"
        show_tail "$log"
    fi
}

# is NAME ACTUAL EXPECTED: counts one.
is() {
    if [[ $2 == "$3" ]]; then
        kwo_passed=$((kwo_passed + 1))
    else
        kwo_failed=$((kwo_failed + 1))
        printf 'not ok: %s\n    it is:     %s\n    expected:  %s\n' "$1" "$2" "$3"
    fi
}

group_begins() {
    kwo_trouble=''
    kwo_started_again=''
    printf '%-48s' "$1"
    kwo_group_begun=$SECONDS
}

# group_ends PASSED FAILED [REMARK]
group_ends() {
    local remark=${3:-}
    [[ -z $kwo_started_again ]] || remark+="${remark:+; }$kwo_started_again"
    kwo_passed=$((kwo_passed + $1))
    kwo_failed=$((kwo_failed + $2))
    printf '%d passed, %d failed, %d s%s\n' "$1" "$2" "$((SECONDS - kwo_group_begun))" "${remark:+ ($remark)}"
}

# group_cannot_run NAME WHY: counts as one failure.
group_cannot_run() {
    group_begins "$1"
    group_ends 0 1 "$2"
}

# run_limited LOG COMMAND...: the job with the group's time limit; kwo_trouble says what went wrong with it as a whole.
# A Wine that has not started the program gets a second chance, and the group's line says so. Nothing else is tried again.
run_limited() {
    local begun=$SECONDS
    run_once "$@"
    if [[ -n ${kwo_wine[*]:-} && "${*:2}" == "${kwo_wine[*]} "* ]] && never_started "$kwo_code" "$begun" "$1"; then
        kwo_started_again="Wine was started again after $kwo_trouble"
        stop_wine
        run_once "$@"
    fi
}

# What Wine itself says of a program that is there and that it cannot start. Of a program that is not there it says "File not found.".
kwo_no_process=('Application could not be started, or no application associated with the specified file.'
    'ShellExecuteEx failed: Internal error.')
# never_started CODE BEGUN SAID...: a Wine that fails at once and says nothing else in any of these files has not started
# its program. One that the time limit has stopped (124 or 137) may have.
never_started() {
    local code=$1 begun=$2 file
    shift 2
    ((code != 0 && code != 124 && code != 137 && SECONDS - begun <= KWO_START_SECONDS)) || return
    for file in "$@"; do
        [[ ! -s $file ]] || ! tr -d '\r' <"$file" | grep -avxF "$(printf '%s\n' "${kwo_no_process[@]}")" >/dev/null || return
    done
}

# run_windows SAID ERRORS COMMAND...: a Windows program of a script of tests, started by the words in `runner`, for a minute
# at most. It speaks when it fails, so it gets the same second chance; print_total says so.
run_windows() {
    local rc=0 begun=$SECONDS
    run_windows_once "$@" || rc=$?
    if never_started "$rc" "$begun" "$1" "$2"; then
        printf 'Wine was started again after exit code %d\n' "$rc" >>"$(log_of "started again $$")"
        rc=0
        run_windows_once "$@" || rc=$?
    fi
    return "$rc"
}

# run_windows_once SAID ERRORS COMMAND...: one that says nothing when it fails.
run_windows_once() {
    timeout --foreground --kill-after=5 "$KWO_PROGRAM_SECONDS" "${runner[@]}" "${@:3}" </dev/null >"$1" 2>"$2"
}

# run_once LOG COMMAND...: sets kwo_code and kwo_trouble.
run_once() {
    local log=$1 rc=0
    shift
    run_job "$log" timeout --kill-after=5 "$KWO_GROUP_SECONDS" "$@" || rc=$?
    kwo_trouble=''
    kwo_code=$rc
    case $rc in
        0) ;;
        124 | 137) kwo_trouble="stopped after $KWO_GROUP_SECONDS s" ;;
        *) kwo_trouble="exit code $rc" ;;
    esac
}

# read_gtest_results FILE: sets kwo_counts to "passed failed skipped". Fails unless FILE is a whole result file.
read_gtest_results() {
    [[ -s $1 && $(tail -n 1 "$1" | tr -d '\r') == '}' ]] || return 1
    kwo_counts=$(awk '
        /^  "failures": [0-9]+,/ { failed = $2 + 0 }
        /^          "result": "COMPLETED"/ { completed++ }
        /^          "result": "SKIPPED"/ { skipped++ }
        END { print (completed > failed ? completed - failed : 0), failed + 0, skipped + 0 }' "$1")
}

# Of GoogleTest's output: what each failed test said.
failed_tests() {
    tr -d '\r' <"$1" | awk '
        /^\[ RUN      \]/ { said = "" }
        { said = said "    " $0 "\n" }
        /^\[  FAILED  \] .* \([0-9]+ ms\)$/ { printf "%s", said; said = "" }' | head -n 60
}

# name_frames_in LOG: functions and lines for the frames of a crash, if the log tells of one.
name_frames_in() {
    grep -aq '^Crash: ' "$1" || return 0
    "$KWO_ROOT/tools/name_frames.sh" <"$1" >"$1.named" && mv "$1.named" "$1"
}

# gtest_group NAME PROGRAM TRANSLATE COMMAND...: TRANSLATE makes of a path what the program calls it.
# A program that ends without one has crashed or hung; one without a test has tested nothing.
gtest_group() {
    local name=$1 program=$2 translate=$3 log results counts remark=''
    shift 3
    log=$(log_of "$name")
    results=${log%.log}.json
    rm -f "$results"
    group_begins "$name"
    if [[ ! -f $program ]]; then
        group_ends 0 1 "there is no ${program#"$KWO_ROOT/"}"
        return
    fi
    run_limited "$log" "$@" "--gtest_output=json:$("$translate" "$results")"
    name_frames_in "$log"
    if ! read_gtest_results "$results"; then
        group_ends 0 1 "no results; ${kwo_trouble:-exit code 0}"
        show_tail "$log"
        return
    fi
    read -ra counts <<<"$kwo_counts"
    if ((counts[1] == 0)) && [[ -n $kwo_trouble ]]; then
        counts[1]=1
        remark=$kwo_trouble
    elif ((counts[0] + counts[1] == 0)); then
        counts[1]=1
        remark='not one test ran'
    fi
    ((counts[2] == 0)) || remark+="${remark:+; }${counts[2]} skipped"
    group_ends "${counts[0]}" "${counts[1]}" "$remark"
    ((counts[1] == 0)) && return
    failed_tests "$log"
    if [[ -n $remark ]]; then show_tail "$log"; else printf '    (all of it: %s)\n' "$log"; fi
}

# counted_group NAME COMMAND...: a command whose last line is `N passed, M failed`.
counted_group() {
    local name=$1 log last passed=0 failed=1 remark=''
    shift
    log=$(log_of "$name")
    group_begins "$name"
    run_limited "$log" "$@"
    [[ -n $kwo_started_again ]] || kwo_started_again=$(grep -m 1 '^Wine was started again after exit code' "$log") || true
    last=$(tail -n 1 "$log" | tr -d '\r')
    if [[ $last =~ ^([0-9]+)\ passed,\ ([0-9]+)\ failed$ ]]; then
        passed=$((10#${BASH_REMATCH[1]})) failed=$((10#${BASH_REMATCH[2]}))
        if ((failed == 0)) && [[ -n $kwo_trouble ]]; then
            failed=1 remark=$kwo_trouble
        elif ((passed + failed == 0)); then
            failed=1 remark='not one test ran'
        fi
    else
        remark="no results; ${kwo_trouble:-exit code 0}"
    fi
    group_ends "$passed" "$failed" "$remark"
    ((failed == 0)) || show_tail "$log"
}

# What depends on nothing but files is not done twice: when it ended well, a hash of these files is kept. KWO_AGAIN=yes does
# it all the same. The caller sees to it that the hash covers whatever may change the result.
KWO_KEPT=$KWO_ROOT/build/kept

# keep NAME HASH NOTE: from now on `kept` knows them.
keep() { mkdir -p "$KWO_KEPT" && printf '%s %s\n' "$2" "$3" >"$KWO_KEPT/$1"; }

# forget NAME: nothing is kept under it.
forget() { rm -f "$KWO_KEPT/$1"; }

# kept NAME HASH: prints the note that was kept with that hash. Fails if there is none, and forgets any other: what is done
# now may end badly.
kept() {
    local hash note
    if [[ ${KWO_AGAIN:-no} != yes && -f $KWO_KEPT/$1 ]] && read -r hash note <"$KWO_KEPT/$1" && [[ $hash == "$2" ]]; then
        printf '%s\n' "$note"
    else
        forget "$1"
        return 1
    fi
}

# hash_of_data FILE...: of these files, of every file of the repository that is neither compiled nor a page, and of what the
# environment says to the tests. Fails if it cannot read them all.
hash_of_data() {
    {
        { env | grep -E '^(KWO_ALL_|GTEST_|[A-Z]+SAN_)' || true; } | LC_ALL=C sort
        sha256sum "$@" && cd "$KWO_ROOT" &&
            git ls-files -z --cached --others --exclude-standard -- ':!*.cpp' ':!*.h' ':!*.md' | xargs -0 -r sha256sum
    } | sha256sum | cut -d ' ' -f 1
}

# counting_group NAME PROGRAM COUNTS: a program of tests that writes into the file COUNTS what of it was run. It meets nothing
# but the simulated desktop and files of the repository, so the same program is not run again when it has passed.
counting_group() {
    local name=$1 program=$2 written=$3 key=${2##*/} hash='' passed=$kwo_passed failed=$kwo_failed note
    [[ ! -f $program ]] || hash=$(hash_of_data "$program") || hash=''
    # Without its counts it runs again.
    [[ -f $written ]] || forget "$key"
    if note=$(kept "$key" "$hash"); then
        group_begins "$name"
        group_ends "$note" 0 'the same program has passed before'
        return
    fi
    mkdir -p "$(dirname "$written")"
    rm -f "$written"
    LLVM_PROFILE_FILE=$written gtest_group "$name" "$program" realpath "$program"
    [[ -z $hash ]] || ((kwo_failed > failed)) || keep "$key" "$hash" "$((kwo_passed - passed))"
}

# The last line of a run, behind a note of each Wine that needed a second start; fails when a test failed or none ran.
print_total() {
    local again
    again=$(log_of "started again $$")
    if [[ -f $again ]]; then
        cat "$again"
        rm "$again"
    fi
    printf '%d passed, %d failed\n' "$kwo_passed" "$kwo_failed"
    ((kwo_failed == 0 && kwo_passed > 0))
}
