#!/bin/sh
# Given to GCC as its `-wrapper`: links with lld, which takes a second where GCC's own linker takes a minute for a
# program of tests. GCC offers no option for it when it was built for another linker.
case $1 in
*/collect2) ;;
*) exec "$@" ;;
esac
shift
for argument; do
    shift
    case $argument in
    -plugin) skip=yes ;;
    -plugin-opt=* | -fno-lto) ;;
    *)
        [ -n "$skip" ] || set -- "$@" "$argument"
        skip=
        ;;
    esac
done
exec ld.lld "$@"
