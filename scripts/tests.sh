# Finds the program of a test class. Sourced by other scripts.

# test_program <class>: prints the path of the test program relative to the build folder, or nothing if the class does
# not exist
test_program() {
    local source folder
    source=$(find tests -name "$1.cpp")
    [ -n "$source" ] || return 0
    folder=$(dirname "${source#tests/}")
    [[ $folder != safety/* ]] || folder=safety # all its subfolders belong to one program
    printf 'tests/%s/tests_%s\n' "$folder" "${folder//\//_}"
}
