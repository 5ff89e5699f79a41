#!/bin/bash
# SPDX-License-Identifier: MIT
# Installs the Debian package into fresh roots of this and of the next release, runs the kit there, and
# removes it again; runs the static program in a root that is empty but for it.
# Usage: fresh_root.sh PACKAGE STATIC-PROGRAM
# shellcheck source=tests/debian_root.sh
. "$(dirname "$0")/debian_root.sh"
next_release=trixie

mkdir "$root/empty"
cp "$2" "$root/empty/tresk"
cp samples/halfwave/golden.pun "$root/empty"
chroot "$root/empty" /tresk golden.pun golden.pun

for release in "$VERSION_CODENAME" $next_release; do
    tools=man-db,bash-completion,cmake,fish,make,parallel,zsh,zstd
    pieces=(shell make ctest check tree resume refused bash fish zsh man format)
    [ "$release" = "$VERSION_CODENAME" ] || tools=man-db pieces=(shell man format)
    make_root "$release" "$root/$release" --variant=essential --include=$tools
    cp tests/kit.sh "$1" "$root/$release/opt"
    in_root "$root/$release" dpkg --install "/opt/$(basename "$1")"
    for piece in "${pieces[@]}"; do
        echo "kit: $release $piece"
        in_root "$root/$release" /opt/kit.sh /usr /opt/kit "$piece" # also fails when it would be skipped
    done
done

# The shells find their completions where the package put them.
here=$root/$VERSION_CODENAME
in_root "$here" bash -c '. /usr/share/bash-completion/bash_completion; _completion_loader tresk; complete -p tresk'
in_root "$here" zsh -c 'autoload -U compinit; compinit -D; [[ $_comps[tresk] = _tresk ]]'
[ "$(in_root "$here" fish -c 'complete -C "tresk -exitc"' | wc -l)" = 2 ]
for release in "$VERSION_CODENAME" $next_release; do
    in_root "$root/$release" dpkg --purge tresk
    [ -z "$(find "$root/$release/usr" -iname '*tresk*' -o -iname '*raw2punch*')" ]
done

# The page on ngspice, by copy and paste.
make_root "$VERSION_CODENAME" "$root/page" --variant=apt
cp tests/ngspice_page.sh "$1" "$root/page/opt"
in_root "$root/page" /opt/ngspice_page.sh --install /usr /opt
