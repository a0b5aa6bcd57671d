#!/bin/sh
# Builds the Debian packages, for amd64 and for i386, in build/package/:
#
#   scripts/package.sh
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
need cmake g++-multilib make
umask 022 # the folders of a package are for everybody, whoever builds it

rm -rf build/package
for preset in release release-x86; do
    build "$preset"
    cpack --config "build/$preset/CPackConfig.cmake" -B build/package >&2
done
rm -r build/package/_CPack_Packages
ls build/package/*.deb
