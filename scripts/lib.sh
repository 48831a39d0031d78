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
    [windows]="debootstrap dpkg-dev googletest make perl tcl"
    [windows-i686]="g++-mingw-w64-i686-posix"
    [windows-x86_64]="g++-mingw-w64-x86-64-posix"
)

# Builds use all processors; NEXWIRE_JOBS=1 is for machines short of memory.
JOBS=${NEXWIRE_JOBS:-$(nproc)}
readonly JOBS
export CMAKE_BUILD_PARALLEL_LEVEL=$JOBS CTEST_PARALLEL_LEVEL=$JOBS

die()
{
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
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

# configure PRESET [CMAKE ARGUMENT...]
configure()
{
    local preset=$1
    shift
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
