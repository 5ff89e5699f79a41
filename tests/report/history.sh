#!/bin/sh
# SPDX-License-Identifier: MIT
# What may happen to a history from outside: history.sh <tresk-report> <history_driver> [sanitized]
# Processes that are killed at every step of a write, two that add runs at the same time, files that are no
# history, a full disk, and the queries of the documentation.
report=$(realpath "$1") && driver=$(realpath "$2") && cd "$(dirname "$0")/../.." || exit 2
page=$PWD/docs/history.md
for tool in strace sqlite3; do
    command -v $tool >/dev/null || { echo "skipped: $tool is missing" && exit 77; }
done
tmp=$(mktemp -d) && cd "$tmp" || exit 2
trap 'rm -rf "$tmp"' EXIT
export LC_ALL=C ASAN_OPTIONS=exitcode=99:detect_leaks=0
status=0
fault() {
    echo "$*"
    status=1
}
runs() { # how many runs a history has
    "$report" history "$1" | sed -n 's/^Runs [0-9]* to \([0-9]*\):.*/\1/p'
}

# Killed at each call that changes a file, first while the history is made, then while a run is added.
kill_at_every_step() { # <history before, or nothing> <nights before>
    steps=0
    for call in openat pwrite64 write fsync fdatasync ftruncate link unlink fchmod; do
        step=0 code=137
        while [ "$code" = 137 ]; do
            step=$((step + 1))
            rm -f h h-* h.*
            [ -z "$1" ] || cp "$1" h
            strace -o trace -e trace=$call -e inject=$call:signal=KILL:when=$step \
                "$driver" h "$2" 1 40 300 >/dev/null 2>&1
            code=$?
            check_killed "$2"
        done
        steps=$((steps + step - 1))
    done
    [ $steps -gt 60 ] || fault "only $steps steps"
}
check_killed() { # <nights before>: all of the run is there, or nothing, and it can be added
    [ $code = 137 ] || [ $code = 0 ] || fault "$call $step ends with $code"
    if [ -e h ]; then
        "$report" history h >after
        cmp -s old after || cmp -s wanted after || fault "$call $step: part of a run is there"
    fi
    "$driver" h "$1" 1 40 300 >/dev/null || fault "$call $step: nothing can be added any more"
    "$report" history h >after
    cmp wanted after || fault "$call $step: not the history that it would have been"
}
if [ -z "${3-}" ]; then # sanitizers want no tracer
    echo 'No runs yet' >old
    "$driver" one 0 1 40 300 >/dev/null
    "$report" history one >wanted
    kill_at_every_step '' 0
    "$driver" many 0 9 40 300 >/dev/null
    cp many before
    "$report" history before >old
    "$driver" many 9 1 40 300 >/dev/null
    "$report" history many >wanted
    kill_at_every_step before 9
fi

# Many at a time, beginning with the making of it
for night in 0 1 2 3 4 5; do
    "$driver" both $night 1 300 300 >/dev/null || echo "writer $night" >>lost &
done
wait
{ [ ! -e lost ] && [ "$(runs both)" = 6 ]; } || fault 'writers disturb each other'
! ls both?* 2>/dev/null || fault 'files are left beside a history'

# Refused, and not touched
: >empty
head -c 5000 /dev/urandom >noise
sqlite3 foreign 'PRAGMA journal_mode = WAL; CREATE TABLE runs(run)' >/dev/null
cp both newer && printf '\002' | dd of=newer bs=1 seek=63 conv=notrunc 2>/dev/null
cp both trigger && sqlite3 trigger 'CREATE TRIGGER t AFTER INSERT ON runs BEGIN DELETE FROM pairs; END'
cp both column && sqlite3 column 'ALTER TABLE runs ADD COLUMN mine'
head -c 20000 both >short
cp both torn && dd if=/dev/urandom of=torn bs=4096 seek=3 count=4 conv=notrunc 2>/dev/null
mkdir folder
mkfifo pipe
while read -r name text; do
    [ ! -f "$name" ] || cp "$name" kept
    "$driver" "$name" 9 1 >/dev/null 2>stderr && fault "$name was taken"
    grep -q "^$name: .*$text" stderr || fault "$name: $(cat stderr)"
    [ ! -f "$name" ] || cmp "$name" kept || fault "$name was written to"
done <<END
empty no history
noise no history
foreign no history
folder no history
pipe no history
newer of version 2
trigger triggers
column lost its table runs
short damaged
torn damaged
none/h No such file
END
for name in empty none; do
    "$report" history $name >stdout 2>stderr
    { [ $? = 64 ] && [ ! -s stdout ] && grep -q "^tresk-report: $name: " stderr; } || fault "history $name"
done
if [ "$(id -u)" != 0 ]; then
    chmod a-w both
    "$driver" both 9 1 >/dev/null 2>stderr && fault 'a write-protected history was taken'
    chmod u+w both
fi
cp both full
(ulimit -f 300 && trap '' XFSZ && exec "$driver" full 20 1 20000 900) >/dev/null 2>stderr && fault 'no full disk'
[ "$(runs full)" = 6 ] || fault "a full disk: $(runs full) runs, $(cat stderr)"

# The queries of the documentation
"$driver" nightly 0 40 12 300 >/dev/null
awk '/^```/ { inside = $0 == "```sql"; if (inside) file = "query" ++n; next } inside { print >file }' "$page"
{ [ -e query5 ] && [ ! -e query6 ]; } || fault 'five queries'
for query in query1 query2 query3 query4 query5; do
    sqlite3 -readonly nightly <$query >$query.rows || fault "$query fails"
done
"$report" history nightly >table
same() { # <what> <rows> <rows of the table>
    { [ "$2" ] && [ "$2" = "$3" ]; } || fault "$1: '$2' against '$3'"
}
newest=$(sed -n 's/^Runs.* to \(....-..-..\) ..:.. UTC$/\1/p' table)
same 'what broke last' "$(wc -l <query1.rows)" "$(grep -c "^fails  *$newest" table)"
same 'what fails for longest' "$(cut -d'|' -f1,3 query2.rows | sort)" \
    "$(awk '/^FAIL/ { print $NF "|" $2 }' table | sort)"
same 'one night' "$(head -n 1 query3.rows | cut -d'|' -f2)" TR
same 'the course of a pair' "$(tail -n 30 query5.rows | cut -d'|' -f3 | tr -d '\n' | tr 03 .x)" \
    "$(sed -n '/ block1\/cell1.pun$/{ s/^.\{58\}//; s/  block.*//; s/[^.][^.][^.]/x/g; p; }' table)"
same 'breaks' "$(grep '^block1/cell1.pun|' query4.rows | cut -d'|' -f2)" \
    "$(cut -d'|' -f3 query5.rows | uniq | grep -c 3)"
exit $status
