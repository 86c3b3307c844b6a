#!/usr/bin/env bash
# Runs a Windows program of 32 bits as ./test would: in build/wine32, on a screen in memory, with KWO_DIST set.
#   wine32.sh PROGRAM [ARGUMENT...]
# Environment: KWO_WINEDEBUG (Wine's channels, none by default)
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/all.sh"
run_program_by_hand 32 "$@"
