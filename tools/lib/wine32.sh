# shellcheck shell=bash
# The 32-bit Wine: Debian's packages unpacked into a tree of their own, because they cannot be installed beside the
# 64-bit ones. It is big and slow to make, so one tree serves every checkout of a user.

wine32_tree_is_ready() { [[ -f $1/.kwo-ready && -x $1/usr/lib/wine/wine ]]; }

# The places where the tree may be, the best first; the first is where a new one is made.
wine32_places() {
    if [[ -n ${KWO_WINE32_ROOT:-} ]]; then
        printf '%s\n' "$KWO_WINE32_ROOT"
        return
    fi
    local cache=${XDG_CACHE_HOME:-}
    # A home folder that is not there is not made, either.
    [[ -n $cache || ! -d ${HOME:-} ]] || cache=$HOME/.cache
    if [[ $cache == /* ]] && mkdir -p "$cache/kwoutil" 2>/dev/null && [[ -w $cache/kwoutil ]]; then
        printf '%s\n' "$cache/kwoutil/wine32-root"
    fi
    printf '%s\n' "$KWO_ROOT/build/wine32-root"
}

# find_wine32: sets kwo_wine32_tree, making the tree if need be; else fails and says why in kwo_wine32_why.
find_wine32() {
    local places place missing needed=('libc6-i386 /lib/ld-linux.so.2')
    kwo_wine32_why=''
    mapfile -t places < <(wine32_places)
    for place in "${places[@]}"; do
        wine32_tree_is_ready "$place" && break
        place=''
    done
    # A tree that is there needs nothing to make it.
    [[ -n $place ]] || needed=("${KWO_WINE32_PACKAGES[@]}")
    mapfile -t missing < <(missing_packages "${needed[@]}")
    if ((${#missing[@]} > 0)) && can_install; then
        install_packages "${missing[@]}" || true
        mapfile -t missing < <(missing_packages "${needed[@]}")
    fi
    if ((${#missing[@]} > 0)); then
        kwo_wine32_why="packages are missing: sudo $(install_line "${missing[@]}")"
        return 1
    fi
    if [[ -z $place ]]; then
        place=${places[0]}
        if ((EUID != 0)); then
            kwo_wine32_why='its Wine is unpacked by debootstrap, which needs root:'
            kwo_wine32_why+=$(printf ' sudo %q %q' "$KWO_ROOT/tools/make_wine32_root.sh" "$place")
            return 1
        fi
        if ! step 'unpacking a 32-bit Wine' timeout --kill-after=20 900 \
            "$KWO_ROOT/tools/make_wine32_root.sh" "$place"; then
            kwo_wine32_why="its Wine cannot be unpacked, see $(log_of 'unpacking a 32-bit Wine')"
            return 1
        fi
    fi
    kwo_wine32_tree=$place
}
