#!/usr/bin/env bash
# Gives functions and lines to the frames of a crash in a Windows program: reads a log and prints it with them.
#   name_frames.sh [--bits 32|64] <LOG
# A frame is MODULE+0xOFFSET, as programs of tests print it and as Windows tells it of a user's machine. The bitness
# stands in the line that begins with "Crash:", else it is given; the modules are those in the build folder.
# Environment: KWO_FLAVOUR   which build (-checked; the usual one by default)
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/base.sh"

bits=64
if [[ ${1:-} == --bits ]]; then
    bits=${2:-}
    shift 2
fi
if (($# > 0)) || [[ $bits != 32 && $bits != 64 ]]; then
    die 'usage: name_frames.sh [--bits 32|64] <LOG'
fi

# choose BITS: sets target, the prefix of the tools, and folder, where the modules are.
choose() {
    if [[ $1 == 64 ]]; then
        target=x86_64-w64-mingw32 folder=$KWO_ROOT/build/x64${KWO_FLAVOUR:-}
    else
        target=i686-w64-mingw32 folder=$KWO_ROOT/build/x86${KWO_FLAVOUR:-}
    fi
}

# symbol_at FILE ADDRESS: the name of the last function that begins there or before.
symbol_at() {
    "$target-nm" --defined-only "$1" | awk -v address="$2" '
        length($1) == length(address) && ($2 == "t" || $2 == "T") && $3 !~ /^[.]/ && $1 <= address && $1 > best {
            best = $1; name = $3
        }
        END { print name }'
}

# name_frame MODULE OFFSET: "function at file:line", a line for each function that the compiler has inlined there.
name_frame() {
    local file base address places
    # Not the diagnostic DLL, which has the same name.
    file=$(find "$folder" -name "$1" -type f -not -path '*/diagnostic/*' 2>/dev/null | head -n 1)
    [[ -n $file ]] || return 0
    base=$("$target-objdump" -p "$file" | sed -n 's/^ImageBase[[:blank:]]*//p')
    [[ -n $base ]] || return 0
    address=$(printf "%0${#base}x" $((0x$base + $2)))
    places=$("$target-addr2line" -f -i -p -e "$file" "0x$address" | grep -v '^??') || return 0
    # Of a DLL that was optimised as one the lines know a function without its class. The last line is about the function
    # that has a symbol, too.
    if [[ $1 == *.dll && ${places##*$'\n'} != *_Z* ]]; then
        places=$(sed -E "\$ s#^( [(]inlined by[)] )?[^ ]*#\1$(symbol_at "$file" "$address")#" <<<"$places")
    fi
    # In 32 bits the tool takes away the underscore that every name begins with.
    sed -E 's#(^| )_*Z([NZL0-9])#\1_Z\2#; s#(@[0-9]+)?([.][a-z_]+([.][0-9]+)?)* at # at #' <<<"$places" |
        "$target-c++filt" -n | sed -E "s#$KWO_ROOT/##g; s#build/x(64|86)[a-z-]*/[.][.]/[.][.]/##; s#^#        #" || true
}

choose "$bits"
while IFS= read -r line || [[ -n $line ]]; do
    line=${line%$'\r'}
    printf '%s\n' "$line"
    if [[ $line =~ ^Crash:.*\((32|64)-bit\)$ ]]; then
        choose "${BASH_REMATCH[1]}"
    elif [[ $line =~ ([A-Za-z_0-9.]+)\+(0x[0-9a-fA-F]+)$ ]]; then
        name_frame "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}"
    fi
done
