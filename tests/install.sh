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

install() { # <prefix>: by components, which have manifests of their own
    for component in tresk tresk-report; do
        cmake --install "$build" --component $component --prefix "$1" >/dev/null
    done
}
uninstall() {
    for component in tresk tresk-report; do
        cmake -D MANIFEST="$build/install_manifest_$component.txt" -P "$here/../cmake/uninstall.cmake" >/dev/null
    done
}

install "$work/first"
(cd "$work/first" && find . -type f ! -path '*/doc/*' ! -name '*Targets*' | LC_ALL=C sort) |
    diff <(wanted) -
ls "$work/first/share/doc/tresk"/{LICENSE,CHANGELOG.md,docs/harness.md,docs/punch-format.md} >/dev/null
mv "$work/first" "$work/moved"
[ -z "$(grep -rl "$work/first" "$work/moved")" ]
[ -z "$(grep -i '/[^/]*\(report\|result\)[^/]*$' "$build/install_manifest_tresk.txt" | grep -v /doc/)" ] # another package

install "$work/second"
touch "$work/second/share/somebody's"
uninstall
[ "$(find "$work/second" -type f -o -iname '*tresk*' -o -iname '*raw2punch*')" = "$work/second/share/somebody's" ]
