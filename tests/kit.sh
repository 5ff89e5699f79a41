#!/bin/bash
# SPDX-License-Identifier: MIT
# Runs one piece of what is installed below a prefix on the samples, as its users do. The code of
# harness.md is taken from there. Usage: kit.sh PREFIX WORK PIECE. Says what it needs and ends with 77 when
# a tool of the piece is missing.
set -eu
prefix=$(realpath "$1") work=$2/$3 piece=$3
kit=$prefix/share/tresk/harness doc=$prefix/share/doc/tresk
here=$(realpath "$(dirname "$0")")
PATH=$prefix/bin:$kit:$PATH

need() { # <command>...
    for tool; do
        command -v "$tool" >/dev/null || { echo "skipped: kit.$piece needs $tool" && exit 77; }
    done
}
snippet() { # <language> [document]
    awk -v begin="^\`\`\`$1\$" '/^```/ { on = $0 ~ begin; next } on' "$doc/docs/${2:-harness.md}"
}
ends_with() { # <exit code> <command>...: keeps what it prints in the file output
    local expected=$1 code=0
    shift
    "$@" >output 2>&1 </dev/null || code=$?
    [ "$code" = "$expected" ] || { cat output; echo "exit code $code instead of $expected: $*"; exit 1; }
}
shows() { # <extended regular expression>...: each in a line of the output
    for line; do
        grep -qaE -- "$line" output || { cat output; echo "not shown: $line"; exit 1; }
    done
}

rm -rf "$work"
mkdir -p "$work/golden" "$work/regression" "$work/tmp"
cd "$work"
export TMPDIR=$work/tmp
sample() { # <sample> <file>: its golden side there
    cp "$doc/samples/$1/golden.pun" "$2"
}
for sample in follower lc_filter nand; do
    sample $sample golden/$sample.pun
    cp "$doc/samples/$sample/regress.pun" regression/$sample.pun
done
wrapper() { # <shell commands>: a program that runs them before tresk, which $file stands for the second file
    printf '%s\n' '#!/bin/sh' 'for file; do :; done' "$1" 'exec tresk "$@"' >wrapper
    chmod +x wrapper
}
small_trees() { # <pairs>: equal pairs 0.pun, 1.pun ... in g and r
    mkdir -p g r
    for ((i = 0; i < $1; ++i)); do sample nand g/$i.pun; cp g/$i.pun r; done
}
wait_until() { # <command>...
    for ((tries = 0; tries < 300; ++tries)); do "$@" >/dev/null 2>&1 && return; sleep 0.1; done
    echo "gave up on: $*"
    exit 1
}

case $piece in
shell)
    ends_with 0 sh -ec "$(snippet sh)"
    shows 'Comparison result:  FAIL_V  .exit status = 1' '^grade 3'
    ;;
