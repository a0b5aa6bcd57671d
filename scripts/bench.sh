#!/bin/sh
# usage: scripts/bench.sh
# Measures whole runs of the release program beside the same conversion in awk and the start of a
# process (/bin/true), then the operations underneath with Google Benchmark. Takes under three
# minutes and judges nothing but that the program and the awk version print the same bytes.
#
# The commands of a table run in turn, round after round, so that whatever else the machine does
# falls on all of them. CPU is user and system time together: the figure to compare.
set -eu
cd "$(dirname "$0")/.."
export LC_ALL=C

. scripts/lib.sh

need cmake g++ hyperfine libbenchmark-dev make mawk valgrind
echo "== Building"
build release
build bench
slotrpt=build/release/slotrpt
data=build/bench/data
rm -rf "$data"
mawk -v out="$data" -f bench/mkdata.awk
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

useCD() { export RWCD="$data/$1/cd"; }

mustAgree() { # detection file
    "$slotrpt" "/rwpm:$1" >"$work/got"
    mawk -f bench/convert.awk "$1" | cmp -s - "$work/got" || {
        echo "bench.sh: slotrpt and bench/convert.awk differ on $1" >&2
        exit 1
    }
}

# Times /bin/true, the awk version and slotrpt, whose command lines are given, and prints a table.
compare() { # name, rounds, runs of a round, three command lines
    name=$1 rounds=$2 runs=$3
    : >"$work/times"
    while [ "$rounds" -gt 0 ]; do
        hyperfine -N --style none -r "$runs" --export-csv "$work/round" -n /bin/true "$4" \
            -n "awk version" "$5" -n slotrpt "$6" >/dev/null 2>"$work/errors" || {
            cat "$work/errors" >&2
            exit 1
        }
        sed 1d "$work/round" >>"$work/times"
        rounds=$((rounds - 1))
    done
    # Columns: command, mean, stddev, median, user, system, min, max.
    awk -F, -v name="$name" '
        { wall[$1] += $4; cpu[$1] += $5 + $6; rounds[$1]++ }
        END {
            split("/bin/true,awk version,slotrpt", order, ",")
            for (i = 1; i <= 3; ++i) {
                c = order[i]
                printf "%-9s %-12s %10.2f %10.2f %10.2f x\n", name, c, 1000 * wall[c] / rounds[c],
                       1000 * cpu[c] / rounds[c], cpu["slotrpt"] / cpu[c]
            }
        }' "$work/times"
}

echo
echo "== Whole runs"
printf "%-9s %-12s %10s %10s %12s\n" data command "wall ms" "CPU ms" "slotrpt is"
for row in "typical 10 60" "large 6 8" "huge 3 2"; do
    # shellcheck disable=SC2086 # three words
    set -- $row
    useCD "$1"
    scan=$data/$1/scan.ini
    mustAgree "$scan"
    compare "$@" /bin/true "mawk -f bench/convert.awk $scan" "$slotrpt /rwpm:$scan"
done

useCD typical
ls "$data"/fleet/*.ini >"$work/fleet"
for scan in "$data"/fleet/scan*00.ini; do mustAgree "$scan"; done
each="xargs -a $work/fleet -P2 -I{}"
compare fleet 2 1 "$each /bin/true {}" "$each mawk -f bench/convert.awk {}" \
    "$each $slotrpt /rwpm:{}"
echo "(fleet: 2,000 files, a process each, two at a time)"

echo
echo "== Instructions (callgrind, the same on every run), millions"
instructions() { # data, name, command line
    printf "%-9s %-12s " "$1" "$2"
    shift 2
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$@" 2>&1 >/dev/null |
        awk '/Collected/ { printf "%10.2f\n", $NF / 1e6 }'
}
for set in typical large; do
    useCD "$set"
    scan=$data/$set/scan.ini
    instructions "$set" "awk version" mawk -f bench/convert.awk "$scan"
    instructions "$set" slotrpt "$slotrpt" "/rwpm:$scan"
done

echo
echo "== Operations"
build/bench/bench/slotrpt_bench --benchmark_min_time=0.1
