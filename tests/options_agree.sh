#!/bin/bash
# SPDX-License-Identifier: MIT
# Fails when the manual, the usage text or a completion tells other options than the parser's table has,
# or differs on which of them take an argument. Also holds the paths that design.md names to the tree.
# Usage: options_agree.sh SOURCE-FOLDER TRESK
cd "$1" || exit 2
tresk=$2
status=0

# Each source as lines "-option" or "-option value".
parser() {
    sed -En 's/^ *\{"[A-Za-z]+", "(-[A-Za-z]+)", Match::[A-Z_]+, Action::([A-Z_]+), .*/\1 \2/;T
        s/ (REAL|DECIMAL|MASK|EXPLAIN_CODE)$/ value/; s/ [A-Z_]+$//; p' src/driver/options.cpp
}
manual() {
    sed -En 's/^\.It Fl ([A-Za-z]+)( Ar)?.*/-\1\2/;T; s/ Ar/ value/; p' man/tresk.1
}
usage() {
    "$tresk" -help 2>&1 | sed -En '/^Exit/q; s/^  (-[A-Za-z]+)\[?([A-Za-z]*)\]?( <val>)? .*/\1\2\3/;T; s/<val>/value/; p'
    printf '%s\n' -indexscript -indexmirel -indexrdinp # by intent not in the usage text
}
zsh() {
    sed -En "s/^ *[\"'](\([^)]*\))?(-[A-Za-z]+)\[[^]]*\](:)?.*/\2\3/;T; s/:/ value/; p" contrib/completions/_tresk
}
fish() {
    sed -En 's/^complete -c tresk -o ([A-Za-z]+)( -x)?.*/-\1\2/;T; s/ -x/ value/; p' contrib/completions/tresk.fish
}
bash_words() { # no arguments here: kit.sh runs them
    sed -n "/words='-a /,/-help/p" contrib/completions/tresk.bash | grep -o -- '-[A-Za-z]\+'
}

table=$(parser)
[ "$(wc -l <<<"$table")" -ge 17 ] || { echo "kRules not found"; status=1; }
for source in manual usage zsh fish bash_words; do
    [ $source != zsh ] || table+=$'\n-a value\n-r value' # the short forms that the documents use
    [ $source != bash_words ] || table=${table// value/}
    diff <(sort <<<"$table") <($source | sort) || { echo "$source tells other options (>) than the parser"; status=1; }
done
for name in $(grep -o '`[a-z]\+/[a-z_]\+`' docs/design.md | tr -d '`'); do
    ls src/"$name".* >/dev/null || { echo "design.md: no $name"; status=1; }
done
exit $status
