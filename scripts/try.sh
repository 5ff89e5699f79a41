#!/bin/sh
# SPDX-License-Identifier: MIT
# Builds tresk and compares a sample pair. Arguments go to cmake.
set -eu
cd "$(dirname "$0")/.."

scripts/setup.sh
cmake -S . -B build "$@"
cmake --build build --target tresk --parallel "$(nproc)"

grade=0
build/tresk samples/nand/golden.pun samples/nand/regress.pun 2>build/nand.transcript || grade=$?
cat build/nand.transcript
echo "exit code: $grade"
[ "$grade" = 3 ]
