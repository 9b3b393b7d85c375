#!/bin/sh
# Puts the tool under load and prints what it takes; fails when memory or descriptors grow: see
# tests/load/load.py, which takes the options too.
#
#   scripts/load.sh [--quick]
set -eu
cd "$(dirname "$0")/.."

./scripts/install-deps.sh
cmake --preset release
cmake --build --preset release --target tandril
exec python3 tests/load/load.py --tool build/release/tandril/tandril "$@"
