# Makes one table of the output of Google Benchmark. Puts the time of "work, limit/1000", the minimum for the same
# work, into the row of "work/1000".

# name, time, unit, CPU time, unit, iterations, counters
{
    for (at = 3; at < NF && !($at ~ /^(us|ms)$/ && $(at + 2) == $at); at++)
        ;
    if (at >= NF)
        next
    name = $1
    for (i = 2; i < at - 1; i++)
        name = name " " $i
    sub(/\/real_time$/, "", name)
    size = ""
    if (match(name, /\/[0-9]+$/)) {
        size = substr(name, RSTART + 1)
        name = substr(name, 1, RSTART - 1)
    }
    time = $(at - 1)
    if (sub(/, limit$/, "", name)) {
        limit[name, size] = time
        next
    }
    rows++
    row[rows] = name SUBSEP size
    measured[rows] = time
    unit[rows] = $at == "us" ? "µs" : $at
    for (i = at + 4; i <= NF; i++) {
        split($i, counter, "=")
        also[rows] = also[rows] (also[rows] == "" ? "" : ", ") counter[2] " " counter[1]
    }
}

END {
    print "| Work | Size | Time | Limit | Ratio | Also |"
    print "|---|--:|--:|--:|--:|---|"
    for (i = 1; i <= rows; i++) {
        split(row[i], part, SUBSEP)
        least = (row[i] in limit) ? limit[row[i]] : ""
        printf "| %s | %s | %s | %s | %s | %s |\n", part[1], part[2], Round(measured[i]) " " unit[i],
            least == "" ? "" : Round(least), least == "" ? "" : sprintf("%.2f", measured[i] / least), also[i]
    }
}

# rounds to three digits
function Round(number) {
    return number >= 100 ? sprintf("%.0f", number) : number >= 10 ? sprintf("%.1f", number) : sprintf("%.3g", number)
}
