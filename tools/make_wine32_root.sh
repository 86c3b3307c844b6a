#!/usr/bin/env bash
# Unpacks a 32-bit Wine with everything that it needs into DIRECTORY; does nothing when it is there already.
#   make_wine32_root.sh DIRECTORY
# Environment: KWO_DEBIAN_MIRROR (deb.debian.org by default)
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/base.sh"
source "$KWO_ROOT/tools/lib/wine32.sh"

[[ $# == 1 ]] || die 'usage: make_wine32_root.sh DIRECTORY'
[[ $1 == /* ]] || die "$1: give the whole path"
target=$1
unfinished=$target.unfinished
mkdir -p "$(dirname "$target")"
lock "$target.lock"
wine32_tree_is_ready "$target" && exit 0
((EUID == 0)) || die 'debootstrap needs root'

# What somebody else has put there is not ours to delete.
[[ ! -e $target ]] || rmdir "$target" 2>/dev/null || die "$target is there and is no 32-bit Wine that was made by this"
# An interrupted run may have left a mounted /proc in its tree.
rm -rf --one-file-system "$unfinished"

# In a mount namespace of its own, where that is allowed, nothing can stay mounted.
apart=()
if unshare --mount true 2>/dev/null; then apart=(unshare --mount); fi
PATH=$PATH:/usr/sbin:/sbin
"${apart[@]}" debootstrap --arch=i386 --variant=minbase --include=wine,wine32 \
    bookworm "$unfinished" "${KWO_DEBIAN_MIRROR:-http://deb.debian.org/debian}" 9>&-
rm -rf "$unfinished"/var/cache/apt/archives "$unfinished"/var/lib/apt/lists "$unfinished"/usr/share/doc
touch "$unfinished/.kwo-ready"
mv "$unfinished" "$target"
