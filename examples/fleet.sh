#!/bin/sh
# Converts every detection file of a folder, JOBS at a time (one for each processor by default):
#
#   fleet.sh FOLDER [JOBS]
#
# x.ini gives x.report beside it. A report is written under a temporary name and renamed when it is
# complete, so it is there whole or not at all. A file that fails is named on standard error; the
# report that an earlier run may have left for it stays. Exit status: 0 all converted, 1 some
# failed, 2 nothing to do. The converter is $SLOTRPT, or the slotrpt on PATH, and RWCD names the CD
# for it as ever.
set -eu

converter=${SLOTRPT:-slotrpt}
newline='
'

lastLine() { tail -n 1 -- "$partial"; }

# Whether the file was converted into $partial; otherwise prints why not. A full disk does not show
# in the exit status, so the last line is looked at: a whole report ends with the on-board adapters.
convertOne() {
    errors=$("$converter" "/rwpm:$1" 2>&1 >"$partial") || errors=${errors:-$(lastLine)}
    if [ -z "$errors" ]; then
        case $(lastLine && echo .) in "OnBoardAdapters = "*"$newline.") return 0 ;; esac
        errors="the report is not complete"
    fi
    echo "$errors"
    return 1
}

# Converts the files, and prints a line for each that has its report.
convertAll() {
    partial=
    trap 'rm -f -- "$partial"' EXIT
    trap 'exit 1' HUP INT TERM
    for input; do
        report=${input%.ini}.report
        partial=$report.$$
        if reason=$(convertOne "$input" && mv -fT -- "$partial" "$report" 2>&1); then
            echo converted
        else
            rm -f -- "$partial"
            printf '%sfailed: %s: %s\n' "$lineStart" "$input" "$reason" >&2
        fi
    done
}

lineStart=
if [ -t 2 ]; then lineStart=$(printf '\r'); fi # a failure overwrites the progress

if [ "${1-}" = --files ]; then # one of the jobs of the run below
    shift
    convertAll "$@"
    exit 0
fi

if [ $# -lt 1 ] || [ $# -gt 2 ]; then
    echo "usage: fleet.sh FOLDER [JOBS]" >&2
    exit 2
fi
command -v "$converter" >/dev/null || {
    echo "fleet.sh: there is no $converter; set SLOTRPT or PATH" >&2
    exit 2
}
jobs=${2:-$(nproc)}
set -- "$1"/*.ini
[ -e "$1" ] || {
    echo "fleet.sh: there is no $1" >&2
    exit 2
}

# A job takes a few files at a time, so that its own start does not count. Names are passed with
# NULs between them: they may hold anything.
printf '%s\0' "$@" | xargs -0 -n 8 -P "$jobs" sh "$0" --files | {
    converted=0
    while read -r _; do
        converted=$((converted + 1))
        if [ -t 2 ]; then printf '\r%d of %d' "$converted" $# >&2; fi
    done
    if [ -t 2 ]; then echo >&2; fi
    echo "$converted of $# converted, $(($# - converted)) failed"
    [ "$converted" -eq $# ]
}
