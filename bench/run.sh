#!/bin/bash
# SPDX-License-Identifier: MIT
# Measures the built program as whole processes against what a user would take instead, and prints
# the table of its goals. With --quick the data is small and the figures mean nothing: a check that
# all of this still works. Peers that are not installed (numdiff, h5diff and h5import) are left out.
# usage: bench/run.sh [--quick] [build folder]
set -euo pipefail
export LC_ALL=C

runs=9 slow_runs=3 tiny_runs=301
text=100MB binary=200MB steps="1MB 10MB 100MB"
signals="1000 10000 100000" values=100000 lines=1000000
if [ "${1:-}" = --quick ]; then
    shift
    runs=3 slow_runs=1 tiny_runs=9
    text=200kB binary=400kB steps="2kB 20kB 200kB"
    signals="10 100 1000" values=1000 lines=10000
fi
build=$(realpath "${1:-$(dirname "$0")/../build}")
tresk=$build/tresk
make_punch=$build/bench/make_punch
timed_run=$build/bench/timed_run
for program in "$tresk" "$make_punch" "$timed_run"; do
    if [ ! -x "$program" ]; then
        echo "$program is missing: build with -DTRESK_BUILD_BENCH=ON" >&2
        exit 2
    fi
done
work=$(mktemp -d "${TMPDIR:-/tmp}/tresk_bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
cd "$work"

calc() { # <expression>
    awk "BEGIN { printf(\"%.3g\", $1) }"
}

# Makes name.golden and name.regress and reads them once. Sets points to the points of one file.
make() { # <kind> <size> <name> [--raw]
    points=$("$make_punch" "$1" "$2" "$3.golden" "$3.regress" "${@:4}")
    cat "$3.golden" "$3.regress" >/dev/null
}

# Runs commands in turn. Sets seconds and kibibytes of each. The first must end with status grade,
# the others with 0: a figure of a run that fails is worth nothing.
grade=0
measure() { # <title> <runs> <command>... [--vs <command>...]...
    local expected=$grade line
    seconds=() kibibytes=()
    while read -r -a line; do
        if [ "${line[2]}" != "$expected" ]; then
            echo "$1: exit status ${line[2]} instead of $expected" >&2
            exit 1
        fi
        seconds+=("${line[0]}") kibibytes+=("${line[1]}")
        expected=0
    done < <("$timed_run" "${keep[@]}" "${@:2}")
    echo "$1: ${seconds[*]} s, ${kibibytes[*]} KiB" >&2
}
keep=()

# Adds a row to the table. A figure is good at or below goal and floor ("<="), or above (">=").
row() { # <measure> <relation> <goal> <floor> <figure> <unit>
    local verdict
    verdict=$(awk "BEGIN { print($5 $2 $3 ? \"goal\" : $5 $2 $4 ? \"floor\" : \"missed\") }")
    table+="| $1 | $2 $3 $6 | $2 $4 $6 | $5 $6 | $verdict |"$'\n'
}
skip() { # <measure> <missing program>
    table+="| $1 | | | | skipped: no $2 |"$'\n'
}
table=

# The peak of the first command just measured, on pairs of points each.
memory_row() { # <measure>
    local peak=$((kibibytes[0] * 1024)) of=$((2 * points))
    local verdict=missed
    [ $peak -gt $((26 * of + (16 << 20))) ] || verdict=floor
    [ $peak -gt $((25 * of + (8 << 20))) ] || verdict=goal
    table+="| peak memory, $1 | <= 25 B a point + 8 MiB | <= 26 B a point + 16 MiB"
    table+=" | $(calc "($peak - 8 * 2 ^ 20) / $of") B a point + 8 MiB | $verdict |"$'\n'
}

# The larger of the two steps from one size to the next.
step_row() { # <measure> <goal> <floor>
    local first="${seconds[1]} / ${seconds[0]}" second="${seconds[2]} / ${seconds[1]}"
    row "$1" "<=" "$2" "$3" "$(calc "($first > $second ? $first : $second)")" "x a step"
}

measure_text() { # <kind>
    make "$1-text" $text text
    measure "$1 text" $runs "$tresk" text.golden text.regress --vs wc -l text.golden text.regress
    row "text pair, $1, against \`wc -l\`" "<=" 11 18 "$(calc "${seconds[0]} / ${seconds[1]}")" x
    if ! command -v numdiff >/dev/null; then
        skip "text pair, $1, against \`numdiff -q\`" numdiff
    else
        measure "$1 text and numdiff" $slow_runs "$tresk" text.golden text.regress --vs \
            numdiff -q -a 1e-12 -r 0.01 text.golden text.regress
        row "text pair, $1, against \`numdiff -q\`" ">=" 70 45 "$(calc "${seconds[1]} / ${seconds[0]}")" \
            "x quicker"
    fi
    memory_row "text pair, $1"
}

import_array() { # <raw doubles> <hdf5 file>
    printf '%s\n' "PATH data" "INPUT-CLASS FP" "INPUT-SIZE 64" "RANK 1" \
        "DIMENSION-SIZES $(($(stat -c %s "$1") / 8))" "OUTPUT-CLASS FP" "OUTPUT-SIZE 64" >array.config
    h5import "$1" -c array.config -o "$2" >/dev/null
    rm "$1"
    cat "$2" >/dev/null
}

measure_binary() { # <kind> <goal> <floor>
    make "$1" $binary binary --raw
    cp binary.golden binary.copy
    cat binary.copy >/dev/null
    measure "$1" $runs "$tresk" binary.golden binary.regress --vs cmp binary.golden binary.copy
    row "binary pair, $1, against \`cmp\`" "<=" "$2" "$3" "$(calc "${seconds[0]} / ${seconds[1]}")" x
    case $1 in
    *-float) ;;
    *) measure_h5diff "$1" ;;
    esac
    memory_row "binary pair, $1"
    rm binary.*
}

