#!/bin/sh
# Measures the release program and prints the tables of doc/performance.md. Also draws the chart of
# that document, doc/performance.svg:
#
#   scripts/bench.sh >build/figures.md
#
# The script judges no figure. It fails if slotrpt and the same conversion in awk,
# bench/convert.awk, print different bytes.
set -eu
cd "$(dirname "$0")/.."
export LC_ALL=C
. scripts/lib.sh

need cmake g++ gnuplot-nox hyperfine libbenchmark-dev make mawk
build release
build bench
data=build/bench/data
rm -rf "$data"
mawk -v out="$data" -f bench/mkdata.awk
awk="mawk -f bench/convert.awk"
slotrpt="build/release/slotrpt"
fleet="build/release/slotrpt-fleet"

# measure OPTION...: runs hyperfine, which says on standard error how far it is.
measure() { hyperfine -N --warmup 1 "$@" >&2; }

for cd in large small; do
    export RWCD="$data/$cd/cd"
    for scan in "$data/$cd"/*.ini; do
        $awk "$scan" >"$data/expected"
        "$slotrpt" "/rwpm:$scan" | cmp - "$data/expected"
    done
    machine="$data/$cd/{functions}.ini"
    set -- --runs 5 --parameter-list functions 1,4,16,64,256,1024,4096
    measure "$@" --export-csv "$data/$cd-awk.csv" "$awk $machine"
    measure "$@" --export-csv "$data/$cd-slotrpt.csv" "$slotrpt /rwpm:$machine"
done
gnuplot -e "data = '$data'; set output 'doc/performance.svg'" bench/chart.gnuplot

# The small CD is in use from here on.
measure --export-markdown "$data/machine.md" \
    --command-name "start of a process" /bin/true \
    --command-name "slotrpt" "$slotrpt /rwpm:$data/small/24.ini" \
    --command-name "awk" "$awk $data/small/24.ini"
each="xargs -a $data/scans -P$(nproc) -I{}"
ls "$data"/fleet/*.ini >"$data/scans"
measure --runs 3 --export-markdown "$data/fleet.md" \
    --command-name "slotrpt-fleet" "$fleet $data/fleet" \
    --command-name "xargs slotrpt" "$each $slotrpt /rwpm:{}" \
    --command-name "xargs awk" "$each $awk {}"
for scan in "$data"/fleet/*00.ini; do $awk "$scan" | cmp - "${scan%.ini}.report"; done
cat "$data/machine.md" "$data/fleet.md"

build/bench/bench/slotrpt_bench --benchmark_min_time=0.2
