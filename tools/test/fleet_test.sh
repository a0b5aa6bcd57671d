#!/bin/sh
# A folder with names of every kind and a file that fails; then what may go wrong:
#
#   fleet_test.sh SLOTRPT_FLEET SLOTRPT
set -eu

fleet() {
    result=0
    "$program" -- "$@" || result=$?
    echo "status $result"
}

# A converter that writes the beginning of a report and then runs the command.
converter() {
    printf '#!/bin/sh\necho "[MACH]"\n%s\n' "$2" >"$1"
    chmod +x "$1"
}

program=$1
examples=$(cd ../../examples && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
export RWCD="$examples/cd" SLOTRPT="$2"
mkdir -- '-the *fleet' none
for name in '-a b' 'two
lines' .hidden; do cp "$examples/alpha.ini" "./-the *fleet/$name.ini"; done
echo '[System]' >'./-the *fleet/empty.ini'

echo "== One file holds no adapters"
fleet '-the *fleet' 2
echo "== The converter complains once, and stops half-way; the reports of the run before stay"
rm './-the *fleet/empty.ini'
# shellcheck disable=SC2016 # the argument of that script
converter half 'case $1 in *-a*) echo "a bad day" >&2 ;; esac'
SLOTRPT=./half fleet '-the *fleet' 1
echo "== It complains, or is killed"
rm './-the *fleet/-a b.ini'
converter worried 'printf "\n out of order\nmore\n" >&2'
SLOTRPT=./worried fleet '-the *fleet'
converter killed 'kill -9 $$'
SLOTRPT=./killed fleet '-the *fleet'
echo "== The run is ended meanwhile"
# shellcheck disable=SC2016 # the process of that script
converter slow 'kill -TERM $PPID; exec sleep 60'
(SLOTRPT=./slow fleet '-the *fleet') 2>/dev/null # the shell says "Terminated"
echo "== Nothing else is left"
for file in './-the *fleet'/* './-the *fleet'/.[!.]*; do echo "$file"; done
for report in './-the *fleet'/*.report; do cmp "$report" "$examples/alpha.report"; done

echo "== The name of the report is taken"
cp "$examples/alpha.ini" none/x.ini
mkdir none/x.report
fleet none
echo "== On a terminal"
rmdir none/x.report
script -qec "'$program' none" /dev/null </dev/null | tr -d '\n' | tr '\r' '\n'
echo "== Nothing can be done"
SLOTRPT=./no-such-program fleet none
rm none/*
fleet none
fleet no-such-folder
fleet none 0 2>&1 | sed -n '1p;$p'
