#!/bin/sh
# usage: scripts/check-debian.sh RELEASE [SCRIPT...]
# Tries the scripts on a fresh Debian system of that release, bookworm or trixie. If SCRIPTs are
# named, tries only these. Each script runs in a clone of the last commit and installs what it
# needs. Needs root, the network, several GB in the folder for temporary files and half an hour.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
[ $# -ge 1 ] || {
    sed -n '2s/^# //p' "$0" >&2
    exit 2
}
release=$1
shift
[ $# -gt 0 ] || set -- example.sh test.sh "test.sh clang" "test.sh sanitize" \
    "fuzz.sh ini 10" "fuzz.sh run 10" "fuzz.sh string 10" "fuzz.sh args 10" \
    coverage.sh bench.sh package.sh

need debootstrap git
work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT
root=$work/debian

# quietly COMMAND...: runs the command, and shows what it printed only if it fails.
quietly() {
    "$@" >"$work/log" 2>&1 || {
        cat "$work/log" >&2
        return 1
    }
}

# inside COMMAND...: runs the command in the clone on the fresh system. When it ends, its mounts are
# gone too.
inside() {
    # shellcheck disable=SC2016 # for the inner shell
    unshare --mount sh -euc '
        for folder in proc dev; do mount --rbind "/$folder" "$0/$folder"; done
        exec chroot "$0" sh -euc "cd /slotrpt && exec \"\$@\"" sh "$@"' "$root" "$@"
}

quietly debootstrap --variant=minbase "$release" "$root"
git clone --quiet . "$root/slotrpt"
for script; do
    start=$(date +%s)
    # shellcheck disable=SC2086 # a script and its arguments
    quietly inside scripts/$script || {
        echo "check-debian.sh: $release: scripts/$script failed" >&2
        exit 1
    }
    echo "$release: scripts/$script passed in $(($(date +%s) - start)) s"
done
