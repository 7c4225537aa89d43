#!/usr/bin/env bash
# Builds the Debian package build/linux/tarno_<version>_<architecture>.deb and checks it.
#   packaging/linux/build.sh
# Takes the version from packaging/linux/changelog. CMAKE_BUILD_PARALLEL_LEVEL limits the number of jobs.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh

need "${build_packages[@]}" "${run_packages[@]}" "${package_packages[@]}"

packaging=packaging/linux
out=build/linux
root=$out/root
version=$(dpkg-parsechangelog --file "$packaging/changelog" --show-field Version)
architecture=$(dpkg --print-architecture)
package=$out/tarno_${version}_$architecture.deb
# reproducible build: all files in the package get the time stamp of the changelog
SOURCE_DATE_EPOCH=$(dpkg-parsechangelog --file "$packaging/changelog" --show-field Timestamp)
export SOURCE_DATE_EPOCH

say "building"
# Debian's hardening flags; the build type chooses the optimisation
export DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_CXXFLAGS_MAINT_STRIP="-g -O2"
CXXFLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)" \
    LDFLAGS=$(dpkg-buildflags --get LDFLAGS) \
    cmake --preset release -B "$out/build" -DCMAKE_INSTALL_PREFIX=/usr >/dev/null ||
    fail "the build could not be configured"
cmake --build "$out/build" --target tarno icons || fail "the program does not build"

built=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$out/build/CMakeCache.txt")
[ "${version%-*}" = "$built" ] || fail "$packaging/changelog has version $version, CMakeLists.txt $built"

say "installing into the package folder"
rm -rf "$root" "$out"/*.deb
DESTDIR=$PWD/$root cmake --install "$out/build" >/dev/null || fail "the program could not be installed into $root"
strip --strip-unneeded --remove-section=.comment --remove-section=.note "$root/usr/bin/tarno"
documents=$root/usr/share/doc/tarno
install -D --mode=644 --target-directory="$documents" "$packaging/copyright"
gzip -9n <"$packaging/changelog" >"$documents/changelog.Debian.gz"
gzip -9n <CHANGELOG.md >"$documents/changelog.gz"
gzip -9n "$root/usr/share/man/man1/tarno.1"
install -D --mode=644 "$packaging/lintian-overrides" "$root/usr/share/lintian/overrides/tarno"

say "determining the dependencies"
control=$root/DEBIAN
mkdir -p "$control" "$out/debian"
printf 'Source: tarno\n\nPackage: tarno\nArchitecture: any\n' >"$out/debian/control"
libraries=$(cd "$out" && dpkg-shlibdeps -O root/usr/bin/tarno | sed -n 's/^shlibs:Depends=//p')
[ -n "$libraries" ] || fail "dpkg-shlibdeps found no dependencies"
depends=$libraries
for needed in "${run_packages[@]}"; do # lists no package twice
    grep -q "\(^\|, \)$needed\( \|,\|$\)" <<<"$libraries" || depends+=", $needed"
done

cat >"$control/control" <<CONTROL
Package: tarno
Version: $version
Architecture: $architecture
Maintainer: $(dpkg-parsechangelog --file "$packaging/changelog" --show-field Maintainer)
Installed-Size: $(du --apparent-size --block-size=1024 --summarize --exclude=DEBIAN "$root" | cut -f1)
Depends: $depends
Recommends: qt6-wayland
Section: misc
Priority: optional
Description: fishing log for one angler
 Tarno keeps every fishing trip with its place, tide, weather, water and catch
 in small files that you own. From the place and date of a trip it calculates
 the rise and set of sun and moon, the moon phase, the peak periods of the day
 and a rating.
 .
 Reports of the log and of the locations can be printed or exported to PDF and
 RTF.
CONTROL
(cd "$root" && find usr -type f -print0 | sort --zero-terminated | xargs -0 md5sum) >"$control/md5sums"

say "packing"
find "$root" -type d -exec chmod 755 {} +
find "$root" -type f ! -path "$root/usr/bin/*" -exec chmod 644 {} +
chmod 755 "$root/usr/bin/tarno"
dpkg-deb --root-owner-group --build "$root" "$package" >/dev/null || fail "the package could not be built"

say "checking"
desktop-file-validate "$root/usr/share/applications/tarno.desktop" || fail "the desktop file is not valid"
appstreamcli validate --no-net "$root"/usr/share/metainfo/*.xml || fail "the metainfo file is not valid"
as_root=()
if [ "$(id -u)" -eq 0 ]; then
    as_root=(--allow-root)
fi
lintian "${as_root[@]}" --fail-on error "$package" || fail "lintian found errors"
say "built $package"
