#!/bin/sh
# usage: scripts/try-fleet.sh [FILES]
# Tries slotrpt-fleet on a folder of FILES small detection files, 100,000 by default. The parts:
#
#   1. slotrpt-fleet and the converter under xargs take turns on a tenth of the files. Prints the
#      rate of each.
#   2. A run on the whole folder is interrupted half-way.
#   3. A run converts the whole folder. Prints its time and its memory.
#
# After each run of slotrpt-fleet, every report must be complete, and nothing else may be left.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
need cmake coreutils g++ make time
files=${1:-100000}
jobs=$(nproc)
build release

work=$(mktemp -d -p /dev/shm)
trap 'rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM
cp build/release/slotrpt build/release/slotrpt-fleet "$work"
export RWCD="$PWD/examples/cd"
cd "$work"

# Every machine is the same: a disk controller and a video adapter.
make() { # FOLDER, how many
    mkdir "$1"
    awk -v folder="$1" -v files="$2" 'BEGIN {
        for (i = 0; i < files; ++i) {
            file = sprintf("%s/machine%07d.ini", folder, i)
            print "[System]\nMachine_Type = MT01\n\n[PCI]\nTotal_Number_Of_Devices = 2" > file
            print "Vendor_ID.0 = 1A2B\nDevice_ID.0 = 00C0\nBus_Number.0 = 1" > file
            print "Vendor_ID.1 = 5E6F\nDevice_ID.1 = 4752\nDevice_Number.1 = 6" > file
            close(file)
        }
    }'
}

# Fails unless the folder holds its detection files, at least the given number of complete reports,
# and nothing else.
check() { # FOLDER, detection files, least number of reports
    reports=$(find "$1" -name '*.report' | wc -l)
    if [ "$reports" -lt "$3" ] || [ "$(find "$1" -type f | wc -l)" -ne $(($2 + reports)) ]; then
        echo "try-fleet.sh: there are $reports reports of $3, and these other files:" >&2
        find "$1" -type f ! -name 'machine*.ini' ! -name 'machine*.report' >&2
        exit 1
    fi
    find "$1" -name '*.report' -exec cksum {} + | cut -d ' ' -f 1,2 | sort -u | cmp - whole
}

seconds() { cut -d ' ' -f 1 /proc/uptime; }

echo "== The rate, $jobs jobs, $((files / 10)) files"
make tenth $((files / 10))
./slotrpt /rwpm:tenth/machine0000000.ini | cksum | cut -d ' ' -f 1,2 >whole
for round in 1 2 3; do
    start=$(seconds)
    printf '%s\0' tenth/*.ini | xargs -0 -P "$jobs" -I '{}' ./slotrpt '/rwpm:{}' >/dev/null
    middle=$(seconds)
    ./slotrpt-fleet tenth "$jobs" >/dev/null
    end=$(seconds)
    echo "$start $middle $end" | awk -v round="$round" -v files=$((files / 10)) '{
        printf "round %d: xargs %6.0f files/s, slotrpt-fleet %6.0f files/s: %.2f times that\n",
               round, files / ($2 - $1), files / ($3 - $2), ($2 - $1) / ($3 - $2)
    }'
    check tenth $((files / 10)) $((files / 10))
    find tenth -name '*.report' -delete
done

echo "== The run is interrupted half-way, $files files"
make all "$files"
# A shell makes its background jobs ignore SIGINT, so env sets it back to the default.
env --default-signal=INT ./slotrpt-fleet all "$jobs" &
while kill -0 $! && [ "$(find all -name '*.report' | wc -l)" -lt $((files / 2)) ]; do sleep 1; done
kill -INT $!
result=0
wait $! || result=$?
echo "status $result, $(find all -name '*.report' | wc -l) reports"
check all "$files" $((files / 2))

echo "== The whole run"
command time -f '%e s, %U s user, %S s system, %M KiB at most' ./slotrpt-fleet all "$jobs"
check all "$files" "$files"
