#!/bin/sh
# A CD in a folder that a shell reads as something else, with a text that a terminal obeys; then
# what cannot be checked:
#
#   check_cd_test.sh SLOTRPT_CHECK_CD
set -eu

check() {
    result=0
    "$program" "$@" || result=$?
    echo "status $result"
}

program=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
root="it's \$(a) \\n CD"
mkdir -p "$root/rwise/ini" "none/rwise/ini/syscfg.ini"
printf '[SystemIDMap]\nMT01 = SRV_\033[2J\nMT02 = SRV_OWN\n' >"$root/rwise/ini/syscfg.ini"
printf '[NIC]\nOnBoard = 1\n' >"$root/rwise/ini/own.ini"

check "$root"
check none
check
