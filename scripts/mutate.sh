#!/bin/sh
# Measures how much the tests notice: puts small faults into the library, one at a time and in a
# copy, runs the tests against each and lists the faults that none of them noticed.
#
#   scripts/mutate.sh [--count 300] [--seed N] [--jobs 2] [--only CppTools/metaobj]
#
# A fault that survives is a missing test, unless the program means the same with it. Takes some
# ten seconds for each fault; not part of continuous integration.
set -eu
cd "$(dirname "$0")/.."

./scripts/install-deps.sh
cmake --preset debug
cmake --build --preset debug
exec python3 scripts/mutation/mutate.py --tests build/debug/tests --work build/mutate "$@"