measure_h5diff() { # <kind>
    if ! command -v h5diff >/dev/null || ! command -v h5import >/dev/null; then
        skip "binary pair, $1, against \`h5diff -p\`" hdf5-tools
        return
    fi
    import_array binary.golden.raw binary.golden.h5
    import_array binary.regress.raw binary.regress.h5
    measure "$1 and h5diff" $runs "$tresk" binary.golden binary.regress --vs \
        h5diff -p 0.01 binary.golden.h5 binary.regress.h5
    row "binary pair, $1, against \`h5diff -p\`" ">=" 1.8 1 "$(calc "${seconds[1]} / ${seconds[0]}")" "x quicker"
}

measure_index() {
    make transient-text $text text
    keep=(--keep text.golden)
    measure "index mode" $runs "$tresk" -index text.golden --vs wc -l text.golden
    keep=()
    row "index mode, text file, against \`wc -l\`" "<=" 4 8 "$(calc "${seconds[0]} / ${seconds[1]}")" x
}

measure_steps() { # <title> <kind> <size>...
    local command=() size
    for size in "${@:3}"; do
        make "$2" "$size" "step$size"
        command+=(--vs "$tresk" "step$size.golden" "step$size.regress")
    done
    measure "$1" $runs "${command[@]:1}"
    rm step*
}

measure_values() {
    make op-values $values values
    if command -v numdiff >/dev/null; then
        measure "OP values" $runs "$tresk" values.golden values.regress --vs \
            numdiff -q -a 1e-12 -r 0.01 values.golden values.regress
        row "$values OP values against \`numdiff -q\`" ">=" 6 4 "$(calc "${seconds[1]} / ${seconds[0]}")" \
            "x quicker"
    else
        skip "$values OP values against \`numdiff -q\`" numdiff
    fi
}

measure_failing() {
    make op-values $lines passing
    make op-failing $lines failing
    grade=3
    measure "failing" $runs "$tresk" failing.golden failing.regress --vs \
        "$tresk" passing.golden passing.regress
    grade=0
    row "every value failing, a line each, against the passing pair" "<=" 0.5 1 \
        "$(calc "(${seconds[0]} - ${seconds[1]}) * 1e6 / $lines")" "us a line more"
}

measure_tiny() {
    make tiny 10 tiny
    measure "tiny pair" $tiny_runs "$tresk" tiny.golden tiny.regress --vs /bin/true
    row "tiny pair against \`/bin/true\`" "<=" 1.5 2.5 "$(calc "${seconds[0]} / ${seconds[1]}")" x
}

measure_text transient
measure_text ac
measure_index
rm text.*
measure_binary ac-double 2.2 5
measure_binary transient-double 2.8 5.5
measure_binary ac-float 3.7 6
measure_binary transient-float 3.7 6
# shellcheck disable=SC2086
measure_steps "${steps// /, } of text" transient-text $steps
step_row "time, ${steps// /, } of text" 10 12
# shellcheck disable=SC2086
measure_steps "${signals// /, } signals" many-signals $signals
step_row "time, ${signals// /, } signals of 4 points, shuffled" 10 13
measure_values
measure_failing
measure_tiny

echo "$(date +%F), $(nproc) x $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)," \
    "$(sed -n 's/^CMAKE_BUILD_TYPE:.*=//p' "$build/CMakeCache.txt") build, text $text, binary $binary"
printf '\n| measure | goal | floor | figure | verdict |\n|---|---|---|---|---|\n%s' "$table"
