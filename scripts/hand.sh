# A hand for keyboard and mouse and an eye on the screen: drives the real program on a virtual display.
# Sourced, in bash with errexit, by a script that has set
#   out      a folder for pictures and the report
#   program  the program to drive
# and has called on_virtual_display.

report=$out/report.txt

# on_virtual_display <script> <arguments>...: runs the calling script again on a display of its own
on_virtual_display() {
    [ -n "${TARNO_VIRTUAL_DISPLAY:-}" ] && return
    export TARNO_VIRTUAL_DISPLAY=yes
    exec xvfb-run --auto-servernum --server-args="-screen 0 1280x800x24" "$@"
}

# start [<data folder>]: starts the window manager and the program, whose settings lie in $out/home; without a
# folder the program keeps the log in the user's own
start() {
    log=${1:-${XDG_DATA_HOME:-$HOME/.local/share}/Tarno}
    mkdir -p "$out/home"
    chmod 700 "$out/home"
    export XDG_CONFIG_HOME=$PWD/$out/home XDG_RUNTIME_DIR=$PWD/$out/home LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb
    local tries manager=
    for tries in $(seq 150); do # until the window manager answers; a display just started may refuse it
        if [ -z "$manager" ] || ! kill -0 "$manager" 2>/dev/null; then
            openbox >>"$out/openbox.log" 2>&1 &
            manager=$!
        fi
        xdotool get_desktop >/dev/null 2>&1 && break
        [ "$tries" -lt 150 ] || stop "the window manager did not start: $(cat "$out/openbox.log")"
        sleep 0.1
    done
    "$program" ${1:+--folder "$1"} >"$out/program.log" 2>&1 &
    tarno=$!
    trap 'kill $tarno 2>/dev/null || true' EXIT
}

tell() {
    printf '%s\n' "$*" | tee -a "$report"
}

stop() {
    import -window root "$out/failed.png" || true
    tell "FAILED: $*"
    exit 1
}

# window <title>: waits until that window is the active one, then gives it time to paint
window() {
    local tries
    for tries in $(seq 150); do
        [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" = "$1" ] && break
        [ "$tries" -lt 150 ] || stop "the window '$1' did not come"
        sleep 0.1
    done
    sleep 0.4
}

keys() {
    xdotool key --delay 40 "$@"
    sleep 0.2
}

type_text() {
    xdotool type --delay 15 "$1"
    sleep 0.1
}

# click <x> <y> [button]: in the active window, from its upper left corner
click() {
    xdotool mousemove --window "$(xdotool getactivewindow)" "$1" "$2"
    sleep 0.1
    xdotool click "${3:-1}"
    sleep 0.4
}

# picture <name> <what it shows>: the windows without the empty screen around them
picture() {
    import -window root png:- | convert - -trim +repage "$out/$1.png"
    tell "picture $1.png: $2"
}

# records <file> <element>: how many records the data file holds
records() {
    xmllint --xpath "count(/data/$2)" "$log/$1"
}

# value <file> <element> <position>: the last record's value there
value() {
    xmllint --xpath "string(/data/$2[last()]/*[$(($3 + 1))])" "$log/$1"
}

# expect <what> <found> <wanted>
expect() {
    [ "$2" = "$3" ] || stop "$1 is '$2' instead of '$3'"
    tell "$1: $2"
}

# typed_path <path>: as the program wants it; TARNO_DRIVE names the drive under which it sees /
typed_path() {
    local path=$1
    [ -z "${TARNO_DRIVE:-}" ] || path=$TARNO_DRIVE${path//\//\\}
    printf '%s' "$path"
}

# export_report <PDF or RTF> <name> [picture]: from the preview, which is the active window, into $out
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
    [ -z "${3:-}" ] || picture "$3" "where the $1 goes"
    keys Return
    if [ -n "${TARNO_DRIVE:-}" ]; then # Wine leaves the focus with its dialog, which has gone
        local tries
        for tries in $(seq 150); do
            xdotool search --onlyvisible --name "^Save Report to $1\$" >/dev/null || break
            [ "$tries" -lt 150 ] || stop "the dialog for the $1 stays"
            sleep 0.1
        done
        xdotool search --onlyvisible --name "^$preview\$" windowactivate
    fi
    window "$preview"
    expect "first bytes of the $1" "$(head -c 5 "$out/$2.$suffix")" "$head"
}

# first_trip: adds the first place and the first trip to an empty log, from its main window
first_trip() {
    click 172 30
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
    picture 03-place "the first place"
    keys alt+s
    sleep 0.5
    expect "locations" "$(records location.xml location)" 1
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
    sleep 0.5
    expect "trips" "$(records tarno.xml tarno)" 1
    expect "start date" "$(value tarno.xml tarno 1)" 2026-11-14
    [ -n "$(value tarno.xml tarno 12)" ] || stop "the sunrise is missing"
    keys Escape
    window "Tarno Fishing Log"
}

# leave: ends the program from its main window, and fails when it logged an error meanwhile
leave() {
    keys Escape
    window "Going Fishing Again?"
    keys alt+y
    local tries
    for tries in $(seq 100); do
        kill -0 "$tarno" 2>/dev/null || break
        [ "$tries" -lt 100 ] || stop "the program did not end"
        sleep 0.1
    done
    wait "$tarno" || stop "the program ended with an error"
    if [ -e "$log/Tarno.log" ]; then
        stop "errors were logged: $(cat "$log/Tarno.log")"
    fi
    tell "the program has ended"
}
