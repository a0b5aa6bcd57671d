#!/bin/sh
# usage: .ci/check-hosts.sh
# Tries the README's command for several hosts, as it stands there. The hosts are two accounts of
# this machine with empty home folders, and an ssh server of its own. Of slotrpt they find only
# slotrpt-fleet and a CD. Needs root. All that the script makes is removed again.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
need cmake g++ make openssh-client openssh-server parallel rsync
build release

work=$(mktemp -d)
accounts="slotrpt-1-$$ slotrpt-2-$$"
remove() {
    [ ! -e "$work/pid" ] || kill "$(cat "$work/pid")"
    # By force: a shared connection ends two seconds after its last use.
    for account in $accounts; do userdel --force "$account" 2>/dev/null || true; done
    rm -rf "$work"
}
trap remove EXIT
trap 'exit 1' HUP INT TERM
chmod 755 "$work"
mkdir -p "$work/bin" "$work/build/fleet" /run/sshd
cp build/release/slotrpt-fleet "$work/bin"
cp -R examples/cd "$work"

ssh-keygen -q -t ed25519 -N '' -f "$work/key"
port=$((20000 + $$ % 10000))
for account in $accounts; do
    useradd --create-home --skel /nowhere --home-dir "$work/$account" --password '*' "$account"
    echo "2/$account@127.0.0.1" >>"$work/build/hosts"
done
/usr/sbin/sshd -f /dev/null -E "$work/log" -p "$port" -o ListenAddress=127.0.0.1 \
    -o HostKey="$work/key" -o AuthorizedKeysFile="$work/key.pub" -o StrictModes=no \
    -o SetEnv="PATH=$work/bin:/usr/bin:/bin" -o MaxStartups=100 -o PidFile="$work/pid"

# 6 detection files, one of which has no adapters.
for i in 1 2 3 4 5; do cp examples/alpha.ini "$work/build/fleet/-machine $i.ini"; done
echo '[System]' >"$work/build/fleet/broken.ini"
awk '/^```/ { printing = $0 == "```sh hosts"; next } printing' README.md >"$work/command"

export HOME="$work" RWCD="$work/cd" # of parallel on this side
export PARALLEL_SSH="ssh -F none -p $port -i $work/key -o StrictHostKeyChecking=no \
    -o UserKnownHostsFile=$work/known -o ControlMaster=auto -o ControlPath=$work/to-%r \
    -o ControlPersist=2"
! (cd "$work" && sh -eu command) </dev/null >"$work/messages" 2>&1 ||
    fail "a file failed, and the exit status is 0"
cat "$work/messages"
grep -q 'broken\.ini: no section \[PCI\]' "$work/messages" ||
    fail "the file that failed is not named with its reason"
[ "$(find "$work/build/fleet" -name '*.report' -exec cmp {} examples/alpha.report \; -print |
    wc -l)" -eq 5 ] || fail "there are not 5 reports of the example"
for account in $accounts; do
    grep -q "Accepted publickey for $account" "$work/log" || fail "$account took no part"
    [ -z "$(find "$work/$account" -type f)" ] || fail "something is left with $account"
done
echo "hosts: 5 reports from two hosts are as they are here, and the broken file is named"
