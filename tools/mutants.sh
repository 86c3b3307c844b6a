#!/usr/bin/env bash
# Plants small faults, one at a time, and tells which of them no test notices: how good the tests are.
#   ./test mutants [--shell] [--seed SEED] [--jobs JOBS] [--only TEXT] [--list] [N]
# N faults (100), spread evenly over the places of the logic; with --shell over those of the automation shell and of the
# platform's Windows side, which the tests under Wine judge. Another SEED chooses others. Only places whose
# `PATH:LINE:` contains TEXT count. JOBS is 1 or 2. --list shows all places instead.
# tools/mutants/equivalent.txt names the faults that change nothing.
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/all.sh"

planting=0
stop_planting() {
    ((planting == 0)) || kill "$planting" 2>/dev/null || true
}

# A prefix of its own: a fault may leave anything behind in it.
ready_wine() {
    use_one_language
    start_own_display
    open_prefix 64 wine64-mutants || die "Wine does not work: see $KWO_LOGS"
    tell_dist
    register_dll "$(dist_folder)/KWOInit.dll" || die 'the companion cannot be registered'
    export KWO_PREFIX=$kwo_prefix KWO_WINE="${kwo_wine[*]@Q}" KWO_WINESERVER="${kwo_wineserver[*]@Q}"
}

need_packages "${KWO_BUILD_PACKAGES[@]}" "${KWO_LINT_PACKAGES[@]}" "${KWO_COVERAGE_PACKAGES[@]}" \
    "${KWO_BENCH_PACKAGES[@]}" "${KWO_MUTANTS_PACKAGES[@]}"
mkdir -p "$KWO_ROOT/build/mutants"
if [[ " $* " == *' --shell '* ]]; then
    # There each source is compiled and linked by itself.
    export KWO_FLAVOUR=-apart
    lock "$KWO_ROOT/build/mutants/shell.lock"
    need_packages "${KWO_WINE_PACKAGES[@]}"
    step 'building the tests for Windows' "$KWO_ROOT/tools/build.sh" --install x64-apart \
        user contract_tests com_unit_tests com_tests kwoinit_com_tests || exit 1
    ready_wine
else
    lock "$KWO_ROOT/build/mutants/logic.lock"
    step 'building the tests with clang' "$KWO_ROOT/tools/build.sh" alone || exit 1
fi
at_exit stop_planting
# Debian's own Python, which has its bindings of clang.
/usr/bin/python3 -B "$KWO_ROOT/tools/mutants/mutants.py" "$@" 9>&- &
planting=$!
wait "$planting"
