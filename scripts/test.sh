#!/bin/sh
# Builds everything and runs all tests. The preset may be named; it is "release" otherwise.
set -eu
cd "$(dirname "$0")/.."
preset=${1:-release}

./scripts/install-deps.sh
cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset" --parallel "$(nproc)" --no-tests=error
