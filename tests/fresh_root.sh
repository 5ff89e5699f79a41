#!/bin/bash
# SPDX-License-Identifier: MIT
# Installs the Debian packages into fresh roots of this and of the next release, that of reports behind the other, runs
# the kit there, and removes them again; runs the static program in a root that is empty but for it.
# Usage: fresh_root.sh PACKAGE REPORT-PACKAGE STATIC-PROGRAM
# shellcheck source=tests/debian_root.sh
. "$(dirname "$0")/debian_root.sh"
next_release=trixie

mkdir "$root/empty"
cp "$3" "$root/empty/tresk"
cp samples/halfwave/golden.pun "$root/empty"
chroot "$root/empty" /tresk golden.pun golden.pun

add_package() { # <package> <piece of the kit>...
    in_root "$root/$release" dpkg --install "/opt/$(basename "$1")"
    for piece in "${@:2}"; do
        echo "kit: $release $piece"
        in_root "$root/$release" /opt/kit.sh /usr /opt/kit "$piece" # also fails when it would be skipped
    done
}
for release in "$VERSION_CODENAME" $next_release; do
    tools=man-db,libpugixml1v5,libssl3,libsqlite3-0,python3 pieces=(shell man format) more=()
    if [ "$release" = "$VERSION_CODENAME" ]; then
        tools+=,bash-completion,cmake,fish,make,parallel,zsh,zstd
        pieces+=(make ctest check tree resume refused bash fish zsh)
        more=(bash fish zsh)
    fi
    make_root "$release" "$root/$release" --variant=essential --include=$tools
    cp tests/kit.sh "$1" "$2" "$root/$release/opt"
    add_package "$1" "${pieces[@]}"
    add_package "$2" report man "${more[@]}"
done

# The shells find their completions where the package put them.
here=$root/$VERSION_CODENAME
for program in tresk tresk-report; do
    in_root "$here" bash -c ". /usr/share/bash-completion/bash_completion
        _completion_loader $program; complete -p $program"
    in_root "$here" zsh -c "autoload -U compinit; compinit -D; [[ \$_comps[$program] = _$program ]]"
done
[ "$(in_root "$here" fish -c 'complete -C "tresk -exitc"' | wc -l)" = 2 ]
[ "$(in_root "$here" fish -c 'complete -C "tresk-report pair --fi"' | wc -l)" = 2 ]
for release in "$VERSION_CODENAME" $next_release; do
    in_root "$root/$release" dpkg --purge tresk-report tresk
    [ -z "$(find "$root/$release/usr" -iname '*tresk*' -o -iname '*raw2punch*')" ]
done

# The page on ngspice, by copy and paste.
make_root "$VERSION_CODENAME" "$root/page" --variant=apt
cp tests/ngspice_page.sh "$1" "$2" "$root/page/opt"
in_root "$root/page" /opt/ngspice_page.sh --install /usr /opt
