#!/bin/sh
# SPDX-License-Identifier: MIT
# Builds tresk and runs all tests. Arguments go to cmake; BUILD_DIR names another build folder.
set -eu
cd "$(dirname "$0")/.."
build=${BUILD_DIR:-build}
jobs=$(nproc)
werror=OFF
[ "${CI:-}" != true ] || werror=ON

scripts/setup.sh googletest cli11 json libcrypto pugixml sqlite jsonschema junitparser libxml2-utils:xmllint strace sqlite3
cmake -S . -B "$build" -DTRESK_BUILD_TESTS=ON -DTRESK_WERROR=$werror "$@"
cmake --build "$build" --parallel "$jobs"
cd "$build"
# Many tests wait for processes and pages.
ctest --output-on-failure --no-tests=error --no-label-summary --parallel $((2 * jobs))
sed -n 's/^skipped: /Skipped: /p' Testing/Temporary/LastTest.log