make)
    need make
    snippet make >Makefile
    ends_with 2 make -k -j2 check
    shows '^out/follower.grade:FAIL_V' '^out/nand.grade:FAIL_V'
    cp golden/*.pun regression/
    ends_with 0 make check
    tee {golden,regression}/nothing.pun </dev/null
    ends_with 2 make -k check
    shows '^NO_DATA.*no signals'
    rm golden/nothing.pun # new in regression
    ends_with 2 make -k check
    mkdir empty
    ends_with 2 timeout 9 make -C empty -f ../Makefile check
    ;;
ctest)
    need ctest
    { head -n 4 golden/nand.pun; echo 'V(A) YUNITS = V DATA = NONE'; } >golden/broken.pun # no grade
    tee golden/empty.pun regression/empty.pun </dev/null
    sample nand "golden/a;b.pun"
    gzip -c <golden/nand.pun >"regression/a;b.pun.gz"
    snippet cmake >CMakeLists.txt
    cat >>CMakeLists.txt <<'END'
tresk_add_test(NAME broken GOLDEN golden/broken.pun REGRESSION x ACCEPT 0 1 2 3 4 5)
tresk_add_test(NAME empty GOLDEN golden/empty.pun REGRESSION regression/empty.pun)
tresk_add_test(NAME void GOLDEN golden/empty.pun REGRESSION regression/empty.pun ACCEPT PASS NO_DATA)
tresk_add_test(NAME names GOLDEN "golden/a;b.pun" REGRESSION "regression/a;b.pun.gz" TABLE golden/tresk.options)
END
    echo 'a;?.pun -Aonly # compressed on one side' >golden/tresk.options
    configure=(cmake -S . -B build -DCMAKE_PREFIX_PATH="$prefix")
    ends_with 0 "${configure[@]}"
    mv regression build
    ends_with 8 ctest --test-dir build --output-on-failure --output-junit results.xml
    shows ' filter .* Passed' ' follower .* Passed' ' nand .*Failed' ' broken .*Failed' '^TPHL .*<=A=R=' \
        ' empty .*Failed' ' void .*Passed' ' names .*Passed'
    grep -q '^TPHL ' build/results.xml
    echo 'x.pun -Aonly 1' >>golden/tresk.options
    ends_with 1 "${configure[@]}"
    shows 'tresk.options:2: no'
    ;;
check) # what tresk-check says to a pair: golden, regression, options, exit code, what it prints
    head='* ANALYSIS = OP PROGRAM = K DATE = 1 TIME = 1\n* RERUN_NUMBER = %s, TEMPERATURE = 27, MODIFY = 0\n* TITLE  %s\n'
    printf "$head" 1 '    Found 3 OP signal(s)' >void
    printf "$head"'A 0 1\n' 1 ' Comparison result:  PASS' >one
    printf "$head"'A 0 2\n' 1 'Done reading the punch files' >two
    printf "$head"'A 0 1\n' 2 '** COMPARING RERUN 1 MODIFY 0 DATA **' >other
    { cat one; echo '* ANALYSIS = Found'; } >fault
    : >empty
    gzip -c one >one.gz
    head -c 60 one.gz >cut.gz
    mkdir folder
    while read -r golden regression options code expected; do
        # shellcheck disable=SC2086 # words
        ends_with "$code" tresk-check "$golden" "$regression" ${options//,/ }
        shows "$expected"
    done <<'END'
one one , 0 ^PASS
one two , 3 ^FAIL_V.1
one.gz one , 0 ^PASS
cut.gz one , 6 cannot.be.decompressed
empty empty , 7 ^NO_DATA.0..no.signals.in.the.golden
void void , 7 ^NO_DATA.0..no.signals.in.the.golden
one empty , 4 ^FAIL_PSV
one void -nem,511 7 no.signals.in.the.regression
one empty -desert 7 no.signals.in.the.regression
one other -desert 7 no.rerun.and.modify
one other -nem,511 7 no.rerun.and.modify
fault fault , 7 up.to.a.fault
fault one , 7 up.to.a.fault
one fault , 7 up.to.a.fault
one folder , 7 regression.file.could.not.be.read
folder folder , 7 golden.file.could.not.be.read
one none , 5 ^FAIL_SV
one two one,one 6 ^NO_GRADE
one two -r 5 ^FAIL_SV
one one -index 64 no.option
END
    cmp one <(gzip -dc one.gz)
    # Runs that die: with a title that looks like a result at the end, behind the result
    for run in "tresk \"\$@\" 2>&1 | sed '/^Comparison file title/q' >&2; exit 0" 'tresk "$@"; kill -9 $$'; do
        wrapper "$run"
        TRESK=./wrapper ends_with 6 tresk-check one two
    done
    wrapper 'echo $$ >pid; exec sleep 60'
    TRESK=./wrapper tresk-check one.gz one &
    wait_until [ -s pid ]
    kill $!
    wait_until eval '[ -z "$(ls tmp)" ]'
    wait_until eval '! kill -0 "$(cat pid)"'
    ;;
tree) # 300 pairs with hostile names and contents: each gets the grade that tresk alone gives
    need parallel gzip zstd
    golden='-g {} %a' regression='r {#};' out='-o {= die =} %'
    names=(plain 'with space' "qu'ote" 'dq"uote' '$HOME' '$(touch pwned)' '`id`' -dash --resume ünï '日本' 'se;mi'
        'amp&' 'star*' 'br[ac]et' 'back\slash' $'tab\there' '%s%n' '{}{1}' '{#}' '~' '#hash' 'a=b' ' lead' 'trail '
        ..dots .hidden '|<>()' $'bad\xff' $'\e[1m')
    words=(PASS FAIL_I FAIL_PV FAIL_V FAIL_PSV FAIL_SV)
    samples=(follower lc_filter nand)
    pairs=0
    for folder in '' 'mod a/' -dir/ x/y/z/ '$1/' "it's/" '{}/' $'\xfe/' plain.pun.d/ %/; do
        mkdir -p "./$golden/$folder" "./$regression/$folder"
        for name in "${names[@]}"; do
            sample=${samples[pairs % 3]} g=./$golden/$folder$name.pun r=./$regression/$folder$name.pun
            sample "$sample" "$g"
            case $((pairs++ % 7)) in
            0 | 1) cp "$g" "$r" ;;
            2 | 3) cp "regression/$sample.pun" "$r" ;;
            4) head -c $((pairs * 97)) "$g" >"$r" ;;
            5) sed s/27.000/85.000/ "$g" >"$r" ;;
            6) tee "$g" "$r" </dev/null ;;
            esac
            code=0
            tresk "$g" "$r" 2>/dev/null || code=$?
            word=${words[code]}
            [ -s "$g" ] || word=NO_DATA
            printf '%s\t%s\n' "$word" "$folder$name.pun" >>expected
            [ $((pairs % 11)) != 0 ] || gzip "$g"
            [ $((pairs % 13)) != 0 ] || zstd -q --rm "$r"
        done
    done
    ln -s nowhere "./$golden/link.pun"
    printf 'FAIL_SV\tlink.pun\n' >>expected
    ends_with 7 tresk-parallel -j 2 "$golden" "$regression" "$out"
    [ "$(head -n 1 output | cut -c 1-8)" = 'NO_DATA ' ] # worst first
    [ "$(grep -ac '^PASS' output)" = 1 ]
    shows '^FAIL_SV        - +link.pun .missing in golden.' "^PASS +$(grep -ac ^PASS expected)$"
    diff <(sort expected) <(cut -f 1,5- "./$out/results" | sort)
    [ -z "$(ls tmp)" ] && [ ! -e pwned ] && [ "$pairs" = 300 ]
    tail -n 2 "./$out/transcripts/x/y/z/"'$HOME.pun.txt' | grep -q ' Comparison result:'
    ends_with 5 tresk-collect --accept-no-data --all "$out"
    [ "$(grep -ac . output)" = 310 ]
    for limit in 4 24; do # a full disk
        if (ulimit -f $limit && tresk-parallel "$golden" "$regression" full$limit) >output 2>&1; then exit 1; fi
    done
    ;;
reported_tree) # reports of a tree, and a disk that has no room for one
    need parallel ctest tresk-report
    cp regression/follower.pun golden/same.pun
    cp golden/same.pun regression
    gzip golden/nand.pun
    ends_with 3 tresk-parallel --report -j 2 golden regression out
    shows '^worst: FAIL_V' 'out/report/index.html$'
    [ "$(cd out/report && find . -name report.html | sort | xargs)" = \
        './follower.pun/report.html ./lc_filter.pun/report.html ./nand.pun/report.html' ]
    cmp out/transcripts/nand.pun.txt out/report/nand.pun/transcript.txt
    sed -i 's/^.*1/&2/' regression/nand.pun # another file: the old report must not pass for that of the next run
    mkdir out/report/nand.pun/report.html.new
    ends_with 3 tresk-parallel --report --resume -j 2 golden regression out
    shows '^FAIL_V +[0-9]+  nand.pun .the report could not be written'
    [ ! -e out/report/nand.pun/summary.tsv ]
    ends_with 64 tresk-parallel --resume golden regression out
    shows 'then reports: yes'
    printf '%s\n' 'cmake_minimum_required(VERSION 3.21)' 'project(one NONE)' 'enable_testing()' 'find_package(Tresk REQUIRED)' \
        'tresk_add_test(NAME x GOLDEN golden/lc_filter.pun REGRESSION ../regression/lc_filter.pun REPORT x)' >CMakeLists.txt
    ends_with 0 cmake -S . -B build -DCMAKE_PREFIX_PATH="$prefix"
    ends_with 8 ctest --test-dir build
    [ -e build/x/report.html ]
    ;;
resume)
    need parallel
    small_trees 4
    resumes() { # <exit code> <comparisons> <expected line>...
        ends_with "$1" tresk-parallel -j 2 --resume g r out "${options[@]}"
        shows "${@:3}"
        [ "$(sed 1d out/joblog | wc -l)" = "$2" ]
    }
    options=(-r 1e-3)
    resumes 0 4 '^worst: PASS'
    cp "$doc/samples/nand/regress.pun" r/2.pun # fails
    sample nand g/lonely.pun
    resumes 5 1 '^FAIL_V +1  2.pun' '^FAIL_SV +-  lonely.pun .missing in regression'
    touch -r r/3.pun stamp
    sed -i s/E+00/E+01/ r/3.pun # the same size and time
    touch -r stamp r/3.pun
    rm g/lonely.pun out/grades/0.pun.grade
    resumes 3 2 '^FAIL_V +1  3.pun' '^PASS +2$' '^worst: FAIL_V'
    echo '[23].pun -nem 1 # has moved' >g/tresk.options
    resumes 0 2 '^PASS +4'
    ends_with 0 tresk-collect --all out
    shows '^PASS +0  3.pun  \[-nem 1\]'
    rm out/joblog
    : >out/joblog
    resumes 0 0 '^PASS +4'
    ends_with 64 tresk-parallel --resume g r out
    shows 'then options: -r 1e-3' 'now +options: $'
    # A file that grows while it is compared, and a comparison that is killed
    wrapper 'case $file in */1.pun) echo >>"$file" ;; */2.pun) kill -9 $$ ;; esac'
    TRESK=./wrapper ends_with 6 tresk-parallel g r dead
    shows '^NO_GRADE +-  1.pun .a file or the program has changed' '^NO_GRADE  code=137  2.pun' '^worst: NO_GRADE'
    wrapper 'exec tresk "$@"'
    TRESK=./wrapper ends_with 64 tresk-parallel --resume g r dead
    shows 'size and times of the program'
    ;;
