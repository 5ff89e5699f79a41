#!/bin/sh
# SPDX-License-Identifier: MIT
# Runs every row of the tables of verdict.md and compares what it promises with what comes out.
# Usage: verdicts.sh <tresk program> <verdict.md>
tresk=$(realpath "$1") && page=$(realpath "$2") || exit 2
tmp=$(mktemp -d) && cd "$tmp" || exit 2
trap 'rm -rf "$tmp"' EXIT
export LC_ALL=C ASAN_OPTIONS=exitcode=99:detect_leaks=0
status=0

make_file() { # <name> <cell that tells its contents>
    rm -rf "$1"
    case $2 in
    '(none)') ;;
    '(folder)') mkdir "$1" ;;
    '(empty)') : >"$1" ;;
    [=A]*) printf '%b\n' "$(printf '%s\n' "$2" | sed 's| / |\n|g' | sed -E 's/^=([A-Z]+)$/=\1 1 27 0/
        s/^=([A-Z]+) (.*) (.*) (.*)/* ANALYSIS \1 P V * RERUN_NUMBER \2 TEMPERATURE \3 MODIFY \4/')" >"$1" ;;
    *) make_file "$1" "=OP / A 0 $2" ;;
    esac
}

# Runs a comparison; what came out is left in $code, $name, $bits and $marker.
run() { # <option>...
    "$tresk" golden regression "$@" 2>transcript
    code=$? name=- bits=0 marker=pass
    eval "$(sed -n "s/^ Comparison result:  \([A-Z_]*\)  (exit status = \(.*\))/name=\1 bits=\2/p
        s/^ Comparison result:  PASS/name=PASS/p; s/^ A .*\]  *\(<.*\)/marker='\1'/p" transcript)"
}

expect() { # <what> <wanted> <what came out>
    [ "$2" = "$3" ] && return
    printf '%s\n    %s: %s, not %s\n' "$row" "$1" "$3" "$2"
    status=1
}

check_mode() { # <option, or nothing> <marker>
    run $1
    expect "marker $1" "$2" "$marker"
    case $2 in
    pass) expect "grade $1" '0 PASS 0' "$bits $name $code" ;;
    *nan*) expect "grade $1" '257 FAIL_SV 5' "$bits $name $code" ;;
    *) expect "grade $1" '1 FAIL_V 3' "$bits $name $code" ;;
    esac
}

rows=0
sed -n '/^|/{s/ *| */|/g; s/`//g; p}' "$page" >rows
while IFS='|' read -r _ golden regression first second third fourth fifth _; do
    row="| $golden | $regression | $first | $second | ..."
    case $golden$second in
    golden*) table=$second ;;
    --*) ;;
    *)
        rows=$((rows + 1))
        make_file golden "$golden"
        make_file regression "$regression"
        if [ "$table" = -Aonly ]; then
            check_mode '' "$first"
            check_mode -Aonly "$second"
            check_mode -Ronly "$third"
            check_mode -AorR "$fourth"
            check_mode -AandR "$fifth"
        else
            run $first
            [ "$name" != - ] || bits=-
            expect grade "$second, $third" "$bits, $name ($code)"
            grep -qaF -e "$fourth" transcript || expect transcript "$fourth" "$(tail -n 9 transcript)"
        fi
        ;;
    esac
done <rows
echo "$rows rows"
[ $rows -gt 100 ] || status=1
exit $status
