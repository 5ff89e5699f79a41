#!/bin/sh
# SPDX-License-Identifier: MIT
# What the machine may deny, and what may be in the way of a report: faults.sh <tresk-report> <tresk> [sanitized]
report=$(realpath "$1") && tresk=$(realpath "$2") && cd "$(dirname "$0")/../../samples/nand" || exit 2
resources=$(realpath ../../tests/resources.sh)
golden=$PWD/golden.pun
regress=$PWD/regress.pun # grade 3 against golden
tmp=$(mktemp -d) && cd "$tmp" || exit 2
trap 'rm -rf "$tmp"' EXIT
export LC_ALL=C ASAN_OPTIONS=exitcode=99:detect_leaks=0
status=0
"$tresk" "$golden" "$regress" 2>wanted

# A run with options and what it should end with; last what the folder "out" should hold.
pair() { # <what> <exit code> <regular expression that standard error holds> <files> <arguments>...
    what=$1 code=$2 text=$3 files=$4
    shift 4
    "$report" pair --out "${out:-out}" "$@" >stdout 2>stderr
    got=$?
    check
}
check() {
    listing=$(cd out 2>/dev/null && printf '%s ' *)
    if [ $got != "$code" ] || ! { [ -z "$text" ] || grep -q -e "$text" stderr; } || [ "$listing" != "$files" ]; then
        echo "$what: exit code $got, wanted $code; files $listing; standard error ends with:"
        tail -n 3 stderr
        status=1
    fi
}
data='findings.csv result.json summary.tsv transcript.txt '
all='findings.csv report.html result.json summary.tsv transcript.txt '

pair 'a failure' 3 'FAIL_V' "$all" "$golden" "$regress"
cmp wanted stderr && cmp wanted out/transcript.txt && [ "$(cat stdout)" = out/report.html ] || status=1
pair 'a pass, which removes the page' 0 PASS "$data" "$golden" "$golden"
pair 'a pass with a page' 0 PASS "$all" --always "$golden" "$golden"
pair 'no output' 3 '' "$all" --quiet "$golden" "$regress"
[ ! -s stdout ] && [ ! -s stderr ] || status=1
mv out/summary.tsv out/summary.tsv.new # as a run that is killed leaves it
pair 'an unfinished report' 3 FAIL_V "$all" "$golden" "$regress"

# 512-byte blocks: nothing, the transcript alone, all but the page
for blocks in 1 8 11; do
    (ulimit -f $blocks && exec "$report" pair --out out "$golden" "$regress") 2>&1 >/dev/null | cat >stderr
    got=73 code=73 what="at most $blocks blocks" text='no report of this FAIL_V: .*File too large' files='summary.tsv.new '
    check
    head -n -1 stderr | cmp - wanted || status=1
done
rm -r out
out=/proc/none/out
pair 'no permission' 73 'no report of this FAIL_V: cannot write /proc/none' '' "$golden" "$regress"
out=
mkdir out && echo mine >out/file
pair 'a folder that is no report' 64 'holds no report' 'file ' "$golden" "$regress"
out=out/file/below
pair 'a file above the folder' 64 'not a folder' 'file ' "$golden" "$regress"
rm -r out

# A comparison that waits for its second file is killed.
mkfifo waiting
"$report" pair --out out "$golden" waiting >stdout 2>stderr &
until grep -qs 'Reading comparison' out/transcript.txt.new; do sleep 0.02; done
for process in /proc/[0-9]*; do
    ! grep -qs "^PPid:.$!\$" "$process/status" || kill -9 "${process#/proc/}"
done
wait $!
got=$? code=6 what='a comparison that is killed' text='ended by signal 9' files=$all
check
grep -q '"state":"read".*"state":"not read".*"reltol":0.01.*NO_GRADE.*signal 9' out/result.json || status=1
rm -r out
if [ -z "${3-}" ]; then # sanitizers need address space of their own
    # shellcheck disable=SC3045
    (ulimit -v 60000 && head -c 60000000 /dev/zero | tr '\0' x |
        exec "$report" pair --out out /dev/stdin "$golden") >stdout 2>stderr
    got=$? code=6 what='out of memory' text='Out of main memory' files=$all
    check
fi

# Whatever tresk survives, with its grades, but for a report beyond the file limit
cat >program <<END
#!/bin/sh
[ "\$1" != -index ] || exec "$tresk" "\$@"
"$report" pair --out "$tmp/out.\$\$" "\$@" >/dev/null
case \$? in
6) exit 1 ;;
73) exit 3 ;;
*) exit \$? ;;
esac
END
chmod +x program
"$resources" program ${3+"$3"} || status=1
exit $status
