#!/bin/sh
# SPDX-License-Identifier: MIT
# The data of the reports of the samples, byte for byte: samples.sh [--bless] <tresk-report>
set -eu
bless=
[ "${1-}" != --bless ] || { bless=1 && shift; }
report=$(realpath "$1")
cd "$(dirname "$0")"
wanted=$PWD/samples
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
unset TRESK_DEBUG KORSIM3_REVERSE_BYTES
cd ../../samples
status=0
for sample in follower halfwave lc_filter nand sallen_key; do
    (cd $sample && "$report" pair --quiet --out "$tmp/$sample" golden.pun regress.pun) || true
    cut -f 1-9,11- "$tmp/$sample/summary.tsv" >"$tmp/$sample/summary" # all but the seconds
    for file in result.json findings.csv summary; do
        if [ "$bless" ]; then
            mkdir -p "$wanted" && cp "$tmp/$sample/$file" "$wanted/$sample.$file"
        else
            diff "$wanted/$sample.$file" "$tmp/$sample/$file" || status=1
        fi
    done
done
exit $status
