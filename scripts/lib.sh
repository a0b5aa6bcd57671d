# shellcheck shell=sh
# What the scripts share; each sources it from the folder of the project.

# need PACKAGE...: installs those Debian packages that are missing.
need() {
    missing=
    for wanted; do
        dpkg-query -W -f '${db:Status-Status}\n' "$wanted" 2>/dev/null | grep -qx installed ||
            missing="$missing $wanted"
    done
    [ -n "$missing" ] || return 0
    echo "installing:$missing" >&2
    asRoot apt-get -qq update >&2
    # shellcheck disable=SC2086 # a list of names
    asRoot env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq install -y --no-install-recommends $missing >&2 </dev/null
}

asRoot() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# canRun32: whether the kernel runs 32-bit programs, found out by trying one. SLOTRPT_RUN32=yes or
# SLOTRPT_RUN32=no in the environment answers instead, so that each way can be tried anywhere.
canRun32() {
    if [ -z "${SLOTRPT_RUN32:-}" ]; then
        need g++ g++-multilib
        mkdir -p build
        program=build/run32.$$
        echo 'int main() {}' | g++ -m32 -x c++ -o "$program" -
        SLOTRPT_RUN32=no
        ! "$program" 2>/dev/null || SLOTRPT_RUN32=yes
        rm "$program"
    fi
    [ "$SLOTRPT_RUN32" = yes ]
}

# passOver WHAT: says what cannot be checked here.
passOver() {
    echo "passed over: $1"
}

# build PRESET: builds it in build/PRESET. Prints what is compiled, and nothing when all is built.
# The tests of a 32-bit one start their programs with an emulator where the kernel refuses them.
build() {
    emulator=
    case $1 in
        x86*) canRun32 || {
            need qemu-user
            emulator=$(command -v qemu-i386)
        } ;;
    esac
    mkdir -p build
    cmake --preset "$1" -DCMAKE_CROSSCOMPILING_EMULATOR="$emulator" >"build/$1.log" 2>&1 || {
        cat "build/$1.log" >&2
        return 1
    }
    cmake --build --preset "$1" --parallel "$(nproc)" >&2
}
