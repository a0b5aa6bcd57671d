#!/bin/sh
# usage: .ci/check-readme.sh
# Runs every command of the README as it stands there, in order and in one shell, from the top of
# the checkout. Needs root, since some commands install packages or files. The output that the
# README shows below a command must be what the command prints. The input and the report that the
# README shows first must be those of the example. If "..." shortens a text, the lines that are
# shown must be in the full text, in this order. The commands for the own machine need a machine on
# which lspci shows something. check-hosts.sh tries the commands for several hosts; the manual page
# must show the same ones.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
need pciutils
functions=$(lspci)
[ -n "$functions" ] || skip "the README's commands for the own machine: lspci shows nothing"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# All commands as the file "sh", and each text as a file: "ini1", "text1", "text2" and so on. What
# the commands above "text2" print goes to "got2".
awk -v folder="$work/" -v hasFunctions="${functions:+1}" '
    function run(output) {
        if (commands != "") print "{\n" commands "}" output > (folder "sh")
        commands = ""
    }
    /^```/ && kind { kind = ""; next }
    /^```/ {
        kind = substr($0, 4)
        if (kind == "sh lspci" && hasFunctions) kind = "sh"
        file = folder kind (++count[kind])
        run(kind == "text" ? " >" folder "got" count[kind] : "")
        next
    }
    kind == "sh" { commands = commands $0 "\n" }
    kind && kind != "sh" { print > file }
    END { run("") }' README.md

mustHold() { # a text, what the README shows of it
    if diff "$1" "$2" | grep '^>' | grep -vx '> \.\.\.'; then
        fail "README.md shows these lines, which do not stand there in $1"
    fi
}

mustHold examples/alpha.report "$work/text1"
mustHold examples/alpha.ini "$work/ini1"
sh -eux "$work/sh" </dev/null
for got in "$work"/got*; do
    mustHold "$got" "$work/text${got#"$work"/got}"
done

sed -i '/^cd build$/d' "$work/sh hosts1" # that folder is in a checkout only
# The words of a text, however its lines are broken.
words() { tr -s '\\\n' ' ' <"$1"; }
mandoc -T ascii build/release/packaging/slotrpt-fleet.1 >"$work/manual"
words "$work/manual" | grep -qF "$(words "$work/sh hosts1")" ||
    fail "slotrpt-fleet(1) does not show the command for several hosts as README.md does"
echo "README.md: all commands run" >&2
