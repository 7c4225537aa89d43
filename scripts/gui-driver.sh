# Functions that drive the real program by keyboard and mouse on a virtual display and take screenshots.
# To be sourced by a bash script with errexit that sets
#   out      the folder for the screenshots and the report
#   program  the program to drive
# and then calls on_virtual_display.

report=$out/report.txt

patience=180 # timeout in seconds, long enough for a busy machine

# on_virtual_display <script> <argument>...: runs the calling script again on a virtual display of its own
on_virtual_display() {
    [ -z "${TARNO_VIRTUAL_DISPLAY:-}" ] || return 0
    local display status=0
    # -r: no auto-repeat, because a late key release would repeat the key
    exec {display}< <(exec Xvfb -displayfd 1 -r -screen 0 1280x800x24 2>/dev/null)
    # shellcheck disable=SC2064 # expands $! now, to the process that has just been started
    trap "kill $!" EXIT
    read -r DISPLAY <&"$display" || stop "the virtual display did not start"
    TARNO_VIRTUAL_DISPLAY=yes DISPLAY=:$DISPLAY "$@" || status=$?
    exit "$status"
}

# await <what> <command>...: repeats the command until it succeeds
await() {
    local what=$1 end=$((SECONDS + patience))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || stop "timed out waiting for $what"
        sleep 0.05
    done
}

# start [<data folder>]: starts the window manager and the program, whose settings and remembered windows are in
# $out/home; without a folder, the program uses the default data folder of the user
start() {
    log=${1:-${XDG_DATA_HOME:-$HOME/.local/share}/Tarno}
    mkdir -p "$out/home"
    chmod 700 "$out/home"
    export XDG_CONFIG_HOME=$PWD/$out/home XDG_RUNTIME_DIR=$PWD/$out/home LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb
    await "the window manager" ensure_window_manager
    "$program" ${1:+--folder "$1"} >"$out/program.log" 2>&1 &
    tarno=$!
    trap 'kill $tarno 2>/dev/null || true' EXIT
}

# ensure_window_manager: succeeds if the window manager responds. Starts it if it is not running, because a new
# display may refuse it at first.
ensure_window_manager() {
    if [ -z "${manager:-}" ] || ! kill -0 "$manager" 2>/dev/null; then
        openbox >>"$out/openbox.log" 2>&1 &
        manager=$!
    fi
    xdotool get_desktop >/dev/null 2>&1
}

# tell <text>: prints a line and adds it to the report
tell() {
    printf '%s\n' "$*" | tee -a "$report"
}

# stop <text>: takes a screenshot and fails
stop() {
    [ -z "${DISPLAY:-}" ] || import -window root "$out/failed.png" || true
    tell "FAILED: $*"
    exit 1
}

