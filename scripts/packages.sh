# The Debian packages that the project needs, and a function that installs them. Sourced by the other scripts.

build_packages=(
    ccache
    cmake
    g++
    ninja-build
    libpugixml-dev
    libzip-dev
    mold
    qt6-base-dev
    qt6-svg-dev
)
# what the program needs besides its libraries: picture formats and fonts for every script
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
# a virtual display, a window manager, and tools for keyboard and mouse input and screenshots
display_packages=(
    imagemagick
    openbox
    xauth
    xdotool
    xvfb
)
# what scripts/tour.sh needs
tour_packages=(
    "${display_packages[@]}"
    libxml2-utils
    poppler-utils
)
# the accessibility bus and its client library
assistive_packages=(
    at-spi2-core
    dbus
    gir1.2-atspi-2.0
    python3-gi
)
# fuzzing and memory checks
safety_packages=(
    clang-14
    libclang-rt-14-dev
    valgrind
)
bench_packages=(
    libbenchmark-dev
)
# what builds and checks the Debian package
package_packages=(
    appstream
    desktop-file-utils
    dpkg-dev
    librsvg2-bin
    lintian
)

# say <text>: prints one line about what the script is doing
say() {
    printf '== %s\n' "$*"
}

# fail <text>: ends the script with a message
fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

# need <package>...: installs the packages that are missing
need() {
    local missing=() package
    for package in "$@"; do
        dpkg-query --show --showformat '${db:Status-Status}' "$package" 2>/dev/null | grep -q '^installed$' ||
            missing+=("$package")
    done
    [ "${#missing[@]}" -eq 0 ] && return
    say "installing ${missing[*]}"
    command -v apt-get >/dev/null || fail "apt-get was not found; install these packages by hand: ${missing[*]}"
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "run this as root: apt-get install ${missing[*]}"
        root=(sudo)
        # asks for the password before the output is hidden
        sudo true || fail "the packages cannot be installed without sudo"
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
        fail "could not install these packages: ${missing[*]}"
    fi
    rm -f "$log"
}

# tell_progress <process> <log>: prints the progress of apt until the process ends
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
