#!/usr/bin/env bash
# Builds with the second compiler what it can build: the logic and its tests, and the Windows code as far as its syntax
# goes, without a warning. The last line is `N passed, M failed`.
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/base.sh"
source "$KWO_ROOT/tools/lib/results.sh"

# The commands that compile the component, its companion, the host and the self-check for Windows, for clang: without what GCC makes of
# its headers, and with the library of the other compiler.
windows_commands() {
    local gcc=x86_64-w64-mingw32-g++-win32 headers options
    command -v "$gcc" >/dev/null || gcc=x86_64-w64-mingw32-g++
    headers=$("$gcc" -print-file-name=include)/c++
    options="--target=x86_64-w64-mingw32 -fsyntax-only -Werror -Wno-unknown-warning-option"
    options+=" -isystem $headers -isystem $headers/x86_64-w64-mingw32 -isystem $headers/backward"
    # Paths with a blank are quoted.
    ninja -C "$KWO_ROOT/build/x64" -t commands KWOUtil KWOInit kwohost kwocheck | grep -E "[.]cpp['\"]?$" |
        sed -E "s#^.*/x86_64-w64-mingw32-g[+][+][^ ]* #clang++ $options #
                s# -Winvalid-pch##
                s# -include ('[^']*'|\"[^\"]*\"|[^ ]*)##"
}

# The same as a build of their own: only what has changed is compiled again. The object of a command names what stands
# for it here, an empty file that tells when clang was last content with the source.
windows_build() {
    cat <<'RULE'
builddir = clang
rule clang
  command = $clang && touch $out
  depfile = $out.d
  deps = gcc
  description = $out
RULE
    sed -E 's#[$]#$$#g
            s#^(.*) -M[^ ]* -MT [^ ]* -MF [^ ]* -o ([^ ]*)[.]obj (.*)$#build clang/\2: clang\n  clang = \1 -MD -MT clang/\2 -MF clang/\2.d \3#'
}

windows_code_compiles() {
    "$KWO_ROOT/tools/build.sh" x64 kwoutil_idl kwoinit_idl || return
    local commands
    commands=$(windows_commands || true)
    [[ $commands == *windows_timer_service.cpp* ]] || die 'there is nothing to compile'
    windows_build <<<"$commands" >"$KWO_ROOT/build/x64/clang.ninja"
    ninja -C "$KWO_ROOT/build/x64" -f clang.ninja
}

if [[ ${1:-} == --windows ]]; then
    windows_code_compiles
    exit
fi
check 'building the logic and its tests with clang' "$KWO_ROOT/tools/build.sh" --strict clang
check 'compiling the Windows code with clang' "$KWO_ROOT/tools/clang.sh" --windows
print_total
