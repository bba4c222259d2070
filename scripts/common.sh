# What the scripts share: where things are, which packages are needed, how to build, a display of
# one's own. It is sourced, and leaves the shell in the root of the sources.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Debian 12's packages by purpose. Each list is installed only by the scripts that need it.
packages_to_build=(
    g++ cmake ninja-build pkg-config
    libsdl1.2-dev libgl-dev libglu1-mesa-dev libglew-dev libfreetype-dev zlib1g-dev
    libgl1-mesa-dri fontconfig fonts-dejavu-core
    libpng-dev libedit-dev help2man
)
packages_for_a_display=(xvfb xdotool imagemagick)
packages_to_check=(
    libgtest-dev libgmock-dev libx11-dev libxdamage-dev apitrace libbenchmark-dev
    git clang-format clang-tidy python3
)
packages_to_test=("${packages_to_check[@]}" valgrind) # tests run scripts/check, too
packages_to_fuzz=(clang libclang-rt-dev llvm)
packages_to_count=(valgrind libbenchmark-dev)
packages_to_cover=(gcovr)
packages_to_pack=(devscripts dpkg-dev file lintian)
packages_to_document=(doxygen mandoc python3-markdown)
packages_to_try_clang=(clang libc++-dev libc++abi-dev googletest)
packages_to_try_sdl2=(libsdl2-2.0-0)
packages_to_cross=(mmdebstrap qemu-user googletest) # and the compiler of the row
packages_to_compare=(git abigail-tools)
packages_for_a_bare_run=(mmdebstrap procps git)
# Google Benchmark, and what the benchmarks compare with.
packages_to_measure=(
    libbenchmark-dev
    cimg-dev libassimp-dev libeigen3-dev libglm-dev libguichan-dev liblua5.4-dev libnoise-dev
    libopencv-imgproc-dev libpython3-dev libsigc++-2.0-dev libstb-dev libtinyobjloader-dev
)

say()
{
    printf '%s: %s\n' "${0##*/}" "$*" >&2
}

fail()
{
    say "$@"
    exit 1
}

# version_of DIRECTORY: that of the sources there. It stands in CMakeLists.txt alone.
version_of()
{
    sed -n 's/^project(tamor VERSION \([0-9.]*\) .*/\1/p' "$1/CMakeLists.txt"
}

# Installs those of the named packages that are missing; without any it asks nothing of apt.
require_packages()
{
    local name missing=() as_root=()
    for name in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null) == installed ]] || missing+=("$name")
    done
    [[ ${#missing[@]} -gt 0 ]] || return 0

    if [[ $(id -u) -ne 0 ]]; then
        command -v sudo >/dev/null || fail "install these packages as root, then run me again: ${missing[*]}"
        as_root=(sudo)
    fi
    say "installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq </dev/null
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null >/dev/null
}

# The lines of a sources.list that this machine's own packages of Debian come by, and Debian's name.
debian_sources()
{
    apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Origin: Debian' | sort -u
}
debian_suite() { (. /etc/os-release && echo "$VERSION_CODENAME"); }

# build_preset PRESET TARGET [CMAKE ARGUMENT...]: only what changed is built again.
build_preset()
{
    local preset=$1 target=$2
    shift 2
    cmake --preset "$preset" "$@" >/dev/null
    cmake --build --preset "$preset" --target "$target" --parallel "$(nproc)"
}

# start_display [SIZE]: starts an X server of the script's own, sets DISPLAY to it and ends it with the
# script.
start_display()
{
    local number
    number=$(mktemp)
    Xvfb -displayfd 3 -screen 0 "${1:-1024x768}x24" -nolisten tcp -noreset 3>"$number" >/dev/null 2>&1 </dev/null &
    display_process=$!
    trap end_display EXIT
    until [[ -s $number ]]; do
        kill -0 "$display_process" 2>/dev/null || fail "Xvfb did not start"
        sleep 0.05
    done
    DISPLAY=:$(<"$number")
    export DISPLAY
    rm -f "$number"
}

# end_display: a signal that comes just before the server falls asleep does not wake it, so one may not
# do.
end_display()
{
    while kill "$display_process" 2>/dev/null; do sleep 0.05; done
}
