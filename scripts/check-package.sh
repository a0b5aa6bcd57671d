#!/bin/sh
# Tries the packages of scripts/package.sh, as root:
#
#   scripts/check-package.sh
#
# The program must run where there is no other file at all; and on a fresh Debian system a package
# must install, run and leave nothing behind when it is removed.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
need debootstrap

work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT

# convert ROOT PROGRAM EXAMPLES: whether the program prints the example's report in that root.
convert() {
    RWCD=$3/cd chroot "$1" "$2" "/rwpm:$3/alpha.ini" | cmp - examples/alpha.report
}

for package in build/package/*.deb; do
    empty=$work/$(basename "$package")
    mkdir -p "$empty/program"
    dpkg-deb --fsys-tarfile "$package" | tar -x -C "$empty/program" --strip-components=3 ./usr/bin
    cp -r examples "$empty"
    convert "$empty" /program/slotrpt /examples
done

root=$work/debian
debootstrap --variant=minbase bookworm "$root" >"$work/log" || {
    cat "$work/log" >&2
    exit 1
}
names() { find "$root" -xdev | sort; }
chroot "$root" dpkg --add-architecture i386
cp build/package/*.deb "$root"
names >"$work/before"
for package in build/package/*.deb; do
    chroot "$root" dpkg --install "/$(basename "$package")"
    convert "$root" slotrpt /usr/share/doc/slotrpt/examples
    chroot "$root" dpkg --remove slotrpt
done
names | diff "$work/before" -
echo "packages: installed, run and removed without a trace"
