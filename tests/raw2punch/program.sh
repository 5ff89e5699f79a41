#!/bin/bash
# SPDX-License-Identifier: MIT
# Runs raw2punch on each folder of cases/ and compares what it writes. In a folder:
#   in.raw   a rawfile, and further input
#   args     the words behind the program, for a shell
#   exit     the exit code
#   stderr   the messages; left out without any
#   out.pun  the punch file, which tresk has to read without complaint; left out where there is to be none
# Then what files cannot show: a signal, a full disk, little memory.
# Usage: program.sh [--bless] RAW2PUNCH TRESK
set -eu
bless=
[ "$1" != --bless ] || { bless=1; shift; }
raw2punch=$(realpath "$1") tresk=$(realpath "$2")
cases=$(realpath "$(dirname "$0")")/cases
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LC_ALL=C ASAN_OPTIONS=detect_leaks=0
status=0

fail() {
    echo "$1"
    status=1
}

for case in "$cases"/*/; do
    name=$(basename "$case")
    rm -rf "$work/case"
    cp -r "$case" "$work/case"
    cd "$work/case"
    rm -f out.pun stderr
    code=0
    eval "\"\$raw2punch\" $(cat args)" 2>stderr || code=$?
    echo "$code" >./exit
    [ -s stderr ] || rm stderr
    diff -rN "$case" . || fail "case $name differs"
    if [ -f out.pun ]; then
        grade=0
        "$tresk" -d 2 out.pun out.pun 2>transcript || grade=$?
        [ $grade = 0 ] || fail "case $name: tresk ends with $grade"
        ! grep 'ERROR\|WARNING' transcript || fail "case $name: tresk complains"
        rm transcript
    fi
    [ -z "$bless" ] || cp -r . "$case"
done

cd "$work"
banner=$("$tresk" none none 2>&1 | grep -m 1 '^\*\*\*\*\* tresk, version ' || true)
[ "$banner" = "***** tresk, version $("$raw2punch" --version | cut -d ' ' -f 2) *****" ] || fail "another version than tresk"

mkfifo pipe
! timeout 10 "$raw2punch" pipe out.pun 2>stderr || fail "a pipe is taken"
grep -q 'error: pipe is not a regular file' stderr || fail "it waits for a pipe: $(cat stderr)"

header() { # <points>
    printf 'Title: x\nPlotname: Transient Analysis\nFlags: real\nNo. Variables: 8\nNo. Points: %d\nVariables:\n' "$1"
    printf '\t%d\tv(%d)\tvoltage\n' 0 0 1 1 2 2 3 3 4 4 5 5 6 6 7 7
    printf 'Binary:\n'
}
mkdir big
header 1000000 >big/in.raw
truncate -s $(($(stat -c %s big/in.raw) + 64 * 1000000)) big/in.raw

code=0
(ulimit -f 1024; exec "$raw2punch" -f binary_dbl big/in.raw big/out.pun) 2>stderr || code=$?
[ $code = 2 ] || fail "no room: exit code $code"
grep -q 'error: cannot write .*: File too large' stderr || fail "no room: $(cat stderr)"
[ "$(ls big)" = in.raw ] || fail "no room: something is left: $(ls big)"

"$raw2punch" big/in.raw big/out.pun &
sleep 0.2
kill -TERM $!
wait $! 2>/dev/null && fail "killed: exit code 0"
[ "$(ls big)" = in.raw ] || fail "killed: something is left: $(ls big)"

if [ "${3:-}" != sanitized ]; then
    for format in binary_dbl text; do
        (ulimit -v 60000; exec "$raw2punch" -f $format big/in.raw big/out.pun) || fail "$format: too much memory"
    done
fi
exit $status
