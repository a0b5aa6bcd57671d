#!/bin/sh
# What ends slotrpt-explain, whose path is the argument, without a table: each line is a message,
# or the exit status of the run before it.
set -eu

explain() {
    result=0
    "$program" "$@" || result=$?
    echo "status $result"
}

program=$1
export RWCD=cd
explain no-such-file
explain /dev/zero
explain "$(printf 'a\033[1mb')"
explain --missing --pci-ids=no-such-list explain.ini
"$program" --version >/dev/full || echo "status $?"
RWCD=nowhere explain explain.ini
unset RWCD
explain explain.ini

# More adapters than memory holds: the CD names each entry, and the file says that there are many.
many=$(mktemp)
trap 'rm -f "$many"' EXIT
printf '[PCI]\nTotal_Number_Of_Devices = 2000000000\n' >"$many"
RWCD=ghost-cd explain "$many" 2>&1 | grep -e '^Memory Allocation Error$' -e '^status'

explain one two 2>&1 | sed -n '1p;$p'
