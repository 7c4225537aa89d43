# Sets up a temporary Wine prefix and a virtual display, which end with the calling script. To be sourced after
# packages.sh and before any other work, because it starts the script again on the virtual display.

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
# keeps Wine's services running; otherwise each test would start them and wait for them
packaging/windows/wine.sh cmd /c "ping -n 100000 127.0.0.1" >/dev/null 2>&1 &
# Qt's offscreen platform loads fonts from a single folder
mkdir "$WINEPREFIX/fonts"
ln -s /usr/share/fonts/truetype/{dejavu/DejaVuS,liberation/}*.ttf /usr/share/wine/fonts/tahoma*.ttf "$WINEPREFIX/fonts"
