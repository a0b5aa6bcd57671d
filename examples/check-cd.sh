#!/bin/sh
# Checks the root folder of a product CD before it is pressed:
#
#   check-cd.sh CD_ROOT
#
# Each finding is one line, "file:line: message". Exit status: 0 nothing found, 1 findings, 2 the
# check could not be run. What is looked for, and by which rules, stands in check-cd.awk.
set -eu

if [ $# -ne 1 ]; then
    echo "usage: check-cd.sh CD_ROOT" >&2
    exit 2
fi
if ! [ -r "$1/rwise/ini/syscfg.ini" ] || ! [ -f "$1/rwise/ini/syscfg.ini" ]; then
    echo "check-cd.sh: cannot read $1/rwise/ini/syscfg.ini" >&2
    exit 2
fi
# Bytes are bytes: only ASCII letters have a case. The root goes through the environment, where awk
# reads no backslash escapes into it.
RWCD=$1 LC_ALL=C awk -f "$(dirname "$0")/check-cd.awk"
