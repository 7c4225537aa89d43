# Where the test classes are. Sourced by other scripts.

# test_program <class>: the test program of that class, from the folder of a build; nothing if no class has that name
test_program() {
    local source folder
    source=$(find tests -name "$1.cpp")
    [ -n "$source" ] || return 0
    folder=$(dirname "${source#tests/}")
    [[ $folder != safety/* ]] || folder=safety # one program for all its folders
    printf 'tests/%s/tests_%s\n' "$folder" "${folder//\//_}"
}