refused) # calls that end before anything runs, in one line
    need parallel
    small_trees 2
    refused() { # <expected line> <option of tresk-parallel or tresk-submit>...
        ends_with 64 timeout 20 "$engine" "${@:2}"
        shows "^tresk-[a-z]+: .*$1"
        [ ! -e out/grades ] && ! grep -q NO_GRADE output
    }
    mkdir bin
    printf '#!/bin/sh\nexit 1' | tee bin/sbatch >bin/other
    chmod +x bin/*
    PATH=$PWD/bin:$PATH
    for engine in tresk-parallel tresk-submit; do
        refused 'no option of a comparison: .?g/1.pun' g r out g/1.pun g/1.pun
        refused 'no option of a comparison: -index' g r out -index
        refused 'no number behind -r' g r out -r 1 -r
        refused 'more than one of' g r out -Aonly -Ronly
        refused 'lies in a tree' g r g/out
        refused 'both trees' g ./g out
        refused 'no pair of files' -p '*.none' g r out
        TRESK=none refused 'no program none' g r out
        TRESK=./bin/other refused 'is not tresk' g r out
        ln -s .. r/loop
        refused 'r cannot be read whole' g r out
        shows "find: .*loop"
        rm r/loop
        touch "r/READ"$'\n'ME
        refused 'names of .*READ.ME' g r out
        rm r/READ*
        gzip -k g/1.pun
        refused 'golden has 1.pun more than once' g r out
        rm g/*.gz
        mkdir -p {g,r}/1.pun.txt
        cp g/1.pun g/1.pun.txt
        cp g/1.pun r/1.pun.txt
        refused '1.pun.txt would be where' g r out
        rm -r {g,r}/1.pun.txt
        printf '# why\n1.pun -r 1\n\n2.pun' >g/tresk.options
        refused 'tresk.options:4: no options for 2.pun' g r out
        rm g/tresk.options
    done
    engine=tresk-submit
    refused 'no number of pairs' -c 0 g r out
    refused 'sbatch refused' g r out
    refused 'sbatch refused' g r out # nothing is in the way
    mv bin/other bin/parallel
    engine=tresk-parallel
    refused 'GNU parallel is needed' g r out
    refused 'no number of jobs' -j x g r out
    rm bin/parallel
    echo 'none -r 1' >g/tresk.options
    ends_with 0 tresk-parallel g r out
    shows 'tresk.options:1: no pair matches none'
    ends_with 64 tresk-parallel g r out
    shows 'holds an earlier run'
    ;;
slurm) # elements of a real cluster that end well, die, are killed, cancelled and requeued; then what is left
    PATH=$PATH:/usr/sbin
    need sbatch slurmctld slurmd munged
    [ "$(id -u)" = 0 ] || { echo "skipped: kit.slurm needs root" && exit 77; }
    small_trees 8
    cp regression/nand.pun r/7.pun
    gzip g/5.pun
    mkdir bad
    touch bad/{2,3,4,5}.pun # what goes wrong, each once
    wrapper 'if rm "bad/${file##*/}" 2>/dev/null; then
        case $file in */2.pun) kill -SEGV $$ ;; esac; sleep 60; fi'
    cluster=$(mktemp -u /tmp/slurm.XXXXXX) # short
    SLURM_CONF=$("$here/slurm_node.sh" start "$cluster")
    export SLURM_CONF TRESK=./wrapper
    trap '"$here/slurm_node.sh" stop "$cluster"' EXIT
    state_is() { # <element> <state> <restarts>
        scontrol -o show job "${job}_$1" | grep -q "JobState=$2 .*Restarts=$3 "
    }
    elements_are() { squeue -hr >queue && [ "$(wc -l <queue)" = "$1" ]; }
    collects() { # <exit code> <expected line>...
        ends_with "$1" tresk-collect o%a
        shows "${@:2}"
    }
    ends_with 0 tresk-submit -c 1 g r o%a -r 0.001
    job=$(sed -n 's/^Submitted batch job //p' output)
    collects 8 '^PENDING +[1-8]$' '^NO_GRADE +[01]$' '^worst: PENDING'
    wait_until elements_are 3
    collects 8 '^PENDING +3$' '^NO_GRADE  code=139  2.pun'
    ends_with 0 tresk-submit --resume g r o%a -r 0.001
    scancel --signal=KILL --full "${job}_3"
    scontrol requeue "${job}_4"
    scancel "${job}_5"
    wait_until state_is 4 PENDING 1
    # Not two minutes later, but neither in the second of the kill, when the node takes it for the killed one.
    scontrol update "JobId=${job}_4" StartTime=now+2
    wait_until elements_are 0
    collects 6 '^NO_GRADE +-  3.pun .not run' '^NO_GRADE +-  5.pun .not run' '^NO_GRADE +2$' '^PASS +5$'
    state_is 2 FAILED 0
    state_is 4 COMPLETED 1
    [ -z "$(ls tmp)" ]
    ends_with 0 tresk-submit --resume -c 2 g r o%a -r 0.001
    wait_until elements_are 0
    collects 3 '^FAIL_V +1  7.pun' '^PASS +7$'
    [ "$(cat o%a/slurm-*.log | grep -c .)" -gt 0 ]
    ends_with 0 tresk-submit --resume g r o%a -r 0.001
    shows '^Nothing is left'
    ;;
