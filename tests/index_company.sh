#!/bin/sh
# SPDX-License-Identifier: MIT
# What others do to a punch file while it is indexed, and what stands in the way of the side file.
# Usage: index_company.sh <tresk program> [<races of each kind>]
tresk=$(realpath "$1") && cd "$(dirname "$0")/../samples/nand" || exit 2
nand=$PWD/golden.pun
tmp=$(mktemp -d) && cd "$tmp" || exit 2
trap 'rm -rf "$tmp"' EXIT
export LC_ALL=C ASAN_OPTIONS=exitcode=99:detect_leaks=0
status=0

check() { # <what> <exit codes> <exit codes wanted> <file> <what it has to hold>
    [ "$2" = "$3" ] && cmp "$4" "$5" && return
    echo "$1: exit codes $2, wanted $3" && status=1
}

race() { # <what> <runs> <plain or indexed file>
    cp "$3" raced && pids='' && codes=''
    for _ in $(seq "$2"); do "$tresk" -index raced 2>/dev/null & pids="$pids $!"; done
    for pid in $pids; do wait "$pid"; codes=$codes$?; done
    check "$1" "$codes" "$(printf "%0$2d" 0)" raced indexed
    [ ! -e raced.punindex ] || { echo "$1: side file left" && status=1; }
}

cp "$nand" plain && cp plain indexed && "$tresk" -index indexed 2>/dev/null
for number in $(seq "${2:-100}"); do
    race "race $number of two" 2 plain
    race "race $number of two, indexed before" 2 indexed
    race "race $number of four" 4 plain
    race "race $number of four, indexed before" 4 indexed
done

# Whatever stands under the name of the side file is not written to. A folder: see the golden cases.
for obstacle in 'ln -s victim' 'ln victim' 'ln -s nowhere' mkfifo; do
    cp plain raced && echo kept >victim && cp victim kept
    $obstacle raced.punindex && timeout 9 "$tresk" -index raced 2>/dev/null
    check "$obstacle" $? 0 raced indexed
    cmp kept victim && [ ! -e nowhere ] || status=1
    rm -f raced.punindex
done

# Thousands of warnings, more than the pipe takes: the file changes while it is read.
{ sed 's/= TR /= STB /; 2q' plain && seq -f 'V%g 0 1' 9000; } >data && cp data table && "$tresk" -index table 2>/dev/null
{ cat data && echo 'V(LATE) 0 1'; } >late && cp late late-table && "$tresk" -index late-table 2>/dev/null
mkfifo pipe
for before in data table; do
    for change in 'echo "V(LATE) 0 1" >>busy' 'cp late new && mv new busy'; do
        cp $before busy
        { head -c 99999 >/dev/null && eval "$change" && cat >transcript; } <pipe &
        "$tresk" -index busy 2>pipe
        code=$? && wait $!
        check "$change, while $before is read" "$code" 1 busy late
        grep -q '^Problem appending index table to punch file.$' transcript || status=1

        # The same while the run waits for its turn: then it indexes what is there when it is let in.
        [ $before = data ] || continue
        cp data busy
        exec 9<busy && flock 9
        timeout 9 "$tresk" -index busy 2>/dev/null 9<&- &
        sleep 0.3 && eval "$change" && exec 9<&-
        wait $!
        check "$change, while the lock is held" $? 0 busy late-table
    done
done

# Entries of two MIREL runs that append to one file stay whole.
for _ in 1 2; do KORSIM3_INDEX_FILENAME=entries "$tresk" -indexmirel data 2>/dev/null & done
wait
grep -c '^\*\$:V[0-9]*,[0-9]*,1,VOLTS$' entries >count
echo 18000 | check 'MIREL entries' $? 0 count -
exit $status
