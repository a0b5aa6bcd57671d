#!/bin/sh
# usage: scripts/check-readme.sh
# Runs every command of the README as it stands there, in order and in one shell, from the top of
# the checkout; as root, for some install. Before that: the report shown is that of the example, and
# each line of the input shown is one of the example's.
set -eu
cd "$(dirname "$0")/.."

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# The blocks, as files: all commands in "sh", the others in "ini1", "text1", "text2" and so on.
awk -v folder="$work/" '
    /^```/ && file { file = ""; next }
    /^```/ { file = folder substr($0, 4) ($0 == "```sh" ? "" : ++count[$0]); next }
    file { print > file }' README.md

cmp "$work/text1" examples/alpha.report
if grep -vxF -e ... -f examples/alpha.ini "$work/ini1"; then
    echo "README.md shows these lines of examples/alpha.ini, which does not hold them" >&2
    exit 1
fi
sh -eux "$work/sh" </dev/null
echo "README.md: all commands run" >&2
