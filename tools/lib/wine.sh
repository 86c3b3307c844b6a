# shellcheck shell=bash
# Wine of either bitness: its command line, its prefixes, registration, and programs run in it. One command at a time
# uses a prefix (the caller locks it), and the prefix's server is stopped before the display it was started with.

kwo_opened=()

# /a/b -> Z:\a\b, the way Wine's drives are set up in a new prefix.
wine_path() {
    local path
    path=$(realpath -ms -- "$1")
    printf 'Z:%s\n' "${path//\//\\}"
}

# choose_wine BITS PREFIX [TREE]: sets kwo_wine, the words that start a program, kwo_wineserver, and kwo_preset, the
# build of that bitness; KWO_FLAVOUR names another than the usual one. The 32-bit Wine lives in a tree of its own. Nothing
# of the user's own Wine settings gets in, and nothing is written to the home folder.
choose_wine() {
    local loader server settings
    kwo_bits=$1 kwo_prefix=$2
    settings=(env -u WINEARCH -u WINEDLLPATH
        "HOME=$KWO_ROOT/build/home" "WINEPREFIX=$kwo_prefix" "WINEDEBUG=${KWO_WINEDEBUG:--all}"
        'WINEDLLOVERRIDES=mscoree,mshtml=;winedbg.exe=;winemenubuilder.exe=')
    if ((kwo_bits == 64)); then
        kwo_preset=x64${KWO_FLAVOUR:-}
        loader=/usr/lib/wine/wine64 server=/usr/lib/wine/wineserver64
        [[ -x $loader && -x $server ]] || loader=$(command -v wine64) server=$(command -v wineserver)
    else
        kwo_preset=x86${KWO_FLAVOUR:-}
        loader=$3/usr/lib/wine/wine server=$3/usr/lib/wine/wineserver32
        settings+=(WINEARCH=win32 "LD_LIBRARY_PATH=$3/usr/lib/i386-linux-gnu:$3/lib/i386-linux-gnu")
    fi
    settings+=("WINELOADER=$loader" "WINESERVER=$server")
    kwo_wine=("${settings[@]}" "$loader")
    kwo_wineserver=("${settings[@]}" "$server")
    mkdir -p "$KWO_ROOT/build/home"
    # Without such a file Xlib looks for one at every font that is drawn with.
    : >>"$KWO_ROOT/build/home/.Xdefaults"
}

# in_wine COMMAND...: a short command; what it wrote is printed when it has ended, because Wine's services, which it may
# have started, keep the output open.
in_wine() {
    local output rc=0
    output=$(log_of wine)
    timeout --foreground --kill-after=5 120 "${kwo_wine[@]}" "$@" </dev/null >"$output" 2>&1 9>&- || rc=$?
    tr -d '\r' <"$output"
    return "$rc"
}

stop_wine() {
    [[ -d $kwo_prefix ]] || return 0
    timeout 30 "${kwo_wineserver[@]}" -k >/dev/null 2>&1 9>&- || true
    timeout 30 "${kwo_wineserver[@]}" -w >/dev/null 2>&1 9>&- || true
}

# A Wine that cannot run a program of this bitness says nothing and exits with 0: only its answer counts.
wine_answers() {
    local expected=AMD64 said
    ((kwo_bits == 64)) || expected=x86
    said=$(in_wine cmd /c 'echo %PROCESSOR_ARCHITECTURE%') || return 1
    [[ $said == "$expected"* ]]
}

prefix_stamp() { printf 'prefix 1, %s bits, %s\n' "$kwo_bits" "$("${kwo_wine[@]}" --version 2>/dev/null)"; }

prefix_is_made() { [[ -f $kwo_prefix/.kwo-ready && $(<"$kwo_prefix/.kwo-ready") == "$(prefix_stamp)" ]]; }

# Window managers are for the user's own display; without one, Wine waits two seconds for it at every closed window.
manage_windows() {
    local wanted=Y
    [[ $KWO_OWN_DISPLAY == yes ]] && wanted=N
    [[ -f $kwo_prefix/.kwo-managed && $(<"$kwo_prefix/.kwo-managed") == "$wanted" ]] && return
    in_wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$wanted" /f >/dev/null || return
    printf '%s\n' "$wanted" >"$kwo_prefix/.kwo-managed"
}

