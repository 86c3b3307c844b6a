#!/usr/bin/env bash
# Makes the package of the last commit twice, in two folders, and compares every file of it.
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/../lib/base.sh"

work=$KWO_ROOT/build/verify
places=("$work/one" "$work/a second place")

make_in() {
    git clone --quiet --no-hardlinks "$KWO_ROOT" "$1"
    # A compiler's cache would give both the same files.
    env -u SOURCE_DATE_EPOCH -u CMAKE_CXX_COMPILER_LAUNCHER -u CMAKE_C_COMPILER_LAUNCHER CCACHE_DISABLE=1 "$1/package"
}

# differences FILE FILE: what differs inside two files of the package.
differences() {
    local folders=("$work/inside-one" "$work/inside-two")
    rm -rf "${folders[@]}"
    mkdir -p "${folders[@]}"
    case $1 in
        *.zip)
            unzip -q "$1" -d "${folders[0]}"
            unzip -q "$2" -d "${folders[1]}"
            diff -rq "${folders[@]}" | sed "s|$work/||g"
            # Without the first line, which names the file.
            diff <(unzip -Z "$1" | tail -n +2) <(unzip -Z "$2" | tail -n +2) | head -n 20
            ;;
        *.msi)
            msiextract -C "${folders[0]}" "$1" >/dev/null
            msiextract -C "${folders[1]}" "$2" >/dev/null
            diff -rq "${folders[@]}" | sed "s|$work/||g"
            diff <(msiinfo suminfo "$1") <(msiinfo suminfo "$2")
            while IFS= read -r table; do
                cmp -s <(msiinfo export "$1" "$table") <(msiinfo export "$2" "$table") || printf 'table %s\n' "$table"
            done < <(msiinfo tables "$1")
            ;;
        *) diff "$1" "$2" | head -n 20 ;;
    esac || true
}

if [[ ${1:-} == --in ]]; then
    make_in "$2"
    exit
fi
rm -rf "$work"
mkdir -p "$work"
for place in "${places[@]}"; do
    step "making the package in ${place#"$KWO_ROOT/"}" "$KWO_ROOT/tools/package/verify.sh" --in "$place"
done

compared=0 different=0
while IFS= read -r file; do
    compared=$((compared + 1))
    cmp -s "${places[0]}/dist/$file" "${places[1]}/dist/$file" && continue
    different=$((different + 1))
    printf '%s differs:\n' "$file"
    differences "${places[0]}/dist/$file" "${places[1]}/dist/$file" | sed 's/^/    /'
done < <(cd "${places[0]}/dist" && find . -maxdepth 1 -type f -printf '%P\n' | sort)
((compared > 0)) || die 'nothing was made'
if ((different > 0)); then die "$different of $compared files differ"; fi
rm -rf "$work"
printf '%d files, the same byte for byte\n' "$compared"
