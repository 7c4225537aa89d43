# Builds the static libraries of the Windows program. Sourced by the other scripts of this folder.

source scripts/packages.sh

windows_packages=(
    dpkg-dev
    g++-mingw-w64-x86-64-posix
    librsvg2-bin
)
# what runs Windows programs on Debian
wine_packages=(
    fonts-wine
    wine
    wine64
)

# The build options of Qt. Printing needs Direct2D; Debian's source package lacks the header for tablets.
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

# Archives need zlib and the deflate method only.
zlib_options=(
    -DCMAKE_BUILD_TYPE=Release
    -DBUILD_SHARED_LIBS=OFF
)
libzip_options=(
    -DCMAKE_BUILD_TYPE=Release
    -DBUILD_SHARED_LIBS=OFF
    -DBUILD_DOC=OFF
    -DBUILD_EXAMPLES=OFF
    -DBUILD_REGRESS=OFF
    -DBUILD_TOOLS=OFF
    -DENABLE_BZIP2=OFF
    -DENABLE_COMMONCRYPTO=OFF
    -DENABLE_GNUTLS=OFF
    -DENABLE_LZMA=OFF
    -DENABLE_MBEDTLS=OFF
    -DENABLE_OPENSSL=OFF
    -DENABLE_WINDOWS_CRYPTO=OFF
)

# libraries_folder: prints the folder of the libraries, in the user's cache; a hash of everything that they depend on
# is part of its name
libraries_folder() {
    local key
    key=$(
        {
            dpkg-query --show --showformat '${Version}\n' qt6-base-dev g++-mingw-w64-x86-64-posix 2>/dev/null
            printf '%s\n' "${qt_options[@]}" "${zlib_options[@]}" "${libzip_options[@]}"
            cat cmake/mingw-w64.cmake
        } | sha256sum | cut -c1-12
    )
    printf '%s/tarno/windows-%s\n' "${XDG_CACHE_HOME:-$HOME/.cache}" "$key"
}

# have_libraries: succeeds if all libraries have been built
have_libraries() {
    [ -e "$(libraries_folder)/complete" ]
}

# build_libraries: downloads the sources with apt and builds them; does nothing if they have been built before
build_libraries() {
    have_libraries && return
    local folder
    folder=$(libraries_folder)
    scratch=$(mktemp -d) # not local, because the trap uses it
    trap 'rm -rf "$scratch"' EXIT
    say "downloading the sources of Qt, pugixml, zlib and libzip"
    get_sources "$scratch" qt6-base qt6-imageformats pugixml zlib libzip >"$scratch/log" 2>&1 || {
        tail -n 20 "$scratch/log" >&2
        fail "the sources could not be downloaded"
    }
    rm -rf "$folder"
    mkdir -p "$folder"
    build_library pugixml "$scratch"/pugixml-* -DCMAKE_BUILD_TYPE=Release
    # zlib always builds a DLL too. Debian's source package lacks its resources; CMake would prefer its import library.
    mkdir -p "$(echo "$scratch"/zlib-*/)win32"
    printf '1 RCDATA { 0 }\n' >"$(echo "$scratch"/zlib-*/)win32/zlib1.rc"
    build_library zlib "$scratch"/zlib-*/ "${zlib_options[@]}"
    rm "$folder/lib/libzlib.dll.a" "$folder/bin/libzlib.dll"
    mv "$folder/lib/libzlibstatic.a" "$folder/lib/libz.a"
    build_library libzip "$scratch"/libzip-*/ "${libzip_options[@]}"
    build_library qtbase "$scratch"/qt6-base-* "${qt_options[@]}"
    build_library qtimageformats "$scratch"/qt6-imageformats-* -DCMAKE_BUILD_TYPE=Release
    touch "$folder/complete"
}

# build_library <name> <source> <option>...: builds and installs a library; uses folder and scratch of its caller
build_library() {
    local name=$1 source=$2 log=$folder/$1.log
    shift 2
    say "building $name for Windows; the progress is in $log"
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

# get_sources <folder> <package>...: unpacks Debian's source packages in the folder. Leaves the package lists of the
# system unchanged: apt uses a copy of its configuration with source packages enabled.
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
