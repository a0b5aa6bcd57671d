#!/bin/sh
# usage: .ci/check-own-machine.sh
# Scans this machine: slotrpt-explain must show a device entry for each function of lspci.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
need pciutils
build release

functions=$(lspci | wc -l)
if [ "$functions" -eq 0 ]; then
    skip "the scan of this machine, since lspci shows nothing"
    exit
fi
scan=$(mktemp)
trap 'rm "$scan"' EXIT
build/release/slotrpt-scan >"$scan"
entries=$(RWCD=examples/cd build/release/slotrpt-explain "$scan" | sed -n 's/ device entries: .*//p')
[ "$entries" = "$functions" ] || fail "lspci shows $functions functions, slotrpt-explain $entries"
echo "this machine: $entries functions"
