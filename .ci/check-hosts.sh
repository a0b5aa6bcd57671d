#!/bin/sh
# usage: .ci/check-hosts.sh
# Tries the README's command for several hosts, as it stands there, on two hosts. This script makes
# the hosts and removes them again. Each is a network namespace with an ssh server, the program
# slotrpt and a CD, and has nothing else of slotrpt. Needs root. If the system cannot make network
# namespaces, says so and tries nothing.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
need cmake g++ iproute2 make openssh-client openssh-server parallel rsync

hosts="host1 host2"
work=$(mktemp -d)
space() { echo "slotrpt-$$-$1"; }
inside() { # SPACE COMMAND...: runs the command there; its mounts are visible nowhere else
    name=$(space "$1")
    shift
    ip netns exec "$name" "$@"
}
remove() {
    for name in here $hosts; do
        name=$(space "$name")
        [ -e "/run/netns/$name" ] || continue
        # shellcheck disable=SC2046 # numbers, one a line
        kill $(ip netns pids "$name") 2>/dev/null || true
        ip netns delete "$name"
    done
    rm -rf "$work"
}
trap remove EXIT
trap 'exit 1' HUP INT TERM

if ! ip netns add "$(space here)" 2>/dev/null || ! inside here mount -t tmpfs none /mnt 2>/dev/null
then
    skip "the command for several hosts, since no network namespaces can be made here"
    exit 0
fi
build release

# What this side and the hosts need, with keys for this run. Each has a home folder in $work.
home=$(getent passwd 0 | cut -d : -f 6)
cp -R examples/cd build/release/slotrpt "$work"
mkdir -p "$work/here/.ssh"
ssh-keygen -q -t ed25519 -N '' -f "$work/here/.ssh/id_ed25519"
cat >"$work/here/.ssh/config" <<END
Host *
    ControlMaster auto
    ControlPath ~/.ssh/%h
    ControlPersist 10
END
number=0
for host in $hosts; do
    number=$((number + 1))
    near=192.0.2.$((4 * number + 1)) far=192.0.2.$((4 * number + 2))
    ssh-keygen -q -t ed25519 -N '' -f "$work/$host.key"
    mkdir "$work/$host"
    echo "$far $(cut -d ' ' -f 1,2 "$work/$host.key.pub")" >>"$work/here/.ssh/known_hosts"
    echo "$far" >>"$work/hosts"

    ip netns add "$(space "$host")"
    ip link add "$host" netns "$(space here)" type veth peer name net0 netns "$(space "$host")"
    inside here ip address add "$near/30" dev "$host"
    inside here ip link set "$host" up
    inside "$host" ip address add "$far/30" dev net0
    inside "$host" ip link set net0 up
    # shellcheck disable=SC2016 # the arguments of that shell
    inside "$host" sh -euc '
        mount --bind "$1/$2" "$3"
        mount -t tmpfs none /mnt
        mount -t tmpfs none /usr/local/bin
        mount -t tmpfs none /run
        cp -R "$1/cd" /mnt
        cp "$1/slotrpt" /usr/local/bin
        mkdir /run/sshd
        exec /usr/sbin/sshd -D -e -f /dev/null -o HostKey="$1/$2.key" \
            -o AuthorizedKeysFile="$1/here/.ssh/id_ed25519.pub" -o StrictModes=no \
            -o LogLevel=VERBOSE
    ' - "$work" "$host" "$home" >"$work/$host.log" 2>&1 </dev/null &
done

# 10 detection files, one of which has no adapters.
mkdir "$work/fleet"
i=0
while [ $((i += 1)) -lt 10 ]; do cp examples/alpha.ini "$work/fleet/-machine $i.ini"; done
echo '[System]' >"$work/fleet/broken.ini"

awk '/^```/ { printing = $0 == "```sh hosts"; next } printing' README.md >"$work/command"
result=0
# shellcheck disable=SC2016 # the arguments of that shell
inside here sh -euc 'mount --bind "$1/here" "$2" && cd "$1" && sh -eu command' - \
    "$work" "$home" 2>"$work/messages" </dev/null || result=$?

reject() {
    cat "$work/messages" >&2
    fail "$1"
}
[ "$result" -ne 0 ] || reject "a file failed, and the exit status is 0"
grep -q '^\./broken\.ini.*Could not find PCI information' "$work/messages" ||
    reject "the file that failed is not named with its reason"
[ ! -e "$work/fleet/broken.report" ] || reject "the file that failed has a report"
for input in "$work"/fleet/-machine*.ini; do
    cmp "${input%.ini}.report" examples/alpha.report || reject "a report is not as it is here"
done
for host in $hosts; do
    runs=$(grep -c 'Starting session: command' "$work/$host.log") || reject "$host took no part"
    echo "$host: $runs commands"
    [ -z "$(ls "$work/$host")" ] || reject "something is left on $host"
done
echo "hosts: 9 reports from two hosts are as they are here, and the broken file is named"
