#!/bin/sh
# Runs a command and compares both its outputs, in one stream, and its exit status:
#
#   expect.sh STATUS FILE COMMAND...
set -eu

status=$1 expected=$2
shift 2
actual=$(mktemp)
trap 'rm -f "$actual"' EXIT
result=0
"$@" >"$actual" 2>&1 || result=$?
diff -u "$expected" "$actual"
if [ "$result" -ne "$status" ]; then
    echo "exit status $result, expected $status" >&2
    exit 1
fi
