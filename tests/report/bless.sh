#!/bin/bash
# SPDX-License-Identifier: MIT
# Tuning and blessing over the pairs of a tree: bless.sh <tresk-report> <tresk> <folder of the kit>
set -eu
report=$(realpath "$1") TRESK=$(realpath "$2") kit=$(realpath "$3")
for tool in strace zstd; do
    command -v $tool >/dev/null || { echo "skipped: report.bless needs $tool" && exit 77; }
done
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
cd "$tmp"
export TRESK LC_ALL=C TMPDIR=$tmp ASAN_OPTIONS=detect_leaks=0
unset CI TRESK_DEBUG KORSIM3_REVERSE_BYTES
status=0
complain() {
    echo "$*"
    status=1
}
head='* ANALYSIS OP P V * RERUN_NUMBER 1 TEMPERATURE 27 MODIFY 0'
punch() { # <file> <value>...: operating points A, B ...
    mkdir -p "${1%/*}"
    printf '%s\n' "$head" >"$1"
    file=$1 name=A
    shift
    for value; do
        echo "$name 0 $value" >>"$file"
        name=B$name
    done
}
pair() { # <path> <golden value> <regression value>
    # shellcheck disable=SC2086 # words
    punch "golden/$1" $2 && punch "regression/$1" $3
}

