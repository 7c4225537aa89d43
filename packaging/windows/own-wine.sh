# A Wine and a virtual display of the calling script's own, gone with its end. Sourced after packages.sh, before
# anything else is done: the script is started again on the display.

if [ -z "${TARNO_VIRTUAL_DISPLAY:-}" ]; then
    export TARNO_VIRTUAL_DISPLAY=yes
    exec xvfb-run --auto-servernum --server-args="-screen 0 1280x800x24" "packaging/windows/${0##*/}" "$@"
fi

WINEPREFIX=$(mktemp -d)
export WINEPREFIX
end_wine() {
    wineserver -k 2>/dev/null || true
    wineserver -w 2>/dev/null || true
    rm -rf "$WINEPREFIX"
}
trap end_wine EXIT

say "setting up Wine"
packaging/windows/wine.sh wineboot --init >"$WINEPREFIX/log" 2>&1 || {
    tail -n 20 "$WINEPREFIX/log" >&2
    fail "Wine could not be set up"
}
# one program runs all the time, so that Wine's services are never started by a test, which would wait for them
packaging/windows/wine.sh cmd /c "ping -n 100000 127.0.0.1" >/dev/null 2>&1 &
# the offscreen platform looks for fonts in one folder
mkdir "$WINEPREFIX/fonts"
ln -s /usr/share/fonts/truetype/{dejavu/DejaVuS,liberation/}*.ttf /usr/share/wine/fonts/tahoma*.ttf "$WINEPREFIX/fonts"
