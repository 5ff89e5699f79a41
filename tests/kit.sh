#!/bin/bash
# SPDX-License-Identifier: MIT
# Runs one piece of what is installed below a prefix on the samples, as its users do. The code of
# harness.md is taken from there. Usage: kit.sh PREFIX WORK PIECE, 77 when a tool of the piece is missing.
set -eu
prefix=$(realpath "$1") work=$2/$3 piece=$3
kit=$prefix/share/tresk/harness doc=$prefix/share/doc/tresk
PATH=$prefix/bin:$PATH

need() {
    command -v "$1" >/dev/null || exit 77
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
        grep -qE -- "$line" output || { cat output; echo "not shown: $line"; exit 1; }
    done
}

rm -rf "$work"
mkdir -p "$work/golden/a b" "$work/regression/a b"
cd "$work"
for sample in follower lc_filter nand; do
    cp "$doc/samples/$sample/golden.pun" golden/$sample.pun
    cp "$doc/samples/$sample/regress.pun" regression/$sample.pun
done
make_trees() { # a name that a shell could stumble over, and a file without partner in each tree
    tee {golden,regression}/"a b/\$(x)';\"&.pun" golden/lost.pun regression/new.pun <golden/nand.pun >/dev/null
}
table=('^FAIL_PSV       8  follower.pun' '^PASS           0  lc_filter.pun' '^PASS .*&.pun$'
    '^FAIL_SV        -  lost.pun .missing in regression' '^FAIL_SV        -  new.pun .missing in golden'
    '^PASS           3$' '^FAIL_PSV       1$' '^FAIL_SV        2$' '^worst: FAIL_SV')

case $piece in
shell)
    ends_with 0 sh -ec "$(snippet sh)"
    shows 'Comparison result:  FAIL_V  .exit status = 1' '^grade 3'
    ends_with 0 bash -c "$(snippet bash)"
    shows '^TPHL ' '^grade 3'
    ;;
make)
    need make
    snippet make >Makefile
    ends_with 2 make -k -j2 check
    shows '^out/follower.grade:3' '^out/nand.grade:3'
    cp golden/*.pun regression/
    ends_with 0 make check
    ;;
ctest)
    need ctest
    { head -n 4 golden/nand.pun; echo 'V(A) YUNITS = V DATA = NONE'; } >golden/broken.pun # no grade
    snippet cmake >CMakeLists.txt
    echo 'tresk_add_test(NAME broken GOLDEN golden/broken.pun REGRESSION x ACCEPT 0 1 2 3 4 5)' >>CMakeLists.txt
    ends_with 0 cmake -S . -B build -DCMAKE_PREFIX_PATH="$prefix"
    mv regression build
    ends_with 8 ctest --test-dir build --output-on-failure --output-junit results.xml
    shows ' filter .* Passed' ' follower .* Passed' ' nand .*Failed' ' broken .*Failed' '^TPHL .*<=A=R='
    grep -q '^TPHL ' build/results.xml
    ;;
parallel)
    need parallel
    make_trees
    run=("$kit/tresk-parallel" -j 2 golden regression)
    resume=("$kit/tresk-parallel" -j 2 --resume golden regression)
    ends_with 5 "${run[@]}" out -Ronly -r 0.1
    shows "${table[@]}"
    tail -n 2 "out/transcripts/a b/\$(x)';\"&.pun.txt" | grep -q 'result:  PASS'
    ends_with 64 "${run[@]}" out -Ronly -r 0.1
    ends_with 64 "${resume[@]}" out # other options
    sed -i /nand.pun/d out/joblog   # as if stopped while it ran
    rm out/grades/nand.pun
    ends_with 5 "${resume[@]}" out -Ronly -r 0.1
    shows "${table[@]}"
    [ "$(grep -c follower out/joblog)" = 1 ] # not run again
    TRESK=false ends_with 6 "${run[@]}" dead
    shows '^NO_GRADE  code=1  nand.pun' '^worst: NO_GRADE'
    ends_with 5 "${resume[@]}" dead # what has no grade is run again
    ends_with 64 "$kit/tresk-parallel" -p '*.none' golden regression none
    ;;
slurm)
    make_trees
    cat >sbatch <<'END' # runs a copy of the script, as Slurm does, once for each index
#!/bin/bash
range=${1#--array=0-}; cp "$3" spooled; shift 3
for ((i = 0; i <= range; ++i)); do SLURM_ARRAY_TASK_ID=$i ./spooled "$@" || exit; done
END
    chmod +x sbatch
    PATH=$PWD:$PATH ends_with 0 "$kit/tresk-submit" -c 3 golden regression out -Ronly -r 0.1
    ends_with 5 "$kit/tresk-collect" out
    shows "${table[@]}"
    rm out/grades/nand.pun
    ends_with 6 "$kit/tresk-collect" out
    shows '^NO_GRADE       -  nand.pun .not run'
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
    bash_offers='. "$0"; COMP_WORDS=(tresk "$@") COMP_CWORD=$#; _tresk; printf "%s\n" "${COMPREPLY[@]}"'
    fish_offers='source $argv[1]; complete -C $argv[2]'
    offers() { # <expected words, joined by blanks> <word>...
        case $piece in
        bash) ends_with 0 bash -c "$bash_offers" "$share/bash-completion/completions/tresk" "${@:2}" ;;
        zsh) rm -f hits; ends_with 0 zsh -f offers.zsh "$(dirname "$share"/zsh/*/_tresk)" "tresk ${*:2}" ;;
        fish) ends_with 0 fish -c "$fish_offers" "$share/fish/vendor_completions.d/tresk.fish" "tresk ${*:2}" ;;
        esac
        [ "$(cut -f 1 output | LC_ALL=C sort | xargs)" = "$1" ] || { cat output; exit 1; }
    }
    offers '-index -indexmirel -indexrdinp -indexscript' -in
    offers '-Aonly -AorR' -r 0.1 -Ao
    offers '1 128 16' -pem 1
    offers '' -abstol g
    offers '' -a g
    [ "$piece" = fish ] || offers golden -a 1 -r 0.1 gol
    ;;
man)
    need man
    MANPATH=$prefix/share/man ends_with 0 env MANWIDTH=80 man --warnings tresk
    shows '^SURPRISES' '^ *-nem mask'
    # What the manual tells parsers holds for the result lines of the samples.
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
