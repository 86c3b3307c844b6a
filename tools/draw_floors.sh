#!/usr/bin/env bash
# Draws the floors of the component as the build knows them: which library stands on which.
#   draw_floors.sh            writes docs/floors.svg
#   draw_floors.sh --check    fails when docs/floors.svg is not what the build gives
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/base.sh"

[[ $# == 0 || $* == --check ]] || die 'usage: draw_floors.sh [--check]'
picture=$KWO_ROOT/docs/floors.svg
folder=$KWO_ROOT/build/floors

# graph NAME OPTION...: configures the build once for NAME and prints what depends on what, `user<blank>used` a line.
graph() {
    local name=$1
    shift
    ready_build_folder "$folder/$name"
    run_job "$folder/$name.log" cmake -S "$KWO_ROOT" -B "$folder/$name" -G Ninja \
        --graphviz="$folder/$name.dot" "$@" || die "CMake fails: see $folder/$name.log"
    sed -nE 's|^.* -> .*// (\S+) -> (\S+)$|\1 \2|p' "$folder/$name.dot"
}

# folder_of LIBRARY: that of kwo_com_server is com/server, that of kwo_com_support com_support.
folder_of() {
    local name=${1#kwo_}
    [[ $name == KWOUtil || -d $KWO_ROOT/src/$name ]] || name=${name//_//}
    printf '%s' "$name"
}

# Beside the floors only the DLL is drawn: what tests make of them is no floor.
floors_of() {
    local user used
    grep -E '^(kwo_[a-z_]+|KWOUtil) kwo_[a-z_]+$' | LC_ALL=C sort -u | while read -r user used; do
        user=$(folder_of "$user") used=$(folder_of "$used")
        [[ -d $KWO_ROOT/src/$used && ($user == KWOUtil || -d $KWO_ROOT/src/$user) ]] || continue
        printf '%s %s\n' "$user" "$used"
    done
}

draw() {
    awk '
    function level(node, i, at) {  # the longest way down
        if (node in low) return low[node]
        at = 0
        for (i = 1; i <= edges; ++i)
            if (from[i] == node && level(to[i]) >= at) at = level(to[i]) + 1
        return low[node] = at
    }
    function reaches(a, b, i) {
        if (a == b) return 1
        for (i = 1; i <= edges; ++i)
            if (from[i] == a && reaches(to[i], b)) return 1
        return 0
    }
    function needless(edge, i) {  # it is there anyhow, by way of another floor
        for (i = 1; i <= edges; ++i)
            if (i != edge && from[i] == from[edge] && to[i] != to[edge] && reaches(to[i], to[edge])) return 1
        return 0
    }
    function row(node, i, at) {  # as high as those that stand on it let it be
        if (node in high) return high[node]
        at = top
        for (i = 1; i <= edges; ++i)
            if (to[i] == node && row(from[i]) <= at) at = row(from[i]) - 1
        return high[node] = at
    }
    function before(a, b) { return level(a) != level(b) ? level(a) > level(b) : a < b }
    function place(node, i, sum, users) {
        for (i = 1; i <= edges; ++i)
            if (to[i] == node && (from[i] in x)) { sum += x[from[i]]; ++users }
        return users ? sum / users : -1
    }
    function hides(node, at, i) {  # a line that goes straight down past it
        for (i = 1; i <= edges; ++i)
            if (!needless(i) && row(from[i]) > row(node) && row(node) > row(to[i]) && isGround(to[i]) &&
                x[from[i]] > at - boxWidth / 2 && x[from[i]] < at + boxWidth / 2) return 1
        return 0
    }
    function y(r) { return margin + (top - r) * rowHeight }
    function isGround(node) { return row(node) == 0 && rowSize[0] == 1 }  # as wide as the house
    function label(node) { return node == "KWOUtil" ? "KWOUtil.dll" : node }
    { from[++edges] = $1; to[edges] = $2; if (!seen[$1]++) names[++nodes] = $1; if (!seen[$2]++) names[++nodes] = $2 }
    END {
        margin = 20; boxHeight = 34; rowHeight = 70; boxWidth = 150; gap = 16
        for (i = 1; i <= nodes; ++i) if (level(names[i]) > top) top = level(names[i])
        for (i = 1; i <= nodes; ++i) {  # what nothing stands on, but the top, stands next to its own ground
            used = 0
            for (j = 1; j <= edges; ++j) used += to[j] == names[i]
            if (!used) high[names[i]] = level(names[i])
        }
        for (i = 1; i <= nodes; ++i) ++rowSize[row(names[i])]
        for (r in rowSize) if (rowSize[r] > widest) widest = rowSize[r]
        width = 2 * margin + widest * boxWidth + (widest - 1) * gap

        for (r = top; r >= 0; --r) {
            count = 0
            for (i = 1; i <= nodes; ++i) {
                if (row(names[i]) != r) continue
                for (j = ++count; j > 1 && before(names[i], order[j - 1]); --j) order[j] = order[j - 1]
                order[j] = names[i]
            }
            left = rowSize[r] == widest ? margin : 0
            for (j = 1; j <= count; ++j) {
                wanted = rowSize[r] == widest ? -1 : place(order[j])
                if (wanted < 0 && r == top) wanted = width / 2
                if (hides(order[j], wanted)) wanted -= boxWidth / 2 + gap
                if (wanted - boxWidth / 2 < left) wanted = left + boxWidth / 2
                x[order[j]] = wanted
                left = wanted + boxWidth / 2 + gap
            }
        }
        printf "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %d %d\" font-family=\"sans-serif\" font-size=\"15\">\n", width, y(-1) - rowHeight + boxHeight + margin
        print "<!-- made by tools/draw_floors.sh -->"
        printf "<rect width=\"100%%\" height=\"100%%\" fill=\"#ffffff\"/>\n"
        for (i = 1; i <= edges; ++i) {
            if (needless(i)) continue
            ground = isGround(to[i]) ? x[from[i]] : x[to[i]]
            printf "<line x1=\"%d\" y1=\"%d\" x2=\"%d\" y2=\"%d\" stroke=\"#606060\"/>\n", x[from[i]], y(row(from[i])) + boxHeight, ground, y(row(to[i]))
        }
        for (r = top; r >= 0; --r)
            for (i = 1; i <= nodes; ++i) {
                if (row(names[i]) != r) continue
                w = isGround(names[i]) ? width - 2 * margin : boxWidth
                c = isGround(names[i]) ? width / 2 : x[names[i]]
                printf "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" rx=\"4\" fill=\"#eef3fa\" stroke=\"#30507a\"/>\n", c - w / 2, y(r), w, boxHeight
                printf "<text x=\"%d\" y=\"%d\" text-anchor=\"middle\">%s</text>\n", c, y(r) + 22, label(names[i])
            }
        print "</svg>"
    }'
}

drawn=$({
    graph native
    graph windows -D "CMAKE_TOOLCHAIN_FILE=$KWO_ROOT/cmake/mingw-x64.cmake"
} | floors_of | draw)
if (($# == 0)); then
    printf '%s\n' "$drawn" >"$picture"
elif [[ $drawn != "$(cat "$picture" 2>/dev/null)" ]]; then
    die 'docs/floors.svg is not what the build gives: run tools/draw_floors.sh'
fi
