#!/bin/sh
# SPDX-License-Identifier: MIT
# Runs golden cases, or rewrites what they expect: golden.sh [--bless] <tresk program> <case folder>...
# A case: about (why it exists), cmd (shell lines, run in a copy of the folder), expected (standard
# error), exit (exit status), <name>.expected (the file <name> after the run; "stdout" is standard
# output, empty where it is not given), and input files. ./samples is a copy of the samples folder.
set -u
bless=
[ "${1-}" = --bless ] && bless=1 && shift
[ $# -ge 2 ] && [ -x "$1" ] || { sed -n 3p "$0"; exit 2; }
program=$(realpath "$1")
shift
samples=$(realpath "$(dirname "$0")/../samples")
tmp=$(mktemp -d) || exit 2
trap 'rm -rf "$tmp"' EXIT

unset TRESK_DEBUG KORSIM3_REVERSE_BYTES KORSIM3_INDEX_FILENAME MIREL_PUNCH_ADDITIONS
# 99 is no grade. A request that the heap can't fill must reach the program's own report.
sanitizer=exitcode=99:halt_on_error=1:detect_leaks=0:allocator_may_return_null=1
export LC_ALL=C SAMPLES="$tmp/case/samples"
export ASAN_OPTIONS=$sanitizer UBSAN_OPTIONS=$sanitizer:print_stacktrace=1

# Runs the case and collects in $tmp/got what its expectation files should hold.
run_case() { # <case folder>
    rm -rf "$tmp"/*
    mkdir "$tmp/bin" "$tmp/got" && ln -s "$program" "$tmp/bin/tresk" || return
    cp -R "$1" "$tmp/case" && cp -R "$samples" "$tmp/case/samples" || return
    (cd "$tmp/case" && PATH=$tmp/bin:$PATH exec sh ./cmd) \
        </dev/null >"$tmp/got/stdout.expected" 2>"$tmp/got/expected"
    echo $? >"$tmp/got/exit"
    for kept in "$1"/*.expected; do
        name=$(basename "$kept" .expected)
        [ ! -f "$tmp/case/$name" ] || cp "$tmp/case/$name" "$tmp/got/$name.expected"
    done
}

bless_case() { # <case folder>
    [ -e "$1/stdout.expected" ] || [ -s "$tmp/got/stdout.expected" ] || rm "$tmp/got/stdout.expected"
    cp "$tmp/got"/* "$1"
}

# Tells every difference between what came out and what the case expects.
check_case() { # <case folder>
    differs=0
    for name in $( (ls "$tmp/got"; cd "$1" && ls | grep '\.expected$') | sort -u); do
        wanted=$1/$name
        got=$tmp/got/$name
        [ -e "$wanted" ] || wanted=/dev/null
        [ -e "$got" ] && cmp -s "$wanted" "$got" && continue
        head -c 1000000 "$wanted" | cat -v >"$tmp/wanted" # a sparse file may have gigabytes
        head -c 1000000 "$got" | cat -v | diff -u --label "$1/$name" --label "what came out" "$tmp/wanted" -
        differs=1
    done
    return $differs
}

status=0
for folder; do
    run_case "$folder" || exit 2
    if [ "$bless" ]; then
        bless_case "$folder"
    elif ! check_case "$folder"; then
        status=1
        echo "FAILED: $(cat "$folder/about")"
        echo "To accept what came out: $0 --bless $program $folder"
    fi
done
exit $status
