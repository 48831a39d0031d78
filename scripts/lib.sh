# shellcheck shell=bash
# What the scripts share. Source it from a script in this folder or in .ci/.

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
readonly ROOT

# Debian packages by purpose.
declare -rA PACKAGES=(
    [build]="g++ cmake ninja-build pkg-config bash-completion ca-certificates libboost-dev libboost-thread-dev
             libcjson-dev libcli11-dev libcurl4-openssl-dev libgmock-dev libgtest-dev liblog4cxx-dev libpugixml-dev
             libsqlite3-dev libssl-dev rapidjson-dev"
    [clang]="clang libclang-rt-dev llvm"
    [bench]="libbenchmark-dev libsimdjson-dev nlohmann-json3-dev"
    [lint]="clang clang-format clang-tidy git shellcheck"
    [page]="chromium nodejs"
    [package]="abigail-tools dpkg-dev file gzip lintian xz-utils"
    [ci]="ccache fish zsh"
    [chroot]="debootstrap"
    [wine]="wine wine32"
    [wine64]="wine64"
    [windows]="dpkg-dev googletest make perl tcl"
    [windows-i686]="g++-mingw-w64-i686-posix"
    [windows-x86_64]="g++-mingw-w64-x86-64-posix"
)

# Builds use all processors; NEXWIRE_JOBS=1 is for machines short of memory.
JOBS=${NEXWIRE_JOBS:-$(nproc)}
readonly JOBS
export CMAKE_BUILD_PARALLEL_LEVEL=$JOBS CTEST_PARALLEL_LEVEL=$JOBS
# Without it ccache keeps nothing that is built with precompiled headers.
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:+$CCACHE_SLOPPINESS,}pch_defines,time_macros

die()
{
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# cannot TEXT: what this is for cannot be set up on this machine; nothing was found wrong. Ends with 77.
cannot()
{
    printf '%s: NOT RUN: %s\n' "${0##*/}" "$*" >&2
    exit 77
}

# step TEXT: says what takes long; only where somebody watches or a CI keeps the log.
step()
{
    if [[ -t 2 || ${CI-} == true ]]; then
        printf '==> %s\n' "$*" >&2
    fi
}

# quietly NAME COMMAND...: keeps the output in build/logs/NAME.log and shows it only when the command fails.
quietly()
{
    local log=$ROOT/build/logs/$1.log status=0
    shift
    mkdir -p "${log%/*}"
    "$@" >"$log" 2>&1 </dev/null || status=$?
    if ((status != 0)); then
        tail -n 300 "$log" >&2
        printf '%s: failed (%d): %.120s\n  the whole output: %s\n' "${0##*/}" "$status" "$*" "$log" >&2
    fi
    return "$status"
}

# need_packages GROUP...: installs what is missing of the named groups.
need_packages()
{
    local group package
    local -a missing=()
    # Elsewhere than on Debian, CMake says by itself what it does not find.
    command -v dpkg-query >/dev/null || return 0
    for group in "$@"; do
        [[ -v PACKAGES[$group] ]] || die "no such group of packages: $group (there are: ${!PACKAGES[*]})"
        for package in ${PACKAGES[$group]}; do
            if [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
                missing+=("$package")
            fi
        done
    done
    ((${#missing[@]} > 0)) || return 0

    local -a install=(apt-get install -y --no-install-recommends "${missing[@]}")
    if ((EUID != 0)); then
        die "packages are missing; as root: ${install[*]}"
    fi
    step "install ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    # The package lists of a fresh machine are empty, and those of an old one name files that are gone.
    if ! quietly apt "${install[@]}" 2>/dev/null; then
        quietly apt-update apt-get update || die "cannot update the package lists; missing are: ${missing[*]}"
        quietly apt "${install[@]}" || die "cannot install: ${missing[*]}"
    fi
}

# configure PRESET [CMAKE ARGUMENT...]; NEXWIRE_CMAKE has further arguments.
configure()
{
    local preset=$1
    local -a more
    shift
    read -ra more <<<"${NEXWIRE_CMAKE-}"
    set -- "$@" "${more[@]}"
    if command -v ccache >/dev/null; then
        set -- -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@"
    fi
    quietly "configure-$preset" cmake -S "$ROOT" --preset "$preset" "$@" || exit
}

# build PRESET [TARGET...]: configures and builds; without targets everything.
build()
{
    local preset=$1
    shift
    step "build $preset $*"
    configure "$preset"
    quietly "build-$preset" cmake --build "$ROOT/build/$preset" ${1+--target "$@"} || exit
}

# ---- A small Debian of 32 bit ----
# The packages of another architecture do not go with those of this machine, so they have a folder of their own.

readonly DEBIAN32=${NEXWIRE_DEBIAN32:-$ROOT/build/debian-i386}

# make_debian32 GROUP: sets it up, the first time, with the packages of a group. Where it cannot be had, it says why and
# ends with 77.
make_debian32()
{
    ((EUID == 0)) || cannot "a Debian of 32 bit is set up by root only"
    unshare --mount -- true 2>/dev/null || cannot "mounts of its own are not allowed here"
    (need_packages chroot) || cannot "debootstrap cannot be had"
    if [[ ! -e $DEBIAN32/.made ]]; then
        step "set up a Debian of 32 bit"
        local place release
        place=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' | head -n 1)
        release=$(. /etc/os-release && printf '%s' "$VERSION_CODENAME")
        rm -rf "$DEBIAN32"
        mkdir -p "$DEBIAN32"
        quietly debian32 debootstrap --variant=minbase --arch=i386 "$release" "$DEBIAN32" "$place" ||
            cannot "debootstrap fails"
        touch "$DEBIAN32/.made"
    fi
    (cd "$ROOT" && in_debian32 bash -c "source scripts/lib.sh && need_packages $1") || cannot "its packages cannot be had"
}

# in_debian32 COMMAND...: runs it there, in the folder that is the current one. The mounts are seen by nobody else.
in_debian32()
{
    # shellcheck disable=SC2016 # Expanded by the shells inside.
    unshare --mount -- bash -c '
        set -e
        chroot=$1 root=$2 folder=$3
        shift 3
        mkdir -p "$chroot$root"
        mount --rbind /dev "$chroot/dev"
        mount -t proc proc "$chroot/proc"
        if [[ $root != /tmp/* ]]; then
            mount --bind /tmp "$chroot/tmp"
        fi
        mount --bind "$root" "$chroot$root"
        cp /etc/resolv.conf "$chroot/etc/resolv.conf"
        # A compiler cache that this machine may have is not there.
        exec setarch i686 chroot "$chroot" env -u CMAKE_CXX_COMPILER_LAUNCHER HOME=/root LANG=C.UTF-8 sh -c '\''
            cd "$1"
            shift
            exec "$@"'\'' sh "$folder" "$@"' bash "$DEBIAN32" "$ROOT" "$PWD" "$@"
}
