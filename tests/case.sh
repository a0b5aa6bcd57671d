#!/bin/sh
# Tries whole programs on the files of one case:
#
#   case.sh CASE PROGRAMS
#
# The folder CASE holds a shell script "run" and the bytes "expected" of both its outputs, in one
# stream. The script runs in a copy of CASE, in which it may change what it likes, and finds the
# programs of the folder PROGRAMS first on PATH. If it exits with 77, the case cannot be tried here.
set -eu

case=$1
# shellcheck disable=SC2034 # for the scripts
examples=$(cd "$(dirname "$0")/../examples" && pwd)
PATH=$2:$PATH
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# try COMMAND...: runs the command and says how it ended.
try() {
    result=0
    "$@" || result=$?
    echo "status $result"
}

# asUser COMMAND...: runs the command. Root then has no right to read and write what a user may not.
asUser() {
    [ "$(id -u)" -ne 0 ] || set -- setpriv --bounding-set=-dac_override,-dac_read_search "$@"
    "$@"
}

cp -R "$case" "$work/case"
cd "$work/case"
# The script ends at its first command that fails, unless it expects that. If "|| result=$?"
# followed the brackets, the shell would ignore the "set -e" in them.
set +e
# shellcheck source=/dev/null
(set -e && . ./run) >"$work/actual" 2>&1 </dev/null
result=$?
set -e
[ "$result" -ne 77 ] || exit 77
[ "$result" -eq 0 ] || echo "run ended with status $result" >>"$work/actual"
diff -u "$case/expected" "$work/actual"
