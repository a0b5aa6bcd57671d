#!/bin/sh
# usage: scripts/fuzz.sh ini|run|string|args [SECONDS]
# Runs a fuzz target on a copy of its corpus, for SECONDS or for a minute. Prints how many inputs it
# tried and how many edges they reached. If it finds a fault, it shows the end of the log, keeps the
# input and fails. The target "run" also compares reports with those of the 32-bit release: for each
# 16th input during the run, and at the end for every input that reached something new.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
target=${1:-}
seconds=${2:-60}
[ -d "fuzz/corpus/${target:-none}" ] || {
    sed -n '2s/^# //p' "$0" >&2
    exit 2
}

need cmake make clang libclang-rt-dev
build fuzz
set --
case $target in
ini) set -- -dict=fuzz/ini.dict ;;
run)
    set -- -dict=fuzz/ini.dict
    need g++-multilib
    build release-x86
    ;;
esac

kept=$(mktemp -d)              # the corpus as it grows, the log, a finding
files=$(mktemp -d -p /dev/shm) # what the inputs write, in memory
trap 'rm -rf "$files"' EXIT
cp -r "fuzz/corpus/$target" "$kept/corpus"
if [ "$target" = run ]; then
    export SLOTRPT_X86=build/release-x86/slotrpt
    canRun32 || {
        printf '#!/bin/sh\nexec %s %s "$@"\n' "$(findEmulator)" "$SLOTRPT_X86" >"$kept/slotrpt-x86"
        chmod +x "$kept/slotrpt-x86"
        SLOTRPT_X86=$kept/slotrpt-x86
    }
fi

fuzz() { # the number of inputs for each comparison, option...
    step=$1
    shift
    env TMPDIR="$files" SLOTRPT_X86_STEP="$step" \
        "build/fuzz/fuzz/fuzz_$target" "$kept/corpus" -rss_limit_mb=4096 -timeout=20 \
        -artifact_prefix="$kept/" "$@" >>"$kept/log" 2>&1 || {
        tail -n 60 "$kept/log" >&2
        echo "fuzz.sh: finding in $target, see $kept" >&2
        exit 1
    }
}
fuzz 16 -max_total_time="$seconds" "$@"
[ "$target" != run ] || fuzz 1 -runs=0

awk -v target="$target" -v seconds="$seconds" '
    /Loaded 1 modules/ { gsub(/[^0-9 ]/, ""); edges = $2 }
    $2 == "DONE" && !inputs { inputs = substr($1, 2); reached = $4 }
    END { print target ": " inputs " inputs in " seconds " s, " reached " of " edges " edges" }
' "$kept/log"
rm -rf "$kept"
