#!/usr/bin/env bash
# Builds Tarno and all its tests for 64-bit Windows on a Debian machine and leaves build/windows/Tarno/: one
# Tarno.exe that needs nothing but what Windows brings, the data files, and the sample log.
#   packaging/windows/build.sh
# The first time it also builds the static libraries, which takes half an hour; they stay in the user's cache.
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
say "laying out $out"
rm -rf "$out"
scripts/lay-out.sh "$out"
scripts/lay-out.sh --sample "$out/sample"
x86_64-w64-mingw32-strip -o "$out/Tarno.exe" build/windows/src/app/Tarno.exe

# what Windows has brought since its version 8
brought="advapi32 api-ms-win-core-synch-l1-2-0 api-ms-win-core-winrt-l1-1-0 api-ms-win-core-winrt-string-l1-1-0 authz
    comctl32 comdlg32 d2d1 d3d11 d3d9 dwmapi dwrite dxgi gdi32 imm32 kernel32 mpr msvcrt netapi32 ole32 oleaut32 rpcrt4
    setupapi shcore shell32 shlwapi user32 userenv uxtheme version winmm winspool.drv ws2_32 wtsapi32"
for library in $(x86_64-w64-mingw32-objdump --private-headers "$out/Tarno.exe" | sed -n 's/.*DLL Name: //p'); do
    name=${library,,}
    [[ " "$(echo $brought)" " == *" ${name%.dll} "* ]] || fail "Tarno.exe needs $library, which Windows does not bring"
done
say "made $out/Tarno.exe, $(($(stat -c %s "$out/Tarno.exe") / 1000000)) MB"
