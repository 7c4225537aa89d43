#!/usr/bin/env bash
# Packages the Windows program: build/windows/tarno-<version>-portable.zip, which keeps all its data in its own folder,
# and build/windows/tarno-<version>-setup.exe, an installer for one user. Tests both under Wine by adding a trip, the
# zip file also at the root of a drive. Writes screenshots and reports to build/windows/first-trip/.
#   packaging/windows/package.sh
set -euo pipefail
cd "$(dirname "$0")/../.."
source packaging/windows/libraries.sh

need nsis unzip zip "${wine_packages[@]}" "${run_packages[@]}" "${display_packages[@]}" libxml2-utils
source packaging/windows/temporary-wine.sh
packaging/windows/build.sh

out=build/windows
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$out/CMakeCache.txt")
zip=$out/tarno-$version-portable.zip
setup=$out/tarno-$version-setup.exe

say "packing $zip"
rm -f "$zip"
(cd "$out" && zip --quiet --recurse-paths "${zip##*/}" Tarno)

say "packing $setup"
makensis -V2 "-DVERSION=$version" "-DFROM=$PWD/$out/Tarno" "-DOUT=$PWD/$setup" packaging/windows/tarno.nsi ||
    fail "the installer could not be built"

trial=$out/first-trip
rm -rf "$trial"

say "testing the zip file"
unzip -q "$zip" -d "$WINEPREFIX/drive_c/My Log"
packaging/windows/first-trip.sh "$WINEPREFIX/drive_c/My Log/Tarno" "$trial/portable"

say "testing the zip file at the root of a drive"
unzip -q "$zip" -d "$WINEPREFIX/stick"
ln -s "$WINEPREFIX/stick/Tarno" "$WINEPREFIX/dosdevices/t:"
packaging/windows/first-trip.sh "$WINEPREFIX/dosdevices/t:" "$trial/root"

say "testing the installer"
packaging/windows/wine.sh "$setup" /S
installed=$(echo "$WINEPREFIX"/drive_c/users/*/AppData/Local/Programs/Tarno)
[ -x "$installed/Tarno.exe" ] || fail "the installer did not install Tarno.exe"
compgen -G "$WINEPREFIX/drive_c/users/*/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Tarno.lnk" >/dev/null ||
    fail "the installer did not create an entry in the start menu"
packaging/windows/first-trip.sh "$installed" "$trial/installed"

say "installing again and uninstalling"
log=$(cat "$installed"/*.xml | sha256sum)
packaging/windows/wine.sh "$setup" /S
[ "$(cat "$installed"/*.xml | sha256sum)" = "$log" ] || fail "installing again changed the log"
packaging/windows/wine.sh "$installed/Uninstall.exe" /S "_?=$(packaging/windows/wine.sh winepath -w "$installed")"
[ ! -e "$installed/Tarno.exe" ] || fail "uninstalling did not remove Tarno.exe"
[ "$(cat "$installed"/*.xml | sha256sum)" = "$log" ] || fail "uninstalling changed the log"

say "built $zip and $setup"
ls -l "$zip" "$setup"
