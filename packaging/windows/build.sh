#!/usr/bin/env bash
# Builds Tarno and its tests for 64-bit Windows on Debian. Writes build/windows/Tarno/ with the data files, the sample
# log, and a single Tarno.exe that needs only libraries that are part of Windows.
#   packaging/windows/build.sh [OPTION...]    options of cmake --build
# The first run also builds the static libraries, which takes a quarter of an hour on two idle cores, and stores them in the user's cache.
set -euo pipefail
cd "$(dirname "$0")/../.."
source packaging/windows/libraries.sh

need "${build_packages[@]}" "${windows_packages[@]}"
build_libraries

say "building for Windows"
TARNO_WINDOWS_LIBRARIES=$(libraries_folder)
export TARNO_WINDOWS_LIBRARIES
cmake --preset windows >/dev/null || fail "the build could not be configured"
cmake --build --preset windows "$@" || fail "the build failed"

out=build/windows/Tarno
say "creating $out"
rm -rf "$out"
scripts/make-data-folder.sh "$out"
scripts/make-data-folder.sh --sample "$out/sample"
for program in Tarno.exe Tarno.com; do
    x86_64-w64-mingw32-strip -o "$out/$program" "build/windows/src/app/$program"
done

# the libraries that are part of Windows 8 and later
system_libraries="advapi32 api-ms-win-core-synch-l1-2-0 api-ms-win-core-winrt-l1-1-0 api-ms-win-core-winrt-string-l1-1-0 authz
    comctl32 comdlg32 d2d1 d3d11 d3d9 dwmapi dwrite dxgi gdi32 imm32 kernel32 mpr msvcrt netapi32 ole32 oleaut32 rpcrt4
    setupapi shcore shell32 shlwapi user32 userenv uxtheme version winmm winspool.drv ws2_32 wtsapi32"
for library in $(x86_64-w64-mingw32-objdump --private-headers "$out/Tarno.exe" | sed -n 's/.*DLL Name: //p'); do
    name=${library,,}
    [[ " "$(echo $system_libraries)" " == *" ${name%.dll} "* ]] || fail "Tarno.exe needs $library, which is not part of Windows"
done
say "built $out/Tarno.exe, $(($(stat -c %s "$out/Tarno.exe") / 1000000)) MB"
