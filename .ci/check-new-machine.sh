#!/bin/sh
# usage: .ci/check-new-machine.sh
# Runs every command in the section "A new machine, step by step" of slotrpt-cd(5) as it stands on
# the rendered page, with its indentation, in order and in one shell. They scan the machine of the
# page, since the first lspci on PATH prints its functions.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
build release

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# In the section, a display holds commands and nothing else, and nothing else is indented as far.
mandoc -T utf8 build/release/packaging/slotrpt-cd.5 |
    sed -n 's/.\x08//g; /STEP BY STEP$/,/^[^ ]/s/^ \{16\}/&/p' >"$work/commands"
mkdir "$work/bin"
{
    printf '%s\n' '#!/bin/sh' "cat <<'END'"
    sed -n '/^00:0[02]/,/^$/p; /^01:03/,/^$/p; /^02:01/,/^$/p' tools/scan/test/forms/machine.txt
    echo END
} >"$work/bin/lspci"
chmod +x "$work/bin/lspci"

PATH=$work/bin:$PWD/build/release:$PATH
cd "$work"
sh -eux commands >output
[ -s missing.txt ] || fail "the command that lists what is missing printed nothing"
[ "$(echo *.ini)" = kilo.ini ] || fail "beside the detection file: $(echo *.ini)"
for line in 'SystemID = SRV_KILO' 'DASDAdapters = SCSI_CTRL' \
    'NetworkAdapters = GIGABIT_NIC,GIGABIT_NIC' 'OnBoardAdapters = GIGABIT_NIC,GIGABIT_NIC'; do
    grep -qxF "$line" kilo.report || fail "this line is not in the report: $line"
done
echo "slotrpt-cd(5): all commands for a new machine run"
