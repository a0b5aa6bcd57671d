# Prints a table of doc/performance.md from the figures that scripts/bench.sh measured.
#
#     awk -v table=NAME -f tables.awk FIGURES        NAME: series, runs or instructions
#     awk -F, -v table=operations -f tables.awk CSV  what Google Benchmark printed

# A whole number, with commas between thousands.
function count(value,    digits, text) {
    digits = sprintf("%.0f", value)
    for (; length(digits) > 3; digits = substr(digits, 1, length(digits) - 3))
        text = "," substr(digits, length(digits) - 2) text
    return digits text
}

# A measured number, with at least three digits.
function figure(value) {
    if (value < 9.995) return sprintf("%.2f", value)
    if (value < 99.95) return sprintf("%.1f", value)
    return count(value)
}

# Adds a row to the two tables of operations: the benchmark, what it does, what its sizes count, and
# what its time grows with. An operation on strings has no growth: its row ends with allocations.
function operation(name, text, sizes, growth) {
    order[++operations] = name
    label[name] = text
    unitOfSize[name] = sizes
    grows[name] = growth
}

function rowOf(name) {
    return "| " label[name] " | " sizes[name] " " unitOfSize[name] " | " times[name] " " \
        unit[name] " | " (name in allocations ? allocations[name] : grows[name]) " |"
}

BEGIN {
    operation("Load", "Load a document", "lines", "lines")
    operation("Lookup/Hit", "Lookup, found at the end", "lines", "lines")
    operation("Lookup/Miss", "Lookup, missed at the end", "lines", "lines")
    operation("MissedLookups", "n missed lookups in n lines", "lines", "n²")
    operation("ReplaceEntries", "n replaced entries in n lines, one write-back", "lines", "n²")
    operation("AddEntries", "n added entries to n lines, one write-back", "lines", "n²")
    operation("CountDuplicates", "Count duplicates", "functions", "functions²")
    strings = operations + 1
    operation("Append", "Append character by character", "characters")
    operation("Concatenate", "Concatenate two halves", "characters")
    operation("Find", "`Find`, at the end", "characters")
    operation("ParseTokens", "`ParseTokens`", "tokens")
}

table == "series" && NR == 1 {
    print "| Functions | Start of a process | awk, small CD | slotrpt, small CD" \
        " | awk, large CD | slotrpt, large CD |"
    print "|---:|---:|---:|---:|---:|---:|"
}
table == "series" {
    print "| " count($1) " | " figure(($2 + $5) / 2) " | " figure($3) " | " figure($4) " | " \
        figure($6) " | " figure($7) " |"
}

table == "runs" && NR == 1 {
    print "\n| Data | Start of a process | awk | slotrpt | slotrpt to start | slotrpt to awk" \
        " | Peak memory, KiB |"
    print "|---|---:|---:|---:|---:|---:|---:|"
}
table == "runs" {
    print "| " $1 " | " figure($2) " | " figure($3) " | " figure($4) " | " figure($4 / $2) " | " \
        figure($4 / $3) " | " ($5 == "" ? "" : count($5)) " |"
}

table == "instructions" && NR == 1 {
    print "\n| Data | awk | slotrpt |"
    print "|---|---:|---:|"
}
table == "instructions" { print "| " $1 " | " figure($2) " | " figure($3) " |" }

# Columns: name, iterations, real time, CPU time, unit, five more, allocations, bytes.
table == "operations" && match($1, /\/[0-9]+"$/) {
    name = substr($1, 2, RSTART - 2)
    size = substr($1, RSTART + 1, RLENGTH - 2)
    between = name in sizes ? " / " : ""
    sizes[name] = sizes[name] between count(size)
    times[name] = times[name] between figure($4)
    unit[name] = $5 == "us" ? "µs" : $5
    if (grows[name] == "") allocations[name] = allocations[name] between count($11)
}
END {
    if (table != "operations") exit
    print "\n| Operation | Sizes | CPU time | Grows with |\n|---|---|---|---|"
    for (i = 1; i < strings; ++i) print rowOf(order[i])
    print "\n| Operation | Sizes | CPU time | Allocations |\n|---|---|---|---|"
    for (i = strings; i <= operations; ++i) print rowOf(order[i])
}
