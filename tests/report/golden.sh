#!/bin/sh
# SPDX-License-Identifier: MIT
# Runs golden cases through tresk-report, which must print and return what tresk does. Usage:
# golden.sh <tresk-report> <tresk> <folder> <case folder>...; the results of all comparisons go to the folder.
# What compares nothing is left to tresk, and a death has an exit code of its own.
set -eu
REPORT=$(realpath "$1")
TRESK=$(realpath "$2")
RESULTS=$3
shift 3
rm -rf "$RESULTS" && mkdir -p "$RESULTS"
RESULTS=$(realpath "$RESULTS")
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
export REPORT TRESK RESULTS WORK

cat >"$WORK/tresk" <<'END'
#!/bin/sh
"$REPORT" pair --findings 500 --out "$WORK/out" "$@" >"$WORK/stdout" 2>"$WORK/stderr"
code=$?
if [ $code = 64 ]; then
    grep -q 'a file too many' "$WORK/stderr" || ! "$TRESK" "$@" 2>&1 </dev/null | grep -q '^Reading comp' ||
        { echo "refused: $*"; exit 64; } >&2
    exec "$TRESK" "$@"
fi
cat "$WORK/stderr" >&2
cmp "$WORK/stderr" "$WORK/out/transcript.txt" >&2
cp "$WORK/out/result.json" "$RESULTS/$$.json"
[ "$(cat "$WORK/stdout")" = "$WORK/out/report.html" ] || [ $code = 0 ] || echo "no path of a page" >&2
[ $code != 6 ] || code=$(sed -n 's/.*"died":"the comparison ended with exit code \([0-9]*\) .*/\1/p' "$WORK/out/result.json")
exit "$code"
END
chmod +x "$WORK/tresk"
for folder; do
    shift
    case $folder in
    */index-* | */help-text) ;; # run only once each, since they change files or print the program's path
    *) set -- "$@" "$folder" ;;
    esac
done
"$(dirname "$0")/../golden.sh" "$WORK/tresk" "$@"
