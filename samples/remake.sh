#!/bin/bash
# SPDX-License-Identifier: MIT
# Simulates the circuits below netlists/ with ngspice, as they are and changed, converts the results and compares
# them. Fails where the grade or the numbers of findings are others than expected; the values are not looked at,
# since they differ between releases of the simulator. In the folder of a circuit:
#   circuit.cir  the netlist, which writes out.raw
#   change.sed   what makes the changed netlist of it
#   variants     a sed script a line, each for a further simulation in the same files; left out where one is enough
#   convert      options of raw2punch ("log" is the simulator's); left out without any
#   compare      options of tresk; left out without any
#   expected     the lines of the transcript that count findings, and the grade
# Usage: remake.sh [--bless] [BUILD [OUT [CIRCUIT...]]]; the punch files stay in OUT, --bless takes over what is
# found as what is expected.
set -euo pipefail
bless=
[ "${1:-}" != --bless ] || { bless=1; shift; }
netlists=$(realpath "$(dirname "$0")")/netlists
build=$(realpath "${1:-$(dirname "$0")/../build}")
out=${2:-$build/samples}
mkdir -p "$out"
out=$(realpath "$out")
circuits=("${@:3}")
[ ${#circuits[@]} -gt 0 ] || mapfile -t circuits < <(ls "$netlists")
status=0

options_in() { # <file>: sets options
    options=()
    [ ! -f "$1" ] || read -ra options <"$1"
}

simulate() { # <circuit> <golden or regress> <sed script>
    local circuit=$netlists/$1 variant
    local work=$out/$1/$2
    rm -rf "$work"
    mkdir -p "$work"
    cd "$work"
    { echo; cat "$circuit/variants" 2>/dev/null || true; } >variants
    while read -r variant; do
        sed -e "$3" "$circuit/circuit.cir" | sed -e "$variant" >circuit.cir
        if ! ngspice -b circuit.cir >>log 2>&1; then
            echo "$1: ngspice failed; see $work/log" >&2
            return 1
        fi
        cat out.raw >>all.raw
        rm out.raw
    done <variants
    options_in "$circuit/convert"
    "$build/raw2punch" "${options[@]}" all.raw "$out/$1/$2.pun"
}

# Whether the same kinds of results fail. Numbers from 20 up may differ by a fifth: some signals will always be near
# their tolerance.
agree() { # <expected> <found>
    awk '
        NR == FNR { expected[++lines] = $0; next }
        {
            split(expected[FNR], want)
            off = $2 - want[2]
            if ($1 == "Found" && want[2] >= 20 && off <= want[2] / 5 && -off <= want[2] / 5) $2 = want[2]
            if ($0 != expected[FNR]) bad = 1
        }
        END { exit bad || FNR != lines }' "$1" "$2" || { diff "$1" "$2"; return 1; }
}

compare() { # <circuit>
    cd "$out/$1"
    options_in "$netlists/$1/compare"
    "$build/tresk" "${options[@]}" golden.pun regress.pun 2>transcript || true
    sed -En 's/^ *(Found [0-9]+ .*) signal\(s\) with .*/\1/p; s/^ *(Comparison result: .*)/\1/p' transcript >found
    [ -z "$bless" ] || cp found "$netlists/$1/expected"
    agree "$netlists/$1/expected" found
}

for circuit in "${circuits[@]}"; do
    if simulate "$circuit" golden '' && simulate "$circuit" regress "$(cat "$netlists/$circuit/change.sed")" &&
        compare "$circuit"; then
        printf '%-16s %s\n' "$circuit" "$(tail -n 1 "$out/$circuit/found")"
    else
        echo "$circuit: not as expected"
        status=1
    fi
done
exit $status
