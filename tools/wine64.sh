#!/usr/bin/env bash
# Runs a Windows program of 64 bits as ./test would: in build/wine64, on a screen in memory, with KWO_DIST set.
#   wine64.sh PROGRAM [ARGUMENT...]
# Environment: KWO_WINEDEBUG (Wine's channels, none by default)
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/all.sh"
run_program_by_hand 64 "$@"
