# The static libraries of the Windows program: which, where they lie, and how they are built. Sourced by the other
# scripts of this folder.

source scripts/packages.sh

windows_packages=(
    dpkg-dev
    g++-mingw-w64-x86-64-posix
    librsvg2-bin
)
# what runs Windows programs here
wine_packages=(
    fonts-wine
    wine
    wine64
)

# What Qt is built with and without. Printing needs Direct2D; the tablet header is not in Debian's source.
qt_options=(
    -DCMAKE_BUILD_TYPE=Release
    -DBUILD_SHARED_LIBS=OFF
    -DQT_BUILD_EXAMPLES=OFF
    -DQT_BUILD_TESTS=OFF
    -DFEATURE_concurrent=OFF
    -DFEATURE_dbus=OFF
    -DFEATURE_direct2d=ON
    -DFEATURE_glib=OFF
    -DFEATURE_icu=OFF
    -DFEATURE_network=OFF
    -DFEATURE_pkg_config=OFF
    -DFEATURE_sql=OFF
    -DFEATURE_tabletevent=OFF
    -DFEATURE_vulkan=OFF
    -DFEATURE_xml=OFF
    -DINPUT_opengl=no
)

# The libraries lie outside the tree, in a folder named by all that they depend on.
libraries_folder() {
    local key
    key=$(
        {
            dpkg-query --show --showformat '${Version}\n' qt6-base-dev g++-mingw-w64-x86-64-posix 2>/dev/null
            printf '%s\n' "${qt_options[@]}"
            cat cmake/mingw-w64.cmake
        } | sha256sum | cut -c1-12
    )
    printf '%s/tarno/windows-%s\n' "${XDG_CACHE_HOME:-$HOME/.cache}" "$key"
}

# have_libraries: whether they have been built, all of them
have_libraries() {
    [ -e "$(libraries_folder)/complete" ]
}

# build_libraries: gets the sources through the package client and builds them; says nothing when that was done before
build_libraries() {
    have_libraries && return
    local folder
    folder=$(libraries_folder)
    scratch=$(mktemp -d) # not local: it goes with the script
    trap 'rm -rf "$scratch"' EXIT
    say "getting the sources of Qt and pugixml"
    get_sources "$scratch" qt6-base qt6-imageformats pugixml >"$scratch/log" 2>&1 || {
        tail -n 20 "$scratch/log" >&2
        fail "the sources could not be had"
    }
    rm -rf "$folder"
    mkdir -p "$folder"
    build_library pugixml "$scratch"/pugixml-* -DCMAKE_BUILD_TYPE=Release
    build_library qtbase "$scratch"/qt6-base-* "${qt_options[@]}"
    build_library qtimageformats "$scratch"/qt6-imageformats-* -DCMAKE_BUILD_TYPE=Release
    touch "$folder/complete"
}

# build_library <name> <source> <option>...: builds and installs one; uses folder and scratch of its caller
build_library() {
    local name=$1 source=$2 log=$folder/$1.log
    shift 2
    say "building $name for Windows; $log tells how far it is"
    {
        cmake -S "$source" -B "$scratch/$name" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64.cmake" \
            -DCMAKE_PREFIX_PATH="$folder" -DCMAKE_INSTALL_PREFIX="$folder" "$@" &&
            cmake --build "$scratch/$name" -j 2 &&
            cmake --install "$scratch/$name"
    } >"$log" 2>&1 || {
        tail -n 20 "$log" >&2
        fail "$name could not be built"
    }
    rm -rf "$scratch/$name"
}

# get_sources <folder> <package>...: unpacks Debian's sources there. The machine's own lists stay as they are: the
# package client works on a copy of them that also names the sources.
get_sources() {
    local scratch=$1
    shift
    mkdir -p "$scratch/apt/sources.list.d" "$scratch/apt/lists/partial"
    sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources \
        >"$scratch/apt/sources.list.d/debian.sources" || true
    [ ! -f /etc/apt/sources.list ] || sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$scratch/apt/sources.list"
    cat >"$scratch/apt/apt.conf" <<EOF
Dir::Etc::SourceList "$scratch/apt/sources.list";
Dir::Etc::SourceParts "$scratch/apt/sources.list.d";
Dir::State::Lists "$scratch/apt/lists";
Dir::Cache "$scratch/apt";
APT::Sandbox::User "root";
EOF
    (
        cd "$scratch"
        export APT_CONFIG=$scratch/apt/apt.conf
        apt-get update && apt-get source "$@"
    )
}
