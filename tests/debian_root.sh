# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# Sourced by the tests that need a freshly made Debian root. Needs root and mmdebstrap.
set -euo pipefail
. /etc/os-release
root=$(mktemp -d -p /dev/shm || mktemp -d) # memory: dpkg waits for the disk a lot
trap 'rm -rf "$root"' EXIT
mirror=$(apt-get indextargets --format '$(REPO_URI)' "Codename: $VERSION_CODENAME" | head -n 1)

make_root() { # <release> <folder> [<mmdebstrap option>...]
    mmdebstrap --quiet "${@:3}" "$1" "$2" "deb $mirror $1 main"
}
in_root() { # <folder> <command>...
    env -i PATH=/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/opt LC_ALL=C.UTF-8 \
        ${http_proxy+http_proxy="$http_proxy"} unshare --pid --fork --mount sh -c 'mount -t proc proc "$0/proc" &&
            mount -t devpts -o ptmxmode=666 devpts "$0/dev/pts" && exec chroot "$0" "$@"' "$@"
}
