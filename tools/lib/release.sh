# shellcheck shell=bash
# What a release is called, how old it is, and whose code is in it.

# The version is the one of CMakeLists.txt.
release_version() { sed -n 's/^project(KWOUtil VERSION \([0-9.]*\) .*/\1/p' "$KWO_ROOT/CMakeLists.txt"; }

# release_time: seconds since 1970; those of the commit, unless SOURCE_DATE_EPOCH says otherwise.
release_time() {
    if [[ -n ${SOURCE_DATE_EPOCH:-} ]]; then printf '%s\n' "$SOURCE_DATE_EPOCH"; else git -C "$KWO_ROOT" log -1 --format=%ct; fi
}

# copy_licenses FOLDER: of what is linked into the DLLs and programs.
copy_licenses() {
    sed 's/\r*$/\r/' /usr/share/doc/gcc-mingw-w64-base/copyright >"$1/gcc.txt"
    sed 's/\r*$/\r/' /usr/share/doc/mingw-w64-common/copyright >"$1/mingw-w64.txt"
    sed 's/\r*$/\r/' /usr/share/doc/googletest/copyright >"$1/googletest.txt"
    sed 's/\r*$/\r/' /usr/share/common-licenses/GPL-3 >"$1/GPL-3.txt"
}
