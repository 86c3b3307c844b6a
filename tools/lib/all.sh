# shellcheck shell=bash
# The whole library.
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/base.sh"
source "$KWO_ROOT/tools/lib/packages.sh"
source "$KWO_ROOT/tools/lib/display.sh"
source "$KWO_ROOT/tools/lib/wine.sh"
source "$KWO_ROOT/tools/lib/wine32.sh"
source "$KWO_ROOT/tools/lib/results.sh"
