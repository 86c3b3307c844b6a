#!/usr/bin/env bash
# Checks what makes the installed DLLs and programs hard to attack and the same on every machine; the last line is
# `N passed, M failed`.
#   check_binaries.sh [FOLDER...]     dist/x64 and dist/x86 by default; a folder whose name ends in x86 is a 32-bit one
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/base.sh"
source "$KWO_ROOT/tools/lib/results.sh"
source "$KWO_ROOT/tools/lib/release.sh"
use_one_language

# Windows loads these from its own folder alone, whatever lies beside the program (its "KnownDLLs").
known_dlls='advapi32.dll gdi32.dll kernel32.dll msvcrt.dll ole32.dll oleaut32.dll shell32.dll shlwapi.dll user32.dll'
version=$(release_version)

# headers FILE, sections FILE: what binutils says of a file.
headers() { "$objdump" -p "$1"; }
sections() { "$objdump" -w -h "$1" | grep -E '^ +[0-9]+ '; }

has_characteristic() { headers "$1" | grep -wF "$2"; }

# An address that cannot be guessed needs both: the wish, and relocations.
has_relocations() {
    ! headers "$1" | grep -F 'relocations stripped' && sections "$1" | grep -E '^ +[0-9]+ \.reloc +0*[1-9a-f]'
}

# Binutils calls executable sections CODE.
no_section_is_writable_and_executable() { ! sections "$1" | grep -w CODE | grep -vw READONLY; }

imports_known_dlls_only() {
    local name bad=0 count=0
    while IFS= read -r name; do
        count=$((count + 1))
        [[ " $known_dlls " == *" ${name,,} "* ]] || { printf '%s\n' "$name" && bad=1; }
    done < <(headers "$1" | sed -n 's/^[[:space:]]*DLL Name: //p')
    ((count > 0 && bad == 0))
}

# The version resource holds its texts one behind the other, each behind its name.
resource_says() {
    local said
    said=$(strings -el -n 2 "$1" | grep -A 1 -x -F "$2" | tail -n 1)
    [[ $said == "$3" ]] || { printf '%s: "%s" instead of "%s"\n' "$2" "$said" "$3" && return 1; }
}
version_is_complete() {
    local name
    name=$(basename "$1")
    for row in "CompanyName|The KWOUtil developers" "FileVersion|$version.0" "InternalName|${name%.*}" \
        "LegalCopyright|Copyright (c) 2026 the KWOUtil developers. MIT license." "OriginalFilename|$name" \
        "ProductName|KWOUtil" "ProductVersion|$version.0"; do
        resource_says "$1" "${row%%|*}" "${row#*|}" || return
    done
    strings -el "$1" | grep -A 1 -x FileDescription | tail -n 1 | grep ' '
}

# Neither this folder nor one of the compiler's.
names_no_folder_of_the_build() {
    local hits
    hits=$({ strings -n 6 "$1" && strings -el -n 6 "$1"; } | grep -E "$KWO_ROOT|(^|[^A-Za-z])/(usr|home|root|build|tmp)/" || true)
    [[ -z $hits ]] || { printf '%s\n' "$hits" && return 1; }
}

# A time of the build would make each build another one.
# The IDL compiler writes one into the type library.
holds_no_time() {
    local times
    times=$({
        headers "$1" | sed -n 's/^Time\/Date[[:space:]]*\(stamp\)\?[[:space:]]*//p'
        LC_ALL=C sed -nE 's/.*Created by WIDL version [0-9.]+ at (.{24}).*/\1/p' "$1" | tr -d '\0'
    } | sort -u)
    printf '%s\n' "$times"
    ! grep -vE '^(0|Thu Jan  1 00:00:00 1970)$' <<<"$times"
}

# Each process that uses the component maps it. Sources are built to be small, and new ones may add some.
has_at_most() {
    local size
    size=$(stat -c %s "$2")
    printf '%s bytes\n' "$size"
    ((size <= $1))
}
# The run-time prints with these alone. Where they are, the library's printing is linked, which nobody needs.
prints_nothing() { ! headers "$1" | grep -wE 'fputs|fputc|fputwc|localeconv'; }

# protects_the_stack FILE FUNCTIONS: at least so many functions guard what is on the stack. Each ends in a call of what ends
# the process when that was overrun: the two instructions "mov $2,%ecx" and "int $0x29".
protects_the_stack() {
    local count
    count=$("$objdump" -d --no-show-raw-insn "$1" | awk '
        $2 == "int" && $3 == "$0x29" { guard = "0x" before }
        { before = $1; sub(":", "", before) }
        $2 == "call" { calls[$3]++ }
        END { print calls[guard] + 0 }')
    printf '%s functions\n' "$count"
    ((count >= $2))
}

# Windows tells its version only to programs whose manifest names it; to others it is Windows 8.
names_windows_10() { grep -qaF '<supportedOS Id="{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"/>' "$1"; }

check_file() {
    local file=$1 what=${1#"$KWO_ROOT/"}
    [[ -f $file ]] || { check "$what is there" false && return; }
    check "$what: its address is random" has_characteristic "$file" DYNAMIC_BASE
    [[ $objdump != x86_64-* ]] || check "$what: its address has high entropy" has_characteristic "$file" HIGH_ENTROPY_VA
    check "$what: data is not executable" has_characteristic "$file" NX_COMPAT
    check "$what: it has relocations" has_relocations "$file"
    check "$what: no section is both writable and executable" no_section_is_writable_and_executable "$file"
    check "$what: arrays on the stack are protected" protects_the_stack "$file" 50
    check "$what: it imports known DLLs only" imports_known_dlls_only "$file"
    check "$what: its version resource is complete" version_is_complete "$file"
    check "$what: it names no folder of the build" names_no_folder_of_the_build "$file"
    check "$what: it holds no time of the build" holds_no_time "$file"
    [[ $file != *.exe ]] || check "$what: its manifest names Windows 10" names_windows_10 "$file"
    [[ $file != *.dll ]] || check "$what: it prints nothing" prints_nothing "$file"
    [[ $file != */KWOUtil.dll ]] || check "$what: it has at most 500,000 bytes" has_at_most 500000 "$file"
}

folders=("$@")
(($# > 0)) || folders=("$KWO_ROOT/dist/x64" "$KWO_ROOT/dist/x86")
export TZ=UTC
for folder in "${folders[@]}"; do
    objdump=x86_64-w64-mingw32-objdump
    [[ $folder != *x86 ]] || objdump=i686-w64-mingw32-objdump
    for name in KWOUtil.dll KWOInit.dll kwohost.exe kwocheck.exe; do check_file "$folder/$name"; done
done
print_total
