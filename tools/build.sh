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

# A moved checkout takes its old paths with it, and CMake refuses them.
configured_elsewhere() {
    [[ -f $folder/CMakeCache.txt ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$KWO_ROOT" "$folder/CMakeCache.txt"
}

# The compiler is chosen once, when a folder is configured for the first time: another choice needs a new folder.
compilers() { cat "$KWO_ROOT"/cmake/mingw*.cmake | sha256sum; }
configured_with_others() {
    [[ -f $folder/CMakeCache.txt && $(compilers) != "$(cat "$folder/compilers" 2>/dev/null)" ]]
}

# Ninja configures again when a list changes; what it does not know of is a change of the presets.
is_configured() { [[ -f $folder/build.ninja && ! $KWO_ROOT/CMakePresets.json -nt $folder/build.ninja ]]; }

cd "$KWO_ROOT"
mkdir -p "$folder"
lock "$folder.lock"
if configured_elsewhere || configured_with_others; then
    rm -rf "$folder"
    mkdir "$folder"
fi
is_configured || cmake --preset "$preset"
if [[ $strict == yes ]] && ! grep -qx 'KWO_STRICT:BOOL=ON' "$folder/CMakeCache.txt"; then
    cmake -DKWO_STRICT=ON "$folder"
fi
compilers >"$folder/compilers"
targets=()
(($# == 0)) || targets=(--target "$@")
cmake --build "$folder" -j "$jobs" "${targets[@]}"
if [[ $install == yes ]]; then
    cmake --install "$folder" --component user --strip --prefix "$KWO_ROOT/dist/$preset"
fi