bash | fish | zsh)
    need "$piece"
    cat >offers.zsh <<'END' # <folder of _tresk> <line>: leaves what is offered at the end of the line in hits
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "fpath=(${(q)1} \$fpath); autoload -U compinit; compinit -D
compadd() { if (( \$@[(I)-[OAD]*] )); then builtin compadd \"\$@\"; else
    builtin compadd -O found \"\$@\"; print -rl -- \$found >>hits; fi }
list() { _main_complete; print end-\$((1)); }
zle -C list list-choices list; bindkey '^I' list; print ready-\$((1))"
zpty -r shell line '*ready-1*'
zpty -w -n shell "$2"$'\t'
zpty -r shell line '*end-1*'
cat hits
END
    share=$prefix/share
    bash_offers='. "$0"; COMP_WORDS=("${0##*/}" "$@") COMP_CWORD=$#; function=_${0##*/}; "${function/-/_}"
        printf "%s\n" "${COMPREPLY[@]}"'
    fish_offers='source $argv[1]; complete -C $argv[2]'
    program=tresk
    offers() { # <expected words, joined by blanks> <word>...
        case $piece in
        bash) ends_with 0 bash -c "$bash_offers" "$share/bash-completion/completions/$program" "${@:2}" ;;
        zsh) rm -f hits; ends_with 0 zsh -f offers.zsh "$(dirname "$share"/zsh/*/_$program)" "$program ${*:2}" ;;
        fish) ends_with 0 fish -c "$fish_offers" "$share/fish/vendor_completions.d/$program.fish" "$program ${*:2}" ;;
        esac
        [ "$(cut -f 1 output | LC_ALL=C sort | xargs)" = "$1" ] || { cat output; exit 1; }
    }
    offers '-index -indexmirel -indexrdinp -indexscript' -in
    offers '-Aonly -AorR' -r 0.1 -Ao
    offers '1 128 16' -pem 1
    offers '' -abstol g
    offers '' -a g
    [ "$piece" = fish ] || offers golden -a 1 -r 0.1 gol
    [ -x "$prefix/bin/tresk-report" ] || exit 0
    program=tresk-report
    offers pair pa
    offers '--figures --findings' pair golden/nand.pun --fi
    offers '' pair --figures g
    offers '-Aonly -AorR' tune --digits 3 -Ao
    offers '--keep' bless --yes --ke
    offers '-Aonly -AorR' pair --out --strange -Ao
    offers '1 128 16' pair --quiet -pem 1
    [ "$piece" = fish ] || offers golden pair --out new gol
    ;;
