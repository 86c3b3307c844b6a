#!/usr/bin/env bash
# Builds with the second compiler what it can build: the logic and its tests, and the Windows code as far as its syntax
# goes, without a warning. Sources of the Windows code that the last commit or the working tree changes are also compiled
# alone, which shows what they use and do not include. The last line is `N passed, M failed`.
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/base.sh"
source "$KWO_ROOT/tools/lib/results.sh"

# The commands that compile the component, its companion, the host and the self-check for Windows, for clang: with the
# library of the other compiler, and what that one has precompiled precompiled for clang.
windows_commands() {
    local gcc=x86_64-w64-mingw32-g++-win32 headers options
    command -v "$gcc" >/dev/null || gcc=x86_64-w64-mingw32-g++
    headers=$("$gcc" -print-file-name=include)/c++
    options="--target=x86_64-w64-mingw32 -fsyntax-only -Werror -Wno-unknown-warning-option"
    options+=" -isystem $headers -isystem $headers/x86_64-w64-mingw32 -isystem $headers/backward"
    # Paths with a blank are quoted.
    ninja -C "$KWO_ROOT/build/x64" -t commands KWOUtil KWOInit kwohost kwocheck | grep -E "([.]cpp|_cxx[.]cxx)['\"]?$" |
        sed -E "s#^.*/x86_64-w64-mingw32-g[+][+][^ ]* #clang++ $options #
                s# -(O[0-9s]|flto|ffat-lto-objects)##g
                s# -Winvalid-pch##
                s# -include ('[^']*'|\"[^\"]*\"|[^ ]*)# -include-pch clang/system.pch#"
}

# only_changed: of commands that compile several sources as one, those that compile each changed source among them alone.
only_changed() {
    local -A changed=()
    local file command options folder source
    while read -r file; do changed[$KWO_ROOT/$file]=yes; done < <(changed_files)
    while read -r command; do
        [[ $command =~ ^(.*)\ -MD\ .*\ -o\ ([^ ]*)/[^/]*\ -c\ [\'\"]?([^\'\"]*[.]cxx) ]] || continue
        options=${BASH_REMATCH[1]} folder=${BASH_REMATCH[2]}
        while read -r source; do
            [[ -z ${changed[$source]:-} ]] || printf "%s -MD -MT x -MF x -o %s/%s.obj -c '%s'\n" "$options" "$folder" \
                "${source##*/}" "$source"
        done < <(sed -n 's/^#include "\(.*\)"$/\1/p' "${BASH_REMATCH[3]}")
    done
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
            s#^(.*) -M[^ ]* -MT [^ ]* -MF [^ ]* -o ([^ ]*)[.]obj (.*)$#build clang/\2: clang | clang/system.pch\n  clang = \1 -MD -MT clang/\2 -MF clang/\2.d \3#'
}

# precompiled COMMANDS: what that build says of the system's headers, which the same options precompile. A build with
# ccache precompiles nothing.
precompiled() {
    local options headers=$KWO_ROOT/build/x64/src/CMakeFiles/kwo_com_support.dir/cmake_pch.hxx out=clang/system.pch
    if [[ $1 != *' -include-pch '* ]]; then
        printf 'build %s: phony\n' "$out"
        return
    fi
    options=$(grep -m 1 -e ' -include-pch ' <<<"$1" | sed -E 's# -fsyntax-only##; s# -include-pch [^ ]*##; s# -MD .*##')
    options+=' -Wno-pragma-system-header-outside-header'
    printf 'build %s: clang\n' "$out"
    printf "  clang = %s -MD -MT %s -MF %s.d -o %s -x c++-header '%s'\n" "${options//\$/\$\$}" "$out" "$out" "$out" "$headers"
}

windows_code_compiles() {
    "$KWO_ROOT/tools/build.sh" x64 kwoutil_idl kwoinit_idl || return
    local commands
    commands=$(windows_commands || true)
    [[ $commands == *platform_windows* ]] || die 'there is nothing to compile'
    {
        { printf '%s\n' "$commands" && only_changed <<<"$commands"; } | windows_build
        precompiled "$commands"
    } >"$KWO_ROOT/build/x64/clang.ninja"
    ninja -C "$KWO_ROOT/build/x64" -f clang.ninja
}

if [[ ${1:-} == --windows ]]; then
    windows_code_compiles
    exit
fi
check 'building the logic and its tests with clang' "$KWO_ROOT/tools/build.sh" --strict clang
check 'compiling the Windows code with clang' "$KWO_ROOT/tools/clang.sh" --windows
print_total
