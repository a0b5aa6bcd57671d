#!/bin/sh
# Gives each adapter that slotrpt-explain finds missing a name, pastes the lines into a copy of the
# example's CD, explains the machine again, and prints its report:
#
#   paste_test.sh SLOTRPT_EXPLAIN SLOTRPT
set -eu

examples=$(cd ../../examples && pwd)
cd=$(mktemp -d)
trap 'rm -rf "$cd"' EXIT
export RWCD="$cd"
cp -R "$examples/cd/." "$cd"
"$1" --missing "$examples/alpha.ini" >"$cd/lines" || echo "status $?"
awk '/ = $/ { $0 = $0 "PASTED_" ++count } { print }' "$cd/lines" >"$cd/named"
sed "/^\[PCIIDMap\]/r $cd/named" "$examples/cd/rwise/ini/syscfg.ini" >"$cd/rwise/ini/syscfg.ini"

"$1" "$examples/alpha.ini" | tail -n 1
"$1" --missing "$examples/alpha.ini"
# All that are read have names, but one is not read.
sed 's/^Total_Number_Of_Devices = 9/Total_Number_Of_Devices = 8/' "$examples/alpha.ini" >"$cd/eight"
"$1" --missing "$cd/eight" || echo "status $?"
"$2" "/rwpm:$examples/alpha.ini"
