# A Wine of the calling script's own, gone with its end. Sourced after packages.sh.

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
