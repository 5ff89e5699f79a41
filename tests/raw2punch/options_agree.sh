#!/bin/bash
# SPDX-License-Identifier: MIT
# Fails when the manual or a completion lists other options than the program, or differs on which of them take an
# argument. Usage: options_agree.sh SOURCE-FOLDER RAW2PUNCH
# shellcheck disable=SC2317 # the functions are called by the name in a variable
cd "$1" || exit 2
raw2punch=$2
status=0

# Each source as lines "--option" or "--option value".
program() {
    "$raw2punch" --help | sed -En 's/^  (-.,)?(--[a-z-]+)( [A-Z]+[^ ]*)?( .*)?$/\2\3/;T; s/ .+/ value/; p'
}
manual() {
    sed -En 's/^\.It Fl (. , )?-([a-z-]+)( Ar)?.*/--\2\3/;T; s/ Ar/ value/; p' man/raw2punch.1
}
zsh() {
    sed -En "s/^ *'[^[]*(--[a-z-]+)\}?'?\[[^]]*\](:)?.*/\1\2/;T; s/:/ value/; p" contrib/completions/_raw2punch
}
fish() {
    sed -En 's/^complete -c raw2punch (-s . )?-l ([a-z-]+)( -[xr])?.*/--\2\3/;T; s/ -[xr]/ value/; p' \
        contrib/completions/raw2punch.fish
}
bash_words() { # no arguments here
    sed -n "/words='--format/,/--help/p" contrib/completions/raw2punch.bash | grep -o -- '--[a-z-]\+'
}

table=$(program)
[ "$(wc -l <<<"$table")" -ge 13 ] || { echo "too few options in the help text"; status=1; }
for source in manual zsh fish bash_words; do
    [ $source != bash_words ] || table=${table// value/}
    diff <(sort <<<"$table") <($source | sort) || { echo "$source lists other options (>) than raw2punch"; status=1; }
done
exit $status
