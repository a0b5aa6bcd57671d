#!/bin/sh
# Runs the tests and prints how much of src/ they reach: the figures of each file, then every line
# that was never run and every line with a branch that was never taken, then one line that sums it
# up. Left out are the tests of failed allocations, since the counters need memory of their own, and
# the two cases with an output of limited size, in which the counters cannot be written either. So
# the list also holds the lines that only these tests reach, those that run only in the compiler,
# and what the base list does with a device, which it cannot find.
#
#   scripts/coverage.sh
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
need cmake make clang llvm libclang-rt-dev libgmock-dev

rm -rf build/coverage/profiles
build coverage
ctest --preset coverage >&2

top=$(pwd)
cd build/coverage
# A run whose files are limited to a few bytes leaves a profile that is cut short. Only this one
# does not count.
llvm-profdata merge --failure-mode=all -o all.profdata profiles
# The runs of all these programs count together.
set -- -instr-profile=all.profdata -ignore-filename-regex="^$top/(tests|examples|fuzz|tools)/" \
    slotrpt -object tests/slotrpt_tests -object tests/slotrpt_edit \
    -object examples/inied -object examples/params \
    -object fuzz/fuzz_ini -object fuzz/fuzz_run -object fuzz/fuzz_string -object fuzz/fuzz_args
llvm-cov report "$@" | sed "s#$top/##" >figures
cat figures

echo
echo "Never run, or never taken:"
llvm-cov export "$@" -format=lcov | awk -v top="$top/" '
    function place(line) { return file ":" line }
    /^SF:/ { file = substr($0, 4); sub(top, "", file) }
    /^DA:/ { split(substr($0, 4), f, ","); if (f[2] == 0) print place(f[1]) ": line" }
    /^BRDA:/ { split(substr($0, 6), f, ","); if (f[4] == 0 || f[4] == "-") print place(f[1]) ": branch" }
' | sort -t: -k1,1 -k2,2n -u

echo
awk '$1 == "TOTAL" { print "coverage: " $10 " of the lines, " $13 " of the branches" }' figures
