#!/bin/sh
# Tries the packages of scripts/package.sh, as root:
#
#   .ci/check-package.sh
#
# The program must run in a root folder that holds only the package's programs and the examples. On
# a fresh Debian system, a package must install, run and leave nothing behind when it is removed.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
need mmdebstrap

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
    chroot "$1" slotrpt-explain "$2/alpha.ini" | grep -qx '9 entries: 4 named, 5 unnamed, 3 on-board'
    mkdir "$1/fleet"
    cp examples/alpha.ini "$1/fleet"
    chroot "$1" slotrpt-fleet /fleet
    cmp "$1/fleet/alpha.report" examples/alpha.report
    rm -r "$1/fleet"
}

for package in build/package/*.deb; do
    empty=$work/$(basename "$package")
    mkdir -p "$empty/program"
    dpkg-deb --fsys-tarfile "$package" | tar -x -C "$empty/program" --strip-components=3 ./usr/bin
    cp -r examples "$empty"
    ! isEmulated "$package" || addEmulator "$empty"
    convert "$empty" /examples /program/slotrpt
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
