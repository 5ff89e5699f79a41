#!/bin/sh
# SPDX-License-Identifier: MIT
# What the machine may deny: a transcript that nobody takes, memory, files that are none, files that
# change while they are read. Usage: resources.sh <tresk program> [sanitized]
tresk=$(realpath "$1") && cd "$(dirname "$0")/../samples/nand" || exit 2
golden=$PWD/golden.pun
regress=$PWD/regress.pun # grade 3 against golden
tmp=$(mktemp -d) && cd "$tmp" || exit 2
trap 'rm -rf "$tmp"' EXIT
export LC_ALL=C ASAN_OPTIONS=exitcode=99:detect_leaks=0
status=0

check() { # <what> <exit code> <exit codes wanted> [<regular expression that the transcript holds>]
    case " $3 " in
    *" $2 "*) if [ -z "${4-}" ] || grep -qa -e "$4" transcript; then return; fi ;;
    esac
    echo "$1: exit code $2, wanted $3, and in the transcript '${4-}':" && tail -n 5 transcript
    status=1
}

mkfifo lonely other pipe later
"$tresk" lonely "$golden" 2>lonely-transcript & # takes a while to lose patience
lonely=$!
"$tresk" "$golden" "$regress" 2>/dev/full
check 'full disk' $? 3
"$tresk" "$golden" "$regress" <&- >&- 2>&-
check 'closed streams' $? 3
{ "$tresk" -d 2 "$golden" "$regress"; echo $? >code; } 2>&1 | head -c 9 >transcript
check 'reader that goes away' "$(cat code)" 3
(ulimit -f 8 && exec "$tresk" -d 2 "$golden" "$regress" 2>transcript)
check 'transcript beyond the file limit' $? 3

# Thousands of warnings, so that the transcript is written while the table is
{ sed 's/= TR /= STB /; 2q' "$golden" && seq -f 'V%g 0 1' 4000; } >data
cp data table && cp data closed && cp data limited && "$tresk" -index table 2>transcript
check 'index' $? 0 'unknown analysis type'
"$tresk" -index closed <&- 2>&-
cmp table closed || status=1
(ulimit -f $(($(wc -c <table) / 512 - 9)) && exec "$tresk" -index limited 2>/dev/null)
check 'index beyond the file limit' $? 1
cmp data limited || status=1

if [ -z "${2-}" ]; then # sanitizers need address space of their own
    (ulimit -v 60000 && head -c 60000000 /dev/zero | tr '\0' x | "$tresk" /dev/stdin "$golden" 2>transcript)
    check 'line beyond the address space' $? 1 'Out of main memory'
fi

cat "$golden" | "$tresk" /dev/stdin "$golden" 2>transcript
check 'pipe with a writer' $? 0 PASS
"$tresk" /proc/self/mem "$golden" 2>transcript # can be opened, but not read
check 'read error' $? 1 'Cannot open file /proc/self/mem'
"$tresk" -index other 2>transcript
check 'index of a pipe' $? 5 'Cannot open file other'
{ head -c 99999 >/dev/null && : >shrinking && cat >transcript; } <pipe &
for _ in 1 2 3 4 5 6 7 8 9; do cat "$golden"; done >shrinking && "$tresk" -d 1 shrinking "$golden" 2>pipe
code=$? && wait $!
check 'file that shrinks while it is read' $code '0 1 2 3 4' 'Comparison result'

# Points that stay in the file, which something happens to while tresk waits for the other file
{
    sed 2q "$golden" && echo 'V(1) DATA = BINARY'
    printf '%3000s' '' | tr ' ' 8 | sed 's/8/12345678/g' && printf '\377\377\377\377 \n'
} >binary
happens() { # <command on the file "points"> <exit code wanted> <regular expression>
    cp binary points && : >transcript
    "$tresk" points later 2>transcript &
    while ! grep -q comparison transcript; do sleep 0.01; done
    eval "$1"
    cat binary >later
    wait $!
    check "points, then $1" $? "$2" "$3"
}
happens : 0 'PASS'
happens 'mv points away; echo >points' 0 PASS
happens 'echo >points' 5 'Cannot open file points'
happens 'echo >>points' 5 'exit status = 2'
happens 'printf 9 | dd of=points bs=1 seek=9000 conv=notrunc 2>/dev/null' '3 5' 'Cannot open file points'

wait $lonely
code=$? && mv lonely-transcript transcript
check 'pipe without a writer' $code 1 'Cannot open file lonely'
exit $status
