#!/bin/bash
# SPDX-License-Identifier: MIT
# Installs the Debian package into a freshly made root, runs the kit there, and removes it again; runs
# the static program in a root that is empty but for it. Needs root and mmdebstrap.
# Usage: fresh_root.sh PACKAGE STATIC-PROGRAM
set -euo pipefail
. /etc/os-release
root=$(mktemp -d -p /dev/shm || mktemp -d) # memory: dpkg waits for the disk a lot
trap 'rm -rf "$root"' EXIT

mkdir "$root/empty"
cp "$2" "$root/empty/tresk"
cp samples/halfwave/golden.pun "$root/empty"
chroot "$root/empty" /tresk golden.pun golden.pun

mmdebstrap --quiet --variant=essential --include=man-db,bash-completion,cmake,fish,make,parallel,zsh \
    "$VERSION_CODENAME" "$root/debian"
cp tests/kit.sh "$1" "$root/debian/opt"
in_root() {
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/opt LC_ALL=C.UTF-8 \
        unshare --pid --fork --mount-proc --root="$root/debian" "$@"
}
in_root dpkg --install "/opt/$(basename "$1")"
for piece in shell make ctest parallel slurm bash fish zsh man format; do
    echo "kit: $piece"
    in_root /opt/kit.sh /usr /opt/kit $piece # also fails when it would be skipped
done
# The shells find their completions where the package put them.
in_root bash -c '. /usr/share/bash-completion/bash_completion; _completion_loader tresk; complete -p tresk'
in_root zsh -c 'autoload -U compinit; compinit -D; [[ $_comps[tresk] = _tresk ]]'
[ "$(in_root fish -c 'complete -C "tresk -exitc"' | wc -l)" = 2 ]
in_root dpkg --purge tresk
[ -z "$(find "$root/debian/usr" -iname '*tresk*')" ]
