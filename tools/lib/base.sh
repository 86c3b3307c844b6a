# shellcheck shell=bash
# What every command of this repository needs: where it is, what it says while it works, and how it leaves nothing
# behind. To be sourced first.
set -euo pipefail

KWO_ROOT=$(cd -P "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
KWO_COMMAND=$(basename "$0" .sh)
KWO_LOGS=$KWO_ROOT/build/logs
mkdir -p "$KWO_LOGS"

die() {
    printf '%s: %s\n' "$KWO_COMMAND" "$*" >&2
    exit 1
}

# "COM tests (64-bit)" -> com-tests-64-bit
slug() {
    local text=${1,,}
    text=${text//[^a-z0-9]/-}
    while [[ $text == *--* ]]; do text=${text//--/-}; done
    text=${text#-}
    printf '%s\n' "${text%-}"
}

log_of() { printf '%s/%s-%s.log\n' "$KWO_LOGS" "$(slug "$KWO_COMMAND")" "$(slug "$1")"; }

# show_tail LOG: the end of it, or of a build what went wrong first.
show_tail() {
    local shown
    shown=$(tr -d '\r' <"$1" | sed -n '/^FAILED: \|^CMake Error/,$p' | head -n 40)
    [[ -n $shown ]] || shown=$(tail -n 40 "$1" | tr -d '\r')
    printf '%s\n' "$shown" | cut -c 1-400 | sed 's/^/    /'
    printf '    (all of it: %s)\n' "$1"
}

# The files that the last commit and the working tree change, as the repository names them; none if there is but one commit.
changed_files() {
    git -C "$KWO_ROOT" rev-parse -q --verify HEAD~1 >/dev/null || return 0
    { git -C "$KWO_ROOT" diff --name-only HEAD~1 && git -C "$KWO_ROOT" ls-files --others --exclude-standard; } | sort -u
}

# Leaving nothing behind.

kwo_cleanups=()
at_exit() { kwo_cleanups=("$1" "${kwo_cleanups[@]}"); }

run_cleanups() {
    local rc=$? cleanup
    trap - EXIT
    trap '' HUP INT TERM
    stop_job
    for cleanup in "${kwo_cleanups[@]}"; do "$cleanup" || true; done
    exit "$rc"
}
trap run_cleanups EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

# One job at a time, each in a session of its own: so a whole tree of processes can be stopped at once, a trap runs
# while the job is waited for, and nothing in it can ask the terminal. It ends with the command, should that be
# killed. Descriptor 9 is the lock: a background service that inherited it would hold it for ever.

kwo_job=0

# start_job OUTPUT ERRORS COMMAND...: both may be the same file.
start_job() {
    local output=$1 errors=$2
    shift 2
    : >"$output"
    : >"$errors"
    setsid setpriv --pdeathsig TERM -- "$@" </dev/null >>"$output" 2>>"$errors" 9>&- &
    kwo_job=$!
}

wait_job() {
    local rc=0
    wait "$kwo_job" || rc=$?
    kwo_job=0
    return "$rc"
}

stop_job() {
    ((kwo_job == 0)) && return
    local turn
    kill -TERM -- "-$kwo_job" 2>/dev/null || true
    for ((turn = 0; turn < 50; turn++)); do
        kill -0 -- "-$kwo_job" 2>/dev/null || break
        sleep 0.1
    done
    kill -KILL -- "-$kwo_job" 2>/dev/null || true
    wait "$kwo_job" 2>/dev/null || true
    kwo_job=0
}

# run_job LOG COMMAND...
run_job() {
    local log=$1
    shift
    start_job "$log" "$log" "$@"
    wait_job
}

# step TEXT COMMAND...: one line on standard error, and the end of the log when it fails.
step() {
    local text=$1 log rc=0 begun=$SECONDS
    shift
    log=$(log_of "$text")
    printf '%s ... ' "$text" >&2
    run_job "$log" "$@" || rc=$?
    if ((rc == 0)); then
        printf '%d s\n' "$((SECONDS - begun))" >&2
    else
        printf 'failed after %d s (exit code %d)\n' "$((SECONDS - begun))" "$rc" >&2
        show_tail "$log" >&2
    fi
    return "$rc"
}

# lock FILE: one command at a time in what the file stands for, until the command ends.
lock() {
    exec 9>"$1"
    flock -n 9 && return
    printf 'waiting for another command that uses %s ...\n' "${1%.lock}" >&2
    flock 9
}

# Build folders.

# The compiler is chosen once, when a folder is configured for the first time: another choice needs a new folder.
compilers() { cat "$KWO_ROOT"/cmake/mingw*.cmake | sha256sum; }

# ready_build_folder FOLDER: makes it, anew if it was configured for another compiler, or in another place: a moved
# checkout takes its old paths with it, and CMake refuses them.
ready_build_folder() {
    if [[ -f $1/CMakeCache.txt ]] &&
        { ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$KWO_ROOT" "$1/CMakeCache.txt" ||
            [[ $(compilers) != "$(cat "$1/compilers" 2>/dev/null)" ]]; }; then
        rm -rf "$1"
    fi
    mkdir -p "$1"
    compilers >"$1/compilers"
}

# What programs say does not depend on the language of the machine.
use_one_language() {
    unset LANGUAGE
    export LC_ALL=C.UTF-8
}