is_active() {
    [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" = "$1" ]
}

# window <title>: waits until that window is the active one
window() {
    await "the window '$1'" is_active "$1"
}

# splash [<picture> <what it shows>]: waits until the splash screen has been shown and has closed itself. On a busy
# machine it may go unnoticed; the main window then stays active for a while.
splash() {
    local looks=0
    until is_active "About Tarno Fishing Log" || [ "$looks" -gt 100 ]; do
        ! is_active "Tarno Fishing Log" || looks=$((looks + 1))
        kill -0 "$tarno" 2>/dev/null || stop "the program ended: $(cat "$out/program.log")"
        sleep 0.05
    done
    [ $# -eq 0 ] || picture "$@"
    window "Tarno Fishing Log"
}

keys() {
    xdotool key --delay 10 "$@"
}

type_text() {
    xdotool type --delay 10 -- "$1"
}

# click <x> <y> [button]: clicks in the active window, relative to its upper left corner
click() {
    xdotool mousemove --sync --window "$(xdotool getactivewindow)" "$1" "$2" click "${3:-1}"
}

windows_shown() {
    xdotool search --onlyvisible --class tarno 2>/dev/null | wc -l
}

are_more_windows_shown() {
    [ "$(windows_shown)" -gt "$1" ]
}

# pop_up <command>...: runs the command and waits for the menu that it opens
pop_up() {
    local before
    before=$(windows_shown)
    "$@"
    await "the menu" are_more_windows_shown "$before"
}

# picture <name> <what it shows>: takes a screenshot of the windows, without the empty screen around them, after they
# have been painted
picture() {
    local before="" now tries
    for tries in $(seq 20); do # a limit, because a blinking cursor keeps changing the picture
        sleep 0.1
        now=$(import -window root rgb:- | cksum)
        [ "$now" != "$before" ] || break
        before=$now
    done
    import -window root png:- | convert - -trim +repage "$out/$1.png"
    tell "picture $1.png: $2"
}

# records <file> <element>: prints the number of records in the data file
records() {
    xmllint --xpath "count(/data/$2)" "$log/$1"
}

# value <file> <element> <position>: prints the value at that position of the last record
value() {
    xmllint --xpath "string(/data/$2[last()]/*[$(($3 + 1))])" "$log/$1"
}

# expect <what> <found> <wanted>: fails if the values differ
expect() {
    [ "$2" = "$3" ] || stop "$1 is '$2' instead of '$3'"
    tell "$1: $2"
}

# await_value <what> <wanted> <command>...: repeats the command, which reads the log, until it prints the wanted value
await_value() {
    local what=$1 wanted=$2 found end=$((SECONDS + patience))
    shift 2
    until found=$("$@" 2>/dev/null) && [ "$found" = "$wanted" ]; do
        [ "$SECONDS" -lt "$end" ] || stop "$what is '$found' instead of '$wanted'"
        sleep 0.05
    done
    tell "$what: $found"
}

# typed_path <path>: prints the path as the program expects it; TARNO_DRIVE is the drive that Wine maps to /
typed_path() {
    local path=$1
    [ -z "${TARNO_DRIVE:-}" ] || path=$TARNO_DRIVE${path//\//\\}
    printf '%s' "$path"
}

# export_report <PDF or RTF> <name> [picture]: exports from the preview, which is the active window, to $out
export_report() {
    local preview key suffix=pdf head=%PDF-
    preview=$(xdotool getactivewindow getwindowname)
    if [ "$1" = RTF ]; then
        suffix=rtf.pdf # every export gets the suffix of a PDF
        head="{\\rtf"
    fi
    key=$(printf %.1s "$1")
    keys "alt+${key,,}"
    window "Save Report to $1"
    keys ctrl+a
    type_text "$(typed_path "$PWD/$out/$2")"
    [ -z "${3:-}" ] || picture "$3" "the dialog for the $1 export"
    keys Return
    if [ -n "${TARNO_DRIVE:-}" ]; then # Wine leaves the focus on the closed dialog
        await "the end of the dialog" no_window_is_named "Save Report to $1"
        await "the window '$preview'" activate "$preview"
    fi
    window "$preview"
    await_value "first bytes of the $1" "$head" head -c 5 "$out/$2.$suffix"
}

no_window_is_named() {
    ! xdotool search --onlyvisible --name "^$1\$" >/dev/null
}

# activate <title>: activates the window; fails while xdotool examines a window that is being closed
activate() {
    xdotool search --onlyvisible --name "^$1\$" windowactivate 2>/dev/null && is_active "$1"
}

# first_trip: adds the first location and the first trip to an empty log, starting from the main window
first_trip() {
    keys ctrl+l
    window "Location Listing"
    keys alt+a
    window "Location Maintenance"
    type_text "Granny's Beach"
    keys Tab Tab Tab Tab
    keys minus
    type_text "33.59"
    keys Tab
    type_text "151.32"
    keys Tab
    type_text "10"
    keys Tab
    picture 03-place "the first location"
    keys alt+s
    await_value "locations" 1 records location.xml location
    keys Escape
    window "Location Listing"
    keys Escape
    window "Tarno Fishing Log"

    keys ctrl+n
    window "Tarno Log Entry"
    keys ctrl+a
    type_text "2026-11-14"
    keys Tab
    picture 04-trip "the first trip"
    keys alt+s
    await_value "trips" 1 records tarno.xml tarno
    await_value "start date" 2026-11-14 value tarno.xml tarno 1
    [ -n "$(value tarno.xml tarno 12)" ] || stop "the sunrise is missing"
    keys Escape
    window "Tarno Fishing Log"
}

# leave: exits the program from its main window; fails if it has logged an error
leave() {
    keys Escape
    window "Going Fishing Again?"
    keys alt+y
    wait "$tarno" || stop "the program ended with an error"
    if [ -e "$log/Tarno.log" ]; then
        stop "errors were logged: $(cat "$log/Tarno.log")"
    fi
    tell "the program has ended"
}
