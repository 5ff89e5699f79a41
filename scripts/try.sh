#!/bin/sh
# SPDX-License-Identifier: MIT
# Builds tresk and its report, and compares a sample pair. Arguments go to cmake.
set -eu
cd "$(dirname "$0")/.."

scripts/setup.sh cli11 json libcrypto pugixml
cmake -S . -B build "$@"
cmake --build build --target tresk-report --parallel "$(nproc)"

grade=0
build/tresk-report pair --out build/nand.report samples/nand/golden.pun samples/nand/regress.pun || grade=$?
echo "exit code: $grade"
[ "$grade" = 3 ]
