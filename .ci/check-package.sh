#!/bin/sh
# usage: .ci/check-package.sh
# Tries the packages of scripts/package.sh. They hold only what a user without a checkout needs. The
# program must run in a root folder that holds only the package's programs and the examples. On a
# fresh Debian system, a package must install, run and leave nothing behind when it is removed.
# Needs root.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
need mmdebstrap

top=$(pwd)
work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT

# isEmulated PACKAGE: whether its program needs an emulator. If so, its root has one as /emulator.
isEmulated() {
    case $1 in
        *_i386.deb) ! canRun32 ;;
        *) false ;;
    esac
}

addEmulator() { # ROOT
    cp "$(findEmulator)" "$1/emulator"
}

# reject WHAT: fails if there is standard input, which shows what is wrong.
reject() {
    ! grep . >&2 || fail "$package: $1"
}

# checkContents FOLDER: looks for files that a package must not have, and for paths and links that
# only a checkout has.
checkContents() {
    find "$1" -name '*.gz' -exec gunzip {} +
    find "$1/usr" -type f -printf '%P\n' |
        grep -vE '^(bin|share/man/man[15]|share/lintian/overrides)/slotrpt[a-z.15-]*$' |
        grep -vE '^share/doc/slotrpt/(copyright|changelog|CHANGELOG\.md)$' |
        grep -vE '^share/doc/slotrpt/examples/.*\.(ini|report|md)$' |
        reject "what are these files for?"
    grep -rlF "$top" "$1" | reject "these files hold the path of the checkout"
    folders=$(git ls-tree -d --name-only HEAD | grep -v examples | paste -sd '|')
    grep -rnE "(^|[^/[:alnum:]])($folders|build)/[[:alnum:]]" "$1/usr/share" |
        reject "these lines name paths of a checkout"
    find "$1" -name '*.md' | while read -r page; do
        grep -o '](\([^)]*\))' "$page" | sed 's/^](//; s/)$//' | while read -r target; do
            [ -e "${page%/*}/$target" ] || echo "$page: $target"
        done
    done | reject "these links lead nowhere"
    cat "$1"/usr/share/man/*/* | sed -n 's/^\.Xr \(slotrpt[a-z-]*\) \([15]\).*/\1.\2/p' | sort -u |
        while read -r page; do
            [ -e "$1/usr/share/man/man${page##*.}/$page" ] || echo "$page"
        done | reject "the manual has no such pages"
}

# convert ROOT EXAMPLES PROGRAM: whether the package's program prints the example's report there.
convert() {
    in=$1 examples=$2
    shift 2
    ! isEmulated "$package" || set -- /emulator "$@"
    RWCD=$examples/cd chroot "$in" "$@" "/rwpm:$examples/alpha.ini" | cmp - examples/alpha.report
}

# tryCommands ROOT EXAMPLES: whether the commands of the package that are not slotrpt run there.
tryCommands() {
    export RWCD="$2/cd"
    chroot "$1" slotrpt-check-cd "$RWCD"
    chroot "$1" slotrpt-explain "$2/alpha.ini" |
        grep -qx '9 device entries: 4 named, 5 unnamed, 3 on-board'
    chroot "$1" slotrpt-scan - <tools/scan/test/forms/machine.txt |
        grep -qx 'Total_Number_Of_Devices = 10'
    mkdir "$1/fleet"
    cp examples/alpha.ini "$1/fleet"
    chroot "$1" slotrpt-fleet /fleet
    cmp "$1/fleet/alpha.report" examples/alpha.report
    rm -r "$1/fleet"
}

for package in build/package/*.deb; do
    contents=$work/contents
    dpkg-deb --extract "$package" "$contents"
    empty=$work/$(basename "$package")
    mkdir "$empty"
    cp -r "$contents/usr/bin" "$empty/program"
    cp -r examples "$empty"
    ! isEmulated "$package" || addEmulator "$empty"
    convert "$empty" /examples /program/slotrpt
    checkContents "$contents"
    rm -r "$contents"
done

root=$work/debian
# A Debian system with what dpkg and the scripts of the package need.
mmdebstrap --quiet --variant=custom bookworm "$root" --include=base-files,base-passwd,bash,\
coreutils,dash,diffutils,dpkg,findutils,grep,gzip,libc-bin,mawk,sed,tar
# All files but the log of dpkg, which its first call creates.
names() { find "$root" -xdev ! -path '*/var/log/dpkg.log' | sort; }
chroot "$root" dpkg --add-architecture i386
cp build/package/*.deb "$root"
canRun32 || addEmulator "$root"
names >"$work/before"
for package in build/package/*.deb; do
    chroot "$root" dpkg --install "/$(basename "$package")"
    convert "$root" /usr/share/doc/slotrpt/examples /usr/bin/slotrpt
    if ! isEmulated "$package"; then tryCommands "$root" /usr/share/doc/slotrpt/examples; fi
    chroot "$root" dpkg --remove slotrpt
done
names | diff "$work/before" -
echo "packages: installed, run and removed without a trace"
