#!/bin/sh
# Builds and runs the tests, with a preset other than "debug" if one is named:
#
#   scripts/test.sh [debug | clang | sanitize | x86 | x86-sanitize]
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

preset=${1:-debug}
need cmake g++ make libgmock-dev
case $preset in
    clang) need clang ;;
    x86*) need g++-multilib ;;
esac
# The leak sanitizer inspects the process from another one. Under an emulator, this never ends.
if [ "$preset" = x86-sanitize ] && ! canRun32; then
    skip "leaks in 32-bit programs, which this kernel does not run and an emulator cannot search"
    export LSAN_OPTIONS=detect_leaks=0
fi
build "$preset"
ctest --preset "$preset"
