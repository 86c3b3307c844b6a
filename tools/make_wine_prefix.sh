#!/usr/bin/env bash
# Makes a Wine prefix for this repository's programs, from nothing. A display must be there.
#   make_wine_prefix.sh 64|32 PREFIX [32-BIT TREE]
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/base.sh"
source "$KWO_ROOT/tools/lib/wine.sh"

[[ $# -ge 2 && $# -le 3 ]] || die 'usage: make_wine_prefix.sh 64|32 PREFIX [32-BIT TREE]'
choose_wine "$1" "$2" "${3:-}"
at_exit stop_wine

stop_wine
rm -rf "$kwo_prefix"
# Wine looks for fonts in its own folder; Debian's package puts them elsewhere.
mkdir -p "$kwo_prefix/drive_c/windows/Fonts"
find /usr/share/wine/fonts \( -name '*.ttf' -o -name '*.fon' \) \
    -exec ln -s -t "$kwo_prefix/drive_c/windows/Fonts" {} +
in_wine wineboot -i
wine_answers || die "Wine runs no $kwo_bits-bit program"
stop_wine
prefix_stamp >"$kwo_prefix/.kwo-ready"
