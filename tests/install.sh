#!/bin/bash
# SPDX-License-Identifier: MIT
# Installs a build, removes it again, and leaves an installation moved to WORK/moved for the other tests.
# Usage: install.sh BUILD WORK
set -eu
build=$1 work=$2
here=$(dirname "$0")
rm -rf "$work"
mkdir -p "$work"

# Without what this build has no program for.
wanted() {
    grep -v -e "$([ -x "$build/raw2punch" ] && echo ' ' || echo raw2punch)" \
        -e "$([ -x "$build/tresk-report" ] && echo ' ' || echo 'tresk-report\|result-1')" "$here/installed_files.txt"
}

install=(cmake --install "$build" --component Unspecified --prefix) # a component has a manifest of its own
"${install[@]}" "$work/first" >/dev/null
(cd "$work/first" && find . -type f ! -path '*/doc/*' ! -name '*Targets*' | LC_ALL=C sort) |
    diff <(wanted) -
ls "$work/first/share/doc/tresk"/{LICENSE,CHANGELOG.md,docs/harness.md,docs/punch-format.md} >/dev/null
mv "$work/first" "$work/moved"
[ -z "$(grep -rl "$work/first" "$work/moved")" ]

"${install[@]}" "$work/second" >/dev/null
touch "$work/second/share/somebody's"
cmake -D MANIFEST="$build/install_manifest_Unspecified.txt" -P "$here/../cmake/uninstall.cmake" >/dev/null
[ "$(find "$work/second" -type f -o -iname '*tresk*' -o -iname '*raw2punch*')" = "$work/second/share/somebody's" ]
