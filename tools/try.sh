#!/usr/bin/env bash
# Builds one program of tests and runs those of its tests that match.
#   try.sh PROGRAM [FILTER]     'Timer.*', 'Timer*:-*Year*', as GoogleTest's filter has it; all tests by default
# PROGRAM: unit, contract, messages, faults, sources (of scripts), check (the logic of kwocheck), judges (of the soak)
#          or fuzz (kept inputs), natively under the sanitizers;
#          com, companion, imports, registration, host or windows (the contract tests there), under Wine in 64 bits;
#          with 32 after it (com32) in 32 bits;
#          or selfcheck, under Wine too: what kwocheck says; it has no filter
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/all.sh"

(($# >= 1 && $# <= 2)) || die 'usage: try.sh PROGRAM [FILTER]'
bits=64 preset=x64
kind=$1
if [[ $kind == *32 ]]; then
    kind=${kind%32} bits=32 preset=x86
fi
if [[ $kind == selfcheck ]]; then
    step 'building what a user gets' "$KWO_ROOT/tools/build.sh" --install "$preset" user
    open_prefix_by_hand "$bits"
    "$KWO_ROOT/tests/check/run_check_tests" "$bits" "${kwo_wine[@]}"
    exit
fi
targets=()
case $kind in
    unit) preset=sanitized program=src/unit_tests ;;
    contract) preset=sanitized program=tests/contract/contract_tests ;;
    messages) preset=sanitized program=companion/kwoinit/kwoinit_tests ;;
    faults) preset=sanitized program=tests/faults/fault_tests ;;
    sources) preset=sanitized program=kwohost/kwohost_source_tests ;;
    check) preset=sanitized program=kwocheck/kwocheck_tests ;;
    judges) preset=sanitized program=tests/soak/soak_judge_tests ;;
    fuzz) preset=sanitized program=fuzzers/fuzz_replay ;;
    com) program=tests/com/com_tests.exe targets=(user) ;;
    companion) program=tests/com/kwoinit/kwoinit_com_tests.exe targets=(user) ;;
    imports) program=tests/com/faults/import_fault_tests.exe targets=(user) ;;
    registration) program=src/com/com_unit_tests.exe ;;
    host) program=kwohost/tests/kwohost_tests.exe ;;
    windows) program=tests/contract/contract_tests.exe ;;
    *) die "there are no tests called $1" ;;
esac
target=${program##*/}
targets+=("${target%.exe}")
options=()
[[ ${targets[0]} != user ]] || options=(--install)
step "building $target" "$KWO_ROOT/tools/build.sh" "${options[@]}" "$preset" "${targets[@]}"

command=("$KWO_ROOT/build/$preset/$program")
[[ $preset == sanitized ]] || command=("$KWO_ROOT/tools/wine$bits.sh" "${command[@]}")
export ASAN_OPTIONS=handle_abort=1
"${command[@]}" "--gtest_filter=${2:-*}"
