#!/usr/bin/env bash
# Packs a folder into a ZIP file: sorted, without what depends on the machine. The times are those of the files.
#   pack_zip.sh FOLDER FILE
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/../lib/base.sh"

(($# == 2)) || die 'usage: pack_zip.sh FOLDER FILE'
target=$(realpath -ms -- "$2")
rm -f "$target"
use_one_language
cd "$(dirname "$1")"
# A ZIP file holds local times.
find "$(basename "$1")" -type f | sort | TZ=UTC zip -X -9 -q "$target" -@
