#!/bin/sh
# SPDX-License-Identifier: MIT
# Builds the programs, compares a sample pair, and leaves a page of what differs. Arguments go to cmake.
set -eu
cd "$(dirname "$0")/.."

scripts/setup.sh cli11 json libcrypto pugixml sqlite
cmake -S . -B build "$@"
cmake --build build --target tresk_programs --parallel "$(nproc)"

grade=0
page=$(build/tresk-report pair --out build/nand.report samples/nand/golden.pun samples/nand/regress.pun) || grade=$?
echo "exit code: $grade"
echo "page: $page"
[ "$grade" = 3 ]
