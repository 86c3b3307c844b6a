# shellcheck shell=bash
# The Debian packages behind the commands: each with a command or a file that proves it is there, so that a tool which
# came from elsewhere counts too.

KWO_BUILD_PACKAGES=(
    'cmake cmake'
    'ninja-build ninja'
    'g++ g++'
    'g++-mingw-w64-x86-64-win32 x86_64-w64-mingw32-g++-win32'
    'g++-mingw-w64-i686-win32 i686-w64-mingw32-g++-win32'
    'mingw-w64-tools x86_64-w64-mingw32-widl'
    'libwine-dev /usr/include/wine/wine/windows/oaidl.idl'
    'libwine /usr/lib/x86_64-linux-gnu/wine/x86_64-windows/stdole2.tlb'
    'googletest /usr/src/googletest/CMakeLists.txt'
)
# Without these the build works, but slowly.
KWO_QUICK_BUILD_PACKAGES=(
    'lld ld.lld'
)
KWO_WINE_PACKAGES=(
    'wine wine'
    'wine64 /usr/lib/wine/wine64'
    'xvfb Xvfb'
    'xauth xauth'
    'fonts-wine /usr/share/wine/fonts/tahoma.ttf'
    'fonts-liberation /usr/share/fonts/truetype/liberation'
    'xdotool xdotool'
    'imagemagick identify'
    'locales /usr/share/i18n/locales/ja_JP'
)
# What compiles the samples in other languages. npm brings a .NET runtime for Windows.
KWO_CLIENT_PACKAGES=(
    'mono-mcs mcs'
    'npm npm'
    'python3 python3'
    'rustc /usr/bin/rustc'
    'libstd-rust-dev-windows /usr/lib/rustlib/x86_64-pc-windows-gnu/lib'
)
KWO_LINT_PACKAGES=(
    'git git'
    'clang clang++'
    'clang-format clang-format'
    'clang-tidy clang-tidy'
    'shellcheck shellcheck'
    'lld ld.lld'
    'perl perl'
    'python3 python3'
)
# Only the 32-bit Wine tree needs them, and it may be missing.
KWO_WINE32_PACKAGES=(
    'debootstrap /usr/sbin/debootstrap'
    'libc6-i386 /lib/ld-linux.so.2'
)
KWO_BENCH_PACKAGES=(
    'libbenchmark-dev /usr/include/benchmark/benchmark.h'
    'libspdlog-dev /usr/include/spdlog/spdlog.h'
    'libuv1-dev /usr/include/uv.h'
    'libevent-dev /usr/include/event2/event.h'
)
# What puts the package together.
KWO_PACKAGE_PACKAGES=(
    'git git'
    'perl perl'
    'python3 python3'
    'wixl wixl'
    'msitools msibuild'
    'pandoc pandoc'
    'zip zip'
    'unzip unzip'
)
# What checks the bill of materials and the manual; npm brings the schema and a parser.
KWO_BILL_PACKAGES=(
    'npm npm'
    'python3-jsonschema /usr/lib/python3/dist-packages/jsonschema'
)
KWO_COVERAGE_PACKAGES=(
    'libclang-rt-14-dev /usr/lib/llvm-14/lib/clang/14.0.6/lib/linux/libclang_rt.profile-x86_64.a'
    'llvm llvm-cov'
    'python3 python3'
)
KWO_SHELL_COVERAGE_PACKAGES=(
    'gcovr gcovr'
    'lld ld.lld'
    'python3 python3'
)
KWO_MUTANTS_PACKAGES=(
    'python3-clang-14 /usr/lib/python3/dist-packages/clang/cindex.py'
)
KWO_FUZZ_PACKAGES=(
    'clang clang++'
    'libclang-rt-14-dev /usr/lib/llvm-14/lib/clang/14.0.6/lib/linux/libclang_rt.fuzzer-x86_64.a'
    'llvm llvm-symbolizer'
)

is_there() {
    if [[ $1 == /* ]]; then [[ -e $1 ]]; else command -v "$1" >/dev/null; fi
}

# missing_packages ROW...: the names of those that are not there, one a line.
missing_packages() {
    local row
    for row in "$@"; do is_there "${row#* }" || printf '%s\n' "${row%% *}"; done
}

install_line() { printf 'apt-get install --no-install-recommends -y %s\n' "$*"; }

can_install() { ((EUID == 0)) && command -v apt-get >/dev/null; }

install_packages() {
    # A source that does not answer matters only when the packages then cannot be had.
    # shellcheck disable=SC2016
    step "installing $*" env DEBIAN_FRONTEND=noninteractive bash -c '
        apt-get -o DPkg::Lock::Timeout=300 update || echo "not every package source answered"
        exec apt-get -o DPkg::Lock::Timeout=300 install --no-install-recommends -y "$@"' install "$@"
}

# need_packages ROW...: ends the command when something is missing and cannot be installed.
need_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]} == 0)) && return
    if ! can_install; then
        printf 'These packages are missing. Type:\n    sudo %s\n' "$(install_line "${missing[@]}")" >&2
        exit 1
    fi
    install_packages "${missing[@]}" || exit 1
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]} == 0)) || die "installed, and still not found: ${missing[*]}"
}
