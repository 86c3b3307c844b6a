# shellcheck shell=bash
# A display for Wine: the user's own when there is one, or a screen in memory that goes away with the command.

kwo_xvfb=0

stop_display() {
    ((kwo_xvfb == 0)) && return
    kill "$kwo_xvfb" 2>/dev/null || true
    wait "$kwo_xvfb" 2>/dev/null || true
    kwo_xvfb=0
}

# Xvfb takes the first free number itself, so two commands cannot choose the same one; it is told to end with its
# parent, so not even a killed command leaves a screen behind.
start_own_display() {
    local number='' log turn numberFile
    log=$(log_of display)
    numberFile=$(mktemp "$KWO_LOGS/display.XXXXXX")
    setsid setpriv --pdeathsig TERM -- Xvfb -displayfd 7 -screen 0 1024x768x24 -nolisten tcp \
        </dev/null >"$log" 2>&1 7>"$numberFile" 9>&- &
    kwo_xvfb=$!
    at_exit stop_display
    for ((turn = 0; turn < 200; turn++)); do
        number=$(<"$numberFile")
        [[ -n $number ]] && break
        kill -0 "$kwo_xvfb" 2>/dev/null || break
        sleep 0.05
    done
    rm -f "$numberFile"
    if [[ -z $number ]]; then
        show_tail "$log" >&2
        die 'no display: Xvfb does not start'
    fi
    export DISPLAY=:$number
    unset XAUTHORITY WAYLAND_DISPLAY
    KWO_OWN_DISPLAY=yes
}

# use_display: the user's where it answers.
use_display() {
    if [[ -n ${DISPLAY:-} ]] && timeout 10 xdotool getdisplaygeometry >/dev/null 2>&1; then
        # Wine runs with another home folder, and the display's key lies in the user's.
        [[ -n ${XAUTHORITY:-} || ! -f ${HOME:-}/.Xauthority ]] || export XAUTHORITY=$HOME/.Xauthority
        KWO_OWN_DISPLAY=no
    else
        start_own_display
    fi
}