# The pairs, with reports as the kit leaves them
prepare() {
    rm -rf golden regression out keep
    pair a.pun 5 5.1
    pair "it's/b \$c.pun" 1 2
    pair nan.pun 1 nan
    pair same.pun 3 3
    pair own.pun 1 1.4
    pair less.pun '1 2' 1
    pair negative.pun -5 -5.001
    pair none.pun 1 ''
    pair noreport.pun 1 2
    pair turned.pun 1 1.00001
    printf '%s\n' 'own.pun -r 0.2' >golden/tresk.options
    gzip -k regression/turned.pun && rm regression/turned.pun
    zstd -q --rm golden/turned.pun
    "$kit/tresk-list" golden regression out
    while IFS= read -r line; do
        own=${line%%$'\t'*} path=${line##*$'\t'}
        gzip -dc <regression/turned.pun.gz >turned && zstd -qdcf golden/turned.pun.zst >golden.turned
        regression=regression/$path golden=golden/$path
        [ "$path" != turned.pun ] || regression=turned golden=golden.turned
        # shellcheck disable=SC2086 # words
        [ "$path" = noreport.pun ] ||
            "$report" pair --quiet --out "out/report/$path" $own "$golden" "$regression" || true
    done <out/pairs
}
prepare

# Each step of the staircase counts what tresk counts.
"$report" tune out >steps && code=0 || code=$?
[ "$code" = 1 ] || complain "tune: exit code $code"
mapfile -t lines < <(sed -n 's/^ *\(.*[^ ]\)  *\([0-9]*\) of 10 pairs\(;.*\)*$/\1|\2/p' steps)
for line in "${lines[@]}"; do
    options=${line%|*} count=${line#*|}
    passing=0
    for golden in $(cd golden && find . -name '*.pun' ! -name '*\ *'); do
        own=''
        [ "$golden" != ./own.pun ] || own='-r 0.2'
        # shellcheck disable=SC2086 # words
        ! "$TRESK" $options $own "golden/$golden" "regression/$golden" 2>/dev/null || passing=$((passing + 1))
    done
    # shellcheck disable=SC2086
    for two in "golden/it's/b \$c.pun|regression/it's/b \$c.pun" "golden.turned|turned"; do
        ! "$TRESK" $options "${two%|*}" "${two#*|}" 2>/dev/null || passing=$((passing + 1))
    done
    [ "$passing" = "$count" ] || complain "tune: $options: $passing pass instead of $count"
done
[ ${#lines[@]} -ge 8 ] || complain "tune: $(cat steps)"

bless() { "$report" bless "$@"; }
reason='the models of the resistors are new'
contents() { find golden regression out -type f -exec sha256sum {} + | sort; }
contents >before
expect() { # <exit code> <regular expression> <arguments>...
    local wanted=$1 text=$2 code=0
    shift 2
    bless "$@" >printed 2>&1 </dev/null || code=$?
    if [ $code = "$wanted" ] && grep -q -e "$text" printed; then return; fi
    complain "exit code $code instead of $wanted: $*: $(cat printed)"
}
expect 64 '10 characters' --reason 'too short' out a.pun
expect 64 'one line' --reason "two lines${TMPDIR:+$'\n'}of reason" out a.pun
expect 64 'no path' --reason "$reason" out
expect 64 'no path' --reason "$reason" --list /dev/null out
expect 64 'reason' out a.pun
expect 64 'no list of pairs' --reason "$reason" golden a.pun
CI=true expect 1 'where CI is set' --yes --reason "$reason" out a.pun
expect 0 'would bless a.pun (FAIL_V, 1 failing' --reason "$reason" out a.pun
while IFS='|' read -r path text; do
    expect 1 "refused $path: .*$text" --yes --reason "$reason" out "$path"
done <<'END'
nowhere.pun|not in the list
nan.pun|not a number
same.pun|are the same
none.pun|holds no results
noreport.pun|has no report
END
contents | grep -v blessings.tsv | cmp - before || complain 'refusals have left something behind'
[ ! -s golden/blessings.tsv ] || complain 'a refusal is on record'

# The old file is kept, links, modes and packing stay, the record has all fields; it stops at what is refused.
mv golden/a.pun golden/real && ln -s real golden/a.pun && chmod 640 golden/real
cp golden/real old
printf '%s\n' a.pun "it's/b \$c.pun" turned.pun nan.pun own.pun >list
expect 1 '3 blessed, 1 refused, 1 not looked at' --yes --keep keep --reason "$reason" --list list out
{ cmp golden/real regression/a.pun && cmp old keep/a.pun && [ -h golden/a.pun ]; } || complain 'a.pun'
[ "$(stat -c %a golden/real)" = 640 ] || complain 'mode'
cmp "golden/it's/b \$c.pun" "regression/it's/b \$c.pun" || complain 'a path with blanks'
zstd -qdc golden/turned.pun.zst | cmp - turned || complain 'a packed file'
[ "$(cut -f 3 golden/blessings.tsv)" = "$(head -n 3 list)" ] || complain "record: $(cat golden/blessings.tsv)"
awk -F '\t' -v reason="$reason" 'NF != 16 || $16 != reason || $13 != "default -a 1e-12 -r 0.01"' golden/blessings.tsv |
    grep . && complain 'fields of the record'
expect 1 'has changed since it was compared' --yes --reason "$reason" out a.pun
expect 0 'blessed nan.pun' --yes --even-nan --reason "$reason" out nan.pun
expect 1 'lies in the golden tree' --yes --keep golden/x --reason "$reason" out own.pun
echo >>regression/own.pun
expect 1 'has changed since it was compared' --yes --reason "$reason" out own.pun

# Two at a time
prepare
for process in 1 2; do bless --yes --reason "$reason" out a.pun >"printed.$process" 2>&1 & done
wait
[ "$(cat printed.? | grep -c '^blessed a.pun') $(wc -l <golden/blessings.tsv)" = '1 1' ] ||
    complain "two at a time: $(cat printed.?)"

# Killed, or denied something, at every step: the old or the new file, and one line on record in the end
prepare
cp golden/a.pun old
cp regression/a.pun new
steps=0
one_fault() { # <calls> <fault> <number>
    cp old golden/a.pun
    rm -rf golden/blessings.* keep
    {
        strace -o trace -e "trace=$1" -e "inject=$1:$2:when=$3" \
            "$report" bless --yes --keep keep --reason "$reason" out a.pun >printed 2>&1 </dev/null || true
    } 2>/dev/null
    grep -qE 'INJECTED|killed by' trace || return 1
    steps=$((steps + 1))
    cmp -s golden/a.pun old || cmp -s golden/a.pun new || complain "$*: half a golden file"
    bless --yes --keep keep --reason "$reason" out a.pun >>printed 2>&1 || true
    { cmp golden/a.pun new && cmp keep/a.pun old; } || complain "$*: $(cat printed)"
    [ "$(wc -l <golden/blessings.tsv)" = 1 ] || complain "$*: record: $(cat golden/blessings.tsv printed)"
    [ "$(cd golden && echo *.blessing *.pending*)" = '*.blessing *.pending*' ] || complain "$*: leftovers: $(ls golden)"
}
for calls in '?open,openat' '?unlink,?unlinkat' '?rename,?renameat,?renameat2' write fsync ?fchmod \
    '?fork,?vfork,?clone,?clone3' flock close; do
    for fault in signal=KILL error=EIO; do
        [ "$calls$fault" != closeerror=EIO ] || continue # of no consequence where all is synced before
        number=1
        while one_fault "$calls" "$fault" $number; do number=$((number + 1)); done
    done
done
[ $steps -gt 60 ] || complain "only $steps faults"
echo "$steps faults"
exit $status
