#!/usr/bin/env bash
# Configures and builds one preset of CMakePresets.json.
#   build.sh [--install] [--strict] PRESET [TARGET...]
# --install also puts what a user gets into dist/PRESET. --strict takes warnings for errors, from then on in that folder.
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/base.sh"

install=no
strict=no
while [[ ${1:-} == --* ]]; do
    case $1 in
        --install) install=yes ;;
        --strict) strict=yes ;;
        *) die "unknown option $1" ;;
    esac
    shift
done
(($# > 0)) || die 'usage: build.sh [--install] [--strict] PRESET [TARGET...]'
preset=$1
shift
folder=$KWO_ROOT/build/$preset
jobs=$(nproc)
((jobs > 2)) && jobs=2

# Ninja configures again when a list changes; what it does not know of is a change of the presets.
is_configured() { [[ -f $folder/build.ninja && ! $KWO_ROOT/CMakePresets.json -nt $folder/build.ninja ]]; }

cd "$KWO_ROOT"
mkdir -p "$KWO_ROOT/build"
lock "$folder.lock"
ready_build_folder "$folder"
is_configured || cmake --preset "$preset"
if [[ $strict == yes ]] && ! grep -qx 'KWO_STRICT:BOOL=ON' "$folder/CMakeCache.txt"; then
    cmake -DKWO_STRICT=ON "$folder"
fi
targets=()
(($# == 0)) || targets=(--target "$@")
cmake --build "$folder" -j "$jobs" "${targets[@]}"
if [[ $install == yes ]]; then
    # The program that strips writes a time into the header: this one, which means none.
    SOURCE_DATE_EPOCH=0 cmake --install "$folder" --component user --strip --prefix "$KWO_ROOT/dist/$preset"
fi
