#!/bin/sh
# Measures the release program and prints the tables of doc/performance.md, ready to be pasted. Also
# draws the chart of that document, doc/performance.svg:
#
#   scripts/bench.sh >build/figures.md
#
# The tables of runs compare three commands: the start of a process (/bin/true), the same conversion
# in awk (bench/convert.awk) and slotrpt. They take turns, so that other work on the machine slows
# all of them alike. CPU time is user and system time together, which other work disturbs least.
# The script judges no figure. It fails if slotrpt and the awk version print different bytes.
set -eu
cd "$(dirname "$0")/.."
export LC_ALL=C

. scripts/lib.sh

say() { echo "bench.sh: $*" >&2; }

need cmake g++ gnuplot-nox hyperfine libbenchmark-dev make mawk time valgrind
say "building"
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
        say "slotrpt and bench/convert.awk differ on $1"
        exit 1
    }
}

# Prints the CPU time in ms of three command lines, which take turns in each round.
measure() { # rounds, runs in a round, three command lines
    rounds=$1
    : >"$work/times"
    while [ "$rounds" -gt 0 ]; do
        hyperfine -N --style none -r "$2" --export-csv "$work/round" "$3" "$4" "$5" \
            >/dev/null 2>"$work/errors" || {
            cat "$work/errors" >&2
            exit 1
        }
        sed 1d "$work/round" >>"$work/times"
        rounds=$((rounds - 1))
    done
    # Columns of hyperfine: command, mean, stddev, median, user, system, min, max.
    awk -F, '{ cpu[NR % 3] += 1000 * ($5 + $6) }
        END { rounds = NR / 3; print cpu[1] / rounds, cpu[2] / rounds, cpu[0] / rounds }' \
        "$work/times"
}

measureScan() { # rounds, runs in a round, detection file
    mustAgree "$3"
    measure "$1" "$2" /bin/true "mawk -f bench/convert.awk $3" "$slotrpt /rwpm:$3"
}

peakMemory() { # detection file
    env time -f %M -o "$work/memory" "$slotrpt" "/rwpm:$1" >"$work/got"
    cat "$work/memory"
}

instructions() { # command line
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$@" 2>&1 >/dev/null |
        awk '/Collected/ { print $NF / 1e6 }'
}

# ---------------------------------------------------------------- The chart and its table

# A row: the number of functions, the rounds, and the runs in a round on the small and on the large
# CD. Short runs are repeated more often.
for row in "1 4 25 8" "4 4 25 8" "16 4 25 8" "64 4 20 6" "256 4 8 4" "1024 3 2 2" "4096 2 1 1"; do
    # shellcheck disable=SC2086 # four words
    set -- $row
    say "$1 functions"
    useCD typical
    onTypical=$(measureScan "$2" "$3" "$data/typical/functions/$1.ini")
    useCD large
    onLarge=$(measureScan "$2" "$4" "$data/large/functions/$1.ini")
    echo "$1 $onTypical $onLarge"
done >"$work/series"
gnuplot -e "series = '$work/series'; set output 'doc/performance.svg'" bench/chart.gnuplot
awk -f bench/tables.awk -v table=series "$work/series"

# ---------------------------------------------------------------- Whole runs

for row in "typical 10 60" "large 6 8" "huge 3 2"; do
    # shellcheck disable=SC2086 # three words
    set -- $row
    say "$1"
    useCD "$1"
    scan=$data/$1/scan.ini
    echo "$1 $(measureScan "$2" "$3" "$scan") $(peakMemory "$scan")"
done >"$work/runs"
say "fleet"
useCD typical
ls "$data"/fleet/*.ini >"$work/fleet"
for scan in "$data"/fleet/scan*00.ini; do mustAgree "$scan"; done
each="xargs -a $work/fleet -P2 -I{}"
echo "fleet $(measure 2 1 "$each /bin/true {}" "$each mawk -f bench/convert.awk {}" \
    "$each $slotrpt /rwpm:{}")" >>"$work/runs"
awk -f bench/tables.awk -v table=runs "$work/runs"

say "instructions"
for set in typical large; do
    useCD "$set"
    scan=$data/$set/scan.ini
    echo "$set $(instructions mawk -f bench/convert.awk "$scan")" \
        "$(instructions "$slotrpt" "/rwpm:$scan")"
done >"$work/instructions"
awk -f bench/tables.awk -v table=instructions "$work/instructions"

# ---------------------------------------------------------------- Operations

say "operations"
build/bench/bench/slotrpt_bench --benchmark_min_time=0.1 --benchmark_format=csv \
    2>"$work/errors" >"$work/operations" || {
    cat "$work/errors" >&2
    exit 1
}
awk -F, -f bench/tables.awk -v table=operations "$work/operations"
