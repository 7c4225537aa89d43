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
# what the tour of the program needs
tour_packages=(
    "${display_packages[@]}"
    libxml2-utils
    poppler-utils
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
        sudo true || fail "the packages cannot be installed without sudo" # asks for the password before the output is hidden
    fi
    local log
    log=$(mktemp)
    { "${root[@]}" apt-get update &&
        "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install --yes --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 &
    tell_progress $! "$log"
    if ! wait $!; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        fail "these packages could not be installed: ${missing[*]}"
    fi
    rm -f "$log"
}

# tell_progress <process> <log>: says how far apt has come until the process ends
tell_progress() {
    local before="reading the package lists" now all
    printf '   %s\n' "$before"
    while kill -0 "$1" 2>/dev/null; do
        all=$(grep -oE '[0-9]+ newly installed' "$2" | grep -oE '^[0-9]+') || all=
        case $(tail -n 1 "$2") in
        Get:*) now="downloading $all packages" ;;
        *Unpacking* | *Preparing* | *Selecting* | *Reading\ database*) now="unpacking $all packages" ;;
        *Setting\ up* | *Processing*) now="setting up $all packages" ;;
        *) now=$before ;;
        esac
        [ "$now" = "$before" ] || printf '   %s\n' "$now"
        before=$now
        sleep 0.5
    done
}
