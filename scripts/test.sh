#!/bin/sh
# Builds and runs the tests, with a preset other than "debug" if one is named:
#
#   scripts/test.sh [debug | clang | sanitize | x86 | x86-sanitize]
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

preset=${1:-debug}
need cmake g++ make googletest
case $preset in
    clang) need clang ;;
    x86*) need g++-multilib ;;
esac
build "$preset"
ctest --preset "$preset"
