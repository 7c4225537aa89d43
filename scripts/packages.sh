# The Debian packages that the project needs, and how they are installed. Sourced by the other scripts.

build_packages=(
    ccache
    cmake
    g++
    ninja-build
    libpugixml-dev
    mold
    qt6-base-dev
    qt6-svg-dev
)
# what the program itself needs beside its libraries: picture formats, fonts for every script
run_packages=(
    fonts-dejavu-core
    fonts-dejavu-extra
    fonts-droid-fallback
    fonts-liberation
    fonts-noto-core
    libqt6svg6
    qt6-image-formats-plugins
)
tidy_packages=(
    clang-tidy-14
    python3-minimal
)
test_packages=(
    clang-format-14
    libxml2-utils
    poppler-utils
    unrtf
)
# a virtual display, a window manager, a hand for keyboard and mouse, a camera
display_packages=(
    imagemagick
    openbox
    xauth
    xdotool
    xvfb
)
# the accessibility bus, and a program's way to it
assistive_packages=(
    at-spi2-core
    dbus
    gir1.2-atspi-2.0
    python3-gi
)
# what looks for faults with made-up input and for faulty use of memory
safety_packages=(
    clang-14
    libclang-rt-14-dev
    valgrind
)
bench_packages=(
    libbenchmark-dev
)
# what makes the Debian package and checks it
package_packages=(
    appstream
    desktop-file-utils
    dpkg-dev
    librsvg2-bin
    lintian
)

# say <text>: one line about what the script is doing
say() {
    printf '== %s\n' "$*"
}

# fail <text>: ends the script with a message
fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

# need <package>...: installs those that are missing
need() {
    local missing=() package
    for package in "$@"; do
        dpkg-query --show --showformat '${db:Status-Status}' "$package" 2>/dev/null | grep -q '^installed$' ||
            missing+=("$package")
    done
    [ "${#missing[@]}" -eq 0 ] && return
    say "installing ${missing[*]}"
    command -v apt-get >/dev/null || fail "this needs a Debian system; please install by hand: ${missing[*]}"
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "please install as root: apt-get install ${missing[*]}"
        root=(sudo)
    fi
    local log
    log=$(mktemp)
    if ! { "${root[@]}" apt-get update &&
        "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install --yes --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        fail "these packages could not be installed: ${missing[*]}"
    fi
    rm -f "$log"
}