# set_dpi DOTS: of the display, from the next start of the chosen Wine on.
set_dpi() {
    # First the note: whoever is stopped in between leaves it behind.
    printf '%s\n' "$1" >"$kwo_prefix/.kwo-dots"
    in_wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null || return
    stop_wine
}

# A command that was stopped may have left another density.
usual_density() {
    [[ ! -f $kwo_prefix/.kwo-dots || $(<"$kwo_prefix/.kwo-dots") == 96 ]] || set_dpi 96
}

# open_prefix BITS NAME [TREE]: build/NAME, made when it is missing, half-made, of another Wine, or broken; from then on
# chosen, also by a later call. A display must be there: Wine asks for it once, when a prefix's first program starts.
open_prefix() {
    local opened
    choose_wine "$1" "$KWO_ROOT/build/$2" "${3:-}"
    for opened in "${kwo_opened[@]}"; do [[ $opened != "$1|$2|${3:-}" ]] || return 0; done
    ((${#kwo_opened[@]} > 0)) || at_exit stop_opened
    kwo_opened+=("$1|$2|${3:-}")
    stop_wine
    if ! prefix_is_made || ! wine_answers; then
        stop_wine
        step "making the $kwo_bits-bit Wine prefix" \
            "$KWO_ROOT/tools/make_wine_prefix.sh" "$kwo_bits" "$kwo_prefix" "${3:-}" || return
        wine_answers || return
    fi
    usual_density || return
    manage_windows
}

# copy_prefix BITS NAME TREE COPY: makes build/COPY from build/NAME, which is a second's work, if it is missing or of another
# Wine. What is registered in one is not in the other.
copy_prefix() {
    choose_wine "$1" "$KWO_ROOT/build/$4" "$3"
    ! prefix_is_made || return 0
    stop_wine
    rm -rf "$kwo_prefix"
    open_prefix "$1" "$2" "$3" || return
    stop_wine
    cp -a --reflink=auto "$kwo_prefix" "$KWO_ROOT/build/$4"
}

# Tests mark the prefix that they use until they have passed: what failed or was stopped may have left something registered.
mark_prefix() { : >"$kwo_prefix/.kwo-in-tests"; }
unmark_prefix() { rm -f "$kwo_prefix/.kwo-in-tests"; }

# remove_marked BITS TREE PREFIX...: those among them that are marked, so that they are made anew. No test may run in one.
remove_marked() {
    local bits=$1 tree=$2 prefix
    shift 2
    for prefix; do
        [[ -f $prefix/.kwo-in-tests ]] || continue
        choose_wine "$bits" "$prefix" "$tree"
        stop_wine
        rm -rf "$prefix"
    done
}

stop_opened() {
    local bits name tree
    while IFS='|' read -r bits name tree; do
        choose_wine "$bits" "$KWO_ROOT/build/$name" "$tree"
        stop_wine
    done < <(printf '%s\n' "${kwo_opened[@]}")
}

# default_text KEY: what the registry holds as the key's default value; nothing when there is none. An export is the same
# in every language; what `reg query` prints is in the user's, in the code page of his console.
default_text() {
    local file
    file=$(log_of registry)
    rm -f "$file"
    in_wine reg export "$1" "$(wine_path "$file")" /y >/dev/null || return 0
    [[ -f $file ]] || return 0
    iconv -f UTF-16 -t UTF-8 "$file" | tr -d '\r' | LC_ALL=C sed -n '/^@="\(.*\)"$/{s//\1/;s/\\\(.\)/\1/g;p;q}'
}

# registered_dll DLL: where the registry says that it is, found by one of its classes; nothing when it is not registered.
registered_dll() {
    local class known=KWOUtil.KWORegistry
    [[ ${1##*/} != KWOInit.dll ]] || known=KWOInit.KWOInitialize
    class=$(default_text "HKEY_CLASSES_ROOT\\$known\\CLSID")
    [[ -z $class ]] || default_text "HKEY_CLASSES_ROOT\\CLSID\\$class\\InprocServer32"
}

# register_dll DLL. The exit code alone proves nothing.
register_dll() {
    local dll rc=0 found
    dll=$(wine_path "$1")
    in_wine regsvr32 /s "$dll" >/dev/null || rc=$?
    found=$(registered_dll "$1")
    ((rc == 0)) && [[ ${found,,} == "${dll,,}" ]] && return
    printf 'regsvr32 %s: exit code %d, registered: %s\n' "$dll" "$rc" "${found:-nothing}" >&2
    return 1
}

# unregister_dll DLL: does nothing when nothing is registered.
unregister_dll() {
    local dll rc=0
    [[ -n $(registered_dll "$1") ]] || return 0
    dll=$(wine_path "$1")
    in_wine regsvr32 /u /s "$dll" >/dev/null || rc=$?
    ((rc == 0)) && [[ -z $(registered_dll "$1") ]] && return
    printf 'regsvr32 /u %s: exit code %d, registered: %s\n' "$dll" "$rc" "$(registered_dll "$1")" >&2
    return 1
}

# An argument that starts like a path and leads somewhere becomes Wine's path; a switch like /regserver is left alone.
translated() {
    if [[ $1 == /* || $1 == ./* || $1 == ../* ]] && [[ -e $1 ]]; then wine_path "$1"; else printf '%s\n' "$1"; fi
}

# run_in_wine COMMAND...: a program in the foreground, its output passed on as it appears. It goes through files,
# because Wine's services would keep a pipe open after the program has ended.
run_in_wine() {
    local output errors followers=() rc=0
    output=$(log_of output)
    errors=$output
    # Both in one file when they go to the same place, so that their order stays.
    [[ /dev/stdout -ef /dev/stderr ]] || errors=$(log_of errors)
    start_job "$output" "$errors" "${kwo_wine[@]}" "$@"
    tail -n +1 -s 0.05 -f --pid="$kwo_job" -- "$output" 9>&- &
    followers=("$!")
    if [[ $errors != "$output" ]]; then
        tail -n +1 -s 0.05 -f --pid="$kwo_job" -- "$errors" >&2 9>&- &
        followers+=("$!")
    fi
    wait_job || rc=$?
    wait "${followers[@]}" || true
    return "$rc"
}

# What a user installs, of the bitness of the chosen Wine; programs of this repository find it by these variables.
dist_folder() { printf '%s/dist/%s\n' "$KWO_ROOT" "$kwo_preset"; }

tell_dist() {
    KWO_DIST=$(wine_path "$(dist_folder)")
    KWO_BITS=$kwo_bits
    # Where tests leave pictures of what was on the screen.
    mkdir -p "$KWO_ROOT/build/pictures/$kwo_preset"
    KWO_PICTURES=$(wine_path "$KWO_ROOT/build/pictures/$kwo_preset")
    KWO_README=$(wine_path "$KWO_ROOT/README.md")
    export KWO_DIST KWO_BITS KWO_PICTURES KWO_README
}

# open_prefix_by_hand BITS: for a command that is typed, alone with Wine.
open_prefix_by_hand() {
    local bits=$1 kwo_wine32_tree=''
    use_one_language
    need_packages "${KWO_WINE_PACKAGES[@]}"
    ((bits == 64)) || find_wine32 || die "32-bit: not run: $kwo_wine32_why"
    lock "$KWO_ROOT/build/wine.lock"
    start_own_display
    remove_marked "$bits" "$kwo_wine32_tree" "$KWO_ROOT/build/wine$bits"
    open_prefix "$bits" "wine$bits" "$kwo_wine32_tree" || die "Wine does not work: see $KWO_LOGS"
}

# run_program_by_hand BITS PROGRAM [ARGUMENT...]
run_program_by_hand() {
    local bits=$1 argument words=()
    shift
    (($# > 0)) || die "usage: $KWO_COMMAND.sh PROGRAM [ARGUMENT...]"
    open_prefix_by_hand "$bits"
    for argument in "$@"; do words+=("$(translated "$argument")"); done
    # The first word is a program whatever it looks like, as long as it is there.
    [[ -f $1 ]] && words[0]=$(wine_path "$1")
    tell_dist
    run_in_wine "${words[@]}"
}
