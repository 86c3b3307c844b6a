#!/usr/bin/env bash
# Puts together what a user takes home, from dist/x64, dist/x86 and the build folders they came from, where the target
# test_kit has been built, too.
#   assemble.sh [--no-manual] FOLDER     FOLDER must not exist. Without the manual it takes a second and needs no pandoc
# shellcheck source-path=SCRIPTDIR
source "$(dirname "${BASH_SOURCE[0]}")/../lib/base.sh"
source "$KWO_ROOT/tools/lib/release.sh"

manual=yes
if [[ ${1:-} == --no-manual ]]; then
    manual=no
    shift
fi
(($# == 1)) || die 'usage: assemble.sh [--no-manual] FOLDER'
folder=$1
[[ ! -e $folder ]] || die "$folder is there already"
use_one_language
version=$(release_version)

timer="{$(grep -B 1 'coclass KWOTimer$' "$KWO_ROOT/src/com/kwoutil.idl" | sed -n 's/.*uuid(\(.*\)).*/\1/p')}"
# as_windows_text SOURCE TARGET: what Windows users open: lines end with CR LF, and the version and the class identifier of
# the timer are filled in.
as_windows_text() { sed -e "s/@VERSION@/$version/g" -e "s/@TIMER@/$timer/g" -e 's/\r*$/\r/' "$1" >"$2"; }

mkdir -p "$folder"
for preset in x64 x86; do
    [[ -f $KWO_ROOT/dist/$preset/KWOUtil.dll ]] || die "there is no dist/$preset/KWOUtil.dll: ./run --build"
    mkdir "$folder/$preset"
    for file in KWOUtil.dll KWOInit.dll KWOInit.nls KWOUtil.X.manifest KWOInit.X.manifest kwohost.exe kwocheck.exe; do
        cp "$KWO_ROOT/dist/$preset/$file" "$folder/$preset/"
    done
done
as_windows_text "$KWO_ROOT/packaging/README.txt" "$folder/README.txt"
as_windows_text "$KWO_ROOT/packaging/installed.txt" "$folder/installed.txt"
as_windows_text "$KWO_ROOT/LICENSE" "$folder/LICENSE.txt"
as_windows_text "$KWO_ROOT/packaging/install.cmd" "$folder/install.cmd"
as_windows_text "$KWO_ROOT/packaging/uninstall.cmd" "$folder/uninstall.cmd"

# For C and C++. The generator's first line names the folder of the build.
mkdir -p "$folder/sdk/x64" "$folder/sdk/x86"
generated=$KWO_ROOT/build/x64/src/com
for file in kwoutil.h kwoutil_i.c; do
    sed -e "1s|^/\*.*\*/\$|/* KWOUtil $version: made from kwoutil.idl */|" -e 's/\r*$/\r/' "$generated/$file" >"$folder/sdk/$file"
    ! grep -nF "$KWO_ROOT" "$folder/sdk/$file" || die "$file names a folder of this machine"
done
"$KWO_ROOT/tools/package/flatten_idl.pl" "${version%.*}" "$KWO_ROOT/src" com/kwoutil.idl >"$folder/sdk/kwoutil.idl"
for preset in x64 x86; do
    cp "$KWO_ROOT/build/$preset/src/com/kwoutil.tlb" "$folder/sdk/$preset/KWOUtil.tlb"
done

mkdir -p "$folder/samples/clients"
for file in "$KWO_ROOT"/samples/*.{vbs,js} "$KWO_ROOT"/samples/clients/*; do
    as_windows_text "$file" "$folder/${file#"$KWO_ROOT/"}"
done
cp "$KWO_ROOT"/samples/*.ico "$folder/samples/"

# The tests, for whoever has a Windows to run them on.
mkdir -p "$folder/tests/x64" "$folder/tests/x86"
as_windows_text "$KWO_ROOT/packaging/run_tests.cmd" "$folder/tests/run_tests.cmd"
cp "$KWO_ROOT/README.md" "$folder/tests/"
for preset in x64 x86; do
    strip=x86_64-w64-mingw32-strip
    [[ $preset == x64 ]] || strip=i686-w64-mingw32-strip
    # With a manifest beside it. The others must not meet that one.
    mkdir "$folder/tests/$preset/manifest"
    cp "$KWO_ROOT/dist/$preset/KWOUtil.X.manifest" "$folder/tests/$preset/manifest/"
    for file in src/com/com_unit_tests tests/contract/contract_tests kwohost/tests/kwohost_tests \
        tests/com/kwoinit/kwoinit_com_tests tests/com/faults/import_fault_tests tests/com/com_tests \
        'tests/com/second program'; do
        program=$folder/tests/$preset/${file##*/}.exe
        # The linker's signature is a hash that depends on the folder of the build.
        perl -0777 -pe 's/RSDS\K.{16}(?=\x01\0{4})/"\0" x 16/se' "$KWO_ROOT/build/$preset/$file.exe" >"$program"
        # It would write a time into the header: this one means none.
        SOURCE_DATE_EPOCH=0 "$strip" "$program"
    done
    mv "$folder/tests/$preset/com_unit_tests.exe" "$folder/tests/$preset/manifest/"
done

[[ $manual == no ]] || "$KWO_ROOT/tools/package/make_manual.py" "$version" "$KWO_ROOT" "$folder/docs"

# What is linked in statically, with its licenses.
mkdir "$folder/licenses"
copy_licenses "$folder/licenses"
"$KWO_ROOT/tools/package/make_sbom.py" "$version" "$(release_time)" "$folder" >"$folder/sbom.cdx.json"

# No file of the package names a folder of the machine that made it.
if grep -rlaF -e "$KWO_ROOT" "$folder"; then die 'the files above name a folder of this machine'; fi
find "$folder" -type d -exec chmod 755 {} +
find "$folder" -type f -exec chmod 644 {} +
find "$folder" -exec touch -h -d "@$(release_time)" {} +