report) # the page on reports, and what it shows of them
    need python3 tresk-report
    ends_with 0 sh -ec "$(snippet sh report.md)"
    shows '^exit code 3$' '^r1m0/MR/sweep/VYMIN'
    grep -q '<svg class="figure waves"' report/nand/report.html
    ends_with 0 tresk-report schema
    cmp output "$prefix/share/tresk/result-1.schema.json"
    ;;
man)
    need man
    export MANPATH=$prefix/share/man MANWIDTH=80
    if [ -x "$prefix/bin/tresk-report" ]; then
        ends_with 0 man --warnings tresk-report
        shows '^ *--out folder'
    fi
    ends_with 0 man --warnings tresk
    shows '^SURPRISES' '^ *-nem mask'
    # What the manual says to parsers holds for the result lines of the samples.
    regex=$(sed -n 's/^ *\( (\[^ \]+) .*\$\)$/\1/p' output)
    ends_with 3 tresk golden/nand.pun regression/nand.pun
    [ "$(grep -cE -- "$regex" output)" = "$(grep -c '<=' output)" ]
    ;;
format) # what the page on the format shows is a punch file
    snippet punch punch-format.md >example.pun
    ends_with 0 tresk example.pun example.pun
    shows 'IN TR .* 4 signal' 'IN DC .* 1 signal' 'TR .FORCE .* 4 signal' '2 OP' '3 TR signal' '2 Fourier' '1 PZ'
    [ -z "$(grep -E 'ERROR|WARNING' output)" ]
    ;;
esac
