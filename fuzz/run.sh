#!/bin/bash
# SPDX-License-Identifier: MIT
# Fuzzes the whole programs with AFL++ under AddressSanitizer and UBSan, on files cut from the samples and small
# rawfiles.
# Usage: fuzz/run.sh [seconds per target [target...]]; BUILD_DIR names another build folder, JOBS the
# targets run at a time. A further run goes on where the last one stopped. Lists the inputs that crashed
# or hung the program, and fails, until they are removed.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-600}
shift || true
build=$(realpath -m "${BUILD_DIR:-build-fuzz}")
findings=$build/findings
golden=$build/golden.pun
export findings golden seconds build fuzz=$PWD/fuzz
# Containers neither pin processors nor let the governor or the core pattern be set.
export AFL_SKIP_CPUFREQ=1 AFL_NO_AFFINITY=1 AFL_I_DONT_CARE_ABOUT_MISSING_CRASHES=1 AFL_NO_UI=1
export AFL_AUTORESUME=1 AFL_FAST_CAL=1
unset TRESK_DEBUG KORSIM3_REVERSE_BYTES

# The arguments of a target; @@ is the fuzzed file, which is written afresh for every execution, so
# that what the index mode does to it is gone by then.
declare -A arguments=(
    [reference]="@@ $golden"
    [comparison]="$golden @@"
    [dump]="-d 39 -desert @@ $golden"  # both dumps, the mask arithmetic, the other integration
    [trace]="-d 24 -AandR $golden @@"  # the traces of the transient comparison
    [itself]="-Aonly -a -1 @@ @@"      # every signal finds its partner, and every value fails
    [index]="-index @@"
    [mirel]="-indexmirel @@"
    [raw-text]="@@ $build/raw-text.pun"
    [raw-binary]="-f binary -c db,phase,magnitude,real,imaginary @@ $build/raw-binary.pun"
    [raw-log]="-f binary_dbl -l @@ $findings/seeds-raw/steps $build/raw-log.pun"
)
targets=("$@")
[ $# -gt 0 ] || targets=(reference comparison dump trace itself index mirel raw-text raw-binary raw-log)

install_afl() {
    command -v afl-clang-fast++ >/dev/null && return
    as_root=
    [ "$(id -u)" = 0 ] || as_root='sudo -n'
    $as_root apt-get -qq update || true
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq install -y afl++
}

# Keeps three points of every signal; then a second set in which the analyses have other names. The
# empty line in front is what the offset given to the mirel target skips.
make_seeds() { # <folder>
    mkdir -p "$1"
    for sample in samples/*/golden.pun; do
        seed=$1/$(basename "$(dirname "$sample")")
        perl -0777 -pe 's/^/\n/; s/((?:\n\+.*){2})(?:\n\+.*)+/$1/g;
            s/(DATA = BINARY_DBL\n(?:(?!\xff{8}).){48}).*?(?=\xff{8})/$1/gs;
            s/(DATA = BINARY\n(?:(?!\xff{4}).){24}).*?(?=\xff{4})/$1/gs
            ' "$sample" >"$seed"
        perl -pe 's/= TR /= PSS /; s/IN TR/IN DC/; s/= DC /= STB /; s/= AC /= PAC /; s/= NOISE/= XF/;
            s/TPUNCH TIME = \K/NAN/;
            s/(?<=V\(OUT\)) YUNITS/ PWL DELAY 1E-9$&/; s/\(A\)/A[2:0]/' "$seed" >"$seed-renamed"
    done
    # More points than are decoded at once: these stay in the file.
    perl -e 'for (["TR", "BINARY", "f>", 4], ["AC", "BINARY_DBL", "d>", 8]) {
        my ($analysis, $format, $value, $bytes) = @$_;
        print "\n* ANALYSIS = $analysis PROGRAM = KORSIM3\n";
        print "* RERUN_NUMBER = 1, TEMPERATURE = 27, MODIFY = 0\nV(LONG) YUNITS = V DATA = $format\n";
        print pack("($value)2", $_ * 1e-9, sin $_), $_ % 10 ? "" : "\n" for 1 .. 260;
        print "\xff" x $bytes, " \n" }' >"$1/long"
    perl -pe 's/(RERUN_NUMBER = )\d/${1}1/; s/(MODIFY = )\d/${1}0/' "$1"/* >"$golden" # all in one modify
}

# Each plot of the cases by itself, and binary ones: doubles, complex ones, those of a stepped sweep, variable after
# variable, with variables of fewer points. The second folder gets the logs.
make_raw_seeds() { # <folder for rawfiles> <folder for logs>
    mkdir -p "$1" "$2"
    perl -e '
        my ($folder, $number) = (shift, 0);
        sub seed { open my $file, ">", sprintf "%s/%s", $folder, shift or die; print $file @_ }
        sub header {
            my ($plot, $flags, $points, @variables) = @_;
            my $count = @variables;
            my $list = join "", map { "\t$_\t$variables[$_]\n" } 0 .. $#variables;
            "Title: t\nDate: Tue Mar 12 10:11:12 2024\nPlotname: $plot\nFlags: $flags\nNo. Variables: $count\n" .
                "No. Points: $points\nVariables:\n${list}Binary:\n" }
        my @two = ("time\ttime", "v(a)\tvoltage");
        seed "doubles", header("Transient Analysis", "real", 3, @two), pack "d<6", 0, 1, 2, 3, 4, 5;
        seed "steps", header("DC transfer characteristic", "real", 4, @two), pack "d<8", 0, 1, 2, 3, 0, 5, 2, 7;
        seed "complex", header("AC Analysis", "complex log", 2, @two), pack "d<8", 1, 0, 2, 3, 4, 0, 5, 6;
        seed "columns", header("Transient Analysis", "real fastaccess", 3, @two), pack "d<3f<3", 0, 1, 2, 3, 4, 5;
        seed "unpadded", header("Transient Analysis", "real unpadded", 2, @two, "m\tnotype dims=1"),
            pack "d<5", 0, 1, 2, 3, 4;
        local $/;
        for (@ARGV) { # the rawfiles of the cases
            open my $file, "<", $_ or die;
            my $bytes = <$file>;
            seed "case" . ++$number, $_ for $bytes =~ /\0/ ? $bytes : split /(?=^Title:)/m, $bytes }
        ' "$1" tests/raw2punch/cases/*/in.raw
    for log in tests/raw2punch/cases/*/*log; do
        cp "$log" "$2/$(basename "$(dirname "$log")")"
    done
}

fuzz() { # <target>
    local program=$build/tresk seeds=seeds dictionary=$fuzz/punch.dict
    case $1 in
    raw-*) program=$build/raw2punch seeds=seeds-raw dictionary=$fuzz/raw.dict ;;
    esac
    [ "$1" != raw-log ] || seeds='seeds-log'
    mkdir -p "$findings/$1"
    MIREL_PUNCH_ADDITIONS=1 KORSIM3_INDEX_FILENAME=/dev/null \
        afl-fuzz -i "$findings/$seeds" -o "$findings" -S "$1" -T "$1" -V "$seconds" -x "$dictionary" -m none \
        -t 2000 -- "$program" $2 >"$findings/$1.log" 2>&1 || tail "$findings/$1.log"
}

report() { # the state of all targets since their first run; the edges include those of the sanitizers
    printf '%-12s %12s %8s %6s %6s %8s %6s\n' target executions seconds edges of crashes hangs
    for stats in "$findings"/*/fuzzer_stats; do
        perl -ne '/^(\w+) *: (.*)/ and $s{$1} = $2; END { printf "%-12s %12d %8d %6d %6d %8d %6d\n",
            @s{qw(afl_banner execs_done run_time edges_found total_edges saved_crashes saved_hangs)} }' "$stats"
    done
    ! find "$findings" -path '*/crashes*/id*' -o -path '*/hangs*/id*' | grep .
}

install_afl
scripts/setup.sh cli11
cmake -S . -B "$build" -DCMAKE_CXX_COMPILER=afl-clang-fast++ -DTRESK_SANITIZE=ON -DTRESK_BUILD_TESTS=OFF
cmake --build "$build" --target tresk raw2punch --parallel "$(nproc)"
[ -d "$findings/seeds" ] || make_seeds "$findings/seeds"
[ -d "$findings/seeds-raw" ] || make_raw_seeds "$findings/seeds-raw" "$findings/seeds-log"
export -f fuzz
for target in "${targets[@]}"; do
    printf '%s\0%s\0' "$target" "${arguments[$target]}"
done | xargs -0 -n 2 -P "${JOBS:-$(nproc)}" bash -c 'fuzz "$@"' fuzz
report
