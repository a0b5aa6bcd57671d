#!/bin/sh
# Prints the report of the example machine, or of the detection file FILE:
#
#   scripts/example.sh [FILE]
#
# The example has its own product CD. For a FILE, RWCD may name another one.
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)

# The run itself stays in the caller's folder, where FILE and RWCD are found.
(
    cd "$top"
    . scripts/lib.sh
    need cmake g++ make
    build release
)
example_cd=$top/examples/cd
if [ $# -eq 0 ]; then
    RWCD=$example_cd exec "$top/build/release/slotrpt" "/rwpm:$top/examples/alpha.ini"
fi
RWCD=${RWCD:-$example_cd} exec "$top/build/release/slotrpt" "/rwpm:$1"
