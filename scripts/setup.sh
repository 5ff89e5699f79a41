#!/bin/sh
# SPDX-License-Identifier: MIT
# Installs what the build needs and this machine lacks, or says what to install. Arguments name more:
# googletest, cli11, json, libcrypto, pugixml, sqlite, jsonschema, junitparser, selenium, or commands, each in the Debian
# package of the same name, or as PACKAGE:COMMAND.
set -eu

need() { # <Debian package> <command that succeeds when it is there>...
    package=$1
    shift
    "$@" >/dev/null 2>&1 </dev/null || missing="$missing $package"
}

has_header() {
    echo "#include <$1>" | "${CXX:-c++}" -std=c++17 -E -x c++ -
}

find_missing() {
    missing=
    need g++ "${CXX:-c++}" --version
    need cmake cmake --version
    case ${CMAKE_GENERATOR:-} in
    Ninja*) need ninja-build ninja --version ;;
    *) need make make --version ;;
    esac
    for tool; do
        case $tool in
        googletest) need libgtest-dev has_header gtest/gtest.h ;;
        cli11) need libcli11-dev has_header CLI/CLI.hpp ;;
        json) need nlohmann-json3-dev has_header nlohmann/json.hpp ;;
        sqlite) need libsqlite3-dev has_header sqlite3.h ;;
        libcrypto) need libssl-dev has_header openssl/evp.h ;;
        pugixml) need libpugixml-dev has_header pugixml.hpp ;;
        junitparser) need python3-junitparser /usr/bin/python3 -c 'import junitparser' ;;
        selenium) need python3-selenium /usr/bin/python3 -c 'import selenium' ;;
        jsonschema) need python3-jsonschema /usr/bin/python3 -c 'import jsonschema' ;;
        *) need "${tool%:*}" command -v "${tool#*:}" ;;
        esac
    done
}

install_missing() {
    command -v apt-get >/dev/null || return 0
    as_root=
    [ "$(id -u)" = 0 ] || as_root='sudo -n'
    $as_root true 2>/dev/null || return 0
    echo "Installing$missing"
    $as_root apt-get -qq update </dev/null >/dev/null || true
    # shellcheck disable=SC2086
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq install -y --no-install-recommends $missing \
        </dev/null >/dev/null || true
}

find_missing "$@"
if [ "$missing" ]; then
    install_missing
    find_missing "$@"
fi
if [ "$missing" ]; then
    echo "Please install these packages first (Debian names):$missing" >&2
    exit 1
fi
