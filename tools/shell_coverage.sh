#!/usr/bin/env bash
# Tells for each folder of what runs on Windows alone how many lines and branches the tests under Wine reach, and writes a
# page on each source into build/shell-coverage/pages. It fails if a test does; the figures are no gate.
#   ./test coverage --shell
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/all.sh"

# There each source is compiled and linked by itself.
export KWO_FLAVOUR=-apart
work=$KWO_ROOT/build/shell-coverage
folders=(src/platform/windows src/com_support src/com/server src/com companion/kwoinit/dll)

# folder_figures <CSV: adds up for each folder what gcovr says of its files. A file counts for the first that it is in;
# headers are known by the links to them.
folder_figures() {
    awk -F, -v folders="${folders[*]}" '
        BEGIN { count = split(folders, names, " ") }
        NR == 1 { for (i = 1; i <= NF; i++) column[$i] = i; next }
        {
            sub(/^build[/]x64-apart[/]floors[/][^/]*[/]/, "src/", $1)
            for (i = 1; i < count && index($1, names[i] "/") != 1; i++);
            lines[i] += $column["line_total"]; reached[i] += $column["line_covered"]
            branches[i] += $column["branch_total"]; taken[i] += $column["branch_covered"]
        }
        END {
            for (i = 1; i <= count; i++)
                printf "%-24s lines %5d of %5d %6.2f %%   branches %5d of %5d %6.2f %%\n", names[i], reached[i], lines[i],
                    100 * reached[i] / lines[i], taken[i], branches[i], 100 * taken[i] / branches[i]
        }'
}

need_packages "${KWO_BUILD_PACKAGES[@]}" "${KWO_SHELL_COVERAGE_PACKAGES[@]}"
step 'building the tests for Windows' "$KWO_ROOT/tools/build.sh" --install x64-apart \
    user contract_tests com_unit_tests com_tests kwoinit_com_tests || exit 1
rm -rf "$work"
step 'building what counts' python3 -B "$KWO_ROOT/tools/shell_coverage.py" "$work" || exit 1
open_prefix_by_hand 64
tell_dist
KWO_DIST=$(wine_path "$work/dist")
# The counts are written where the objects are: on another drive, as Windows programs see it.
export KWO_DIST GCOV_PREFIX=Z:
failed=0
counted() { step "running ${1##*/}" "${kwo_wine[@]}" "$(wine_path "$1")" '--gtest_filter=-Endurance*' || failed=1; }
# One of them wants that there is no companion.
counted "$work/contract_tests.exe"
register_dll "$work/dist/KWOInit.dll" || exit 1
counted "$work/com_unit_tests.exe"
counted "$KWO_ROOT/build/x64-apart/tests/com/com_tests.exe"
unregister_dll "$work/dist/KWOInit.dll" || failed=1
# They register the companion themselves.
counted "$KWO_ROOT/build/x64-apart/tests/com/kwoinit/kwoinit_com_tests.exe"
mkdir -p "$work/pages"
# Without the branches that the compiler makes for exceptions.
step 'reading the counts' env -C "$KWO_ROOT" gcovr --gcov-executable x86_64-w64-mingw32-gcov-win32 --root "$KWO_ROOT" \
    --filter '(src/(com|com_support|platform/windows)|companion/kwoinit/dll)/' --exclude-throw-branches --exclude-unreachable-branches \
    --html-details "$work/pages/index.html" --csv "$work/files.csv" "$work/objects" || exit 1
folder_figures <"$work/files.csv"
exit "$failed"
