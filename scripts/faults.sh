#!/bin/sh
# Makes every call of the tool to the system fail in turn and judges each run: see
# tests/faults/sweep.py, which takes the options too.
#
#   scripts/faults.sh [--quick] [--only SCENARIO] [--jobs 2]
set -eu
cd "$(dirname "$0")/.."

./scripts/install-deps.sh
cmake --preset release
cmake --build --preset release --target tandril failing_calls good_plugin
exec python3 tests/faults/sweep.py --tool build/release/tandril/tandril \
    --faults build/release/tests/faults/libfailing_calls.so \
    --library build/release/tests/autocli/plugins/fixtures/good_plugin.so "$@"
