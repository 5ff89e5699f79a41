#!/bin/bash
# SPDX-License-Identifier: MIT
# The way of a new user by the README alone, in a bare root with the oldest CMake that will do and from a
# clone whose name needs quoting: a user without rights learns what to install, the commands of root install
# it, and then that user comes through.
# shellcheck source=tests/debian_root.sh
. "$(dirname "$0")/debian_root.sh"
old_release=bullseye # for its CMake; its compiler is too old
old_cmake=3.18
clone="/home/user/it's a clone"
as_user() {
    in_root "$root/debian" setpriv --reuid=1000 --regid=1000 --clear-groups env HOME=/home/user \
        bash -c 'cd "$0" && "$@"' "$clone" "$@"
}
as_root() {
    in_root "$root/debian" bash -c 'cd "/srv/tresk" && "$@"' - "$@"
}
says_what_to_install() { # <Debian packages> <command>...
    local code=0
    as_user "${@:2}" >"$root/output" 2>&1 || code=$?
    diff <(echo "Please install these packages first (Debian names): $1") "$root/output" && [ $code = 1 ]
}

# Not what is walked for: the time of the compiler.
quick=(-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DCMAKE_INTERPROCEDURAL_OPTIMIZATION_RELEASE=OFF)

make_root "$VERSION_CODENAME" "$root/debian" --variant=apt
echo "deb $mirror $old_release main" >>"$root/debian/etc/apt/sources.list"
printf 'Package: %s\nPin: release n=%s\nPin-Priority: %s\n\n' '*' $old_release 100 \
    'cmake cmake-data' $old_release 1001 >"$root/debian/etc/apt/preferences"
cp /etc/resolv.conf "$root/debian/etc"
for copy in "$root/debian$clone" "$root/debian/srv/tresk"; do
    mkdir -p "$copy"
    tar -c --exclude='./build*' --exclude=./.git . | tar -x -C "$copy"
done
chown -R 1000:1000 "$root/debian/home/user"

says_what_to_install 'g++ cmake make libcli11-dev nlohmann-json3-dev libssl-dev libpugixml-dev libsqlite3-dev' scripts/try.sh
as_root scripts/setup.sh cli11 json libcrypto pugixml sqlite
as_root cmake -S . -B build "${quick[@]}" # all of it can be read
as_root cmake build -DTRESK_BUILD_REPORT=OFF
as_root cmake --build build --target tresk_programs --parallel "$(nproc)"
grep -q "^CMAKE_CACHE_MINOR_VERSION:INTERNAL=${old_cmake#*.}$" "$root/debian/srv/tresk/build/CMakeCache.txt"
grep -q "^cmake_minimum_required(VERSION $old_cmake)" CMakeLists.txt
as_root cmake --install build
as_root tresk samples/nand/golden.pun samples/nand/golden.pun
as_root cmake --build build --target uninstall
[ -z "$(find "$root/debian/usr/local" -type f)" ]

rm "$root/debian/etc/apt/preferences"
as_root apt-get -qq install -y cmake dpkg-dev file # as packages need them
as_user scripts/try.sh "${quick[@]}" | tee "$root/output"
page=$(sed -n 's/^page: //p' "$root/output")
grep -q '<svg class="figure waves"' "$root/debian$clone/$page"
as_user cmake --install build --prefix /home/user/.local
as_user /home/user/.local/bin/tresk samples/nand/golden.pun samples/nand/golden.pun
as_user cmake --build build --target uninstall
[ -z "$(find "$root/debian/home/user/.local" -type f)" ]
as_user sh -c '(cd build && cpack)'
in_root "$root/debian" sh -c 'cd "$0" && apt install -y ./build/tresk*.deb' "$clone"
as_user tresk-report pair --always --out report samples/nand/golden.pun samples/nand/golden.pun
as_root apt remove -y tresk
says_what_to_install "libgtest-dev python3-jsonschema python3-junitparser libxml2-utils strace sqlite3" scripts/test.sh
