#!/usr/bin/env bash
# Plants small faults in the logic, one at a time, and tells which of them no test notices: how good the tests are.
#   ./test mutants [--seed SEED] [--jobs JOBS] [--only TEXT] [--list] [N]
# N faults (100), spread evenly over the sources whose path contains TEXT; another SEED chooses others. JOBS is 1 or 2.
# --list shows all places instead. tools/mutants/equivalent.txt names the faults that change nothing.
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/all.sh"

need_packages "${KWO_BUILD_PACKAGES[@]}" "${KWO_LINT_PACKAGES[@]}" "${KWO_COVERAGE_PACKAGES[@]}" \
    "${KWO_MUTANTS_PACKAGES[@]}"
step 'building the tests with clang' "$KWO_ROOT/tools/build.sh" clang || exit 1
mkdir -p "$KWO_ROOT/build/mutants"
lock "$KWO_ROOT/build/mutants.lock"
# Debian's own Python, which has its bindings of clang.
exec /usr/bin/python3 -B "$KWO_ROOT/tools/mutants/mutants.py" "$@"
