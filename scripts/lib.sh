# shellcheck shell=sh
# The functions that the scripts share. Each script sources this file from the top of the checkout.

# If a make runs the script, as in the checks, the builds here are not a part of it.
unset MAKEFLAGS MAKELEVEL

# fail MESSAGE: ends the script with one line.
fail() {
    echo "${0##*/}: $1" >&2
    exit 1
}

# need PACKAGE...: installs those Debian packages that are missing.
need() {
    missing=
    for wanted; do
        dpkg-query -W -f '${db:Status-Status}\n' "$wanted" 2>/dev/null | grep -qx installed ||
            missing="$missing $wanted"
    done
    [ -n "$missing" ] || return 0
    [ "$(id -u)" = 0 ] || command -v sudo >/dev/null ||
        fail "these Debian packages are missing, and only root can install them:$missing"
    echo "installing:$missing" >&2
    # shellcheck disable=SC2086 # a list of names
    log=$(installPackages $missing 2>&1) ||
        fail "cannot install these Debian packages:$missing (apt-get: $(echo "$log" | tail -n 1))"
}

installPackages() {
    asRoot apt-get -qq update &&
        asRoot env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Acquire::Retries=3 \
            install -y --no-install-recommends "$@" </dev/null
}

asRoot() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# canRun32: whether the kernel runs 32-bit programs. It tries one to find out. If SLOTRPT_RUN32 is
# yes or no in the environment, this is the answer, so that both cases can be tried on any machine.
canRun32() {
    if [ -z "${SLOTRPT_RUN32:-}" ]; then
        need g++ g++-multilib
        makeBuildFolder
        program=build/run32.$$
        echo 'int main() {}' | g++ -m32 -x c++ -o "$program" -
        SLOTRPT_RUN32=no
        ! "$program" 2>/dev/null || SLOTRPT_RUN32=yes
        rm "$program"
    fi
    [ "$SLOTRPT_RUN32" = yes ]
}

# findEmulator: prints the path of the emulator for 32-bit programs. It is static, so that it also
# runs in a root folder without libraries.
findEmulator() {
    need qemu-user-static
    command -v qemu-i386-static
}

makeBuildFolder() {
    mkdir -p build 2>/dev/null || true
    [ -w build ] || fail "cannot write to $(pwd)/build, which takes all that is built"
}

# skip WHAT: says what cannot be checked here.
skip() {
    echo "skipped: $1"
}

# build PRESET: builds the preset in build/PRESET, and installs the library that every one needs.
# Prints what is compiled; if all is up to date, prints nothing. If the kernel cannot run 32-bit
# programs, the tests of a 32-bit preset start them with an emulator.
build() {
    need nlohmann-json3-dev
    emulator=
    case $1 in
        x86*) canRun32 || emulator=$(findEmulator) ;;
    esac
    makeBuildFolder
    (
        flock 9 # two scripts at a time may build the same
        cmake --preset "$1" -DCMAKE_CROSSCOMPILING_EMULATOR="$emulator" >"build/$1.log" 2>&1 || {
            cat "build/$1.log" >&2
            exit 1
        }
        cmake --build --preset "$1" --parallel "$(nproc)" >&2
    ) 9>"build/$1.lock"
}
