#!/bin/sh
# A folder with names of every kind and a file that fails; then a converter that stops half-way,
# which leaves the reports alone.
set -eu

examples=$(cd .. && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
mkdir -- '-the fleet'
for name in '-a b' 'two
lines'; do cp "$examples/alpha.ini" "./-the fleet/$name.ini"; done
echo '[System]' >'./-the fleet/empty.ini'
printf '#!/bin/sh\necho "[MACH]"\n' >half
chmod +x half

result=0
export RWCD="$examples/cd"
SLOTRPT=$1 "$examples/fleet.sh" '-the fleet' 2 || result=$?
rm './-the fleet/empty.ini' './-the fleet/-a b.ini'
SLOTRPT=./half "$examples/fleet.sh" '-the fleet' || result=$result$?
for file in './-the fleet'/*; do echo "$file"; done
for report in './-the fleet'/*.report; do cmp "$report" "$examples/alpha.report"; done
exit "$result"
