# shellcheck shell=sh
# What the scripts share; each sources it from the folder of the project.

# need PACKAGE...: installs those Debian packages that are missing.
need() {
    missing=
    for package; do
        dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed ||
            missing="$missing $package"
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

# build PRESET: builds it in build/PRESET. Prints what is compiled, and nothing when all is built.
build() {
    mkdir -p build
    cmake --preset "$1" >"build/$1.log" 2>&1 || {
        cat "build/$1.log" >&2
        return 1
    }
    cmake --build --preset "$1" --parallel "$(nproc)" >&2
}
