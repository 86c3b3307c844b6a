#!/usr/bin/env bash
# Makes the pictures of the pages anew: docs/*.png, by the samples, with what `./run --build` has put into dist/x64. They
# are taken in a Wine of their own, which is removed afterwards, on a screen in memory.
#   make_pictures.sh
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/lib/all.sh"
(($# == 0)) || die 'usage: make_pictures.sh'

use_one_language
# Both of its commands are used, and the list knows one.
need_packages "${KWO_WINE_PACKAGES[@]}" 'imagemagick identify'
dist=$KWO_ROOT/dist/x64
[[ -f $dist/kwohost.exe ]] || die 'there is no dist/x64: ./run --build first'

scratch=$(mktemp -d)
clean_up() { rm -rf "$scratch" "$KWO_ROOT/build/wine-pictures"; }
at_exit clean_up
lock "$KWO_ROOT/build/wine-pictures.lock"
start_own_display
open_prefix 64 wine-pictures || die "Wine does not work: see $KWO_LOGS"
register_dll "$dist/KWOUtil.dll" || die 'the component cannot be registered'
register_dll "$dist/KWOInit.dll" || die 'the companion cannot be registered'

# picture NAME SAMPLE: what the sample leaves of its form.
picture() {
    run_sample "$2" "$(wine_path "$scratch/$1.bmp")"
    taken "$1" "$scratch/$1.bmp"
}

# taken NAME BITMAP: in few colours.
taken() {
    [[ -s $2 ]] || die "there is no picture for docs/$1.png"
    convert "$2" -strip +dither -colors 64 -define png:compression-level=9 "PNG8:$KWO_ROOT/docs/$1.png"
    printf 'docs/%s.png: %s\n' "$1" "$(identify -format '%w x %h, %b' "$KWO_ROOT/docs/$1.png")"
}

# driven SAMPLE [ARGUMENT...]: what a driver of tests/samples leaves of its sample's form.
driven() {
    local name=${1%.*} driver=$scratch/drivers/$1
    shift
    KWO_PICTURES=$(wine_path "$scratch") in_wine "$(wine_path "$dist/kwohost.exe")" "$(wine_path "$driver")" "$@" \
        >"$scratch/said" || die "$driver failed: $(<"$scratch/said")"
    taken "$name" "$scratch/$name.bmp"
}

# run_sample SAMPLE ARGUMENT...
run_sample() {
    local sample=$1
    shift
    in_wine "$(wine_path "$dist/kwohost.exe")" "$(wine_path "$KWO_ROOT/samples/$sample.vbs")" "$@" >"$scratch/said" ||
        die "$sample.vbs failed: $(<"$scratch/said")"
}

# scheme ROW...: of the desktop, `Name red green blue` each.
scheme() {
    local row
    {
        printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Control Panel\\Colors]\r\n'
        for row in "$@"; do printf '"%s"="%s"\r\n' "${row%% *}" "${row#* }"; done
    } >"$scratch/scheme.reg"
    in_wine reg import "$(wine_path "$scratch/scheme.reg")" >/dev/null || die 'the colours cannot be set'
    stop_wine
}

density() {
    in_wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null ||
        die 'the density cannot be set'
    stop_wine
}

picture month-view month_view
picture pic-btn pic_btn
picture splitter-v splitter_v
mkdir "$scratch/drivers"
"$KWO_ROOT/tests/samples/fill_drivers" "$scratch/drivers"
driven reminders.vbs
driven settings.vbs
driven watch.js "$(wine_path "$scratch/watched.txt")"
run_sample tour --play "$(wine_path "$scratch")"
taken tour "$scratch/tour-3-days.bmp"
density 144
picture month-view-144 month_view
picture pic-btn-144 pic_btn
picture splitter-v-144 splitter_v
density 192
picture month-view-192 month_view
density 96
scheme 'ButtonFace 45 45 48' 'ButtonText 240 240 240' 'ButtonHilight 90 90 94' 'ButtonLight 62 62 66' \
    'ButtonShadow 28 28 30' 'ButtonDkShadow 10 10 10' 'GrayText 150 150 155' 'Window 30 30 30' 'WindowText 240 240 240' \
    'WindowFrame 90 90 94' 'Hilight 0 102 180' 'HilightText 255 255 255' 'ActiveTitle 28 28 30' \
    'GradientActiveTitle 28 28 30' 'TitleText 240 240 240'
picture month-view-dark month_view
picture pic-btn-dark pic_btn
scheme 'ButtonFace 0 0 0' 'ButtonText 255 255 255' 'ButtonHilight 255 255 255' 'ButtonLight 192 192 192' \
    'ButtonShadow 128 128 128' 'ButtonDkShadow 255 255 255' 'GrayText 63 242 63' 'Window 0 0 0' \
    'WindowText 255 255 255' 'WindowFrame 255 255 255' 'Hilight 26 235 255' 'HilightText 0 0 0' 'ActiveTitle 55 0 110' \
    'GradientActiveTitle 55 0 110' 'TitleText 255 255 255'
picture month-view-contrast month_view
picture pic-btn-contrast pic_btn
